// What a controller needs from its surroundings besides the screen and the connection.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/runtime_error.h"
#include "frame/value.h"

namespace qorcred {

/// Icon and buttons of a message box, with the numbers that hosts know.
enum class MessageStyle : int {
  kRefusal = 48,   ///< exclamation icon, OK
  kQuestion = 52,  ///< exclamation icon, Yes and No
  kNotice = 64,    ///< information icon, OK
};

/// The button that closed a message box.
enum class MessageButton : int { kOk = 1, kYes = 6, kNo = 7 };

/// Services of the surrounding application. One host serves all its controllers on one thread and
/// must outlive them.
class Host {
 public:
  virtual ~Host() = default;

  /// A new component by programmatic identifier, for example "qorDBI.clsDBManager".
  /// Raises kCannotCreateComponent when there is none.
  virtual ObjectRef CreateComponent(std::string_view programmaticId) = 0;

  /// Shows a modal message box and returns the button that closed it.
  virtual MessageButton ShowMessage(std::string_view text, MessageStyle style,
                                    std::string_view title) = 0;

  /// The current local date and time, to the second.
  virtual Date Now() = 0;

  /// Lets pending events of the screens run.
  virtual void LetEventsRun() = 0;

  /// Told of every failure that an operation trapped: the operation's name and the failure.
  virtual void ReportFailure(std::string_view operation, const RuntimeError& failure) noexcept = 0;

  /// The default text of a date. Unless overridden M/D/YYYY with h:mm:ss AM/PM when not midnight.
  /// In the statements of new tenants a text that holds "-1" has slashes for its hyphens.
  virtual std::string DateText(Date date);

  /// Text to bytes of the surroundings' ANSI code page and back. Unless overridden code page 1252;
  /// a character outside the code page becomes "?", one for each UTF-16 unit.
  virtual std::vector<std::uint8_t> TextToAnsi(std::string_view text);
  virtual std::string AnsiToText(std::span<const std::uint8_t> bytes);
};

/// A cell or control value as text: dates in the host's default form, Null as "".
[[nodiscard]] std::string TextOf(Host& host, const Value& value);

}  // namespace qorcred
