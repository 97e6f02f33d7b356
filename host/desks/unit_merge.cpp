#include "host/desks/unit_merge.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "frame/convert.h"
#include "host/desks/merge_aftermath.h"
#include "host/desks/merge_checks.h"
#include "host/desks/operation_record.h"
#include "host/desks/stored_codes.h"
#include "host/desks/words.h"
#include "host/store/transaction.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

namespace {

constexpr std::int32_t kNewRow = 0;

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

/// What was accepted is not what it was when it was shown.
struct OthersWereFaster {};

}  // namespace

UnusableReading::UnusableReading(const UnitReading& reading)
    : RefusedError(RefusalOf(reading)), isUnitFile_(reading.isUnitFile) {}

std::string RefusalOfLines(std::size_t count) {
  return Counted(count, "bad line", "bad lines") + ", so nothing was changed: mend the file";
}

std::string MergeReport::Losses::Question() const {
  if (stored == 1) {
    return "The unit's only directory code will be deleted. Go on?";
  }
  return fmt::format("{} of the unit's {} directory codes will be deleted. Go on?", codes.size(),
                     stored);
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
  controller_.Set("mfrmConnectionScreen", qorcred::ObjectRef(connectionScreen_));
}

UnitMerge::~UnitMerge() {
  controller_.Set("mfrmConnectionScreen", qorcred::ObjectRef());
}

const MergePlan& UnitMerge::Look() {
  planned_ = session_.sql().work().VersionOf(unitKey_);
  ConnectionTransaction transaction(session_.connection());
  const Undoable asOneLook(transaction);
  Compare();
  return plan_;
}

const MergePlan& UnitMerge::Plan() {
  ConnectionTransaction transaction(session_.connection());
  const Undoable asOneLook(transaction);
  Compare();
  RequireRoom(session_, unitKey_, plan_, unit_.codes);
  return plan_;
}

void UnitMerge::Compare() {
  stored_ = ReadStoredCodes(session_, unitKey_, controller_);
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

MergeReport UnitMerge::ApplyAccepted(const std::vector<std::size_t>& steps,
                                     const Progress& progress) {
  choice_.emplace(plan_, stored_, steps);
  MergeReport report = Apply(progress);
  choice_.reset();
  return report;
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
  } catch (const OthersWereFaster&) {
    report.ending = Ending::kStale;
    report.cause = StaleCause::kRowChanged;
    report.changes = session_.sql().audit().After(planned_.entry, unitKey_);
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
    // either way nothing of the merge is kept, unless that cannot be told.
    report.ending = EndingBy(failure);
    report.failures.emplace_back(failure.what());
  }
  report.faults = plan_.faults;
  return report;
}

MergeAftermath UnitMerge::DoAll(const Progress& progress, const LostCodes& agreed) {
  ConnectionTransaction transaction(session_.connection());
  Undoable whole(transaction);
  Compare();
  if (!plan_.faults.empty() && badLines_ == BadLines::kRefused) {
    throw RefusedLines();
  }
  if (choice_ && !choice_->Narrow(plan_, stored_)) {
    throw OthersWereFaster();
  }
  RequireRoom(session_, unitKey_, plan_, unit_.codes);
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
    aftermath.tenantsReleased = ReleaseTenants(session_, unitKey_, plan_, stored_);
    HideTenantsFromDeletions(session_, unitKey_);
  }
  for (const MergeStep& step : plan_.steps) {
    Do(step);
    ++doneSteps;
    tell();
  }
  if (deletes) {
    ShowTenantsAgain(session_, unitKey_);
  }
  if (!plan_.steps.empty()) {
    aftermath.stepsWithdrawn = WithdrawMootSteps(session_, unitKey_, plan_, {unit_.codes, stored_});
    RequireSame();
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
  if (deletions_ == Deletions::kAll || choice_) {
    return;
  }
  const LostCodes lost = CodesToLose();
  if (!std::includes(agreed.begin(), agreed.end(), lost.begin(), lost.end())) {
    throw UnagreedLosses();
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

/// The store must hold now what the unit holds: whatever a statement made of a text shows here.
void UnitMerge::RequireSame() {
  // What was planned is told when it is done, and of the rows as they were.
  MergePlan plan = std::move(plan_);
  std::vector<StoredCode> stored = std::move(stored_);
  Compare();
  const MergeStep* left = plan_.steps.empty() ? nullptr : &plan_.steps.front();
  if (choice_) {
    left = choice_->FirstLeft(plan_, stored_);
  }
  if (left == nullptr) {
    plan_ = std::move(plan);
    stored_ = std::move(stored);
    return;
  }
  const MergeStep& step = *left;
  const double number = step.action == MergeAction::kDelete
                            ? stored_[step.stored].number
                            : static_cast<double>(NumberOf(unit_.codes[step.unitCode]));
  throw FailureError(fmt::format(
      "the directory code {} did not come out as the unit has it{}{}; nothing was changed",
      qorcred::NumberText(number), step.what.empty() ? "" : ": ", step.what));
}

}  // namespace qorhost
