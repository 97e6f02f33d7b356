#include "host/files/html_text.h"

#include <fmt/format.h>

#include <cstdint>

#include "frame/utf8.h"
#include "host/files/visible_text.h"

namespace qorhost {

namespace {

constexpr std::string_view kMarkup = "&<>\"'";

std::string_view Entity(char character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return "&#39;";
  }
}

constexpr bool StandsForItself(char32_t code) {
  return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') ||
         (code >= '0' && code <= '9') || code == ' ' || code == ',' || code == '.';
}

}  // namespace

std::string HtmlText(std::string_view text) {
  std::string shown = VisibleText(text);
  std::size_t markup = shown.find_first_of(kMarkup);
  if (markup == std::string::npos) {
    return shown;
  }
  std::string escaped;
  escaped.reserve(shown.size() + shown.size() / 8);
  std::size_t from = 0;
  for (; markup != std::string::npos; markup = shown.find_first_of(kMarkup, from)) {
    escaped.append(shown, from, markup - from).append(Entity(shown[markup]));
    from = markup + 1;
  }
  return escaped.append(shown, from);
}

std::string CssText(std::string_view text) {
  const std::string shown = VisibleText(text);
  std::string escaped;
  for (std::size_t at = 0; at < shown.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(shown, at);
    if (StandsForItself(character.codePoint)) {
      escaped += shown[at];
    } else {
      // The blank ends the number and is no part of the text.
      escaped += fmt::format("\\{:X} ", static_cast<std::uint32_t>(character.codePoint));
    }
    at += character.length;
  }
  return escaped;
}

}  // namespace qorhost
