// What a call comes to, as one text: its result, or the error that it raised. Tables of rows with
// expected results and expected errors side by side compare these.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "frame/value.h"

namespace qortest {

inline std::string Shown(std::string_view text) {
  return std::string(text);
}
inline std::string Shown(bool flag) {
  return flag ? "true" : "false";
}
inline std::string Shown(std::integral auto number) {
  return std::to_string(number);
}

/// The shortest text that reads back as the same number.
inline std::string Shown(double number) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  return {buffer.data(), end};
}

inline std::string Shown(qorcred::Date date) {
  return Shown(date.serial);
}

/// The result of `call`, or "error N".
template <typename Call>
std::string Outcome(Call&& call) {
  try {
    if constexpr (std::is_void_v<decltype(call())>) {
      call();
      return "done";
    } else {
      return Shown(call());
    }
  } catch (const qorcred::RuntimeError& failure) {
    return "error " + std::to_string(static_cast<int>(failure.number()));
  }
}

/// Runs `check` on every row of a table; a failure names its row.
template <typename Rows, typename Check>
void ForEachRow(const Rows& rows, Check&& check) {
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    check(row);
  }
}

}  // namespace qortest
