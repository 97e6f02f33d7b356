#include "host/desks/dir_code_line.h"

#include <fmt/format.h>

#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/report_captions.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

namespace code_caption = dir_code_caption;
namespace code_column = dir_code_column;

constexpr std::array<ImportColumn, code_column::kCount> kCodeColumns{{
    {code_caption::kCode, true, "the code that a visitor dials, zeros in front or not", "Code"},
    {code_caption::kPhone, true, "the phone number that the unit dials", "Phone"},
    {code_caption::kExtension, false, "the extension dialled behind it", "Extension"},
    {code_caption::kDelay, false, "the delay before the extension; without one it is 2", "Delay"},
    {code_caption::kDisplayName, false, "the name that the unit shows"},
    {code_caption::kStatus, false, "Active (also without the column) or Inactive", "Active"},
    {code_caption::kStart, false, "first day, as 05 Mar 2024 or 2024-03-05 08:00; empty: none",
     "Start"},
    {code_caption::kEnd, false, "last day; empty: none; without the column: the unit's own", "End"},
    {code_caption::kDnd, false, "yes or no (also True or False); empty: yes with a schedule",
     "DND"},
    {code_caption::kDndSchedule, false, "a schedule's name or id; <None> or empty: none"},
    {code_caption::kForwarding, false,
     "yes or no (also True or False); empty: yes with a phone number or schedule", "Forwarding"},
    {code_caption::kCfSchedule, false, "a schedule's name or id; <None> or empty: none",
     "Forward schedule"},
    {code_caption::kCfPhone, false, "the phone number that calls are forwarded to",
     "Forward phone"},
    {code_caption::kCfExtension, false, "the extension there", "Forward extension"},
    {code_caption::kCfDelay, false, "the delay before the extension there; without one it is 2",
     "Forward delay"},
    {code_caption::kShowName, false, "yes (also without the column) or no; also True or False",
     "Show name"},
    {code_caption::kShowCode, false, "yes (also without the column) or no; also True or False",
     "Show code"},
}};

constexpr std::array<ColumnField, 12> kFields{{
    {dir_code_field::kCode, code_column::kCode},
    {dir_code_field::kPhone, code_column::kPhone},
    {dir_code_field::kExtension, code_column::kExtension},
    {dir_code_field::kDelay, code_column::kDelay},
    {dir_code_field::kDisplayName, code_column::kDisplayName},
    {dir_code_field::kStart, code_column::kStart},
    {dir_code_field::kEnd, code_column::kEnd},
    {dir_code_field::kDnd, code_column::kDndSchedule},
    {dir_code_field::kForwardSchedule, code_column::kCfSchedule},
    {dir_code_field::kForwardPhone, code_column::kCfPhone},
    {dir_code_field::kForwardExtension, code_column::kCfExtension},
    {dir_code_field::kForwardDelay, code_column::kCfDelay},
}};

/// An end at the last minute of a day, as a report shows the end of a day, means all of that day.
std::string EndOf(std::string_view cell) {
  constexpr std::string_view kLastMinute = " 23:59";
  return std::string(cell.ends_with(kLastMinute) ? cell.substr(0, cell.size() - kLastMinute.size())
                                                 : cell);
}

void NoteIdle(ImportNotes& notes, std::size_t idle, std::size_t off, std::string_view word) {
  notes.push_back(fmt::format("{} was not taken over: {} is {}", kCodeColumns[idle].heading,
                              kCodeColumns[off].heading, word));
}

}  // namespace

std::span<const ImportColumn, code_column::kCount> DirCodeColumns() {
  return kCodeColumns;
}

std::vector<ColumnField> DirCodeFields(std::size_t first) {
  std::vector<ColumnField> fields(kFields.begin(), kFields.end());
  for (ColumnField& field : fields) {
    field.column += first;
  }
  return fields;
}

std::size_t ColumnOfDirCodeControl(std::string_view control, std::size_t first) {
  constexpr std::array<ControlColumn, 10> kControls{
      {{"txtPhoneNo", dir_code_column::kPhone},
       {"txtExtn", dir_code_column::kExtension},
       {"txtDisplayName", dir_code_column::kDisplayName},
       {"dtpStart", dir_code_column::kStart},
       {"dtpEnd", dir_code_column::kEnd},
       {"cboSchedules", dir_code_column::kDndSchedule},
       {"cboSchedulesCF", dir_code_column::kCfSchedule},
       {"txtPhoneNocf", dir_code_column::kCfPhone},
       {"txtExtnCF", dir_code_column::kCfExtension},
       {"pvnTimeDelay", dir_code_column::kDelay}}};
  return first + ColumnOf(control, kControls, dir_code_column::kCode);
}

std::string StorableName(const std::string& name, const ImportRules& rules) {
  if (name.find('\'') == std::string::npos) {
    return name;
  }
  std::string storable = WithTypographicApostrophes(name);
  if (rules.apostrophes == Apostrophes::kReplaced) {
    return storable;
  }
  throw InputFault(dir_code_field::kDisplayName, name,
                   "{field} '{value}' has an apostrophe, which would end the text in a statement: "
                   "write " +
                       InReason(storable + rules.howToReplace));
}

DirCodeLines::DirCodeLines(DirCodeDesk& desk, std::size_t first, const ImportRules& rules)
    : desk_(desk),
      first_(first),
      rules_(rules),
      schedules_(desk.screen().List(qorcred::kDndScheduleList), placeholders::kInSchedules) {}

DirCodeEntry DirCodeLines::Read(const ImportLine& line, ImportNotes& notes) const {
  DirCodeEntry entry;
  ReadPhone(line, entry, notes);
  ReadDnd(line, entry, notes);
  ReadForwarding(line, entry, notes);
  ReadPeriod(line, entry, notes);
  entry.displayName = StorableName(CellOf(line, code_column::kDisplayName), rules_);
  entry.showName = ReadTrueFalse(line, code_column::kShowName);
  entry.showCode = ReadTrueFalse(line, code_column::kShowCode);
  return entry;
}

std::string DirCodeLines::CellOf(const ImportLine& line, std::size_t column) const {
  return std::string(line.Cell(first_ + column).value_or(""));
}

std::optional<bool> DirCodeLines::ReadTrueFalse(const ImportLine& line, std::size_t column) const {
  return ReadEither(kCodeColumns[column].heading, Trimmed(line, column), kTrueFalse);
}

/// A schedule's id; nothing for none.
std::optional<std::string> DirCodeLines::ReadSchedule(const ImportLine& line,
                                                      std::size_t column) const {
  const std::string_view given = Trimmed(line, column);
  if (given.empty() || qorcred::CompareIgnoringCase(given, kNoneEntry) == 0) {
    return std::nullopt;
  }
  const std::vector<std::int32_t> places = schedules_.Find(given);
  if (places.size() == 1) {
    return std::to_string(desk_.screen().List(qorcred::kDndScheduleList).ItemData(places.front()));
  }
  // An id, or a message about the name.
  return std::string(given);
}

/// The delay behind a phone number; it is only looked at with an extension.
std::optional<std::string> DirCodeLines::ReadDelay(const ImportLine& line, std::size_t extension,
                                                   std::size_t delay, ImportNotes& notes) const {
  const std::string_view given = Trimmed(line, delay);
  if (given.empty()) {
    return std::nullopt;
  }
  if (Trimmed(line, extension).empty()) {
    if (given != qorcred::kDelayWithoutExtension) {
      notes.push_back(fmt::format("{} '{}' was not taken over: without an extension it is {}",
                                  kCodeColumns[delay].heading, given,
                                  qorcred::kDelayWithoutExtension));
    }
    return std::nullopt;
  }
  return std::string(given);
}

void DirCodeLines::ReadPhone(const ImportLine& line, DirCodeEntry& entry,
                             ImportNotes& notes) const {
  entry.phone = CellOf(line, code_column::kPhone);
  entry.extension = CellOf(line, code_column::kExtension);
  entry.delay = ReadDelay(line, code_column::kExtension, code_column::kDelay, notes);
}

void DirCodeLines::ReadDnd(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) const {
  const std::optional<std::string> schedule = ReadSchedule(line, code_column::kDndSchedule);
  if (ReadTrueFalse(line, code_column::kDnd).value_or(schedule.has_value())) {
    desk_.screen().Check("chkDND").SetState(1);
    entry.dnd = schedule;
  } else if (schedule) {
    NoteIdle(notes, code_column::kDndSchedule, code_column::kDnd, "False");
  }
}

void DirCodeLines::ReadForwarding(const ImportLine& line, DirCodeEntry& entry,
                                  ImportNotes& notes) const {
  const std::optional<std::string> schedule = ReadSchedule(line, code_column::kCfSchedule);
  const bool phone = !Trimmed(line, code_column::kCfPhone).empty();
  const bool extension = !Trimmed(line, code_column::kCfExtension).empty();
  if (ReadTrueFalse(line, code_column::kForwarding).value_or(schedule || phone || extension)) {
    desk_.screen().Check("chkCallForwarding").SetState(1);
    entry.forwardPhone = CellOf(line, code_column::kCfPhone);
    entry.forwardExtension = CellOf(line, code_column::kCfExtension);
    entry.forwardSchedule = schedule;
    entry.forwardDelay = ReadDelay(line, code_column::kCfExtension, code_column::kCfDelay, notes);
    return;
  }
  if (schedule) {
    NoteIdle(notes, code_column::kCfSchedule, code_column::kForwarding, "False");
  }
  for (const std::size_t idle : {code_column::kCfPhone, code_column::kCfExtension}) {
    if (!Trimmed(line, idle).empty()) {
      NoteIdle(notes, idle, code_column::kForwarding, "False");
    }
  }
}

void DirCodeLines::ReadPeriod(const ImportLine& line, DirCodeEntry& entry,
                              ImportNotes& notes) const {
  entry.active = ReadEither(kCodeColumns[code_column::kStatus].heading,
                            Trimmed(line, code_column::kStatus), kActiveInactive);
  const bool active = entry.active.value_or(true);
  for (const std::size_t limit : {code_column::kStart, code_column::kEnd}) {
    const std::string_view given = Trimmed(line, limit);
    if (!active && !given.empty()) {
      NoteIdle(notes, limit, code_column::kStatus, "Inactive");
    } else if (active && line.Cell(first_ + limit)) {
      (limit == code_column::kStart ? entry.from : entry.to) =
          given.empty() ? std::string(kNoneWord)
          : limit == code_column::kStart
              ? DateInCell(dir_code_field::kStart, given, rules_.dates)
              : EndOf(DateInCell(dir_code_field::kEnd, given, rules_.dates));
    }
  }
}

}  // namespace qorhost
