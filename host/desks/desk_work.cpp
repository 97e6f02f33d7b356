#include "host/desks/desk_work.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/message_rules.h"
#include "host/desks/seen_row.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

void Fail(Outcome& outcome, const std::exception& failure) {
  outcome.ending = EndingBy(failure);
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
void FinishShown(DeskSession& session, WorkGuard& guard, ShownState& shown,
                 const DeskOperation& operation, bool besideOthers, Outcome& outcome) {
  UnitOfWork& work = session.sql().work();
  ShownState::Rows rows;
  const bool changed = work.locked();
  const bool shows = operation.keepsShowing || outcome.unchanged;
  // While nobody else can change them: what the next operation finds changed, others have changed.
  Finish(work, guard, outcome, [&] {
    if (changed && shows) {
      rows = shown.Reread();
    }
  });
  if (outcome.done() && changed) {
    if (!shows) {
      shown.Forget();
    }
    const UnitVersion version = work.Committed(shown.unitKey()).value_or(shown.version());
    shown.TakeOver(version, std::move(rows), besideOthers);
  }
}

StaleCause CauseOf(ShownAs as, bool deleted) {
  switch (as) {
    case ShownAs::kRow:
      return deleted ? StaleCause::kRowDeleted : StaleCause::kRowChanged;
    case ShownAs::kHolder:
      return StaleCause::kHolderChanged;
    case ShownAs::kTaker:
      break;
  }
  return StaleCause::kTakerChanged;
}

std::optional<std::size_t> ColumnOf(const std::vector<std::string>& columns,
                                    std::string_view name) {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [name](const std::string& column) {
        return qorcred::CompareIgnoringCase(column, name) == 0;
      });
  return found == columns.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - columns.begin()));
}

/// Of rows that have one.
std::vector<std::int32_t> RidsOf(const ShownState::ReadRows& rows) {
  std::vector<std::int32_t> rids;
  if (const auto rid = ColumnOf(rows.columns, "RID")) {
    for (const ResultRow row : rows.rows()) {
      rids.push_back(qorcred::ToLong(row[static_cast<std::int32_t>(*rid)]));
    }
  }
  return rids;
}

/// Whether the same rows hold the same, in every column but one, if one is left out.
bool HoldTheSame(const ShownState::ReadRows& one, const ShownState::ReadRows& other,
                 std::optional<std::size_t> leftOut = std::nullopt) {
  if (one.columns != other.columns || one.rowCount != other.rowCount) {
    return false;
  }
  for (const ResultRow row : one.rows()) {
    for (std::size_t column = 0; column < one.columns.size(); ++column) {
      const auto at = static_cast<std::int32_t>(column);
      if (column != leftOut && row[at] != other.table->At(row.number(), at)) {
        return false;
      }
    }
  }
  return true;
}

/// Whether nothing but the date of their last change is another one.
bool DifferInDateOnly(const ShownState::ReadRows& now, const ShownState::ReadRows& then) {
  const auto date = ColumnOf(now.columns, "LASTMODIFIEDDATE");
  return date && HoldTheSame(now, then, date);
}

Outcome StaleBy(const ShownState& shown, const ShownState::Difference& difference) {
  Outcome outcome;
  outcome.ending = Ending::kStale;
  outcome.cause = difference.cause;
  outcome.changes = shown.ChangesBehind(difference);
  return outcome;
}

/// Where the store was replaced, what the audit of the old one says is nobody's change.
Outcome StaleByReplacement() {
  Outcome outcome;
  outcome.ending = Ending::kStale;
  outcome.cause = StaleCause::kStoreReplaced;
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
    if (const auto difference = shown.WhatDiffers()) {
      return StaleBy(shown, *difference);
    }
    operation.startAgain();
    const AnsweredAgain again(session, std::move(answers));
    outcome = operation.run();
    newQuestion = again.newQuestion();
  } catch (const StoreError& failure) {
    Fail(outcome, failure);
  }
  if (newQuestion) {
    return StaleBy(shown, ShownState::Difference{StaleCause::kNewQuestion, {}, {}});
  }
  constexpr bool kBesideOthers = true;
  FinishShown(session, guard, shown, operation, kBesideOthers, outcome);
  return outcome;
}

}  // namespace

void ShownState::TakeUnit() {
  lists_ = session_.sql().work().VersionOf(unitKey_);
  version_ = lists_;
  selects_.clear();
  rows_.clear();
}

bool ShownState::TakeRows(std::vector<ShownSelect> selects) {
  // The version before the rows: a change in between shows in the version at least.
  version_ = session_.sql().work().VersionOf(unitKey_);
  selects_ = std::move(selects);
  rows_ = Reread();
  return version_ == lists_ && session_.sql().work().VersionOf(unitKey_) == version_;
}

void ShownState::TakeOver(const UnitVersion& version, Rows rows, bool besideOthers) {
  rows_ = std::move(rows);
  if (!besideOthers && lists_ == version_) {
    lists_ = version;
  }
  version_ = version;
}

void ShownState::Forget() {
  selects_.clear();
  rows_.clear();
}

void ShownState::TakeAlso(ShownSelect select) {
  rows_.push_back(Read(select));
  selects_.push_back(std::move(select));
}

ShownState::ReadRows ShownState::Read(const ShownSelect& select) const {
  return session_.sql().Select(select.select);
}

ShownState::Rows ShownState::Reread() const {
  Rows rows;
  for (const ShownSelect& select : selects_) {
    rows.push_back(Read(select));
  }
  return rows;
}

qorcred::Value ShownState::Cell(std::string_view column) const {
  if (rows_.empty() || rows_.front().rowCount == 0) {
    return qorcred::Null{};
  }
  const auto named = ColumnOf(rows_.front().columns, column);
  return named ? rows_.front().table->At(0, static_cast<std::int32_t>(*named))
               : qorcred::Value(qorcred::Null{});
}

std::optional<ShownState::Difference> ShownState::WhatDiffers() const {
  std::optional<Difference> first;
  for (std::size_t at = 0; at < selects_.size(); ++at) {
    const ReadRows now = Read(selects_[at]);
    if (HoldTheSame(now, rows_[at])) {
      continue;
    }
    Difference difference{CauseOf(selects_[at].as, now.rowCount < rows_[at].rowCount),
                          selects_[at].table, RidsOf(rows_[at])};
    const std::vector<std::int32_t> rids = RidsOf(now);
    difference.rids.insert(difference.rids.end(), rids.begin(), rids.end());
    if (!DifferInDateOnly(now, rows_[at])) {
      return difference;
    }
    first = first.value_or(difference);  // a change of its holder leaves a date on a row
  }
  return first;
}

std::vector<WorkEntry> ShownState::ChangesBehind(const Difference& difference) const {
  const std::array rows{RowsOfTable{difference.table, difference.rids}};
  return qorhost::ChangesBehind(session_, version_.entry, unitKey_, rows);
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
      FinishShown(session, guard, shown, operation, false, outcome);
    }
  }
  if (stale) {
    outcome = RunAgain(session, shown, operation, std::move(outcome.messages));
  }
  const bool replaced = work.voided() == VoidReason::kReplaced;
  if (replaced) {
    outcome = StaleByReplacement();
  }
  if (outcome.ending == Ending::kStale) {
    if (outcome.changes.empty() && !replaced) {  // found stale by the desk itself
      outcome.changes = session.sql().audit().After(shown.version().entry, shown.unitKey());
    }
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
