#include "host/desks/moving_in/moving_in.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "frame/convert.h"
#include "host/desks/desk_error.h"
#include "host/files/desktop_file/desktop_file.h"

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

/// Where the columns stand that are written: those of the file, and never one that a store makes.
std::vector<std::size_t> WrittenPlaces(const StagedTable& table) {
  std::vector<std::size_t> places;
  const dialect::Table& layout = LayoutOf(table.known());
  for (std::size_t place = 0; place < layout.columns.size(); ++place) {
    if (table.IsGiven(place) && !layout.columns[place].generated) places.push_back(place);
  }
  return places;
}

class Storing {
 public:
  Storing(SqlSession& session, const MovingPlan& plan, const Progress& progress)
      : session_(session),
        progress_(progress),
        total_(static_cast<std::int64_t>(plan.broughtInRows())) {}

  void Store(const StagedTable& table) {
    const dialect::Table& layout = LayoutOf(table.known());
    const std::vector<std::size_t> places = WrittenPlaces(table);
    std::vector<Field> fields(places.size());
    for (std::size_t at = 0; at < places.size(); ++at) {
      fields[at].column = layout.columns[places[at]].name;
    }
    for (const StagedRow& row : table.rows()) {
      if (row.isRefused) continue;
      for (std::size_t at = 0; at < places.size(); ++at) {
        fields[at].value = row.cells[places[at]];
      }
      session_.AddRow(layout.name, fields);
      if (progress_ && !progress_(++done_, total_)) {
        throw CancelledError();
      }
    }
  }

 private:
  SqlSession& session_;
  const Progress& progress_;
  std::int64_t total_;
  std::int64_t done_ = 0;
};

}  // namespace

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
