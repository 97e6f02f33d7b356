#include "host/desks/moving_in/moving_in.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/files/desktop_file/desktop_file.h"
#include "host/store/server_name.h"

namespace qorhost {

namespace {

void RequireNoUnits(SqlSession& session) {
  for (const std::string_view query :
       {"SELECT COUNT(*) FROM Units", "SELECT COUNT(*) FROM UNITTYPES"}) {
    if (qorcred::ToLong(session.Scalar(query)) != 0) {
      throw RefusedError("the store has units or types already: a building comes into a new store");
    }
  }
}

/// A new store has fields for the report, in whose place those of the file come.
void RemoveUsualFields(SqlSession& session) {
  const QueryResult fields = session.Select("SELECT RID FROM TenantSelectionFields");
  for (const ResultRow row : fields.rows()) {
    session.DeleteRow("TenantSelectionFields", qorcred::ToLong(row[0]));
  }
}

/// Where the columns stand that are written: all but those that a store makes. What the file lacks
/// is written as Null, in the place of which some columns would get a value of the store.
std::vector<std::size_t> WrittenPlaces(const StagedTable& table) {
  std::vector<std::size_t> places;
  const dialect::Table& layout = LayoutOf(table.known());
  for (std::size_t place = 0; place < layout.columns.size(); ++place) {
    const dialect::Column& column = layout.columns[place];
    const bool isMadeByStore = column.generated || (column.type == dialect::ColumnType::kIdentity &&
                                                    !table.IsGiven(place));
    if (!isMadeByStore) places.push_back(place);
  }
  return places;
}

/// The rows of a table that are brought in, in the order of their identities where they have some:
/// in that order every engine tells of them in the history.
std::vector<const StagedRow*> RowsToStore(const StagedTable& table) {
  std::vector<const StagedRow*> rows;
  for (const StagedRow& row : table.rows()) {
    if (!row.isRefused) rows.push_back(&row);
  }
  if (const std::size_t rid = table.At("RID"); table.IsGiven(rid)) {
    std::stable_sort(rows.begin(), rows.end(), [rid](const StagedRow* one, const StagedRow* other) {
      return LongIn(one->cells[rid]) < LongIn(other->cells[rid]);
    });
  }
  return rows;
}

class Storing {
 public:
  Storing(SqlSession& session, const MovingPlan& plan, const Progress& progress)
      : session_(session),
        progress_(progress),
        total_(static_cast<std::int64_t>(plan.broughtInRows())) {}

  void Store(const StagedTable& table) {
    constexpr std::size_t kRowsAtOnce = 500;
    const dialect::Table& layout = LayoutOf(table.known());
    const std::vector<std::size_t> places = WrittenPlaces(table);
    std::vector<std::string_view> columns;
    for (const std::size_t place : places) columns.push_back(layout.columns[place].name);
    std::vector<RowCells> waiting;
    const auto store = [&] {
      (void)session_.AddRows(layout.name, columns, waiting);
      Tell(waiting.size());
      waiting.clear();
    };
    for (const StagedRow* row : RowsToStore(table)) {
      RowCells& cells = waiting.emplace_back();
      for (const std::size_t place : places) cells.push_back(row->cells[place]);
      if (waiting.size() == kRowsAtOnce) store();
    }
    if (!waiting.empty()) store();
  }

 private:
  void Tell(std::size_t rows) {
    for (; rows > 0 && progress_; --rows) {
      if (!progress_(++done_, total_)) throw CancelledError();
    }
  }

  SqlSession& session_;
  const Progress& progress_;
  std::int64_t total_;
  std::int64_t done_ = 0;
};

}  // namespace

std::optional<std::filesystem::path> LockBeside(const std::filesystem::path& file) {
  for (const char* ending : {".ldb", ".LDB", ".laccdb", ".LACCDB"}) {
    const std::filesystem::path beside = std::filesystem::path(file).replace_extension(ending);
    std::error_code ignored;
    if (std::filesystem::exists(beside, ignored)) return beside;
  }
  return std::nullopt;
}

bool NamesDesktopFile(const std::filesystem::path& file) {
  const std::string ending = qorcred::UpperAscii(file.extension().string());
  return (!IsServerName(file.string()) && (ending == ".MDB" || ending == ".ACCDB")) ||
         IsDesktopFile(file);
}

MovingPlan PlanMoving(const MovingOrder& order) {
  DesktopReading reading = order.reading;
  reading.wanted.clear();
  for (const KnownTable& table : KnownTables()) {
    reading.wanted.emplace_back(table.name);
  }
  return {ReadDesktopFile(order.file, reading), order.file.string(), order.unit};
}

void BringIn(SqlSession& session, const MovingPlan& plan, std::string_view fileName,
             const Progress& progress) {
  RequireNoUnits(session);
  WorkGuard whole(session.work(), {{}, fmt::format("init from {}", fileName), {}});
  session.work().Lock();
  Storing storing(session, plan, progress);
  for (const StagedTable& table : plan.tables()) {
    if (!table.isInFile()) continue;
    if (table.known().name == "TenantSelectionFields") {
      RemoveUsualFields(session);
    }
    storing.Store(table);
  }
  whole.Commit();
}

}  // namespace qorhost
