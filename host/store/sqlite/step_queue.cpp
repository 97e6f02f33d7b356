#include "host/store/sqlite/step_queue.h"

#include "frame/convert.h"
#include "host/store/row_runs.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

void StepQueue::Queue(std::int32_t unitKey, std::string_view kind, std::int32_t subjectRid,
                      std::string_view code) {
  session_.Add(FormOfStep(),
               ValuesOfStep(unitKey, kind, subjectRid, code, session_.timeStamp().Now()));
}

void StepQueue::QueueAll(std::int32_t unitKey, std::string_view kind,
                         std::span<const std::int32_t> subjectRids) {
  session_.Writing([&] {
    ForEachRun(subjectRids, [&](std::int32_t first, std::int32_t last) {
      const StatementUse insert(session_.Own(
          "WITH RECURSIVE Subjects (RID) AS (SELECT ?3 UNION ALL SELECT RID+1 FROM Subjects WHERE "
          "RID<?4) INSERT INTO ProgramSteps (UnitKey, Kind, SubjectRID, QueuedAt, Sent) SELECT ?1, "
          "?2, RID, ?5, 0 FROM Subjects"));
      insert->BindNumber(1, unitKey);
      insert->BindText(2, kind);
      insert->BindNumber(3, first);
      insert->BindNumber(4, last);
      insert->BindText(5, session_.timeStamp().Now());
      insert->Step();
    });
  });
}

void StepQueue::WithdrawAll(std::int32_t unitKey, std::string_view kind,
                            std::span<const std::int32_t> subjectRids) {
  session_.Writing([&] {
    ForEachRun(subjectRids, [&](std::int32_t first, std::int32_t last) {
      const StatementUse withdraw(
          session_.Own("DELETE FROM ProgramSteps WHERE UnitKey=?1 AND SubjectRID BETWEEN ?2 AND ?3 "
                       "AND Kind=?4 AND Sent=0"));
      withdraw->BindNumber(1, unitKey);
      withdraw->BindNumber(2, first);
      withdraw->BindNumber(3, last);
      withdraw->BindText(4, kind);
      withdraw->Step();
    });
  });
}

std::int64_t StepQueue::Withdraw(std::int32_t unitKey, std::string_view kind,
                                 std::int32_t subjectRid) {
  return session_.Writing([&] {
    const StatementUse withdraw(
        session_.Own("DELETE FROM ProgramSteps WHERE UnitKey=?1 AND SubjectRID=?2 AND Kind=?3 AND "
                     "Sent=0"));
    withdraw->BindNumber(1, unitKey);
    withdraw->BindNumber(2, subjectRid);
    withdraw->BindText(3, kind);
    withdraw->Step();
    return session_.ChangedRows();
  });
}

bool StepQueue::IsDeletionPending(std::int32_t unitKey, std::string_view code) {
  const StatementUse find(
      session_.Own("SELECT 1 FROM ProgramSteps WHERE UnitKey=?1 AND Kind=?2 AND Code=?3 AND Sent=0 "
                   "LIMIT 1"));
  find->BindNumber(1, unitKey);
  find->BindText(2, step::kDeleteDirectoryCode);
  find->BindText(3, code);
  return find->Step();
}

std::string StepQueue::CodeAtUnit(std::int32_t unitKey, std::int32_t rid) {
  const StatementUse find(
      session_.Own("SELECT coalesce(OLDDIRECTORYCODE, DIRECTORYCODE) FROM DirectoryCode "
                   "WHERE RID=?2 AND UNITKEY=?1"));
  find->BindNumber(1, unitKey);
  find->BindNumber(2, rid);
  return find->Step() ? qorcred::TextOrEmpty(ReadCell(*find, 0, CellKind::kPlain)) : std::string();
}

std::vector<ProgramStep> StepQueue::List(std::optional<std::int32_t> unitKey) {
  const StatementUse list(
      session_.Own("SELECT RID, UnitKey, Kind, SubjectRID, Code, QueuedAt, Sent FROM ProgramSteps "
                   "WHERE ?1 IS NULL OR UnitKey=?1 ORDER BY RID"));
  if (unitKey.has_value()) {
    list->BindNumber(1, *unitKey);
  }
  std::vector<ProgramStep> steps;
  while (list->Step()) {
    ProgramStep one;
    one.rid = static_cast<std::int32_t>(list->Number(0));
    one.unitKey = static_cast<std::int32_t>(list->Number(1));
    one.kind = list->Text(2);
    one.subjectRid = static_cast<std::int32_t>(list->Number(3));
    one.code = list->Text(4);
    one.queuedAt = ReadCell(*list, 5, CellKind::kDate);
    one.sent = list->Number(6) != 0;
    steps.push_back(std::move(one));
  }
  return steps;
}

}  // namespace qorhost::sqlite
