#include "host/desks/dir_code_import.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/entry_index.h"
#include "host/desks/import_words.h"
#include "host/desks/list_entries.h"
#include "host/desks/report_captions.h"
#include "host/files/import_file.h"

namespace qorhost {

namespace {

enum Column : std::size_t {
  kCode,
  kPhone,
  kExtension,
  kDelay,
  kDisplayName,
  kStatus,
  kStart,
  kEnd,
  kDnd,
  kDndSchedule,
  kForwarding,
  kCfSchedule,
  kCfPhone,
  kCfExtension,
  kCfDelay,
  kShowName,
  kShowCode,
  kColumnCount
};

namespace caption = dir_code_caption;

constexpr std::array<ImportColumn, kColumnCount> kColumns{{
    {caption::kCode, true, "the code that a visitor dials, zeros in front or not"},
    {caption::kPhone, true, "the phone number that the unit dials"},
    {caption::kExtension, false, "the extension dialled behind it"},
    {caption::kDelay, false, "the delay before the extension; without one it is 2"},
    {caption::kDisplayName, false, "the name that the unit shows"},
    {caption::kStatus, false, "Active (also without the column) or Inactive"},
    {caption::kStart, false, "first day, as 05 Mar 2024 or 2024-03-05 08:00; empty: none"},
    {caption::kEnd, false, "last day; empty: none; without the column: the unit's own"},
    {caption::kDnd, false, "True or False; empty: True with a schedule"},
    {caption::kDndSchedule, false, "a schedule's name or id; <None> or empty: none"},
    {caption::kForwarding, false, "True or False; empty: True with a phone number or schedule"},
    {caption::kCfSchedule, false, "a schedule's name or id; <None> or empty: none"},
    {caption::kCfPhone, false, "the phone number that calls are forwarded to"},
    {caption::kCfExtension, false, "the extension there"},
    {caption::kCfDelay, false, "the delay before the extension there; without one it is 2"},
    {caption::kShowName, false, "True (also without the column) or False"},
    {caption::kShowCode, false, "True (also without the column) or False"},
}};

/// The columns of the screen's inputs.
constexpr std::array kWords{
    FieldWord{dir_code_field::kCode, kColumns[kCode].heading, {}},
    FieldWord{dir_code_field::kPhone, kColumns[kPhone].heading, {}},
    FieldWord{dir_code_field::kExtension, kColumns[kExtension].heading, {}},
    FieldWord{dir_code_field::kDelay, kColumns[kDelay].heading, {}},
    FieldWord{dir_code_field::kDisplayName, kColumns[kDisplayName].heading, {}},
    FieldWord{dir_code_field::kStart, kColumns[kStart].heading, {}},
    FieldWord{dir_code_field::kEnd, kColumns[kEnd].heading, {}},
    FieldWord{dir_code_field::kDnd, kColumns[kDndSchedule].heading, {}},
    FieldWord{dir_code_field::kForwardSchedule, kColumns[kCfSchedule].heading, {}},
    FieldWord{dir_code_field::kForwardPhone, kColumns[kCfPhone].heading, {}},
    FieldWord{dir_code_field::kForwardExtension, kColumns[kCfExtension].heading, {}},
    FieldWord{dir_code_field::kForwardDelay, kColumns[kCfDelay].heading, {}},
};

/// An end at the last minute of a day, as a report shows the end of a day, means all of that day.
std::string EndOf(std::string_view cell) {
  constexpr std::string_view kLastMinute = " 23:59";
  return std::string(cell.ends_with(kLastMinute) ? cell.substr(0, cell.size() - kLastMinute.size())
                                                 : cell);
}

class DirCodeImport {
 public:
  DirCodeImport(DeskSession& session, std::int32_t unitKey)
      : desk_(session, unitKey),
        schedules_(desk_.screen().List(qorcred::kDndScheduleList), placeholders::kInSchedules),
        fresh_(desk_.screen().Snapshot()) {}

  Outcome Enter(const ImportLine& line, ImportNotes& notes) {
    desk_.screen().Restore(fresh_);
    DirCodeEntry entry;
    ReadPhone(line, entry, notes);
    ReadDnd(line, entry, notes);
    ReadForwarding(line, entry, notes);
    ReadPeriod(line, entry, notes);
    entry.displayName = CellOf(line, kDisplayName);
    entry.showName = ReadTrueFalse(line, kShowName);
    entry.showCode = ReadTrueFalse(line, kShowCode);
    const std::string code(line.Trimmed(kCode));
    EnterNewCode(desk_, code, entry);
    return WithoutFacts(desk_.SaveNew());
  }

 private:
  static std::string CellOf(const ImportLine& line, Column column) {
    return std::string(line.Cell(column).value_or(""));
  }

  static std::optional<bool> ReadTrueFalse(const ImportLine& line, Column column) {
    return ReadEither(kColumns[column].heading, line.Trimmed(column), kTrueFalse);
  }

  /// A schedule's id; nothing for none.
  [[nodiscard]] std::optional<std::string> ReadSchedule(const ImportLine& line, Column column) {
    const std::string_view given = line.Trimmed(column);
    if (given.empty() || qorcred::CompareIgnoringCase(given, kNoneEntry) == 0) {
      return std::nullopt;
    }
    const std::vector<std::int32_t> places = schedules_.Find(given);
    if (places.size() == 1) {
      return std::to_string(
          desk_.screen().List(qorcred::kDndScheduleList).ItemData(places.front()));
    }
    // An id, or a message about the name.
    return std::string(given);
  }

  /// The delay behind a phone number; it is only looked at with an extension.
  static std::optional<std::string> ReadDelay(const ImportLine& line, Column extension,
                                              Column delay, ImportNotes& notes) {
    const std::string_view given = line.Trimmed(delay);
    if (given.empty()) {
      return std::nullopt;
    }
    if (line.Trimmed(extension).empty()) {
      if (given != qorcred::kDelayWithoutExtension) {
        notes.push_back(fmt::format("{} '{}' was not taken over: without an extension it is {}",
                                    kColumns[delay].heading, given,
                                    qorcred::kDelayWithoutExtension));
      }
      return std::nullopt;
    }
    return std::string(given);
  }

  static void ReadPhone(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) {
    entry.phone = CellOf(line, kPhone);
    entry.extension = CellOf(line, kExtension);
    entry.delay = ReadDelay(line, kExtension, kDelay, notes);
  }

  void ReadDnd(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) {
    const std::optional<std::string> schedule = ReadSchedule(line, kDndSchedule);
    if (ReadTrueFalse(line, kDnd).value_or(schedule.has_value())) {
      desk_.screen().Check("chkDND").SetState(1);
      entry.dnd = schedule;
    } else if (schedule) {
      NoteIdle(notes, kDndSchedule, kDnd, "False");
    }
  }

  void ReadForwarding(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) {
    const std::optional<std::string> schedule = ReadSchedule(line, kCfSchedule);
    const bool phone = !line.Trimmed(kCfPhone).empty();
    const bool extension = !line.Trimmed(kCfExtension).empty();
    if (ReadTrueFalse(line, kForwarding).value_or(schedule || phone || extension)) {
      desk_.screen().Check("chkCallForwarding").SetState(1);
      entry.forwardPhone = CellOf(line, kCfPhone);
      entry.forwardExtension = CellOf(line, kCfExtension);
      entry.forwardSchedule = schedule;
      entry.forwardDelay = ReadDelay(line, kCfExtension, kCfDelay, notes);
      return;
    }
    if (schedule) {
      NoteIdle(notes, kCfSchedule, kForwarding, "False");
    }
    for (const Column idle : {kCfPhone, kCfExtension}) {
      if (!line.Trimmed(idle).empty()) {
        NoteIdle(notes, idle, kForwarding, "False");
      }
    }
  }

  static void ReadPeriod(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) {
    entry.active = ReadEither(kColumns[kStatus].heading, line.Trimmed(kStatus), kActiveInactive);
    const bool active = entry.active.value_or(true);
    for (const Column limit : {kStart, kEnd}) {
      const std::string_view given = line.Trimmed(limit);
      if (!active && !given.empty()) {
        NoteIdle(notes, limit, kStatus, "Inactive");
      } else if (active && line.Cell(limit)) {
        const std::string date = given.empty()     ? std::string(kNoneWord)
                                 : limit == kStart ? std::string(given)
                                                   : EndOf(given);
        (limit == kStart ? entry.from : entry.to) = date;
      }
    }
  }

  static void NoteIdle(ImportNotes& notes, Column idle, Column off, std::string_view word) {
    notes.push_back(fmt::format("{} was not taken over: {} is {}", kColumns[idle].heading,
                                kColumns[off].heading, word));
  }

  DirCodeDesk desk_;
  EntryIndex schedules_;
  ScreenSnapshot fresh_;  // the screen as every line finds it
};

}  // namespace

std::span<const ImportColumn> DirCodeImportColumns() {
  return kColumns;
}

ImportReport ImportDirCodes(DeskSession& session, std::int32_t unitKey, ImportFile& file,
                            const ImportRules& rules, const Progress& progress) {
  ImportRun run(session, {{unitKey}, "import directory codes", {}}, rules, kWords);
  DirCodeImport entering(session, unitKey);
  return run.Run(
      file,
      [&entering](const ImportLine& line, ImportNotes& notes) {
        return entering.Enter(line, notes);
      },
      progress);
}

}  // namespace qorhost
