#include "host/unit/unit_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <istream>
#include <optional>
#include <ostream>
#include <string_view>
#include <unordered_map>

#include "frame/control_characters.h"
#include "frame/utf8.h"

namespace qorhost {

namespace {

constexpr std::string_view kFirstLine = "qorCred unit file 2";
// Of files without an end line: whether one of them is whole cannot be told.
constexpr std::string_view kFirstLineUncounted = "qorCred unit file 1";
constexpr std::string_view kFirmwareWord = "firmware ";
constexpr std::string_view kEndWord = "end ";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kSeparator = ';';

// What stands behind a backslash for each character that cannot stand for itself.
struct Escape {
  char character;
  char letter;
};
constexpr Escape kEscapes[] = {{'\\', '\\'}, {';', ';'}, {'\n', 'n'}, {'\r', 'r'}, {'#', '#'}};

enum class LineRead { kLine, kTooLong, kTooMuch, kEnd };

// Reads up to the next line feed, `left` bytes at most, and keeps no more than the longest line; a
// carriage return in front of the feed is dropped.
LineRead ReadLine(std::istream& in, std::string& line, std::size_t& left) {
  line.clear();
  std::streambuf* buffer = in.rdbuf();
  bool any = false;
  bool tooLong = false;
  for (;;) {
    const int next = buffer == nullptr ? EOF : buffer->sbumpc();
    if (next == EOF) {
      if (!any) return LineRead::kEnd;
      break;
    }
    if (left == 0) return LineRead::kTooMuch;
    --left;
    any = true;
    if (next == '\n') break;
    if (line.size() <= kLongestUnitLine) {
      line.push_back(static_cast<char>(next));
    } else {
      tooLong = true;
    }
  }
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return tooLong || line.size() > kLongestUnitLine ? LineRead::kTooLong : LineRead::kLine;
}

// Splits a line into its fields; the reason when it cannot be.
std::string SplitLine(std::string_view line, UnitCode& code) {
  std::size_t count = 0;
  std::string field;
  const auto take = [&] {
    if (count < kUnitFieldCount) code.fields[count] = std::move(field);
    field.clear();
    ++count;
  };
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == kSeparator) {
      take();
    } else if (line[i] != '\\') {
      field.push_back(line[i]);
    } else {
      const char letter = ++i < line.size() ? line[i] : '\0';
      std::optional<char> character;
      for (const Escape& escape : kEscapes) {
        if (escape.letter == letter) character = escape.character;
      }
      if (!character.has_value()) return R"(a backslash must be followed by \, ;, #, n or r)";
      field.push_back(*character);
    }
  }
  take();
  if (count == kUnitFieldCount) return {};
  return fmt::format("{} fields instead of {}", count, kUnitFieldCount);
}

class Reader {
 public:
  Reader(std::istream& in, std::size_t largest) : in_(in), largest_(largest), left_(largest) {}

  UnitReading Read() {
    try {
      reading_.isUnitFile = false;  // unless it begins as one
      reading_.isUnitFile = ReadHeader();
      if (reading_.isUnitFile) ReadCodes();
    } catch (const std::ios_base::failure& failure) {
      // A stream's buffer raises where reading itself fails, as on a folder or a lost drive.
      Fault(fmt::format("the file cannot be read from here on: {}", failure.code().message()));
    }
    return std::move(reading_);
  }

 private:
  void ReadCodes() {
    for (LineRead read = Next(); read != LineRead::kEnd; read = Next()) {
      if (read == LineRead::kTooMuch) {
        Fault(fmt::format("the file is larger than {} bytes: nothing from here on is read",
                          largest_));
        return;
      }
      if (read == LineRead::kTooLong) {
        Fault(TooLong());
        ++codeLines_;
      } else if (!line_.empty() && line_.front() != '#') {
        if (reading_.isCounted) {
          Fault("the line stands behind the end line: nothing from here on is read");
          return;
        }
        if (line_.starts_with(kEndWord)) {
          TakeEndLine();
        } else {
          ++codeLines_;
          TakeLine();
        }
      }
      if (reading_.faults.size() >= kMostUnitFaults) {
        ++number_;
        Fault("there are too many bad lines: nothing from here on is read");
        return;
      }
    }
    CheckEnd();
  }

  // The count is that of all lines with a code, bad ones among them.
  void TakeEndLine() {
    if (const std::string count = std::to_string(codeLines_);
        line_.substr(kEndWord.size()) != count) {
      Fault(fmt::format(
          "the end line says \"{}\", but {} {} before it: the file is damaged, or the "
          "line must be \"{}{}\"",
          line_, count, codeLines_ == 1 ? "code stands" : "codes stand", kEndWord, count));
    }
    reading_.isCounted = true;
  }

  void CheckEnd() {
    if (reading_.isCounted) return;
    if (mustHaveEnd_) {
      Fault(fmt::format("the file is cut off: its last line must be \"{}\" and the number of codes",
                        kEndWord.substr(0, kEndWord.size() - 1)));
    } else if (codeLines_ == 0) {
      // A unit without codes looks like this, and a file that was cut off behind its second line.
      Fault(
          fmt::format("there are no codes, and no line \"{}0\" that says so: the file may be cut "
                      "off",
                      kEndWord));
    }
  }

  LineRead Next() {
    ++number_;
    return ReadLine(in_, line_, left_);
  }

  static std::string TooLong() {
    return fmt::format("the line is longer than {} bytes", kLongestUnitLine);
  }

  void Fault(std::string reason) { reading_.faults.push_back({number_, std::move(reason)}); }

  bool ReadHeader() {
    Next();
    std::string_view first = line_;
    if (first.starts_with(kByteOrderMark)) first.remove_prefix(kByteOrderMark.size());
    if (first != kFirstLine && first != kFirstLineUncounted) {
      Fault(fmt::format("a unit file begins with the line \"{}\"", kFirstLine));
      return false;
    }
    mustHaveEnd_ = first == kFirstLine;
    const LineRead second = Next();
    if (second == LineRead::kTooLong) {
      Fault(TooLong());
      return false;
    }
    if (!line_.starts_with(kFirmwareWord) || line_.size() == kFirmwareWord.size()) {
      Fault(
          fmt::format("the second line must be \"firmware\" and the firmware's name, such as "
                      "\"firmware {}\"",
                      kFirmwareWithDisplay));
      return false;
    }
    std::string firmware = line_.substr(kFirmwareWord.size());
    if (std::string fault = FaultInFirmware(firmware); !fault.empty()) {
      Fault(std::move(fault));
      return false;
    }
    reading_.file.firmware = std::move(firmware);
    return true;
  }

  void TakeLine() {
    UnitCode code;
    std::string fault = SplitLine(line_, code);
    if (fault.empty()) fault = FaultIn(code);
    if (!fault.empty()) {
      Fault(std::move(fault));
      return;
    }
    MakeCanonical(code);
    const auto [known, isNew] = lineOfCode_.try_emplace(NumberOf(code), number_);
    if (!isNew) {
      Fault(fmt::format("the directory code {} stands in line {} already", NumberOf(code),
                        known->second));
      return;
    }
    reading_.file.codes.push_back(std::move(code));
    reading_.lines.push_back(number_);
  }

  std::istream& in_;
  std::size_t largest_;
  std::size_t left_;
  UnitReading reading_;
  std::string line_;
  std::size_t number_ = 0;
  std::size_t codeLines_ = 0;
  bool mustHaveEnd_ = false;
  std::unordered_map<std::int64_t, std::size_t> lineOfCode_;
};

void AppendEscaped(std::string& line, std::string_view text) {
  for (const char character : text) {
    char letter = '\0';
    for (const Escape& escape : kEscapes) {
      // "#" begins a comment in the first place only.
      if (escape.character == character && (character != '#' || line.empty())) {
        letter = escape.letter;
      }
    }
    if (letter != '\0') line.push_back('\\');
    line.push_back(letter != '\0' ? letter : character);
  }
}

}  // namespace

UnitReading ReadUnitFile(std::istream& in, std::size_t largest) {
  return Reader(in, largest).Read();
}

std::string FaultInFirmware(std::string_view firmware) {
  if (firmware.empty()) return "the firmware's name is empty";
  if (firmware.size() > kLongestUnitLine - kFirmwareWord.size()) {
    return "the firmware's name is too long";
  }
  if (!qorcred::IsUtf8(firmware)) return "the firmware's name is not valid UTF-8";
  const bool hasControls = std::any_of(firmware.begin(), firmware.end(), [](char c) {
    return qorcred::IsAsciiControl(static_cast<unsigned char>(c));
  });
  return hasControls ? "the firmware's name holds a control character" : "";
}

void WriteUnitFile(std::ostream& out, const UnitFile& file) {
  out << kFirstLine << '\n' << kFirmwareWord << file.firmware << '\n';
  std::string line;
  for (const UnitCode& code : file.codes) {
    line.clear();
    for (std::size_t place = 0; place < kUnitFieldCount; ++place) {
      if (place > 0) line.push_back(kSeparator);
      AppendEscaped(line, code.fields[place]);
    }
    out << line << '\n';
  }
  out << kEndWord << file.codes.size() << '\n';
}

}  // namespace qorhost
