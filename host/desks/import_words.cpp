#include "host/desks/import_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

#include "frame/text.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

bool Is(std::string_view cell, std::string_view word) {
  return qorcred::CompareIgnoringCase(cell, word) == 0;
}

/// Without the separators between groups of three digits; "" when the text is no such number.
std::string WithoutSeparators(std::string_view cell) {
  constexpr std::size_t kGroup = 3;
  constexpr std::array<std::string_view, 7> kSeparators{
      ",", ".", "'", " ", "\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x99"};
  const std::size_t first = std::min(cell.find_first_not_of("0123456789"), cell.size());
  std::string_view rest = cell.substr(first);
  std::string digits(cell.substr(0, first));
  const auto* separator =
      std::find_if(kSeparators.begin(), kSeparators.end(),
                   [rest](std::string_view known) { return rest.starts_with(known); });
  if (first == 0 || first > kGroup || separator == kSeparators.end()) {
    return {};
  }
  while (!rest.empty()) {
    const std::string_view group = rest.substr(std::min(separator->size(), rest.size()), kGroup);
    if (!rest.starts_with(*separator) || group.size() != kGroup || !qorcred::IsDigits(group)) {
      return {};
    }
    digits += group;
    rest.remove_prefix(separator->size() + kGroup);
  }
  return digits;
}

}  // namespace

std::size_t ColumnOf(std::string_view control, std::span<const ControlColumn> columns,
                     std::size_t otherwise) {
  const auto found =
      std::find_if(columns.begin(), columns.end(),
                   [control](const ControlColumn& known) { return known.control == control; });
  return found == columns.end() ? otherwise : found->column;
}

std::vector<FieldWord> WordsOf(const ImportFile& file, std::span<const ColumnField> fields) {
  std::vector<FieldWord> words;
  words.reserve(fields.size());
  for (const ColumnField& field : fields) {
    words.push_back({field.field, file.HeadingOf(field.column), {}});
  }
  return words;
}

void RequireNoSeparators(std::string_view field, std::string_view cell) {
  const std::string digits = WithoutSeparators(cell);
  if (!digits.empty()) {
    throw InputFault(
        field, cell,
        fmt::format("{{field}} '{{value}}' has separators between its digits: write {}", digits));
  }
}

std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                               const EitherWords& words) {
  if (cell.empty()) {
    return std::nullopt;
  }
  if (const std::optional<bool> yes = YesOrNo(cell)) {
    return yes;
  }
  if (Is(cell, words.yes) || cell == "1") {
    return true;
  }
  if (Is(cell, words.no) || cell == "0") {
    return false;
  }
  throw InputFault(heading, cell,
                   fmt::format("{{field}} '{{value}}' is neither {} nor {}", words.yes, words.no));
}

}  // namespace qorhost
