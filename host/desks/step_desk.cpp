#include "host/desks/step_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "frame/convert.h"
#include "frame/row_state.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/listed_rows.h"
#include "host/desks/local_time.h"
#include "host/desks/own_work.h"
#include "host/desks/store_file.h"
#include "host/desks/store_overview.h"
#include "host/desks/whole_number.h"
#include "host/files/json_writer.h"
#include "host/files/whole_file.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

using Members = std::vector<std::pair<std::string, Value>>;

/// A column of a row, and what the file calls it.
struct FileField {
  std::string_view column;
  std::string_view key;
};

constexpr std::array kTenantFields{
    FileField{"LastName", "last_name"},          FileField{"FirstName", "first_name"},
    FileField{"NameAtUnit", "name_at_unit"},     FileField{"ACTIVETENANT", "active"},
    FileField{"ACTIVESTARTTIME", "start"},       FileField{"ACTIVEENDTIME", "end"},
    FileField{"DOORSCHEDULE1", "schedule_1"},    FileField{"DOORSCHEDULE2", "schedule_2"},
    FileField{"DOORSCHEDULE3", "schedule_3"},    FileField{"DOORSCHEDULE4", "schedule_4"},
    FileField{"CREDENTIALID1", "credential_1"},  FileField{"CREDENTIALID2", "credential_2"},
    FileField{"DIRECTORYCODE", "directory_code"}};

constexpr std::array kCardFields{
    FileField{"PINNo", "number"},        FileField{"FacilityCode", "facility_code"},
    FileField{"IDCode", "id_code"},      FileField{"SequenceNumber", "sequence"},
    FileField{"ButtonNumber", "button"}, FileField{"DOORCODE", "door"}};

constexpr std::array kCodeFields{FileField{"DIRECTORYCODE", "directory_code"},
                                 FileField{"PHONENUMBER", "phone"},
                                 FileField{"EXTENSION", "extension"},
                                 FileField{"TIMEDELAY", "delay"},
                                 FileField{"ISDNDCHECKED", "do_not_disturb"},
                                 FileField{"DNDSCHEDULEID", "do_not_disturb_schedule"},
                                 FileField{"ISCFCHECKED", "call_forwarding"},
                                 FileField{"CFSCHEDULEID", "call_forwarding_schedule"},
                                 FileField{"CFPHONENUMBER", "call_forwarding_phone"},
                                 FileField{"CFEXTENSION", "call_forwarding_extension"},
                                 FileField{"CFTIMEDELAY", "call_forwarding_delay"},
                                 FileField{"ACTIVE", "active"},
                                 FileField{"STARTDATE", "start"},
                                 FileField{"ENDDATE", "end"},
                                 FileField{"DISPLAYNAME", "display_name"},
                                 FileField{"SHOWDISPLAYNAME", "show_display_name"},
                                 FileField{"SHOWDIRECTORYCODE", "show_directory_code"}};

std::vector<ProgramStep> WaitingSteps(DeskSession& session, std::optional<std::int32_t> unitKey) {
  std::vector<ProgramStep> steps = StepsOf(session, unitKey);
  std::erase_if(steps, [](const ProgramStep& step) { return step.sent; });
  return steps;
}

std::string Columns(std::span<const FileField> fields) {
  std::string columns;
  for (const FileField& field : fields) {
    columns += fmt::format("{}{}", columns.empty() ? "" : ", ", field.column);
  }
  return columns;
}

/// The cells of one row of a unit; nothing when it is not there.
std::vector<Value> CellsOf(DeskSession& session, std::string_view table, std::int32_t unitKey,
                           std::int32_t rid, const std::string& columns, std::size_t count) {
  const QueryResult found = session.sql().Select(
      fmt::format("SELECT {} FROM {} WHERE UnitKey={} AND RID={}", columns, table, unitKey, rid));
  std::vector<Value> cells;
  for (std::size_t at = 0; found.rowCount > 0 && at < count; ++at) {
    cells.push_back(found.table->At(0, static_cast<std::int32_t>(at)));
  }
  return cells;
}

/// Adds a credential's members: "credential_1_type" and so on.
void AddCard(DeskSession& session, std::int32_t unitKey, const std::string& key, const Value& rid,
             Members& members) {
  if (!qorcred::IsNumeric(rid)) {
    return;
  }
  const std::vector<Value> cells =
      CellsOf(session, "CredentialBank", unitKey, qorcred::ToLong(rid),
              "CredentialType, " + Columns(kCardFields), kCardFields.size() + 1);
  if (cells.empty()) {
    return;
  }
  members.emplace_back(key + "_type", Value(ScreenLabelOf(qorcred::NumericValue(cells[0]))));
  for (std::size_t at = 0; at < kCardFields.size(); ++at) {
    members.emplace_back(fmt::format("{}_{}", key, kCardFields[at].key), cells[at + 1]);
  }
}

/// What the unit has to know of a tenant; nothing of one who is not there any more.
bool AddTenant(DeskSession& session, const ProgramStep& step, Members& members) {
  const std::vector<Value> cells = CellsOf(session, "Tenants", step.unitKey, step.subjectRid,
                                           Columns(kTenantFields), kTenantFields.size());
  for (std::size_t at = 0; at < cells.size(); ++at) {
    const std::string key(kTenantFields[at].key);
    if (key.starts_with("credential_")) {
      AddCard(session, step.unitKey, key, cells[at], members);
    } else if (key == "directory_code") {
      // The row that is meant holds the number that is dialled.
      members.emplace_back(
          key, qorcred::IsNumeric(cells[at])
                   ? session.sql().Scalar(fmt::format(
                         "SELECT DIRECTORYCODE FROM DirectoryCode WHERE UnitKey={} AND RID={}",
                         step.unitKey, qorcred::ToLong(cells[at])))
                   : Value(Null{}));
    } else {
      members.emplace_back(key, cells[at]);
    }
  }
  return !cells.empty();
}

bool AddCode(DeskSession& session, const ProgramStep& step, Members& members) {
  const std::vector<Value> cells = CellsOf(session, "DirectoryCode", step.unitKey, step.subjectRid,
                                           Columns(kCodeFields), kCodeFields.size());
  for (std::size_t at = 0; at < cells.size(); ++at) {
    members.emplace_back(std::string(kCodeFields[at].key), cells[at]);
  }
  return !cells.empty();
}

void WriteStep(std::ostream& out, DeskSession& session, const ProgramStep& step) {
  Members members{{"step", step.rid},
                  {"queued", WithOffset(step.queuedAt)},
                  {"kind", step.kind},
                  {"row", step.subjectRid}};
  if (!step.code.empty()) {
    members.emplace_back("code_at_unit", step.code);
  }
  bool found = true;
  if (step.kind == step::kProgramTenant) {
    found = AddTenant(session, step, members);
  } else if (step.kind != step::kDeleteDirectoryCode) {
    found = AddCode(session, step, members);
  }
  if (!found) {
    members.emplace_back("gone", true);
  }
  PrintJsonObject(out, members);
}

bool Waits(const std::vector<ProgramStep>& waiting, const std::string& given) {
  const auto rid = WholeNumber(given);
  return rid && std::any_of(waiting.begin(), waiting.end(),
                            [&rid](const ProgramStep& step) { return step.rid == *rid; });
}

/// A step that waits. Raises InputFault when it does not.
std::int32_t Waiting(const std::vector<ProgramStep>& waiting, std::string_view field,
                     const std::string& given) {
  if (!Waits(waiting, given)) {
    throw InputFault(field, given,
                     "no step '{value}' waits for the unit: what was changed again since it was "
                     "handed over waits at a later place",
                     InputFault::Kind::kSeeList);
  }
  return static_cast<std::int32_t>(*WholeNumber(given));
}

std::set<std::int32_t> StepsMeant(const std::vector<ProgramStep>& waiting,
                                  const StepChoice& choice) {
  std::set<std::int32_t> meant;
  for (const std::string& step : choice.steps) {
    if (choice.unknown == UnknownSteps::kRefused || Waits(waiting, step)) {
      meant.insert(Waiting(waiting, step_input::kStep, step));
    }
  }
  if (!choice.steps.empty()) {
    return meant;
  }
  const auto last =
      choice.upTo ? std::optional(Waiting(waiting, step_input::kUpTo, *choice.upTo)) : std::nullopt;
  for (const ProgramStep& step : waiting) {
    if (!last || step.rid <= *last) {
      meant.insert(step.rid);
    }
  }
  return meant;
}

/// Steps of directory codes by the row.
struct CodeSteps {
  std::set<std::int32_t> told;       // programmed or changed by a step that is sent
  std::set<std::int32_t> waiting;    // with a step that waits still
  std::set<std::int32_t> unchanged;  // whose change of number waits still
};

CodeSteps CodeStepsOf(const std::vector<ProgramStep>& steps, const std::set<std::int32_t>& sent) {
  CodeSteps codes;
  for (const ProgramStep& step : steps) {
    const bool isChange = step.kind == step::kChangeDirectoryCode;
    if (step.kind != step::kProgramDirectoryCode && !isChange) {
      continue;
    }
    if (sent.contains(step.rid)) {
      codes.told.insert(step.subjectRid);
      continue;
    }
    codes.waiting.insert(step.subjectRid);
    if (isChange) {
      codes.unchanged.insert(step.subjectRid);
    }
  }
  return codes;
}

}  // namespace

List WaitingStepList(DeskSession& session, std::optional<std::int32_t> unitKey) {
  List list;
  list.title = "Steps that wait";
  list.fields = {{"Step", "step", FieldKind::kNumber},
                 {"Unit", "unit", FieldKind::kNumber},
                 {"Queued", "queued", FieldKind::kDate, TimeOf::kPlace},
                 {"Kind", "kind"},
                 {"Row", "row", FieldKind::kNumber},
                 {"Subject", "subject"}};
  for (const ProgramStep& step : WaitingSteps(session, unitKey)) {
    const std::string subject =
        step.kind == step::kDeleteDirectoryCode ? step.code : SubjectOf(session, step);
    list.rows.push_back(
        {step.rid, step.unitKey, step.queuedAt, step.kind, step.subjectRid, subject});
  }
  return list;
}

StepFile::StepFile(DeskSession& session, UnitName unit)
    : session_(session), unit_(std::move(unit)), steps_(WaitingSteps(session, unit_.key)) {}

std::vector<std::string> StepFile::numbers() const {
  std::vector<std::string> numbers;
  for (const ProgramStep& step : steps_) {
    numbers.push_back(std::to_string(step.rid));
  }
  return numbers;
}

std::optional<std::int32_t> StepFile::last() const {
  return steps_.empty() ? std::nullopt : std::optional(steps_.back().rid);
}

void StepFile::Write(std::ostream& out) const {
  constexpr std::int32_t kVersion = 1;
  PrintJsonObject(out, {{"file", "programming steps"},
                        {"version", kVersion},
                        {"unit", unit_.key},
                        {"name", unit_.name}});
  for (const ProgramStep& step : steps_) {
    WriteStep(out, session_, step);
  }
  PrintJsonObject(out, {{"end", true},
                        {"steps", CountCell(steps_.size())},
                        {"last_step", last() ? Value(*last()) : Value(Null{})}});
}

void StepFile::WriteTo(const std::filesystem::path& to, Standing existing,
                       const std::filesystem::path& store) const {
  WriteWholeFile(to, {existing, FilesOfStore(store)}, [this](std::ostream& out) { Write(out); });
}

SentSteps MarkSent(DeskSession& session, std::int32_t unitKey, const StepChoice& choice,
                   Trial trial) {
  OwnWork work(session, {unitKey}, "steps done");
  const std::vector<ProgramStep> waiting = WaitingSteps(session, unitKey);
  const std::set<std::int32_t> meant = StepsMeant(waiting, choice);
  SentSteps sent;
  for (const ProgramStep& step : waiting) {
    if (meant.contains(step.rid)) {
      sent.marked.push_back(step.rid);
    }
  }
  const auto change = [&session](const std::string& statement) {
    return static_cast<std::size_t>(
        session.sql().Change(statement, dialect::StatementKind::kUpdate).rows);
  };
  const CodeSteps codes = CodeStepsOf(waiting, meant);
  for (const std::int32_t rid : codes.told) {
    if (codes.unchanged.contains(rid)) {
      continue;  // the unit knows it by its former number
    }
    const bool asStored = !codes.waiting.contains(rid);
    const std::size_t rows = change(
        fmt::format("UPDATE DirectoryCode SET OLDDIRECTORYCODE=DIRECTORYCODE{} WHERE UnitKey={} "
                    "AND RID={} AND {}",
                    asStored ? fmt::format(", MODIFIED={}", qorcred::row_state::kInUnit) : "",
                    unitKey, rid, kIsNotDeleted));
    sent.codes += asStored ? rows : 0;
  }
  for (const std::int32_t rid : meant) {
    sent.steps += change(
        fmt::format("UPDATE ProgramSteps SET Sent=True WHERE UnitKey={} AND Sent=False AND RID={}",
                    unitKey, rid));
  }
  work.End(trial);
  return sent;
}

}  // namespace qorhost
