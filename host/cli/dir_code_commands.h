// The commands that show, enter, change and delete directory codes.
#pragma once

#include <optional>
#include <string>

#include "host/cli/console.h"
#include "host/desks/session.h"

namespace qorhost {

/// What an operator types into the screen or ticks on it; nothing given leaves a control as it is.
/// Whether the texts are numbers and complete is the controller's to say.
struct CodeEntry {
  std::optional<std::string> phone;
  std::optional<std::string> extension;
  std::optional<std::string> delay;
  std::optional<std::string> dnd;  ///< a schedule's id or name
  bool noDnd = false;
  std::optional<std::string> forwardPhone;
  std::optional<std::string> forwardExtension;
  std::optional<std::string> forwardSchedule;  ///< a schedule's id or name
  std::optional<std::string> forwardDelay;
  bool noForwarding = false;
  std::optional<std::string> from;  ///< a date, or "none"
  std::optional<std::string> to;
  std::optional<bool> active;
  std::optional<std::string> displayName;
  std::optional<bool> showName;
  std::optional<bool> showCode;
};

struct CodeAddOptions {
  std::string code;
  CodeEntry entry;
};

/// A stored code is named by its number as it is dialled, or by its row as in "rid:17".
struct CodeEditOptions {
  std::string choice;
  CodeEntry entry;
};

struct CodeRenumberOptions {
  std::string choice;
  std::string number;
};

ExitStatus RunCodeList(const GlobalOptions& global, Console& console);
ExitStatus RunCodeShow(const GlobalOptions& global, const std::string& choice, Console& console);
ExitStatus RunCodeAdd(const GlobalOptions& global, const CodeAddOptions& options, Console& console);
ExitStatus RunCodeEdit(const GlobalOptions& global, const CodeEditOptions& options,
                       Console& console);
ExitStatus RunCodeRenumber(const GlobalOptions& global, const CodeRenumberOptions& options,
                           Console& console);
ExitStatus RunCodeDelete(const GlobalOptions& global, const std::string& choice, Console& console);

}  // namespace qorhost
