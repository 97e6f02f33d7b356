#include "host/cli/store_commands.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <system_error>

#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/siblings.h"
#include "frame/text.h"
#include "host/cli/credential_desk.h"
#include "host/cli/display_text.h"
#include "host/cli/table.h"
#include "host/components/application_object.h"
#include "host/components/store_host.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"

namespace qorhost {

namespace {

namespace fs = std::filesystem;
using qorcred::Null;
using qorcred::Value;

fs::path Beside(const fs::path& file, std::string_view ending) {
  fs::path beside = file;
  beside += ending;
  return beside;
}

void RemoveStore(const fs::path& file) {
  std::error_code ignored;
  fs::remove(file, ignored);
  for (const fs::path& beside : SideFilesOf(file)) {
    fs::remove(beside, ignored);
  }
}

void CreateStore(const fs::path& file, bool demo) {
  const std::unique_ptr<Store> store = OpenStore(file, OpenMode::kCreate);
  if (demo) {
    CreateDemoData(*store->StartSession(SystemClock()));
  }
}

/// Refuses to write over a file that holds something else than a store.
void RequireStore(const fs::path& file) {
  if (!IsStoreOrEmpty(file)) {
    throw RefusedError(
        fmt::format("'{}' is no store of this program and is not replaced: name another file with "
                    "--db, or move it away",
                    Displayable(file.string())));
  }
}

/// Makes the new store beside the old one and puts it in its place when it is whole.
void ReplaceStore(const fs::path& file, bool demo) {
  RequireStore(file);
  const fs::path fresh = Beside(file, ".new");
  if (fs::exists(fresh)) {
    RequireStore(fresh);  // or what an earlier run left behind
  }
  RemoveStore(fresh);
  try {
    CreateStore(fresh, demo);
    for (const fs::path& beside : SideFilesOf(file)) {
      fs::remove(beside);
    }
    fs::rename(fresh, file);
  } catch (...) {
    RemoveStore(fresh);
    throw;
  }
}

/// The most combined codes of the unit's type; Null when the store does not say.
Value CapacityOf(StoreSession& session, std::int32_t unitKey) {
  qorcred::DatabaseError error;
  qorcred::Base64Decoder decoder;
  const qorcred::DatabaseManager manager(
      session.host().CreateComponent(qorcred::component::kDatabaseManager));
  try {
    return qorcred::ReadUnitCapacity(session.host(), decoder, manager, session.connection(),
                                     unitKey, error);
  } catch (const qorcred::RuntimeError&) {
    return Null{};
  }
}

std::string TenantName(StoreSession& session, std::int32_t tenantId) {
  const QueryResult result = session.sql().Select(
      fmt::format("SELECT LastName & ' ' & FirstName FROM Tenants WHERE TenantID={}", tenantId));
  return std::string(qorcred::Trim(qorcred::TextOrEmpty(result.table->At(0, 0))));
}

void PrintChange(std::ostream& out, const ChangeResult& change, bool asJson) {
  const auto rows = static_cast<double>(change.rows);
  if (asJson) {
    PrintJsonObject(out, {{"rows", rows}, {"new_rid", static_cast<double>(change.newRow)}});
    return;
  }
  out << fmt::format("{} {} changed\n", change.rows, change.rows == 1 ? "row" : "rows");
}

}  // namespace

ExitStatus RunInit(const GlobalOptions& global, const InitOptions& options, Console& console) {
  std::error_code ignored;
  const std::string name = Displayable(global.file.string());
  if (fs::is_directory(global.file, ignored)) {
    throw RefusedError(fmt::format("'{}' is a folder: name a file with --db", name));
  }
  if (fs::exists(global.file, ignored)) {
    if (!options.force) {
      throw RefusedError(fmt::format(
          "'{}' exists already: name another file with --db, or replace it with --force", name));
    }
    ReplaceStore(global.file, options.demo);
  } else {
    try {
      CreateStore(global.file, options.demo);
    } catch (...) {
      RemoveStore(global.file);
      throw;
    }
  }
  if (options.demo) {
    console.out << fmt::format("Created {} with the demo building. Try 'qorhost units'.\n", name);
  } else {
    console.out << fmt::format(
        "Created {} without any units. 'qorhost init --demo' makes one to try things on.\n", name);
  }
  return ExitStatus::kDone;
}

ExitStatus RunUnits(const GlobalOptions& global, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  Table table;
  table.columns = {{"Unit", "unit"},         {"Name", "name"},
                   {"Type", "type"},         {"Credentials", "credentials"},
                   {"Entry", "entry_codes"}, {"Directory", "directory_codes"},
                   {"Capacity", "capacity"}, {"Steps", "pending_steps"}};
  const auto number = [](std::int64_t count) { return Value(static_cast<double>(count)); };
  for (const UnitName& unit : session.ChosenUnits()) {
    const UnitStatus status = ReadUnitStatus(session.sql(), unit.key);
    table.rows.push_back({unit.key, unit.name, status.type, number(status.credentials),
                          number(status.entryCodes), number(status.directoryCodes),
                          CapacityOf(session, unit.key), number(status.pendingSteps)});
  }
  PrintRows(console.out, table, global.json);
  return ExitStatus::kDone;
}

ExitStatus RunDoors(const GlobalOptions& global, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  Table table;
  table.columns = {{"Unit", "unit"}, {"Door", "door"}, {"Name", "name"}, {"On screen", "caption"}};
  for (const UnitName& unit : session.ChosenUnits()) {
    CredentialDesk desk(session, unit.key, DeskScreen::kCredentials);
    const ListBox& doors = desk.screen().List("cboActivate");
    for (std::int32_t door = 1; door < doors.count(); ++door) {
      const std::string label = fmt::format("lblDoor{}", door);
      const bool shown = !desk.screen().SpelledName(label).empty();
      table.rows.push_back({unit.key, door, doors.Text(door),
                            shown ? Value(desk.screen().Any(label).caption()) : Value(Null{})});
    }
  }
  PrintRows(console.out, table, global.json);
  return ExitStatus::kDone;
}

ExitStatus RunSteps(const GlobalOptions& global, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  if (global.unit) {
    (void)session.ChosenUnit();
  }
  Table table;
  table.columns = {{"Step", "step"}, {"Unit", "unit"}, {"Kind", "kind"},     {"Row", "subject_rid"},
                   {"Name", "name"}, {"Code", "code"}, {"Queued", "queued"}, {"Sent", "sent"}};
  for (const ProgramStep& step : session.sql().steps().List(global.unit)) {
    const bool tenant = step.kind == step::kProgramTenant;
    table.rows.push_back({step.rid, step.unitKey, step.kind, step.subjectRid,
                          tenant ? Value(TenantName(session, step.subjectRid)) : Value(Null{}),
                          step.code.empty() ? Value(Null{}) : Value(step.code), step.queuedAt,
                          step.sent});
  }
  PrintRows(console.out, table, global.json);
  return ExitStatus::kDone;
}

ExitStatus RunSql(const GlobalOptions& global, const SqlOptions& options, Console& console) {
  // What the statement is decides how the file is opened, so it is looked at first.
  const dialect::StatementKind kind = KindOfStatement(options.statement);
  const bool selects = kind == dialect::StatementKind::kSelect;
  if (!selects && !options.write) {
    throw UsageError("this statement changes the database: say --write to let it");
  }
  StoreSession session(OpenFile(global, selects ? OpenMode::kReadOnly : OpenMode::kReadWrite),
                       global, console);
  if (!selects) {
    PrintChange(console.out, session.sql().Change(options.statement, kind), global.json);
    return ExitStatus::kDone;
  }
  const QueryResult result = session.sql().Select(options.statement);
  Table table;
  table.nullText = "Null";
  for (const std::string& column : result.columns) {
    table.columns.push_back({column, column});
  }
  for (const ResultRow row : result.rows()) {
    std::vector<Value> cells;
    for (std::int32_t column = 0; column < static_cast<std::int32_t>(result.columns.size());
         ++column) {
      cells.push_back(row[column]);
    }
    table.rows.push_back(std::move(cells));
  }
  PrintRows(console.out, table, global.json);
  return ExitStatus::kDone;
}

}  // namespace qorhost
