#include "host/store/postgres/step_queue.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "host/store/postgres/session.h"
#include "host/store/row_runs.h"

namespace qorhost::postgres {

void StepQueue::Queue(std::int32_t unitKey, std::string_view kind, std::int32_t subjectRid,
                      std::string_view code) {
  session_.Add(FormOfStep(),
               ValuesOfStep(unitKey, kind, subjectRid, code, session_.timeStamp().Now()));
}

void StepQueue::QueueAll(std::int32_t unitKey, std::string_view kind,
                         std::span<const std::int32_t> subjectRids) {
  ForEachRun(subjectRids, [&](std::int32_t first, std::int32_t last) {
    session_.Writing([&] {
      SentValues values;
      values.AddNumber(unitKey);
      values.AddText(kind);
      values.AddNumber(first);
      values.AddNumber(last);
      values.AddText(session_.timeStamp().Now());
      return session_.Own(
          R"(INSERT INTO "ProgramSteps" ("UnitKey", "Kind", "SubjectRID", "QueuedAt", "Sent") )"
          R"(SELECT $1::int4, $2::text, "Subject", $5::text, 0 )"
          R"(FROM generate_series($3::int4, $4::int4) AS "Subject")",
          values);
    });
  });
}

void StepQueue::WithdrawAll(std::int32_t unitKey, std::string_view kind,
                            std::span<const std::int32_t> subjectRids) {
  ForEachRun(subjectRids, [&](std::int32_t first, std::int32_t last) {
    session_.Writing([&] {
      SentValues values;
      values.AddNumber(unitKey);
      values.AddNumber(first);
      values.AddNumber(last);
      values.AddText(kind);
      return session_.Own(
          R"(DELETE FROM "ProgramSteps" WHERE "UnitKey"=$1::int4 AND )"
          R"("SubjectRID" BETWEEN $2::int4 AND $3::int4 AND "Kind"=$4::text AND "Sent"=0)",
          values);
    });
  });
}

std::int64_t StepQueue::Withdraw(std::int32_t unitKey, std::string_view kind,
                                 std::int32_t subjectRid) {
  return session_.Writing([&] {
    SentValues values;
    values.AddNumber(unitKey);
    values.AddNumber(subjectRid);
    values.AddText(kind);
    return session_
        .Own(R"(DELETE FROM "ProgramSteps" WHERE "UnitKey"=$1::int4 AND "SubjectRID"=$2::int4 AND )"
             R"("Kind"=$3::text AND "Sent"=0)",
             values)
        .affected();
  });
}

bool StepQueue::IsDeletionPending(std::int32_t unitKey, std::string_view code) {
  SentValues values;
  values.AddNumber(unitKey);
  values.AddText(step::kDeleteDirectoryCode);
  values.AddText(code);
  return session_
             .Own(
                 R"(SELECT 1 FROM "ProgramSteps" WHERE "UnitKey"=$1::int4 AND "Kind"=$2::text AND )"
                 R"("Code"=$3::text AND "Sent"=0 LIMIT 1)",
                 values)
             .rows() > 0;
}

std::string StepQueue::CodeAtUnit(std::int32_t unitKey, std::int32_t rid) {
  SentValues values;
  values.AddNumber(unitKey);
  values.AddNumber(rid);
  const Result found =
      session_.Own(R"(SELECT coalesce("OLDDIRECTORYCODE", "DIRECTORYCODE") FROM "DirectoryCode" )"
                   R"(WHERE "RID"=$2::int4 AND "UNITKEY"=$1::int4)",
                   values);
  return found.rows() == 0
             ? std::string()
             : qorcred::TextOrEmpty(CellOf(found, 0, 0, dialect::ColumnType::kDouble));
}

std::vector<ProgramStep> StepQueue::List(std::optional<std::int32_t> unitKey) {
  SentValues values;
  if (unitKey.has_value()) {
    values.AddNumber(*unitKey);
  }
  const Result list = session_.Own(
      fmt::format(R"(SELECT "RID", "UnitKey", "Kind", "SubjectRID", "Code", "QueuedAt", "Sent" )"
                  R"(FROM "ProgramSteps" {} ORDER BY "RID")",
                  unitKey ? R"(WHERE "UnitKey"=$1::int4)" : ""),
      values);
  std::vector<ProgramStep> steps;
  for (int row = 0; row < list.rows(); ++row) {
    ProgramStep one;
    one.rid = static_cast<std::int32_t>(list.Number(row, 0));
    one.unitKey = static_cast<std::int32_t>(list.Number(row, 1));
    one.kind = list.Text(row, 2);
    one.subjectRid = static_cast<std::int32_t>(list.Number(row, 3));
    one.code = list.Text(row, 4);
    one.queuedAt = CellOf(list, row, 5, dialect::ColumnType::kDate);
    one.sent = list.Number(row, 6) != 0;
    steps.push_back(std::move(one));
  }
  return steps;
}

}  // namespace qorhost::postgres
