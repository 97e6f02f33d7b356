#include "host/desks/copied_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "host/dialect/canonical_date.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

using qorcred::Value;

constexpr std::string_view kSteps = "ProgramSteps";
constexpr std::string_view kSubject = "SubjectRID";
constexpr int kRowsOfPage = 10'000;

// The subject of a step is a tenant's or a code's row, by the step's kind: see TargetOf().
constexpr std::array kTables{
    CopiedTable{"Units", "UnitKey"},
    CopiedTable{"UNITTYPES", ""},
    CopiedTable{"UnitSettings", "UnitKey"},
    CopiedTable{"UnitCounters", "UnitKey"},
    CopiedTable{"DOORS", "UNITKEY"},
    CopiedTable{"Schedules", "UnitKey"},
    CopiedTable{"TenantGroup", "UnitKey"},
    CopiedTable{"CredentialBank", "UnitKey"},
    CopiedTable{"DirectoryCode", "UNITKEY"},
    CopiedTable{"Tenants",
                "UnitKey",
                {{{"GROUPID", "TenantGroup"},
                  {"CREDENTIALID1", "CredentialBank"},
                  {"CREDENTIALID2", "CredentialBank"},
                  {"DIRECTORYCODE", "DirectoryCode"}}}},
    CopiedTable{"TenantsBackup", "UnitKey", {{{"TenantID", "Tenants"}}}},
    CopiedTable{kSteps, "UnitKey", {{{kSubject, ""}}}},
    CopiedTable{"TenantSelectionFields", ""},
};

Value StoredForm(const Value& value) {
  if (const auto* date = value.As<qorcred::Date>()) return {dialect::CanonicalDate(*date)};
  if (const auto* flag = value.As<bool>()) return {*flag ? -1 : 0};
  return value;
}

std::size_t PlaceOf(const std::vector<std::string_view>& columns, std::string_view column) {
  return static_cast<std::size_t>(std::find(columns.begin(), columns.end(), column) -
                                  columns.begin());
}

/// The table to whose rows a link leads.
std::string_view TargetOf(const LinkColumn& link, const std::vector<std::string_view>& columns,
                          const RowCells& row) {
  if (!link.table.empty()) return link.table;
  const bool isTenant = qorcred::TextOrEmpty(row[PlaceOf(columns, "Kind")]) == step::kProgramTenant;
  return isTenant ? "Tenants" : "DirectoryCode";
}

bool IsNumber(const Value& value) {
  return value.Is(qorcred::ValueType::kLong) || value.Is(qorcred::ValueType::kDouble);
}

bool IsSame(const Value& one, const Value& other) {
  if (IsNumber(one) && IsNumber(other)) {
    return qorcred::NumericValue(one) == qorcred::NumericValue(other);
  }
  const bool isNull = one.Is(qorcred::ValueType::kNull);
  if (isNull || other.Is(qorcred::ValueType::kNull)) {
    return isNull && other.Is(qorcred::ValueType::kNull);
  }
  // A number in a column of texts, which a merge writes time stamps into, is told by its text.
  return qorcred::TextOrEmpty(one) == qorcred::TextOrEmpty(other);
}

[[noreturn]] void RaiseDifference(const CopiedTable& table, const std::string& what) {
  throw StoreError(fmt::format(
      "The copy is not what was copied, and nothing of it was stored: {}, {}", table.name, what));
}

/// The rows of pages one after the other.
class EachRow {
 public:
  explicit EachRow(RowPages pages) : pages_(std::move(pages)) {}

  /// Null behind the last one; valid until the next call.
  const RowCells* Next() {
    if (++at_ >= page_.size()) {
      page_ = pages_.Next();
      at_ = 0;
    }
    return page_.empty() ? nullptr : &page_[at_];
  }

 private:
  RowPages pages_;
  std::vector<RowCells> page_;
  std::size_t at_ = 0;
};

}  // namespace

std::span<const CopiedTable> CopiedTables() {
  return kTables;
}

const dialect::Table& LayoutOf(const CopiedTable& table) {
  return *dialect::FindTable(table.name);
}

std::vector<std::string_view> CopiedColumns(const CopiedTable& table) {
  std::vector<std::string_view> columns;
  for (const dialect::Column& column : LayoutOf(table).columns) {
    if (!column.generated) columns.push_back(column.name);
  }
  return columns;
}

std::int64_t CountRows(SqlSession& session, const CopiedTable& table, const UnitKeys& units) {
  std::string text = fmt::format("SELECT COUNT(*) FROM {}", table.name);
  if (units.size() == 1) text += fmt::format(" WHERE {}={}", table.unit, units.front());
  if (units.size() <= 1) return qorcred::ToLong(session.Scalar(text));
  const std::set<std::int32_t> only(units.begin(), units.end());
  const QueryResult counts = session.Select(
      fmt::format("SELECT {0}, COUNT(*) FROM {1} GROUP BY {0}", table.unit, table.name));
  std::int64_t rows = 0;
  for (const ResultRow row : counts.rows()) {
    const auto* unit = row[0].As<std::int32_t>();
    if (unit != nullptr && only.contains(*unit)) rows += qorcred::ToLong(row[1]);
  }
  return rows;
}

RowPages::RowPages(SqlSession& session, const CopiedTable& table, const UnitKeys& units)
    : session_(&session) {
  const std::vector<std::string_view> columns = CopiedColumns(table);
  text_ = fmt::format("SELECT TOP {} {} FROM {} WHERE ", kRowsOfPage, fmt::join(columns, ", "),
                      table.name);
  if (units.size() == 1) {
    text_ += fmt::format("{}={} AND ", table.unit, units.front());
  } else if (!units.empty()) {
    only_.insert(units.begin(), units.end());
    unitAt_ = PlaceOf(columns, table.unit);
  }
  text_ += "RID>";
}

std::vector<RowCells> RowPages::Next() {
  std::vector<RowCells> rows;
  for (bool goesOn = true; goesOn && rows.empty();) {
    const QueryResult result = session_->Select(fmt::format("{}{} ORDER BY RID", text_, last_));
    goesOn = result.rowCount > 0;
    rows.reserve(result.rowCount);
    const auto columns = static_cast<std::int32_t>(result.columns.size());
    for (const ResultRow row : result.rows()) {
      last_ = qorcred::ToLong(row[0]);
      const auto* unit = row[static_cast<std::int32_t>(unitAt_)].As<std::int32_t>();
      if (!only_.empty() && (unit == nullptr || !only_.contains(*unit))) continue;
      RowCells& cells = rows.emplace_back();
      cells.reserve(result.columns.size());
      for (std::int32_t column = 0; column < columns; ++column) {
        cells.push_back(StoredForm(row[column]));
      }
    }
  }
  return rows;
}

void IdentityMap::Add(std::string_view table, std::int32_t from, std::int32_t to) {
  maps_[table].emplace(from, to);
}

std::optional<std::int32_t> IdentityMap::Find(std::string_view table, std::int32_t from) const {
  const auto map = maps_.find(table);
  if (map == maps_.end()) return std::nullopt;
  const auto found = map->second.find(from);
  return found == map->second.end() ? std::nullopt : std::optional(found->second);
}

RowCells Linked(const CopiedTable& table, RowCells row, const IdentityMap& map,
                std::vector<LostLink>& lost) {
  const std::vector<std::string_view> columns = CopiedColumns(table);
  for (const LinkColumn& link : table.links) {
    if (link.column.empty()) continue;
    Value& cell = row[PlaceOf(columns, link.column)];
    const auto* target = cell.As<std::int32_t>();
    if (target == nullptr || *target <= 0) continue;  // to nothing
    if (const auto found = map.Find(TargetOf(link, columns, row), *target)) {
      cell = *found;
      continue;
    }
    lost.push_back({table.name, qorcred::ToLong(row.front()), link.column, *target});
    cell = link.column == kSubject ? Value(0) : Value(qorcred::Null{});
  }
  return row;
}

void RequireSameRows(RowPages first, RowPages second, const CopiedTable& table,
                     const std::function<RowCells(RowCells)>& mapped) {
  const std::vector<std::string_view> columns = CopiedColumns(table);
  EachRow wanted(std::move(first));
  EachRow found(std::move(second));
  for (;;) {
    const RowCells* row = wanted.Next();
    const RowCells* copy = found.Next();
    if (row == nullptr && copy == nullptr) return;
    if (copy == nullptr) {
      RaiseDifference(table, fmt::format("RID {} is not there", qorcred::ToLong(row->front())));
    }
    if (row == nullptr) {
      RaiseDifference(table, fmt::format("RID {} is one too many", qorcred::ToLong(copy->front())));
    }
    const RowCells expected = mapped(*row);
    for (std::size_t at = 0; at < columns.size(); ++at) {
      if (!IsSame(expected[at], (*copy)[at])) {
        RaiseDifference(
            table, fmt::format("RID {}, {}: '{}' instead of '{}'", qorcred::ToLong(copy->front()),
                               columns[at], qorcred::TextOrEmpty((*copy)[at]),
                               qorcred::TextOrEmpty(expected[at])));
      }
    }
  }
}

}  // namespace qorhost
