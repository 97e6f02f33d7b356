// What a command talks to: streams, terminal or not, clock, exit status.
#pragma once

#include <cstddef>
#include <functional>
#include <istream>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desks/session.h"

namespace qorhost {

/// The program's exit status.
enum class ExitStatus : int {
  kDone = 0,
  kRefused = 1,  ///< a controller, the dialect or the operator said no
  kUsage = 2,    ///< the command line asks for something that cannot be typed into the screen
  kFailure = 3,  ///< the store or the system failed
  kUnknown = 4,  ///< a server was lost while it was to store: it may have stored or not
};

/// The surroundings of one run.
struct Environment {
  bool inputIsTerminal = false;
  bool outputIsTerminal = false;
  bool errorIsTerminal = false;
  bool colours = false;
  Clock clock = SystemClock();
  Author author;             ///< who runs it, for the audit
  std::size_t columns = 80;  ///< of the terminal
  std::function<bool()>
      readerIsGone;  ///< whether nobody reads the output any more; none: somebody does
  std::optional<std::string> store;  ///< QORHOST_DB: the store's file where --db is not given
  std::optional<std::string> unit;   ///< QORHOST_UNIT: the unit's key where --unit is not given
  std::string
      desktopReader;  ///< the program that reads desktop database files; "": that of this one
};

/// A message of a controller, or a question, as it is told to programs.
struct ToldMessage {
  std::string title;
  std::string_view icon;
  std::string text;
  std::string answer;  ///< "yes" or "no" to a question
};

/// The streams of one run; they outlive it.
struct Console {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  const Environment& environment;
  std::ostream* traceFile = nullptr;  ///< of --trace-file, while a command runs
  std::string told = "";  ///< what was said of a unit: a command that fails for it says it no more
  bool stored = false;    ///< a command has changed something that stays, whatever is printed of it
  bool quiet = false;     ///< of --quiet
  std::ostream silence{nullptr};  ///< what is written to it goes nowhere

  /// Where what nobody asked for goes, what a command has done above all: the output unless quiet.
  std::ostream& Remarks() { return quiet ? silence : out; }
  bool stale = false;            ///< a command found that somebody else was faster
  std::ostream* live = nullptr;  ///< standard error itself, where `err` only collects what programs
                                 ///< are told as one object at the end
  std::vector<ToldMessage> messages = {};  ///< then: those that were shown

  /// Where a person watches: questions, bars, traces.
  [[nodiscard]] std::ostream& Live() const { return live == nullptr ? err : *live; }
};

/// Stands for standard input or output where a file is named.
inline constexpr std::string_view kStandardStream = "-";
inline constexpr std::string_view kStandardInput = "standard input";  ///< in messages

/// A mistake in the command line. what() says what was wrong and what to do.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  /// In the value of an input: `field` is what the command line calls it.
  UsageError(const std::string& what, std::string field, std::string value)
      : std::runtime_error(what), field_(std::move(field)), value_(std::move(value)) {}

  [[nodiscard]] const std::string& field() const noexcept { return field_; }
  [[nodiscard]] const std::string& value() const noexcept { return value_; }

 private:
  std::string field_;
  std::string value_;
};

}  // namespace qorhost
