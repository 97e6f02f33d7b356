// Reads a trace back into the calls that it tells of.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/value.h"

namespace qortest {

/// A call, or a line of its own, with the calls that happened in it. Texts are as they stand in the
/// trace; none: an empty text.
struct TracedLine {
  std::size_t number = 0;
  std::string head;     ///< up to the outcome
  std::string result;   ///< behind ->
  std::string failure;  ///< behind !
  std::string outs;     ///< behind out
  std::vector<TracedLine> inner;
};

/// The outermost lines. Raises std::runtime_error with the line that cannot be read.
[[nodiscard]] std::vector<TracedLine> ReadTrace(const std::vector<std::string>& lines);

/// Where `mark` stands outside of texts, at `from` or behind it; npos when it does not.
[[nodiscard]] std::size_t FindOutsideTexts(std::string_view text, std::string_view mark,
                                           std::size_t from = 0);
/// "a, b" and "name: a, name: b" as what stands between the commas.
[[nodiscard]] std::vector<std::string_view> ListItems(std::string_view list);
/// "name: value" taken apart; the name is empty where there is none.
[[nodiscard]] std::pair<std::string_view, std::string_view> NamedItem(std::string_view item);

/// The object that a name stands for.
using ObjectsByName = std::function<qorcred::ObjectRef(std::string_view)>;
/// Raises std::runtime_error for what is no value.
[[nodiscard]] qorcred::Value ReadValue(std::string_view text, const ObjectsByName& objects);
[[nodiscard]] std::string ReadText(std::string_view quoted);
[[nodiscard]] std::string ReadBytes(std::string_view text);

}  // namespace qortest
