#include "host/files/csv_form.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "frame/text.h"

namespace qorhost {

namespace {

constexpr std::array kKnown{',', ';', '\t'};

char DelimiterOfHeadings(std::string_view text) {
  std::array<std::size_t, kKnown.size()> counts{};
  bool inQuotes = false;
  bool begun = false;
  for (const char character : text) {
    if (character == '\n' && !inQuotes && begun) {
      break;
    }
    begun = begun || (character != '\n' && character != '\r');
    inQuotes = inQuotes != (character == '"');
    const auto* known = std::find(kKnown.begin(), kKnown.end(), character);
    if (known != kKnown.end() && !inQuotes) {
      ++counts.at(static_cast<std::size_t>(known - kKnown.begin()));
    }
  }
  return kKnown.at(
      static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin()));
}

}  // namespace

CsvForm FormOf(std::string_view text, std::optional<char> delimiter) {
  constexpr std::string_view kSign = "sep=";
  CsvForm form;
  form.text = text;
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view first = text.substr(0, end);
  first.remove_suffix(first.ends_with('\r') ? 1 : 0);
  if (first.size() == kSign.size() + 1 &&
      qorcred::CompareIgnoringCase(first.substr(0, kSign.size()), kSign) == 0) {
    form.hasFormLine = true;
    form.text = text.substr(std::min(end + 1, text.size()));
    form.delimiter = delimiter.value_or(first.back());
    return form;
  }
  form.delimiter = delimiter.value_or(DelimiterOfHeadings(text));
  return form;
}

}  // namespace qorhost
