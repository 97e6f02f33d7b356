#include "host/cli/manual_page.h"

#include <fmt/format.h>

#include <array>
#include <span>
#include <string>

#include "host/cli/write_to.h"

namespace qorhost {

namespace {

/// A text in which nothing is taken for a request: not a dot or an apostrophe at the beginning of a
/// line, not a hyphen or a backslash.
std::string Escaped(std::string_view text) {
  std::string escaped;
  bool beginsLine = true;
  for (const char letter : text) {
    if (beginsLine && (letter == '.' || letter == '\'')) {
      escaped += "\\&";
    }
    if (letter == '\\') {
      escaped += "\\e";
    } else if (letter == '-') {
      escaped += "\\-";
    } else {
      escaped += letter;
    }
    beginsLine = letter == '\n';
  }
  return escaped;
}

void WriteOptions(std::ostream& out, const std::vector<OptionWords>& options) {
  for (const OptionWords& option : options) {
    const std::string value =
        option.value.empty() || !option.names.front().starts_with('-') ? "" : " " + option.value;
    WriteTo(out, ".TP\n.B {}\n{}\n",
            Escaped(fmt::format("{}{}", fmt::join(option.names, ", "), value)),
            Escaped(option.description));
  }
}

void WriteFooter(std::ostream& out, const std::string& footer) {
  WriteTo(out, ".PP\n.nf\n{}\n.fi\n", Escaped(footer));
}

/// A word and what it means.
struct Entry {
  std::string_view word;
  std::string_view meaning;
};

constexpr std::array kExitStatus{
    Entry{"0", "It is done; what a trial or a list found is printed."},
    Entry{"1",
          "Refused: by a controller, by the rules of the building, or by the person who was asked; "
          "check and history check have found something."},
    Entry{
        "2",
        "Usage: a word, an option, a name, a number or a condition that is not known. Nothing was "
        "changed."},
    Entry{"3", "The store or the system failed."}};

constexpr std::array kEnvironment{
    Entry{"QORHOST_DB",
          "The store where --db names none; without both, building.db in the current "
          "folder."},
    Entry{"QORHOST_UNIT",
          "The key of the unit where --unit names none. The units, find, overview, history, check "
          "and export look at all units all the same, and so does a list with --all-units."},
    Entry{"TZ",
          "The time zone of the place, in which times are told but those of the history, "
          "which are of UTC."},
    Entry{"COLUMNS", "How wide a table may be on a terminal; else as wide as that is."},
    Entry{"NO_COLOR", "Where it is set nothing is written in colours."}};

void WriteEntries(std::ostream& out, std::string_view title, std::span<const Entry> entries) {
  WriteTo(out, ".SH {}\n", title);
  for (const Entry& entry : entries) {
    WriteTo(out, ".TP\n.B {}\n{}\n", Escaped(entry.word), Escaped(entry.meaning));
  }
}

}  // namespace

void WriteManualPage(std::ostream& out, std::string_view version,
                     const std::vector<CommandWords>& commands) {
  const CommandWords& program = commands.front();
  WriteTo(out, ".TH QORHOST 1 \"\" \"qorhost {}\"\n.SH NAME\nqorhost \\- {}\n", version,
          Escaped(program.description));
  out << ".SH SYNOPSIS\n.B qorhost\n.I COMMAND\n[\\fIOPTIONS\\fR]\n.SH OPTIONS\n";
  WriteOptions(out, program.options);
  out << ".SH COMMANDS\n";
  for (const CommandWords& command : commands) {
    if (command.path.empty()) {
      continue;
    }
    WriteTo(out, ".SS qorhost {}\n{}\n", Escaped(command.path), Escaped(command.description));
    WriteOptions(out, command.arguments);
    WriteOptions(out, command.options);
    WriteFooter(out, command.footer);
  }
  WriteEntries(out, "EXIT STATUS", kExitStatus);
  WriteEntries(out, "ENVIRONMENT", kEnvironment);
  out << ".SH EXAMPLES\n";
  WriteFooter(out, program.footer);
}

}  // namespace qorhost
