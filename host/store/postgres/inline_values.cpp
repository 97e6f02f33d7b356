#include "host/store/postgres/inline_values.h"

#include <charconv>

namespace qorhost::postgres {

namespace {

void AppendLiteral(std::string& text, const Sent& value) {
  if (!value) {
    text += "NULL";
    return;
  }
  text += '\'';
  for (const char character : *value) {
    text.append(character == '\'' ? 2 : 1, character);
  }
  text += '\'';
}

}  // namespace

std::string WithValues(std::string_view sql, std::span<const Sent> values) {
  std::string text;
  text.reserve(sql.size() + 4 * values.size());
  char quote = '\0';  // that a text or a name is in
  for (std::size_t at = 0; at < sql.size();) {
    const char character = sql[at];
    if (quote != '\0' || character != '$') {
      if (character == quote) {
        quote = '\0';
      } else if (quote == '\0' && (character == '\'' || character == '"')) {
        quote = character;
      }
      text += character;
      ++at;
      continue;
    }
    std::size_t number = 0;
    const char* const end =
        std::from_chars(sql.data() + at + 1, sql.data() + sql.size(), number).ptr;
    AppendLiteral(text, values[number - 1]);
    at = static_cast<std::size_t>(end - sql.data());
  }
  return text;
}

}  // namespace qorhost::postgres
