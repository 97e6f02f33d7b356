#include "host/desks/unit_merge.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <unordered_set>
#include <utility>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "frame/schema.h"
#include "frame/text.h"
#include "host/components/application_object.h"
#include "host/desks/merge_checks.h"
#include "host/desks/tenant_name.h"
#include "host/desks/unit_settings.h"
#include "host/desks/words.h"
#include "host/store/rows.h"
#include "host/store/transaction.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

namespace {

using qorcred::TableView;

// Columns of the array that the controller fetches.
constexpr std::int32_t kFetchedRid = 1;
constexpr std::int32_t kFetchedNumber = 2;

constexpr std::int32_t kNewRow = 0;

/// Behind every failure of a step.
constexpr std::string_view kNothingChanged = "; nothing was changed";

std::string RefusalOf(const UnitReading& reading) {
  if (!reading.isUnitFile) {
    return "this is no unit file, so nothing was changed";
  }
  return RefusalOfLines(reading.faults.size());
}

MergeRules RulesFor(const UnitReading& reading, BadLines badLines) {
  const bool hasBadLines = !reading.faults.empty() && badLines == BadLines::kRefused;
  if (!reading.isUnitFile || hasBadLines) {
    throw UnusableReading(reading);
  }
  // A bad line may stand for any stored code, so none counts as gone from the unit then.
  return {.withDisplay = reading.file.firmware != kFirmwareWithoutDisplay,
          .withDeletions = reading.faults.empty()};
}

/// Lines would be written that the screen refuses.
struct RefusedLines {};

/// Codes would be deleted that nobody has agreed to lose.
struct UnagreedLosses {};

bool IsChangeOfRow(const ProgramStep& step) {
  return step.kind == step::kProgramDirectoryCode || step.kind == step::kChangeDirectoryCode;
}

}  // namespace

UnusableReading::UnusableReading(const UnitReading& reading)
    : RefusedError(RefusalOf(reading)), isUnitFile_(reading.isUnitFile) {}

std::string RefusalOfLines(std::size_t count) {
  return Counted(count, "bad line", "bad lines") + ", so nothing was changed: mend the file";
}

UnitMerge::UnitMerge(DeskSession& session, std::int32_t unitKey, const UnitReading& reading,
                     BadLines badLines, Deletions deletions)
    : session_(session),
      unitKey_(unitKey),
      reading_(reading),
      unit_(reading.file),
      badLines_(badLines),
      deletions_(deletions),
      rules_(RulesFor(reading, badLines)),
      connectionScreen_(MakeConnectionScreen(unit_.firmware)),
      controller_("clsDirCode", session.host(), session.tracer()) {
  controller_.Set("mfrmConnectionScreen", session.Visible(connectionScreen_));
}

UnitMerge::~UnitMerge() {
  controller_.Set("mfrmConnectionScreen", qorcred::ObjectRef());
}

const MergePlan& UnitMerge::Plan() {
  ConnectionTransaction transaction(session_.connection());
  const Undoable asOneLook(transaction);
  Compare();
  RequireRoom();
  return plan_;
}

void UnitMerge::Compare() {
  ReadStored();
  plan_ = PlanMerge(unit_.codes, stored_, rules_);
  LeaveOutRefused();
}

/// What is stored already stays, whatever the screen says of it: only what would be written counts.
void UnitMerge::LeaveOutRefused() {
  const ScheduleIds schedules = OfferedSchedules(session_, unitKey_);
  std::unordered_set<std::size_t> refused;
  std::vector<LineFault> faults;
  for (const MergeStep& step : plan_.steps) {
    if (step.action == MergeAction::kDelete) {
      continue;
    }
    std::string fault = FaultOnScreen(unit_.codes[step.unitCode], schedules);
    if (!fault.empty()) {
      refused.insert(step.unitCode);
      faults.push_back({reading_.LineOf(step.unitCode), std::move(fault)});
    }
  }
  if (refused.empty()) {
    return;
  }
  MergeRules rules = rules_;
  rules.withDeletions = false;  // as with any bad line
  plan_ = PlanMerge(unit_.codes, stored_, rules);
  std::erase_if(plan_.steps,
                [&](const MergeStep& step) { return refused.contains(step.unitCode); });
  std::sort(faults.begin(), faults.end(),
            [](const LineFault& one, const LineFault& other) { return one.line < other.line; });
  plan_.faults = std::move(faults);
}

void UnitMerge::ReadStored() {
  stored_.clear();
  placeOf_.clear();
  // The array does not say where the codes of now end: only their number does.
  const std::int32_t current = qorcred::RoundToLong(
      qorcred::NumericValue(session_.sql().Scalar(SelectOfCodes("COUNT(*)", unitKey_))));
  qorcred::ObjectRef fetched;
  const OperationRecord fetching(session_);
  controller_.Run<&qorcred::clsDirCode::pbFetchDirForMerge>(session_.connection(), unitKey_,
                                                            fetched);
  fetching.RequireNoFailure("read the stored directory codes", kNothingChanged);

  const TableView table(fetched);
  const std::int32_t first = table.LowerRow();
  stored_.resize(static_cast<std::size_t>(current));
  for (std::size_t place = 0; place < stored_.size(); ++place) {
    const std::int32_t row = first + static_cast<std::int32_t>(place);
    stored_[place].rid = qorcred::ToLong(table.Cell(row, kFetchedRid));
    stored_[place].number = qorcred::NumericValue(table.Cell(row, kFetchedNumber));
    placeOf_.emplace(stored_[place].rid, place);
  }
  // Without a code of now the array still begins with a row, which is empty.
  AddPrevious(table, first + std::max(current, 1));
  ReadDetails();
  ReadTenants();
}

StoredCode* UnitMerge::FindStored(std::int32_t rid) {
  const auto found = placeOf_.find(rid);
  return found == placeOf_.end() ? nullptr : &stored_[found->second];
}

void UnitMerge::AddPrevious(const TableView& fetched, std::int32_t firstPrevious) {
  for (const std::int32_t row : RowNumbers(firstPrevious, fetched.UpperRow())) {
    StoredCode* code = FindStored(qorcred::ToLong(fetched.Cell(row, kFetchedRid)));
    const double previous = qorcred::NumericValue(fetched.Cell(row, kFetchedNumber));
    if (code != nullptr && previous != code->number) {
      code->previous = previous;
    }
  }
}

void UnitMerge::ReadDetails() {
  const QueryResult rows =
      session_.sql().Select(SelectOfCodes(fmt::format("RID,MODIFIED,{}", kUnitColumns), unitKey_));
  const TableView table{qorcred::ObjectRef(rows.table)};
  for (const ResultRow row : rows.rows()) {
    StoredCode* code = FindStored(qorcred::ToLong(row[0]));
    if (code == nullptr) {
      continue;
    }
    code->state = qorcred::RoundToInteger(qorcred::NumericValue(row[1]));
    RowReading reading = CodeFromRow(table, row.number(), 2);
    code->code = std::move(reading.code);
    code->obstacle = std::move(reading.obstacle);
  }
}

void UnitMerge::ReadTenants() {
  const QueryResult rows = session_.sql().Select(fmt::format(
      "SELECT DIRECTORYCODE, {} FROM Tenants WHERE UnitKey={} AND DIRECTORYCODE <> NULL "
      "ORDER BY TenantID",
      kTenantName, unitKey_));
  for (const ResultRow row : rows.rows()) {
    StoredCode* code = FindStored(qorcred::ToLong(row[0]));
    if (code != nullptr) {
      const std::string name = qorcred::TextOrEmpty(row[1]);
      code->tenants.emplace_back(qorcred::Trim(name));
    }
  }
}

MergeReport UnitMerge::Apply(const Progress& progress, const LostCodes& agreed) {
  MergeReport report;
  try {
    UnitOfWork& work = session_.sql().work();
    WorkGuard guard(work, {{unitKey_}, "merge with the unit's directory codes", {}});
    work.Lock();
    report.aftermath = DoAll(progress, agreed);
    guard.Commit();
    report.returned = true;
    report.inserted = plan_.Count(MergeAction::kInsert);
    report.updated = plan_.Count(MergeAction::kUpdate);
    report.deleted = plan_.Count(MergeAction::kDelete);
    report.unchanged = plan_.unchanged;
    report.kept = plan_.kept;
  } catch (const RefusedLines&) {
    report.ending = Ending::kRefused;
    report.failures.push_back(RefusalOfLines(plan_.faults.size()));
  } catch (const UnagreedLosses&) {
    report.ending = Ending::kRefused;
    report.losses = {stored_.size(), CodesToLose()};
  } catch (const RefusedError& refusal) {
    report.ending = Ending::kRefused;
    report.failures.emplace_back(refusal.what());
  } catch (const CancelledError&) {
    report.ending = Ending::kCancelled;
  } catch (const std::exception& failure) {
    // A step that failed, or a store that gave up at the beginning or the end of the transaction:
    // either way nothing of the merge is kept.
    report.ending = Ending::kFailed;
    report.failures.emplace_back(failure.what());
  }
  report.faults = plan_.faults;
  return report;
}

MergeAftermath UnitMerge::DoAll(const Progress& progress, const LostCodes& agreed) {
  // The library finds the tenants of a deleted code by the number of rows that went, which is 1:
  // it would take the row 1 from its tenants at every deletion. They are out of its sight
  // meanwhile.
  constexpr std::int32_t kTakenByLibrary = 1;
  constexpr std::int32_t kOutOfSight = std::numeric_limits<std::int32_t>::min();

  ConnectionTransaction transaction(session_.connection());
  Undoable whole(transaction);
  Compare();
  if (!plan_.faults.empty() && badLines_ == BadLines::kRefused) {
    throw RefusedLines();
  }
  RequireRoom();
  RequireAgreement(agreed);
  std::int64_t doneSteps = 0;
  const auto tell = [&] {
    if (progress && !progress(doneSteps, static_cast<std::int64_t>(plan_.steps.size()))) {
      throw CancelledError();
    }
  };
  tell();
  MergeAftermath aftermath;
  const bool deletes = plan_.Count(MergeAction::kDelete) > 0;
  if (deletes) {
    aftermath.tenantsReleased = ReleaseTenants();
    MoveTenants(kTakenByLibrary, kOutOfSight);
  }
  for (const MergeStep& step : plan_.steps) {
    Do(step);
    ++doneSteps;
    tell();
  }
  if (deletes) {
    MoveTenants(kOutOfSight, kTakenByLibrary);
  }
  if (!plan_.steps.empty()) {
    aftermath.stepsWithdrawn = WithdrawMootSteps();
    MergePlan done = std::move(plan_);
    RequireSame();
    plan_ = std::move(done);
  }
  whole.Keep();
  return aftermath;
}

LostCodes UnitMerge::CodesToLose() const {
  LostCodes lost;
  for (const MergeStep& step : plan_.steps) {
    if (step.action == MergeAction::kDelete) {
      lost.emplace(stored_[step.stored].rid, stored_[step.stored].number);
    }
  }
  return lost;
}

void UnitMerge::RequireAgreement(const LostCodes& agreed) const {
  if (deletions_ == Deletions::kAll) {
    return;
  }
  const LostCodes lost = CodesToLose();
  if (!std::includes(agreed.begin(), agreed.end(), lost.begin(), lost.end())) {
    throw UnagreedLosses();
  }
}

/// The controller's merge takes whatever it is given: more codes than the unit's type allows, and
/// longer ones, would make the unit unusable on its screens.
void UnitMerge::RequireRoom() {
  const std::optional<std::int32_t> digits = CodeDigitsOf(session_, unitKey_);
  for (const MergeStep& step : plan_.steps) {
    if (step.action == MergeAction::kDelete || !digits) {
      continue;
    }
    const std::string number = std::to_string(NumberOf(unit_.codes[step.unitCode]));
    if (number.size() > static_cast<std::size_t>(*digits)) {
      throw RefusedError(fmt::format(
          "the directory code {} is longer than the {} digits of this unit's codes; nothing was "
          "changed",
          number, *digits));
    }
  }
  const auto inserts = static_cast<std::int64_t>(plan_.Count(MergeAction::kInsert));
  const auto deletions = static_cast<std::int64_t>(plan_.Count(MergeAction::kDelete));
  const std::optional<std::int32_t> capacity = CapacityOf(session_, unitKey_);
  if (!capacity || inserts <= deletions) {
    return;
  }
  const UnitStatus now = ReadUnitStatus(session_.sql(), unitKey_);
  const std::int64_t then =
      now.credentials + now.entryCodes + now.directoryCodes + inserts - deletions;
  if (then > *capacity) {
    throw RefusedError(
        fmt::format("the unit would hold {} combined codes, and its type allows {}; nothing was "
                    "changed",
                    then, *capacity));
  }
}

void UnitMerge::Do(const MergeStep& step) {
  const OperationRecord writing(session_);
  bool done = false;
  std::string doing;
  if (step.action == MergeAction::kDelete) {
    const StoredCode& code = stored_[step.stored];
    doing = "delete the directory code " + WithRid(qorcred::NumberText(code.number), code.rid);
    qorcred::StringArray details;
    done = controller_.Run<&qorcred::clsDirCode::pbMergeSave>(session_.connection(), unitKey_,
                                                              "Delete", details, code.rid);
  } else {
    const UnitCode& code = unit_.codes[step.unitCode];
    qorcred::StringArray details = DetailsOf(code);
    doing = fmt::format("write the directory code {}", NumberOf(code));
    if (step.action == MergeAction::kUpdate) {
      done = controller_.Run<&qorcred::clsDirCode::pbMergeSave>(
          session_.connection(), unitKey_, "Update", details, stored_[step.stored].rid);
    } else {
      done = controller_.Run<&qorcred::clsDirCode::pbMergeSave>(session_.connection(), unitKey_,
                                                                "Insert", details, kNewRow);
    }
  }
  // The operation answers True also when its statement failed: only the manager's error tells.
  writing.RequireNoFailure(doing, kNothingChanged);
  if (!done) {
    throw FailureError(fmt::format("cannot {}{}", doing, kNothingChanged));
  }
}

/// Takes the deleted codes from the tenants that hold them: the library leaves those links behind.
std::size_t UnitMerge::ReleaseTenants() {
  const qorcred::Connection connection(session_.connection());
  std::size_t released = 0;
  for (const MergeStep& step : plan_.steps) {
    if (step.action != MergeAction::kDelete || stored_[step.stored].tenants.empty()) {
      continue;
    }
    connection.Execute(
        fmt::format("UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE={} WHERE "
                    "UNITKEY={} AND DIRECTORYCODE={}",
                    qorcred::kLastModifiedLiteral, unitKey_, stored_[step.stored].rid));
    released += stored_[step.stored].tenants.size();
  }
  return released;
}

void UnitMerge::MoveTenants(std::int32_t from, std::int32_t to) {
  qorcred::Connection(session_.connection())
      .Execute(fmt::format("UPDATE TENANTS SET DIRECTORYCODE={} WHERE UNITKEY={} AND "
                           "DIRECTORYCODE={}",
                           to, unitKey_, from));
}

/// Takes back what waits to be sent for rows that are now as the unit has them, or gone.
std::size_t UnitMerge::WithdrawMootSteps() {
  std::unordered_set<std::int32_t> rows;
  std::unordered_set<std::string> inserted;
  for (const MergeStep& step : plan_.steps) {
    if (step.action == MergeAction::kInsert) {
      inserted.insert(std::to_string(NumberOf(unit_.codes[step.unitCode])));
    } else {
      rows.insert(stored_[step.stored].rid);
    }
  }
  std::size_t withdrawn = 0;
  for (const ProgramStep& waiting : session_.sql().steps().List(unitKey_)) {
    const bool moot = IsChangeOfRow(waiting) ? rows.contains(waiting.subjectRid)
                                             : waiting.kind == step::kDeleteDirectoryCode &&
                                                   inserted.contains(waiting.code);
    if (moot && !waiting.sent) {
      withdrawn += static_cast<std::size_t>(
          session_.sql().steps().Withdraw(unitKey_, waiting.kind, waiting.subjectRid));
    }
  }
  return withdrawn;
}

/// The store must hold now what the unit holds: whatever a statement made of a text shows here.
void UnitMerge::RequireSame() {
  Compare();
  if (plan_.steps.empty()) {
    return;
  }
  const MergeStep& step = plan_.steps.front();
  const double number = step.action == MergeAction::kDelete
                            ? stored_[step.stored].number
                            : static_cast<double>(NumberOf(unit_.codes[step.unitCode]));
  throw FailureError(fmt::format(
      "the directory code {} did not come out as the unit has it{}{}; nothing was changed",
      qorcred::NumberText(number), step.what.empty() ? "" : ": ", step.what));
}

}  // namespace qorhost
