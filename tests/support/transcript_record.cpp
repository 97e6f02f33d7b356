#include "tests/support/transcript_record.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <sstream>

namespace qortest {

namespace {

constexpr std::size_t kLinesAround = 3;
constexpr std::string_view kArrow = " -> ";

bool IsComponentLine(std::string_view line) {
  return line.starts_with("CreateObject ") || line.starts_with("Release ");
}

bool Counts(std::string_view line, Detail detail) {
  switch (detail) {
    case Detail::kEverything:
      return true;
    case Detail::kEffects:
      return !IsComponentLine(line) && !IsRead(line);
    case Detail::kComponents:
      return IsComponentLine(line);
  }
  return true;
}

void Show(std::ostringstream& out, const Lines& lines, std::size_t at, std::string_view mark) {
  out << "  " << mark << (at < lines.size() ? lines[at] : "(nothing more)") << '\n';
}

}  // namespace

bool IsRead(std::string_view line) {
  const std::size_t arrow = line.find(kArrow);
  if (arrow == std::string_view::npos) {
    return false;
  }
  // Calls have their arguments behind a blank; the few without arguments are known by their name.
  const std::string_view place = line.substr(0, arrow);
  return place.find_first_of(" \"") == std::string_view::npos && !place.starts_with("pb") &&
         !place.starts_with("pv");
}

Lines TranscriptRecord::Read(Detail detail) const {
  Lines read;
  std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(read),
               [detail](const std::string& line) { return Counts(line, detail); });
  return read;
}

Lines TranscriptRecord::StartingWith(std::string_view beginning) const {
  Lines found;
  std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(found),
               [beginning](const std::string& line) { return line.starts_with(beginning); });
  return found;
}

Lines SplitLines(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    const std::size_t start = line.find_first_not_of(' ');
    if (start != std::string_view::npos) {
      lines.emplace_back(line.substr(start));
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

::testing::AssertionResult SameLines(const Lines& actual, std::string_view expected) {
  const Lines wanted = SplitLines(expected);
  const auto [inActual, inWanted] =
      std::mismatch(actual.begin(), actual.end(), wanted.begin(), wanted.end());
  if (inActual == actual.end() && inWanted == wanted.end()) {
    return ::testing::AssertionSuccess();
  }
  const auto at = static_cast<std::size_t>(std::distance(actual.begin(), inActual));
  std::ostringstream out;
  out << "transcripts differ at line " << at + 1 << " (" << actual.size() << " lines, expected "
      << wanted.size() << ")\n";
  for (std::size_t before = at - std::min(at, kLinesAround); before < at; ++before) {
    Show(out, actual, before, "          ");
  }
  Show(out, wanted, at, "expected: ");
  Show(out, actual, at, "actual:   ");
  for (std::size_t after = at + 1; after < std::min(actual.size(), at + 1 + kLinesAround);
       ++after) {
    Show(out, actual, after, "then:     ");
  }
  return ::testing::AssertionFailure() << out.str();
}

}  // namespace qortest
