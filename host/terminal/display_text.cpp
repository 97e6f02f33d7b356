#include "host/terminal/display_text.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <cstddef>

#include "frame/utf8.h"
#include "host/files/visible_text.h"

namespace qorhost {

namespace {

bool IsByte(qorcred::Utf8Character character) {
  return character.codePoint >= qorcred::kInvalidByte;
}

/// The columns that a character takes: wide ones two, combining marks none.
std::size_t WidthOfCharacter(const qorcred::Utf8Character& character) {
  const int columns = IsByte(character)
                          ? 1
                          : utf8proc_charwidth(static_cast<utf8proc_int32_t>(character.codePoint));
  return columns > 0 ? static_cast<std::size_t>(columns) : 0;
}

}  // namespace

std::string Displayable(std::string_view text) {
  return VisibleText(text);
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

std::string AllNames(const std::vector<std::string>& names) {
  return Displayable(fmt::format("{}", fmt::join(names, ", ")));
}

std::string SomeNames(const std::vector<std::string>& names) {
  constexpr std::size_t kMost = 10;
  const std::size_t told = std::min(names.size(), kMost);
  const auto end = names.begin() + static_cast<std::ptrdiff_t>(told);
  const std::string rest =
      names.size() > told ? fmt::format(" and {} more", names.size() - told) : "";
  return Displayable(fmt::format("{}{}", fmt::join(names.begin(), end, ", "), rest));
}

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, at);
    width += WidthOfCharacter(character);
    at += character.length;
  }
  return width;
}

std::string CutTo(std::string text, std::size_t width) {
  if (DisplayWidth(text) <= width) {
    return text;
  }
  std::size_t taken = 1;  // by what stands for the rest
  std::size_t at = 0;
  while (at < text.size()) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, at);
    taken += WidthOfCharacter(character);
    if (taken > width) {
      break;
    }
    at += character.length;
  }
  return text.substr(0, at) + "…";
}

std::string PaddedTo(std::string text, std::size_t width) {
  const std::size_t taken = DisplayWidth(text);
  if (taken < width) {
    text.append(width - taken, ' ');
  }
  return text;
}

}  // namespace qorhost
