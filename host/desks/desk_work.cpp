#include "host/desks/desk_work.h"

#include <algorithm>
#include <utility>

#include "host/store/store_error.h"

namespace qorhost {

namespace {

void Fail(Outcome& outcome, const std::exception& failure) {
  outcome.ending = Ending::kFailed;
  outcome.failures.emplace_back(failure.what());
}

/// Stores what was done, or undoes everything; the outcome tells what is stored.
void Finish(UnitOfWork& work, WorkGuard& guard, Outcome& outcome,
            const std::function<void()>& beforeCommit = nullptr) {
  if (work.voided() == VoidReason::kCancelled) {
    outcome.ending = Ending::kCancelled;
  }
  if (!outcome.done()) {
    guard.Undo();
    return;
  }
  try {
    if (beforeCommit) {
      beforeCommit();
    }
    guard.Commit();
  } catch (const StoreError& failure) {
    Fail(outcome, failure);
  }
}

/// The same, the desk showing then what is stored.
void FinishShown(DeskSession& session, WorkGuard& guard, ShownState& shown, bool besideOthers,
                 Outcome& outcome) {
  UnitOfWork& work = session.sql().work();
  ShownState::Rows rows;
  const bool changed = work.locked();
  // While nobody else can change them: what the next operation finds changed, others have changed.
  Finish(work, guard, outcome, [&] {
    if (changed) {
      rows = shown.Reread();
    }
  });
  if (outcome.done() && changed) {
    const UnitVersion version = work.Committed(shown.unitKey()).value_or(shown.version());
    shown.TakeOver(version, std::move(rows), besideOthers);
  }
}

/// The second run, beside nobody else.
Outcome RunAgain(DeskSession& session, ShownState& shown, const DeskOperation& operation,
                 std::vector<ShownMessage> answers) {
  UnitOfWork& work = session.sql().work();
  WorkGuard guard(work, {{shown.unitKey()}, operation.what, {}});
  Outcome outcome;
  bool newQuestion = false;
  try {
    work.Lock();
    if (!shown.IsStillSo()) {
      outcome.ending = Ending::kStale;
      return outcome;
    }
    operation.startAgain();
    const AnsweredAgain again(session, std::move(answers));
    outcome = operation.run();
    newQuestion = again.newQuestion();
  } catch (const StoreError& failure) {
    Fail(outcome, failure);
  }
  if (newQuestion) {
    outcome = {};
    outcome.ending = Ending::kStale;
    return outcome;
  }
  constexpr bool kBesideOthers = true;
  FinishShown(session, guard, shown, kBesideOthers, outcome);
  return outcome;
}

}  // namespace

void ShownState::TakeUnit() {
  lists_ = session_.sql().work().VersionOf(unitKey_);
  version_ = lists_;
  selects_.clear();
  rows_.clear();
}

bool ShownState::TakeRows(std::vector<std::string> selects) {
  // The version before the rows: a change in between shows in the version at least.
  version_ = session_.sql().work().VersionOf(unitKey_);
  selects_ = std::move(selects);
  rows_.clear();
  columns_.clear();
  for (const std::string& select : selects_) {
    std::vector<std::string> columns = ReadInto(rows_, select);
    if (columns_.empty()) {
      columns_ = std::move(columns);
    }
  }
  return version_ == lists_ && session_.sql().work().VersionOf(unitKey_) == version_;
}

void ShownState::TakeOver(const UnitVersion& version, Rows rows, bool besideOthers) {
  rows_ = std::move(rows);
  if (!besideOthers && lists_ == version_) {
    lists_ = version;
  }
  version_ = version;
}

void ShownState::TakeAlso(std::string select) {
  (void)ReadInto(rows_, select);
  selects_.push_back(std::move(select));
}

/// Gives the names of the columns.
std::vector<std::string> ShownState::ReadInto(Rows& rows, const std::string& select) const {
  QueryResult result = session_.sql().Select(select);
  rows.emplace_back();  // between two statements
  for (const ResultRow row : result.rows()) {
    std::vector<qorcred::Value>& cells = rows.emplace_back();
    for (std::size_t column = 0; column < result.columns.size(); ++column) {
      cells.push_back(row[static_cast<std::int32_t>(column)]);
    }
  }
  return std::move(result.columns);
}

ShownState::Rows ShownState::Reread() const {
  Rows rows;
  for (const std::string& select : selects_) {
    (void)ReadInto(rows, select);
  }
  return rows;
}

qorcred::Value ShownState::Cell(std::string_view column) const {
  const auto named =
      std::find_if(columns_.begin(), columns_.end(),
                   [column](const std::string& name) { return qorcred::SameMember(name, column); });
  const bool found = rows_.size() > 1 && !rows_[1].empty();  // behind the mark of the statement
  return found && named != columns_.end()
             ? rows_[1][static_cast<std::size_t>(named - columns_.begin())]
             : qorcred::Value(qorcred::Null{});
}

bool ShownState::IsStillSo() const {
  return Reread() == rows_;
}

Outcome RunAsWork(DeskSession& session, ShownState& shown, const DeskOperation& operation) {
  UnitOfWork& work = session.sql().work();
  if (work.open()) {
    return operation.run();
  }
  NoticesAtTheEnd notices(session);
  Outcome outcome;
  bool stale = false;
  {
    WorkGuard guard(work, {{shown.unitKey()}, operation.what, shown.version()});
    outcome = operation.run();
    stale = work.voided() == VoidReason::kStale;
    if (!stale) {
      FinishShown(session, guard, shown, false, outcome);
    }
  }
  if (stale) {
    outcome = RunAgain(session, shown, operation, std::move(outcome.messages));
  }
  if (outcome.ending == Ending::kStale) {
    outcome.changes = work.Since(shown.unitKey(), shown.version());
    operation.startAgain();  // what was entered is kept, whatever the controller made of it
  }
  if (outcome.done() || outcome.ending == Ending::kRefused) {
    notices.Show();  // of anything else they would tell what is not so
  }
  return outcome;
}

Outcome RunOnScreen(DeskSession& session, ShownState& shown, ScreenModel& screen,
                    const DeskOperation& operation) {
  if (session.sql().work().open()) {
    return operation.run();  // without a copy of the screen for each of many
  }
  const ScreenSnapshot before = screen.Snapshot();
  return RunAsWork(session, shown, {operation.what, operation.run, [&] {
                                      screen.Restore(before);
                                      operation.startAgain();
                                    }});
}

}  // namespace qorhost
