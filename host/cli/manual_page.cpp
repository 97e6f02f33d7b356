#include "host/cli/manual_page.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <string>

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
    fmt::print(out, ".TP\n.B {}\n{}\n",
               Escaped(fmt::format("{}{}", fmt::join(option.names, ", "), value)),
               Escaped(option.description));
  }
}

void WriteFooter(std::ostream& out, const std::string& footer) {
  fmt::print(out, ".PP\n.nf\n{}\n.fi\n", Escaped(footer));
}

}  // namespace

void WriteManualPage(std::ostream& out, std::string_view version,
                     const std::vector<CommandWords>& commands) {
  const CommandWords& program = commands.front();
  fmt::print(out, ".TH QORHOST 1 \"\" \"qorhost {}\"\n.SH NAME\nqorhost \\- {}\n", version,
             Escaped(program.description));
  out << ".SH SYNOPSIS\n.B qorhost\n.I COMMAND\n[\\fIOPTIONS\\fR]\n.SH OPTIONS\n";
  WriteOptions(out, program.options);
  out << ".SH COMMANDS\n";
  for (const CommandWords& command : commands) {
    if (command.path.empty()) {
      continue;
    }
    fmt::print(out, ".SS qorhost {}\n{}\n", Escaped(command.path), Escaped(command.description));
    WriteOptions(out, command.arguments);
    WriteOptions(out, command.options);
    WriteFooter(out, command.footer);
  }
  out << ".SH EXAMPLES\n";
  WriteFooter(out, program.footer);
}

}  // namespace qorhost
