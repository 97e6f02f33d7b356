#include "host/cli/change_report.h"

namespace qorhost {

namespace {

Table Things(const std::vector<TouchedThing>& touched) {
  Table table;
  table.columns = {{"Type", "type"}, {"Id", "id"}, {"Name", "name"}};
  for (const TouchedThing& thing : touched) {
    table.rows.push_back(
        {thing.type, thing.id,
         thing.name.empty() ? qorcred::Value(qorcred::Null{}) : qorcred::Value(thing.name)});
  }
  return table;
}

}  // namespace

void PrintChange(std::ostream& out, const ChangeReport& report) {
  JsonObject object;
  object.Add("unit", report.unit)
      .Add("stored", report.stored)
      .Add("dry_run", report.trial)
      .Add("added", Things(report.added))
      .Add("changed", Things(report.changed))
      .Add("deleted", Things(report.deleted))
      .Add(report.facts);
  object.Print(out);
}

}  // namespace qorhost
