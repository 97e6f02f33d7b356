#include "host/store/postgres/change_log.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "frame/row_state.h"
#include "host/dialect/catalog.h"
#include "host/store/audited_tables.h"
#include "host/store/postgres/cells.h"

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
std::optional<double> NumberIn(const json& row, const char* column) {
  const json& cell = row.at(column);
  return cell.is_number() ? std::optional(cell.get<double>()) : std::nullopt;
}

/// The columns of a row that are others in another one.
json Differing(const json& row, const json& other) {
  json differing = row;
  for (const auto& [column, cell] : row.items()) {
    if (cell == other.at(column)) {
      differing.erase(column);
    }
  }
  return differing;
}

/// The cells of the stored columns that a row has, in the catalog's order.
std::vector<StoredCell> CellsOf(const dialect::Table& table, const json& row, RowState state) {
  std::vector<StoredCell> cells;
  for (const dialect::Column& column : table.columns) {
    const std::string name(column.name);
    if (!column.generated && row.contains(name)) {
      cells.push_back({name, ToldCell(column, row.at(name), state)});
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
  connection_.TellChanges([this](std::string_view text) {
    if (!on()) {
      return;
    }
    try {
      Take(text);
    } catch (...) {
      MissOne();
    }
  });
}

ChangeLog::~ChangeLog() {
  connection_.TellChanges(nullptr);
}

void ChangeLog::Take(std::string_view text) {
  const json told = json::parse(text);
  const auto name = told.at("table").get<std::string>();
  const dialect::Table* const known = dialect::FindTable(name);
  if (known == nullptr) {
    return;
  }
  const bool wasThere = told.contains("before");
  const bool isThere = told.contains("after");
  const auto rid = told[isThere ? "after" : "before"].at("RID").get<std::int64_t>();
  const std::int64_t last = told.contains("last") ? told["last"].get<std::int64_t>() : rid;
  const auto rows = static_cast<int>(last - rid + 1);
  for (int row = 0; row < rows; ++row) {
    list().Touch();
  }
  if (wasThere) {
    Count(name, told["before"], -1);
  }
  if (isThere) {
    Count(name, told["after"], rows);
  }
  ChangeList::Watched* const table = list().Find(name);
  if (table == nullptr) {
    for (std::int64_t step = rid; name == kSteps && wasThere != isThere && step <= last; ++step) {
      list().CountStep(isThere, step);
    }
  } else if (!wasThere) {
    for (std::int64_t row = rid; row <= last; ++row) {
      if (!list().JoinsRun(*table, row)) {
        list().AddInserted(*table, row, CellsOf(*known, told["after"], RowState::kAfter));
      }
    }
  } else if (!isThere) {
    list().AddDeleted(*table, rid, CellsOf(*known, told["before"], RowState::kBefore));
  } else {
    const json& before = told["before"];
    const json& after = told["after"];
    list().AddUpdated(*table, rid, CellsOf(*known, Differing(before, after), RowState::kBefore),
                      CellsOf(*known, Differing(after, before), RowState::kAfter));
  }
}

/// The rows that UnitCounts counts, as the register counts them all at once.
void ChangeLog::Count(std::string_view table, const nlohmann::json& row, int number) {
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
