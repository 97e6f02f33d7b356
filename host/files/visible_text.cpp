#include "host/files/visible_text.h"

#include <fmt/format.h>

#include <cstdint>

#include "frame/control_characters.h"
#include "frame/utf8.h"

namespace qorhost {

std::string VisibleText(std::string_view text) {
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, at);
    const auto code = static_cast<std::uint32_t>(character.codePoint);
    if (character.codePoint >= qorcred::kInvalidByte) {
      shown += kReplacement;
    } else if (code == '\n') {
      shown += "\\n";
    } else if (code == '\t') {
      shown += "\\t";
    } else if (!qorcred::SteersDisplay(character.codePoint)) {
      shown += text.substr(at, character.length);
    } else if (code <= 0xFF) {
      shown += fmt::format("\\x{:02X}", code);
    } else {
      shown += fmt::format("\\u{:04X}", code);
    }
    at += character.length;
  }
  return shown;
}

}  // namespace qorhost
