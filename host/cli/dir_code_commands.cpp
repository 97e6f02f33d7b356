#include "host/cli/dir_code_commands.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/cli/display_text.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/dir_code_list.h"
#include "host/desks/list_entries.h"
#include "host/files/table.h"

namespace qorhost {

namespace {

using qorcred::Value;

ExitStatus Status(bool succeeded, StoreSession& session, Console& console) {
  return OutcomeOf(succeeded, session.log(), console.err);
}

std::string Shown(const Value& value) {
  if (const bool* flag = value.As<bool>()) {
    return *flag ? "yes" : "no";
  }
  if (const auto* names = value.As<qorcred::StringArray>()) {
    std::string joined;
    for (const std::string& name : *names) {
      joined += (joined.empty() ? "" : ", ") + name;
    }
    return joined.empty() ? "nobody" : joined;
  }
  return qorcred::TextOrEmpty(value);
}

void PrintCode(DirCodeDesk& desk, bool asJson, Console& console) {
  constexpr std::size_t kNameWidth = 16;
  std::vector<std::pair<std::string, Value>> members;
  for (const CodeDetail& detail : ShownCode(desk)) {
    members.emplace_back(detail.key, detail.value);
    const std::string text = Shown(detail.value);
    if (!asJson && !text.empty()) {
      console.out << PaddedTo(detail.name, kNameWidth) << "  " << Displayable(text) << '\n';
    }
  }
  if (asJson) {
    PrintJsonObject(console.out, members);
  }
}

/// A code that the list can only show rounded would be stored rounded by a save.
void RequireWholeCode(StoreSession& session, DirCodeDesk& desk, std::int32_t rid) {
  const std::string shown = desk.codes().SelectedText();
  const Value stored = session.sql().Scalar(
      fmt::format("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE RID={}", rid));
  if (qorcred::NumericValue(stored) != qorcred::Val(shown)) {
    throw UsageError(fmt::format(
        "the directory code {} is shown as {} and would be stored so: renumber it first",
        qorcred::TextOrEmpty(stored), shown));
  }
}

/// Settings that a row holds although they are switched off: a save clears them.
struct IdleSettings {
  bool dnd = false;
  bool forwarding = false;
  bool period = false;
};

bool IsOff(DirCodeDesk& desk, std::string_view box) {
  return desk.screen().Check(box).state() != 1;
}

IdleSettings ReadIdle(DirCodeDesk& desk) {
  ScreenModel& screen = desk.screen();
  const auto chosen = [&](std::string_view list) {
    return screen.List(list).selected() != ListModel::kNone;
  };
  const auto typed = [&](std::string_view box) { return !screen.Box(box).text().empty(); };
  IdleSettings idle;
  idle.dnd = IsOff(desk, "chkDND") && chosen("cboSchedules");
  idle.forwarding = IsOff(desk, "chkCallForwarding") &&
                    (chosen("cboSchedulesCF") || typed("txtPhoneNocf") || typed("txtExtnCF"));
  idle.period = IsOff(desk, "chkActive") &&
                (screen.Date("dtpStart").chosen() || screen.Date("dtpEnd").chosen());
  return idle;
}

/// Those of the settings that are still switched off.
std::string NamesOfCleared(DirCodeDesk& desk, const IdleSettings& idle) {
  std::vector<std::string_view> names;
  if (idle.dnd && IsOff(desk, "chkDND")) {
    names.emplace_back("the do-not-disturb schedule");
  }
  if (idle.forwarding && IsOff(desk, "chkCallForwarding")) {
    names.emplace_back("the call forwarding");
  }
  if (idle.period && IsOff(desk, "chkActive")) {
    names.emplace_back("the active period");
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

void ReportUnchanged(Console& console) {
  console.err << "qorhost: nothing was changed: someone else has changed or deleted the directory "
                 "code meanwhile. Try again.\n";
}

}  // namespace

ExitStatus RunCodeList(const GlobalOptions& global, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  DirCodeDesk desk(session, session.ChosenUnit().key);
  PrintRows(console.out, CodeTable(session, desk), global.json);
  return ExitStatus::kDone;
}

ExitStatus RunCodeShow(const GlobalOptions& global, const std::string& choice, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  DirCodeDesk desk(session, session.ChosenUnit().key);
  desk.Select(choice);
  PrintCode(desk, global.json, console);
  return ExitStatus::kDone;
}

ExitStatus RunCodeAdd(const GlobalOptions& global, const CodeAddOptions& options,
                      Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  DirCodeDesk desk(session, session.ChosenUnit().key);
  TickForNewCode(desk);
  desk.TypeCode("the code", options.code);
  EnterCode(desk, options.entry);

  std::int32_t rid = 0;
  const bool saved = desk.SaveNew(&rid);
  ExitStatus status = Status(saved, session, console);
  if (saved && rid < 1) {
    console.err << "qorhost: the directory code was not stored.\n";
    status = ExitStatus::kFailure;
  } else if (saved) {
    desk.RefreshCodes(rid);
    const std::string stored = desk.screen().Box("txtdirectorycode").text();
    if (global.json) {
      PrintJsonObject(console.out, {{"code", qorcred::Val(stored)}, {"rid", rid}});
    } else {
      console.out << fmt::format("Added directory code {}.\n",
                                 CodeName(desk, desk.codes().selected()));
    }
    if (!qorcred::IsNumeric(qorcred::Trim(options.code))) {
      console.err << fmt::format("qorhost: '{}' was taken as {}.\n", Displayable(options.code),
                                 stored);
    }
  }
  return status;
}

ExitStatus RunCodeEdit(const GlobalOptions& global, const CodeEditOptions& options,
                       Console& console) {
  if (IsEmpty(options.entry)) {
    throw UsageError("say what to change: see 'qorhost dircodes edit --help'");
  }
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  DirCodeDesk desk(session, session.ChosenUnit().key);
  RequireWholeCode(session, desk, desk.Select(options.choice));
  const IdleSettings idle = ReadIdle(desk);
  EnterCode(desk, options.entry);
  const std::string cleared = NamesOfCleared(desk, idle);
  const std::string name = CodeName(desk, desk.codes().selected());

  const bool saved = desk.SaveEdited();
  const ExitStatus status = Status(saved, session, console);
  if (status == ExitStatus::kDone && !desk.changedRows()) {
    ReportUnchanged(console);
    return ExitStatus::kRefused;
  }
  if (status == ExitStatus::kDone) {
    console.out << fmt::format("Changed directory code {}.\n", name);
    if (!cleared.empty()) {
      console.err << fmt::format("qorhost: cleared, because it was switched off: {}.\n", cleared);
    }
  }
  return status;
}

ExitStatus RunCodeRenumber(const GlobalOptions& global, const CodeRenumberOptions& options,
                           Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  DirCodeDesk desk(session, session.ChosenUnit().key);
  desk.Select(options.choice);
  const std::int32_t index = desk.codes().selected();
  const std::string before = CodeName(desk, index);
  desk.TypeCode("the new code", options.number);

  const bool renumbered = desk.Renumber(options.number);
  const ExitStatus status = Status(renumbered, session, console);
  if (status == ExitStatus::kDone && !desk.changedRows()) {
    ReportUnchanged(console);
    return ExitStatus::kRefused;
  }
  if (status == ExitStatus::kDone) {
    console.out << fmt::format("Directory code {} is {} now.\n", before, desk.codes().Text(index));
  }
  return status;
}

ExitStatus RunCodeDelete(const GlobalOptions& global, const std::string& choice, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  DirCodeDesk desk(session, session.ChosenUnit().key);
  const std::int32_t rid = desk.Select(choice);
  const std::string name = CodeName(desk, desk.codes().selected());
  const std::vector<std::string> tenants = TenantsShown(desk);

  const bool deleted = desk.Delete(rid);
  const ExitStatus status = Status(deleted, session, console);
  if (status == ExitStatus::kDone) {
    console.out << fmt::format("Deleted directory code {}.\n", name);
    if (!tenants.empty()) {
      console.out << fmt::format("Without it now: {}.\n",
                                 Displayable(fmt::format("{}", fmt::join(tenants, ", "))));
    }
  } else if (!deleted) {
    console.err << fmt::format("qorhost: directory code {} was not deleted.\n", name);
  }
  return status;
}

}  // namespace qorhost
