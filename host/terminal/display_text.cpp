#include "host/terminal/display_text.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <iterator>

#include "frame/control_characters.h"

namespace qorhost {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Character {
  utf8proc_int32_t code;  // negative when the bytes are not UTF-8
  std::string_view bytes;
};

Character NextCharacter(std::string_view text) {
  utf8proc_int32_t code = -1;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const utf8proc_ssize_t length =
      utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &code);
  if (length <= 0) {
    return {-1, text.substr(0, 1)};
  }
  return {code, text.substr(0, static_cast<std::size_t>(length))};
}

}  // namespace

std::string Displayable(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const Character character = NextCharacter(text);
    text.remove_prefix(character.bytes.size());
    if (character.code < 0) {
      shown += kReplacement;
    } else if (character.code == '\n') {
      shown += "\\n";
    } else if (character.code == '\t') {
      shown += "\\t";
    } else if (!qorcred::SteersDisplay(static_cast<char32_t>(character.code))) {
      shown += character.bytes;
    } else if (character.code <= 0xFF) {
      fmt::format_to(std::back_inserter(shown), "\\x{:02X}", character.code);
    } else {
      fmt::format_to(std::back_inserter(shown), "\\u{:04X}", character.code);
    }
  }
  return shown;
}

std::string DisplayableLines(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    line.remove_suffix(line.ends_with('\r') ? 1 : 0);
    shown += Displayable(line);
    shown += end < text.size() ? "\n" : "";
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return shown;
}

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const Character character = NextCharacter(text);
    text.remove_prefix(character.bytes.size());
    const int columns = character.code < 0 ? 1 : utf8proc_charwidth(character.code);
    width += columns > 0 ? static_cast<std::size_t>(columns) : 0;
  }
  return width;
}

std::string PaddedTo(std::string text, std::size_t width) {
  const std::size_t taken = DisplayWidth(text);
  if (taken < width) {
    text.append(width - taken, ' ');
  }
  return text;
}

}  // namespace qorhost
