#include "host/desks/import_words.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/text.h"
#include "host/cli/console.h"

namespace qorhost {

namespace {

bool IsOneOf(std::string_view cell, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [cell](std::string_view word) {
    return qorcred::CompareIgnoringCase(cell, word) == 0;
  });
}

}  // namespace

std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                               const EitherWords& words) {
  if (cell.empty()) {
    return std::nullopt;
  }
  if (IsOneOf(cell, {words.yes, "True", "Yes", "1"})) {
    return true;
  }
  if (IsOneOf(cell, {words.no, "False", "No", "0"})) {
    return false;
  }
  throw UsageError(fmt::format("{} '{}' is neither {} nor {}", heading, cell, words.yes, words.no));
}

std::string InColumnWords(std::string_view message, std::span<const EntryWord> words) {
  for (const EntryWord& word : words) {
    if (message.starts_with(word.word) && message.substr(word.word.size()).starts_with(' ')) {
      return std::string(word.heading) + std::string(message.substr(word.word.size()));
    }
  }
  return std::string(message);
}

}  // namespace qorhost
