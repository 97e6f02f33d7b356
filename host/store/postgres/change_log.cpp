#include "host/store/postgres/change_log.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "frame/row_state.h"
#include "host/dialect/catalog.h"
#include "host/store/audited_tables.h"
#include "host/store/postgres/cells.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using nlohmann::json;
using qorcred::Value;

constexpr std::string_view kSteps = "ProgramSteps";

std::vector<std::string> StoredColumns(const dialect::Table& table) {
  std::vector<std::string> names;
  for (const dialect::Column& column : table.columns) {
    if (!column.generated) {
      names.emplace_back(column.name);
    }
  }
  return names;
}

/// A number of a row; nothing where the cell holds none.
std::optional<double> NumberIn(const std::vector<StoredCell>& row, std::string_view column) {
  const auto found = std::find_if(
      row.begin(), row.end(), [column](const StoredCell& cell) { return cell.column == column; });
  if (found == row.end()) {
    return std::nullopt;
  }
  if (const auto* number = found->value.As<std::int32_t>()) {
    return *number;
  }
  const auto* number = found->value.As<double>();
  return number == nullptr ? std::nullopt : std::optional(*number);
}

/// The identity is a row's first column.
std::int64_t RidOf(const std::vector<StoredCell>& row) {
  return *row.front().value.As<std::int32_t>();
}

}  // namespace

ChangeLog::ChangeLog(Connection& connection) : connection_(connection) {
  for (const dialect::Table& table : dialect::Tables()) {
    if (IsAudited(table.name)) {
      list_.Watch(std::string(table.name), StoredColumns(table));
    }
  }
  connection_.TellChanges([this](std::string_view text) {
    if (!on_) {
      return;
    }
    try {
      Take(text);
    } catch (...) {
      incomplete_ = true;
    }
  });
}

ChangeLog::~ChangeLog() {
  connection_.TellChanges(nullptr);
}

void ChangeLog::Start() {
  list_.Start();
  counts_.clear();
  incomplete_ = false;
  on_ = true;
}

void ChangeLog::Stop() noexcept {
  on_ = false;
  counts_.clear();
}

void ChangeLog::NoteHere(Place& place) const {
  list_.NoteHere(place.list);
  place.counts = counts_;
}

void ChangeLog::GoBackTo(const Place& place) {
  list_.GoBackTo(place.list);
  counts_ = place.counts;
}

void ChangeLog::RequireComplete() const {
  if (incomplete_) {
    throw StoreError("The changes could not be written down for the audit: nothing was stored",
                     StoreFault::kNoMemory);
  }
}

void ChangeLog::Follow(std::int32_t unitKey, const UnitCounts& now) {
  counts_.try_emplace(unitKey, now);
}

const UnitCounts* ChangeLog::CountsOf(std::int32_t unitKey) const {
  const auto found = counts_.find(unitKey);
  return found == counts_.end() ? nullptr : &found->second;
}

void ChangeLog::Take(std::string_view text) {
  const json told = json::parse(text);
  const auto name = told.at("table").get<std::string>();
  const dialect::Table* const known = dialect::FindTable(name);
  if (known == nullptr) {
    return;
  }
  list_.Touch();
  std::vector<StoredCell> before;
  std::vector<StoredCell> after;
  if (told.contains("before")) {
    before = CellsOf(*known, told["before"]);
    Count(name, before, -1);
  }
  if (told.contains("after")) {
    after = CellsOf(*known, told["after"]);
    Count(name, after, 1);
  }
  ChangeList::Watched* const table = list_.Find(name);
  const std::int64_t rid = RidOf(after.empty() ? before : after);
  if (table == nullptr) {
    if (name == kSteps && (before.empty() || after.empty())) {
      list_.CountStep(before.empty(), rid);
    }
  } else if (before.empty()) {
    if (!list_.JoinsRun(*table, rid)) {
      list_.AddInserted(*table, rid, std::move(after));
    }
  } else if (after.empty()) {
    list_.AddDeleted(*table, rid, std::move(before));
  } else {
    std::vector<StoredCell> former;
    std::vector<StoredCell> present;
    for (std::size_t at = 0; at < before.size(); ++at) {
      if (before[at].value != after[at].value) {
        former.push_back(std::move(before[at]));
        present.push_back(std::move(after[at]));
      }
    }
    list_.AddUpdated(*table, rid, std::move(former), std::move(present));
  }
}

/// The rows that UnitCounts counts, as the register counts them all at once.
void ChangeLog::Count(std::string_view table, const std::vector<StoredCell>& row, int number) {
  if (counts_.empty()) {
    return;
  }
  const bool isCode = table == "DirectoryCode";
  const std::optional<double> unit = NumberIn(row, isCode ? "UNITKEY" : "UnitKey");
  const auto followed = unit ? counts_.find(static_cast<std::int32_t>(*unit)) : counts_.end();
  if (followed == counts_.end()) {
    return;
  }
  UnitCounts& counts = followed->second;
  if (table == "CredentialBank") {
    counts.credentials += number;
  } else if (isCode && NumberIn(row, "DIRECTORYCODE").value_or(-1) >= 0 &&
             NumberIn(row, "MODIFIED") != qorcred::row_state::kDeleted) {
    counts.directoryCodes += number;
  } else if (table == kSteps && NumberIn(row, "Sent") == 0) {
    counts.pendingSteps += number;
  }
}

}  // namespace qorhost::postgres
