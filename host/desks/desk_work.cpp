#include "host/desks/desk_work.h"

#include <utility>

#include "host/store/store_error.h"

namespace qorhost {

namespace {

void Fail(Outcome& outcome, const std::exception& failure) {
  outcome.ending = Ending::kFailed;
  outcome.failures.emplace_back(failure.what());
}

/// Stores what was done, or undoes everything; the outcome tells what is stored.
void Finish(UnitOfWork& work, WorkGuard& guard, Outcome& outcome) {
  if (work.voided() == VoidReason::kCancelled) {
    outcome.ending = Ending::kCancelled;
  }
  if (!outcome.done()) {
    guard.Undo();
    return;
  }
  try {
    guard.Commit();
  } catch (const StoreError& failure) {
    Fail(outcome, failure);
  }
}

Outcome Stale(DeskSession& session, const ShownState& shown) {
  Outcome outcome;
  outcome.ending = Ending::kStale;
  outcome.changes = session.sql().work().Since(shown.unitKey(), shown.version());
  return outcome;
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
      guard.Undo();
      return Stale(session, shown);
    }
    operation.startAgain();
    const AnsweredAgain again(session, std::move(answers));
    outcome = operation.run();
    newQuestion = again.newQuestion();
  } catch (const StoreError& failure) {
    Fail(outcome, failure);
  }
  if (newQuestion) {
    guard.Undo();
    return Stale(session, shown);
  }
  Finish(work, guard, outcome);
  return outcome;
}

}  // namespace

void ShownState::Take(std::vector<std::string> selects) {
  // The version before the rows: a change in between shows in the version at least.
  version_ = session_.sql().work().VersionOf(unitKey_);
  selects_ = std::move(selects);
  rows_ = Read();
}

void ShownState::TakeAlso(std::string select) {
  ReadInto(rows_, select);
  selects_.push_back(std::move(select));
}

void ShownState::ReadInto(Rows& rows, const std::string& select) const {
  const QueryResult result = session_.sql().Select(select);
  rows.emplace_back();  // between two statements
  for (const ResultRow row : result.rows()) {
    std::vector<qorcred::Value>& cells = rows.emplace_back();
    for (std::size_t column = 0; column < result.columns.size(); ++column) {
      cells.push_back(row[static_cast<std::int32_t>(column)]);
    }
  }
}

ShownState::Rows ShownState::Read() const {
  Rows rows;
  for (const std::string& select : selects_) {
    ReadInto(rows, select);
  }
  return rows;
}

bool ShownState::IsStillSo() const {
  return Read() == rows_;
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
      Finish(work, guard, outcome);
    }
  }
  if (stale) {
    outcome = RunAgain(session, shown, operation, std::move(outcome.messages));
  }
  if (outcome.done()) {
    shown.TakeOver(work.Committed(shown.unitKey()).value_or(shown.version()));
  }
  notices.Show();
  return outcome;
}

Outcome RunAsWhole(DeskSession& session, WorkOrder order, const std::function<Outcome()>& run) {
  UnitOfWork& work = session.sql().work();
  WorkGuard guard(work, std::move(order));
  Outcome outcome;
  try {
    work.Lock();
    outcome = run();
  } catch (const StoreError& failure) {
    Fail(outcome, failure);
  }
  Finish(work, guard, outcome);
  return outcome;
}

}  // namespace qorhost
