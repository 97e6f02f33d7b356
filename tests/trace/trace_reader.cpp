#include "tests/trace/trace_reader.h"

#include <charconv>
#include <cstdint>
#include <stdexcept>

#include "frame/date.h"

namespace qortest {

using qorcred::Value;

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::string_view kResult = " -> ";
constexpr std::string_view kFailure = " ! ";
constexpr std::string_view kOuts = " out ";

[[noreturn]] void Refuse(std::string_view what) {
  throw std::runtime_error("cannot be read in a trace: " + std::string(what));
}

template <typename Number>
Number ReadNumber(std::string_view text, int base = 10) {
  Number number{};
  const char* const end = text.data() + text.size();
  std::from_chars_result read{};
  if constexpr (std::is_floating_point_v<Number>) {
    read = std::from_chars(text.data(), end, number);
  } else {
    read = std::from_chars(text.data(), end, number, base);
  }
  if (read.ec != std::errc() || read.ptr != end) Refuse(text);
  return number;
}

std::size_t First(std::size_t one, std::size_t other) {
  return one < other ? one : other;
}

/// Takes " -> result", " ! failure" and " out names" off the end of `text` and returns what is
/// left.
std::string_view TakeOutcome(std::string_view text, TracedLine& line) {
  // In one pass: a trace has many lines, and most of them one outcome.
  std::size_t result = std::string_view::npos;
  std::size_t failure = result;
  std::size_t outs = result;
  bool inText = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"') inText = !inText;
    if (inText || text[at] != ' ') continue;
    const std::string_view rest = text.substr(at);
    const auto note = [at, rest](std::size_t& place, std::string_view mark) {
      if (place == std::string_view::npos && rest.starts_with(mark)) place = at;
    };
    note(result, kResult);
    note(failure, kFailure);
    note(outs, kOuts);
  }
  const auto between = [&](std::size_t from, std::string_view mark) {
    const std::size_t begin = from + mark.size();
    return std::string(text.substr(begin, outs == std::string_view::npos || outs < begin
                                              ? std::string_view::npos
                                              : outs - begin));
  };
  if (result != std::string_view::npos) line.result = between(result, kResult);
  if (failure != std::string_view::npos) line.failure = between(failure, kFailure);
  if (outs != std::string_view::npos) line.outs = text.substr(outs + kOuts.size());
  return text.substr(0, First(First(result, failure), outs));
}

bool IsClosing(std::string_view text) {
  return text.starts_with(kResult.substr(1)) || text.starts_with(kFailure.substr(1)) ||
         text.starts_with(kOuts.substr(1));
}

std::vector<TracedLine> ReadLevel(const std::vector<std::string>& lines, std::size_t& at,
                                  std::size_t depth) {
  std::vector<TracedLine> level;
  while (at < lines.size()) {
    const std::string_view line = lines[at];
    const std::size_t blanks = line.find_first_not_of(' ');
    if (blanks == std::string_view::npos || blanks % kIndent != 0) Refuse(line);
    if (blanks / kIndent < depth) return level;
    if (blanks / kIndent > depth) {
      if (level.empty()) Refuse(line);
      level.back().inner = ReadLevel(lines, at, depth + 1);
      continue;
    }
    const std::string_view text = line.substr(blanks);
    if (IsClosing(text)) {
      if (level.empty()) Refuse(line);
      if (!TakeOutcome(" " + std::string(text), level.back()).empty()) Refuse(line);
    } else {
      TracedLine& read = level.emplace_back();
      read.number = at + 1;
      read.head = TakeOutcome(text, read);
    }
    ++at;
  }
  return level;
}

}  // namespace

std::vector<TracedLine> ReadTrace(const std::vector<std::string>& lines) {
  std::size_t at = 0;
  return ReadLevel(lines, at, 0);
}

std::size_t FindOutsideTexts(std::string_view text, std::string_view mark, std::size_t from) {
  bool inText = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    // A quote inside of a text is doubled: it ends the text and begins it again.
    if (text[at] == '"') inText = !inText;
    if (!inText && at >= from && text.substr(at).starts_with(mark)) return at;
  }
  return std::string_view::npos;
}

std::vector<std::string_view> ListItems(std::string_view list) {
  std::vector<std::string_view> items;
  bool inText = false;
  int braces = 0;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < list.size(); ++at) {
    if (list[at] == '"') inText = !inText;
    if (inText) continue;
    if (list[at] == '{') ++braces;
    if (list[at] == '}') --braces;
    if (braces == 0 && list.substr(at).starts_with(", ")) {
      items.push_back(list.substr(begin, at - begin));
      begin = at + 2;
    }
  }
  if (!list.empty()) items.push_back(list.substr(begin));
  return items;
}

std::pair<std::string_view, std::string_view> NamedItem(std::string_view item) {
  const std::size_t colon = item.find(": ");
  const bool isNamed = colon != std::string_view::npos && item.find('"') > colon &&
                       item.find('#') > colon && item.find('{') > colon;
  if (!isNamed) return {{}, item};
  return {item.substr(0, colon), item.substr(colon + 2)};
}

std::string ReadText(std::string_view quoted) {
  if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"') Refuse(quoted);
  const std::string_view spelled = quoted.substr(1, quoted.size() - 2);
  std::string text;
  for (std::size_t at = 0; at < spelled.size(); ++at) {
    if (spelled[at] == '"') ++at;  // it is doubled
    if (spelled[at] != '\\') {
      text += spelled[at];
      continue;
    }
    switch (spelled[++at]) {
      case 'n':
        text += '\n';
        break;
      case 't':
        text += '\t';
        break;
      case 'x':
        text += static_cast<char>(ReadNumber<std::uint8_t>(spelled.substr(at + 1, 2), 16));
        at += 2;
        break;
      default:
        text += spelled[at];
    }
  }
  return text;
}

std::string ReadBytes(std::string_view text) {
  if (!text.starts_with("0x")) Refuse(text);
  std::string bytes;
  for (std::size_t at = 2; at < text.size(); at += 2) {
    bytes += static_cast<char>(ReadNumber<std::uint8_t>(text.substr(at, 2), 16));
  }
  return bytes;
}

Value ReadValue(std::string_view text, const ObjectsByName& objects) {
  if (text.empty()) Refuse("nothing");
  if (text == "Empty") return {};
  if (text == "Null") return qorcred::Null{};
  if (text == "-") return qorcred::Missing{};
  if (text == "True") return true;
  if (text == "False") return false;
  if (text == "Nothing") return qorcred::ObjectRef();
  if (text.front() == '"') return ReadText(text);
  if (text.starts_with("#=")) {
    return qorcred::Date{ReadNumber<double>(text.substr(2, text.size() - 3))};
  }
  if (text.front() == '#') {
    const auto date = qorcred::ParseDate(text.substr(1, text.size() - 2));
    if (!date.has_value()) Refuse(text);
    return *date;
  }
  if (text.front() == '{') {
    qorcred::StringArray texts;
    for (const std::string_view item : ListItems(text.substr(1, text.size() - 2))) {
      texts.push_back(ReadText(item));
    }
    return texts;
  }
  if (text.find('@') != std::string_view::npos) return objects(text);
  const std::string_view digits = text.substr(0, text.size() - 1);
  if (text.back() == '%') return ReadNumber<std::int16_t>(digits);
  if (text.back() == '#') return ReadNumber<double>(digits);
  return ReadNumber<std::int32_t>(text);
}

}  // namespace qortest
