#include "host/store/postgres/change_log.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "frame/row_state.h"
#include "host/dialect/catalog.h"
#include "host/store/audited_tables.h"
#include "host/store/postgres/cells.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using nlohmann::json;

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
std::optional<double> NumberIn(const ToldRow& row, std::string_view column) {
  const std::string_view cell = row.At(column);
  double number = 0;
  const auto read = std::from_chars(cell.data(), cell.data() + cell.size(), number);
  return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

/// The cells of the stored columns that a row has, in the catalog's order; beside another row those
/// alone that are others in it.
std::vector<StoredCell> CellsOf(const dialect::Table& table, const ToldRow& row, RowState state,
                                const ToldRow& other = {}) {
  std::vector<StoredCell> cells;
  for (const dialect::Column& column : table.columns) {
    const std::string_view cell = column.generated ? std::string_view() : row.At(column.name);
    if (!cell.empty() && cell != other.At(column.name)) {
      cells.push_back({std::string(column.name), ToldCell(column, json::parse(cell), state)});
    }
  }
  return cells;
}

}  // namespace

ChangeLog::ChangeLog(Connection& connection) : connection_(connection) {
  for (const dialect::Table& table : dialect::Tables()) {
    if (IsAudited(table.name)) {
      list().Watch(std::string(table.name), StoredColumns(table));
    }
  }
  connection_.TellChanges([this](std::string_view text) { Hear(text); },
                          [this] { EndStatement(); });
}

ChangeLog::~ChangeLog() {
  connection_.TellChanges(nullptr, nullptr);
}

void ChangeLog::Start() {
  statement_.reset();
  qorhost::ChangeLog::Start();
}

void ChangeLog::Hear(std::string_view text) {
  if (!on()) {
    return;
  }
  try {
    const Told told(text);
    if (!statement_) {
      statement_ = Statement{list().changes().size(), told.rid(), true};
    }
    statement_->isInOrder = statement_->isInOrder && told.rid() >= statement_->latestRid;
    statement_->latestRid = told.rid();
    Take(told);
  } catch (const std::bad_alloc&) {
    MissOne(Missed::kNoMemory);
  } catch (...) {
    MissOne(Missed::kNotUnderstood);
  }
}

/// The rows of a statement stand in the order of their identities, in whichever the server met
/// them.
void ChangeLog::EndStatement() {
  if (!statement_) {
    return;
  }
  try {
    if (!statement_->isInOrder) {
      list().OrderFrom(statement_->first);
    }
  } catch (...) {
    MissOne(Missed::kNoMemory);
  }
  statement_.reset();
}

void ChangeLog::Take(const Told& told) {
  const std::string_view name = told.table();
  const dialect::Table* const known = dialect::FindTable(name);
  if (known == nullptr) {
    throw StoreError(fmt::format("The store has no table '{}'", name));
  }
  const ToldRow& before = told.before();
  const ToldRow& after = told.after();
  const bool wasThere = !before.empty();
  const bool isThere = !after.empty();
  const std::int64_t rid = told.rid();
  const std::int64_t last = told.last();
  const auto rows = static_cast<int>(last - rid + 1);
  for (int row = 0; row < rows; ++row) {
    list().Touch();
  }
  if (wasThere) {
    Count(name, before, -1);
  }
  if (isThere) {
    Count(name, after, rows);
  }
  ChangeList::Watched* const table = list().Find(name);
  if (table == nullptr) {
    for (std::int64_t step = rid; name == kSteps && wasThere != isThere && step <= last; ++step) {
      list().CountStep(isThere, step);
    }
  } else if (!wasThere) {
    for (std::int64_t row = rid; row <= last; ++row) {
      if (!list().JoinsRun(*table, row)) {
        list().AddInserted(*table, row, CellsOf(*known, after, RowState::kAfter));
      }
    }
  } else if (!isThere) {
    list().AddDeleted(*table, rid, CellsOf(*known, before, RowState::kBefore));
  } else {
    list().AddUpdated(*table, rid, CellsOf(*known, before, RowState::kBefore, after),
                      CellsOf(*known, after, RowState::kAfter, before));
  }
}

/// The rows that UnitCounts counts, as the register counts them all at once.
void ChangeLog::Count(std::string_view table, const ToldRow& row, int number) {
  if (units().empty()) {
    return;
  }
  if (table == "Units" || table == "UnitSettings") {
    units().ForgetFacts();
    return;
  }
  const bool isCode = table == "DirectoryCode";
  std::int64_t UnitCounts::*counted = nullptr;
  if (table == "CredentialBank") {
    counted = &UnitCounts::credentials;
  } else if (isCode && NumberIn(row, "DIRECTORYCODE").value_or(-1) >= 0 &&
             NumberIn(row, "MODIFIED") != qorcred::row_state::kDeleted) {
    counted = &UnitCounts::directoryCodes;
  } else if (table == kSteps && NumberIn(row, "Sent") == 0) {
    counted = &UnitCounts::pendingSteps;
  }
  const std::optional<double> unit =
      counted == nullptr ? std::nullopt : NumberIn(row, isCode ? "UNITKEY" : "UnitKey");
  if (unit) {
    units().Add(static_cast<std::int32_t>(*unit), counted, number);
  }
}

}  // namespace qorhost::postgres
