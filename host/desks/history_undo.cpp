#include "host/desks/history_undo.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/row_state.h"
#include "frame/siblings.h"
#include "frame/text.h"
#include "host/desks/history.h"
#include "host/desks/own_work.h"
#include "host/desks/store_check.h"
#include "host/store/step_queue.h"

namespace qorhost {

namespace {

constexpr std::string_view kCodes = "DirectoryCode";
constexpr std::string_view kCards = "CredentialBank";
constexpr std::string_view kTenants = "Tenants";
constexpr std::string_view kState = "MODIFIED";
constexpr std::string_view kCodeAtUnit = "OLDDIRECTORYCODE";

/// Why an entry cannot be undone; ends the unit of work.
class CannotUndo : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Whether a column tells what the unit holds, which no undoing changes.
bool IsOfTheUnit(std::string_view table, std::string_view column) {
  return table == kCodes && (column == kState || column == kCodeAtUnit);
}

void LeaveToTheUnit(std::string_view table, std::vector<StoredCell>& cells) {
  std::erase_if(cells, [table](const StoredCell& cell) { return IsOfTheUnit(table, cell.column); });
}

/// The rows of new runs that somebody has changed since, by what the later entries say: of a run
/// only the first row was kept.
class LaterChanges {
 public:
  void Add(const RowChange& change) {
    if (change.kind != RowChangeKind::kUpdated) {
      return;
    }
    for (std::size_t at = 0; at < change.before.size(); ++at) {
      const StoredCell& before = change.before[at];
      if (before.column == "LASTMODIFIEDDATE" || IsOfTheUnit(change.table, before.column)) {
        continue;
      }
      const auto cell =
          cells_.try_emplace({change.table, change.rid, before.column}, Cell{before.value, {}});
      cell.first->second.latest = change.after[at].value;
    }
  }

  /// A row of the run that is not as it was, or nothing.
  [[nodiscard]] std::optional<std::int64_t> RowIn(const RowChange& run) const {
    auto cell = cells_.lower_bound({run.table, run.rid, std::string()});
    for (; cell != cells_.end(); ++cell) {
      const auto& [table, rid, column] = cell->first;
      if (table != run.table || rid > run.lastRid) {
        break;
      }
      if (cell->second.first != cell->second.latest) {
        return rid;
      }
    }
    return std::nullopt;
  }

 private:
  struct Cell {
    qorcred::Value first;
    qorcred::Value latest;
  };
  std::map<std::tuple<std::string, std::int64_t, std::string>, Cell> cells_;
};

/// Undoes one entry inside a unit of work that has taken the right to write.
class EntryUndoing {
 public:
  /// `undone` are those that were undone before in the same unit of work.
  EntryUndoing(DeskSession& session, WorkEntry entry, const std::set<std::int64_t>& undone)
      : session_(session),
        undone_(undone),
        entry_(std::move(entry)),
        changes_(session.sql().audit().RowsOf(entry_.entry)) {}

  /// Returns how many rows are as they were.
  std::size_t Run() {
    RequireRunsUnchanged();
    const std::vector<Finding> before = Findings();
    std::for_each(changes_.rbegin(), changes_.rend(),
                  [this](const RowChange& change) { Undo(change); });
    ProgramTenants();
    RequireNoneBeside(before);
    RequireSomething();
    return rows_;
  }

 private:
  [[nodiscard]] std::vector<Finding> Findings() {
    std::vector<Finding> all;
    for (const UnitName& unit : session_.Units()) {
      if (entry_.unitKey.value_or(unit.key) == unit.key) {
        std::vector<Finding> some = FindingsIn(session_, unit.key);
        std::move(some.begin(), some.end(), std::back_inserter(all));
      }
    }
    return all;
  }

  /// What came later may build on what is undone: a card may be held by now, its number be taken
  /// again, the room for it be full.
  void RequireNoneBeside(const std::vector<Finding>& before) {
    for (const Finding& after : Findings()) {
      if (std::find(before.begin(), before.end(), after) == before.end()) {
        throw CannotUndo(fmt::format("{} cannot be undone: {} then; nothing was changed",
                                     DescriptionOf(entry_), after.what));
      }
    }
  }

  /// Of steps that were marked as sent nothing is given back: what the unit holds is not in the
  /// store.
  void RequireSomething() const {
    if (rows_ == 0 && tenants_.empty() && cards_.empty()) {
      throw CannotUndo(
          fmt::format("{} cannot be undone: it changed only what the unit holds, which stays as "
                      "the unit has it; "
                      "a change of a tenant or a code queues its step again",
                      DescriptionOf(entry_)));
    }
  }

  void RequireRunsUnchanged() {
    const bool hasRun = std::any_of(changes_.begin(), changes_.end(), [](const RowChange& change) {
      return change.lastRid > change.rid;
    });
    if (!hasRun) {
      return;
    }
    AuditLog& audit = session_.sql().audit();
    LaterChanges later;
    for (const WorkEntry& entry : audit.After(entry_.entry, entry_.unitKey)) {
      if (undone_.contains(entry.entry)) {
        continue;
      }
      for (const RowChange& change : audit.RowsOf(entry.entry)) {
        later.Add(change);
      }
    }
    for (const RowChange& change : changes_) {
      if (const auto row = later.RowIn(change)) {
        Refuse(change.table, *row);
      }
    }
  }

  void Undo(const RowChange& done) {
    RowChange change = done;
    if (change.kind != RowChangeKind::kDeleted) {
      LeaveToTheUnit(change.table, change.before);
      LeaveToTheUnit(change.table, change.after);
    }
    if (change.kind == RowChangeKind::kUpdated && change.before.empty()) {
      return;
    }
    if (change.kind == RowChangeKind::kInserted && change.table == kCodes) {
      TakeFromUnit(change);
    }
    if (const auto row = session_.sql().audit().PutBack(change)) {
      Refuse(change.table, *row);
    }
    rows_ += static_cast<std::size_t>(change.lastRid - change.rid + 1);
    if (change.table == kCodes && change.kind != RowChangeKind::kInserted) {
      Program(change);
    }
    NoteTenants(change);
  }

  [[noreturn]] void Refuse(std::string_view table, std::int64_t rid) {
    AuditLog& audit = session_.sql().audit();
    std::string behind;
    for (const WorkEntry& entry : audit.After(entry_.entry, entry_.unitKey)) {
      const std::vector<RowChange> rows = audit.RowsOf(entry.entry);
      if (std::any_of(rows.begin(), rows.end(), [table, rid](const RowChange& change) {
            return change.table == table && change.rid <= rid && rid <= change.lastRid;
          })) {
        behind = DescriptionOf(entry);
      }
    }
    throw CannotUndo(fmt::format(
        "{} cannot be undone: row {} of {} is no more as it left it{}; nothing was changed",
        DescriptionOf(entry_), rid, table, behind.empty() ? std::string() : ", since " + behind));
  }

  [[nodiscard]] std::int32_t UnitOf(const RowChange& change) const {
    for (const auto* cells : {&change.after, &change.before}) {
      for (const StoredCell& cell : *cells) {
        if (qorcred::CompareIgnoringCase(cell.column, "UNITKEY") == 0) {
          return qorcred::ToLong(cell.value);
        }
      }
    }
    return entry_.unitKey ? *entry_.unitKey : UnitOfRow(change.table, change.rid);
  }
  [[nodiscard]] std::int32_t UnitOfRow(std::string_view table, std::int64_t rid) const {
    const qorcred::Value unit =
        session_.sql().Scalar(fmt::format("SELECT UnitKey FROM {} WHERE RID={}", table, rid));
    return qorcred::TextOrEmpty(unit).empty() ? 0 : qorcred::ToLong(unit);
  }

  [[nodiscard]] qorcred::StepSender Sender() {
    return qorcred::StepSender(session_.ownHost().CreateComponent(qorcred::component::kStepSender));
  }

  /// Before new codes go: what the unit has of them it has to forget.
  void TakeFromUnit(const RowChange& run) {
    const qorcred::StepSender sender = Sender();
    std::int32_t unit = UnitOf(run);
    for (std::int64_t row = run.rid; row <= run.lastRid; ++row) {
      auto rid = static_cast<std::int32_t>(row);
      const qorcred::Value state = session_.sql().Scalar(
          fmt::format("SELECT MODIFIED FROM DirectoryCode WHERE RID={}", rid));
      if (qorcred::NumericValue(state) == qorcred::row_state::kNotSent) {
        sender.WithdrawDirCode(session_.connection(), unit, rid);
      } else {
        sender.DeleteDirCode(session_.connection(), unit, rid);
      }
    }
  }

  void Program(const RowChange& change) {
    const auto rid = static_cast<std::int32_t>(change.rid);
    std::int32_t unit = UnitOf(change);
    (void)session_.sql().Change(
        fmt::format("UPDATE DirectoryCode SET MODIFIED={} WHERE RID={} AND MODIFIED={}",
                    qorcred::row_state::kChanged, rid, qorcred::row_state::kInUnit),
        std::nullopt);
    const bool isRenumbered =
        change.kind == RowChangeKind::kUpdated &&
        std::any_of(change.before.begin(), change.before.end(), [](const StoredCell& cell) {
          return qorcred::CompareIgnoringCase(cell.column, "DIRECTORYCODE") == 0;
        });
    if (isRenumbered) {
      Sender().ChangeDirCode(session_.connection(), unit, rid);
    } else {
      Sender().ProgramDirCode(session_.connection(), unit, rid);
    }
  }

  void NoteTenants(const RowChange& change) {
    if (change.table == kTenants) {
      for (std::int64_t rid = change.rid; rid <= change.lastRid; ++rid) {
        tenants_.emplace(UnitOf(change), static_cast<std::int32_t>(rid));
      }
    } else if (change.table == kCards) {
      cards_.push_back({UnitOf(change), change.rid, change.lastRid});
    }
  }

  /// The tenants that were changed, and those who hold a card that was.
  void ProgramTenants() {
    for (const Cards& cards : cards_) {
      for (const std::string_view column : {"CREDENTIALID1", "CREDENTIALID2"}) {
        const QueryResult holders = session_.sql().Select(
            fmt::format("SELECT RID FROM Tenants WHERE UnitKey={} AND {} BETWEEN {} AND {}",
                        cards.unit, column, cards.first, cards.last));
        for (const ResultRow row : holders.rows()) {
          tenants_.emplace(cards.unit, qorcred::ToLong(row[0]));
        }
      }
    }
    StepQueue& steps = session_.sql().steps();
    for (const auto& [unit, rid] : tenants_) {
      steps.QueueOnce(unit, step::kProgramTenant, rid);
    }
  }

  struct Cards {
    std::int32_t unit;
    std::int64_t first;
    std::int64_t last;
  };

  DeskSession& session_;
  const std::set<std::int64_t>& undone_;
  WorkEntry entry_;
  std::vector<RowChange> changes_;
  std::size_t rows_ = 0;
  std::set<std::pair<std::int32_t, std::int32_t>> tenants_;  // unit and row
  std::vector<Cards> cards_;
};

/// That the entries are of, the latest first; none, or several, mean the whole store.
std::vector<std::int32_t> UnitsOf(const std::vector<WorkEntry>& entries) {
  std::set<std::int32_t> units;
  for (const WorkEntry& entry : entries) {
    if (!entry.unitKey) {
      return {};
    }
    units.insert(*entry.unitKey);
  }
  return {units.begin(), units.end()};
}

std::string NameOf(const std::vector<WorkEntry>& entries) {
  if (entries.size() == 1) {
    return fmt::format("undo entry {}: {}", entries.front().entry, entries.front().what);
  }
  std::string numbers;
  for (const WorkEntry& entry : entries) {
    numbers += fmt::format("{}{}", numbers.empty() ? "" : ", ", entry.entry);
  }
  return "undo entries " + numbers;
}

}  // namespace

Undoing UndoEntry(DeskSession& session, std::string_view number, Trial trial) {
  return UndoEntries(session, {std::string(number)}, trial);
}

Undoing UndoEntries(DeskSession& session, const std::vector<std::string>& numbers, Trial trial) {
  std::vector<WorkEntry> entries;
  for (const std::string& number : numbers) {
    WorkEntry entry = EntryOf(session, number);
    if (std::none_of(entries.begin(), entries.end(),
                     [&entry](const WorkEntry& known) { return known.entry == entry.entry; })) {
      entries.push_back(std::move(entry));
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const WorkEntry& one, const WorkEntry& other) { return one.entry > other.entry; });
  OwnWork work(session, UnitsOf(entries), NameOf(entries));
  Undoing undone;
  undone.returned = true;
  undone.written = trial == Trial::kNo;
  std::set<std::int64_t> before;
  try {
    for (const WorkEntry& entry : entries) {
      undone.entries.push_back({entry, EntryUndoing(session, entry, before).Run()});
      before.insert(entry.entry);
    }
  } catch (const CannotUndo& refusal) {
    Undoing refused;
    refused.ending = Ending::kRefused;
    refused.written = false;
    refused.reason = refusal.what();
    return refused;
  }
  work.End(trial);
  return undone;
}

}  // namespace qorhost
