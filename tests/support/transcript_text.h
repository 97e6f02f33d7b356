// How the lines of a transcript spell values and calls.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "frame/value.h"

namespace qortest {

/// Receives one line of a transcript, without a line end.
using TranscriptSink = std::function<void(std::string_view)>;

/// A value as a transcript shows it: "text" (a quote doubled, control characters as \n, \t, \x1B),
/// numbers plain, True, False, Null, Empty, #1/31/2026 2:05:09 PM#, {"a", "b"}, Nothing for a null
/// reference, <object> for any other and - for an omitted argument.
[[nodiscard]] std::string TranscriptText(const qorcred::Value& value);

/// The text in double quotes, spelled as above.
[[nodiscard]] std::string QuotedText(std::string_view text);

/// Every value behind a blank: ` "a" 1 -`; objects are left out.
[[nodiscard]] std::string ArgumentList(std::span<const qorcred::Value> values);

/// ` ! 438 "Object doesn't support this property or method"`, the end of the line of a failed call.
[[nodiscard]] std::string FailureSuffix(const qorcred::RuntimeError& failure);

}  // namespace qortest
