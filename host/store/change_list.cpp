#include "host/store/change_list.h"

#include <algorithm>
#include <utility>

namespace qorhost {

void ChangeList::Watch(std::string table, std::vector<std::string> columns) {
  tables_.push_back({std::move(table), std::move(columns), {}});
}

ChangeList::Watched* ChangeList::Find(std::string_view table) {
  if (latest_ < tables_.size() && tables_[latest_].name == table) {
    return &tables_[latest_];
  }
  for (std::size_t at = 0; at < tables_.size(); ++at) {
    if (tables_[at].name == table) {
      latest_ = at;
      return &tables_[at];
    }
  }
  return nullptr;
}

void ChangeList::Start() {
  for (Watched& table : tables_) {
    table.run.reset();
  }
  changes_.clear();
  touched_ = 0;
  steps_ = 0;
  firstStep_ = 0;
}

void ChangeList::NoteHere(Place& place) const {
  place.touched = touched_;
  place.steps = steps_;
  place.changes = changes_.size();
  place.runs.clear();
  for (const Watched& table : tables_) {
    place.runs.push_back({table.run, table.run ? changes_[*table.run].lastRid : 0});
  }
}

void ChangeList::GoBackTo(const Place& place) {
  touched_ = place.touched;
  steps_ = place.steps;
  changes_.resize(std::min(changes_.size(), place.changes));
  for (std::size_t at = 0; at < tables_.size(); ++at) {
    const Place::Run run = at < place.runs.size() ? place.runs[at] : Place::Run{};
    tables_[at].run = run.change;
    if (run.change) {
      changes_[*run.change].lastRid = run.end;
    }
  }
}

void ChangeList::CountStep(bool isNew, std::int64_t rid) noexcept {
  if (isNew) {
    firstStep_ = firstStep_ == 0 ? rid : firstStep_;
    ++steps_;
  } else if (firstStep_ != 0 && rid >= firstStep_) {
    --steps_;  // those of others have lower numbers, for none comes twice
  }
}

bool ChangeList::JoinsRun(const Watched& table, std::int64_t rid) {
  if (!table.run || changes_[*table.run].lastRid + 1 != rid) {
    return false;
  }
  changes_[*table.run].lastRid = rid;
  return true;
}

void ChangeList::AddInserted(Watched& table, std::int64_t rid, std::vector<StoredCell> row) {
  RowChange change{RowChangeKind::kInserted, table.name, rid, rid, {}, {}};
  change.after = std::move(row);
  changes_.push_back(std::move(change));
  table.run = changes_.size() - 1;
}

void ChangeList::AddUpdated(const Watched& table, std::int64_t rid, std::vector<StoredCell> before,
                            std::vector<StoredCell> after) {
  if (before.empty()) {
    return;
  }
  RowChange change{RowChangeKind::kUpdated, table.name, rid, rid, {}, {}};
  change.before = std::move(before);
  change.after = std::move(after);
  changes_.push_back(std::move(change));
}

void ChangeList::AddDeleted(const Watched& table, std::int64_t rid, std::vector<StoredCell> row) {
  RowChange change{RowChangeKind::kDeleted, table.name, rid, rid, {}, {}};
  change.before = std::move(row);
  changes_.push_back(std::move(change));
}

void ChangeList::OrderFrom(std::size_t first) {
  if (first >= changes_.size()) {
    return;
  }
  const auto begin = changes_.begin() + static_cast<std::ptrdiff_t>(first);
  std::vector<std::pair<Watched*, std::int64_t>> moved;  // the tables whose run is among them
  for (Watched& table : tables_) {
    if (table.run && *table.run >= first) {
      moved.emplace_back(&table, changes_[*table.run].rid);
    }
  }
  std::stable_sort(begin, changes_.end(), [](const RowChange& one, const RowChange& other) {
    return one.rid < other.rid;
  });
  for (const auto& [table, rid] : moved) {
    const auto isFirst = [&name = table->name, rid = rid](const RowChange& change) {
      return change.kind == RowChangeKind::kInserted && change.rid == rid && change.table == name;
    };
    const auto run = std::find_if(begin, changes_.end(), isFirst);
    table->run = static_cast<std::size_t>(run - changes_.begin());
  }
}

}  // namespace qorhost
