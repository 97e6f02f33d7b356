#include "tests/trace/trace_grammar.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>

namespace qortest {

namespace {

constexpr std::array<std::string_view, 8> kServices{
    "CreateObject", "MsgBox", "Now", "DoEvents", "Trapped", "DateText", "TextToAnsi", "AnsiToText"};

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}
bool IsHex(char character) {
  return IsDigit(character) || (character >= 'A' && character <= 'F');
}
bool IsOfWord(char character) {
  return IsDigit(character) || (character >= 'a' && character <= 'z') ||
         (character >= 'A' && character <= 'Z') || character == '_';
}

/// Reads a line from its beginning; each function takes one rule of the grammar.
class GrammarReader {
 public:
  explicit GrammarReader(std::string_view line) : rest_(line) {}

  void Line() {
    if (Takes("host ")) {
      Text();
      if (Takes(" -> ")) {
        Digits();
        Need(" row");
        (void)Takes("s");
      } else {
        Need(" ! ");
        Text();
      }
    } else if (Takes("Release ")) {
      Name();
    } else if (!IsOutcome()) {
      Call();
    }
    Outcome();
    if (!rest_.empty()) Refuse("the end");
  }

 private:
  [[noreturn]] void Refuse(std::string_view expected) const {
    throw std::runtime_error(std::string(expected) + " is missing before: " + std::string(rest_));
  }
  bool Takes(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  void Need(std::string_view word) {
    if (!Takes(word)) Refuse(word);
  }
  void Digits() {
    if (rest_.empty() || !IsDigit(rest_.front())) Refuse("a digit");
    while (!rest_.empty() && IsDigit(rest_.front())) rest_.remove_prefix(1);
  }
  std::string_view Word() {
    std::size_t length = 0;
    while (length < rest_.size() && IsOfWord(rest_[length])) ++length;
    if (length == 0) Refuse("a name");
    const std::string_view word = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return word;
  }

  /// An outcome that stands on a line of its own has lost the blank in front of it.
  bool IsOutcome() {
    for (const std::string_view begin : {"-> ", "! ", "out "}) {
      if (rest_.starts_with(begin)) {
        line_ = " " + std::string(rest_);
        rest_ = line_;
        return true;
      }
    }
    return false;
  }

  void Call() {
    if (Takes("new ")) return Name();
    const std::size_t open = rest_.find('(');
    const bool isService =
        open != std::string_view::npos &&
        std::find(kServices.begin(), kServices.end(), rest_.substr(0, open)) != kServices.end();
    if (isService) {
      rest_.remove_prefix(open);
      return Arguments();
    }
    Name();
    if (Takes(".")) (void)Word();
    if (rest_.starts_with('(')) Arguments();
    if (Takes(" = ")) AnyValue();
  }

  void Outcome() {
    if (Takes(" -> ")) {
      AnyValue();
    } else if (Takes(" ! ")) {
      Number();
      Need(" ");
      Text();
    }
    if (!Takes(" out ")) return;
    do Argument();
    while (Takes(", "));
  }

  void Arguments() {
    Need("(");
    if (Takes(")")) return;
    do Argument();
    while (Takes(", "));
    Need(")");
  }
  void Argument() {
    std::size_t end = 0;
    while (end < rest_.size() && IsOfWord(rest_[end])) ++end;
    if (end > 0 && rest_.substr(end).starts_with(": ")) rest_.remove_prefix(end + 2);
    AnyValue();
  }

  void Name() {
    do (void)Word();
    while (Takes("."));
    while (Takes("[")) {
      Number();
      Need("]");
    }
    Need("@");
    Digits();
  }

  void AnyValue() {
    for (const std::string_view word : {"Empty", "Null", "Nothing", "True", "False"}) {
      if (rest_ == word || (rest_.starts_with(word) && !IsOfWord(rest_[word.size()]) &&
                            rest_[word.size()] != '@' && rest_[word.size()] != '[')) {
        rest_.remove_prefix(word.size());
        return;
      }
    }
    if (rest_.starts_with('"')) return Text();
    if (Takes("{")) return Texts();
    if (Takes("#")) return ADate();
    if (Takes("0x")) return Bytes();
    if (!IsNumber()) {
      if (Takes("-")) return;
      return Name();
    }
    Number();
    if (!Takes("%")) (void)Takes("#");
  }

  [[nodiscard]] bool IsNumber() const {
    const std::string_view digits = rest_.starts_with('-') ? rest_.substr(1) : rest_;
    if (digits.empty()) return false;
    return IsDigit(digits.front()) || digits.starts_with("inf#") || digits.starts_with("nan#");
  }
  void Number() {
    (void)Takes("-");
    if (Takes("inf") || Takes("nan")) return;
    Digits();
    if (Takes(".")) Digits();
    if (!Takes("e")) return;
    if (!Takes("-")) Need("+");
    Digits();
  }
  void ADate() {
    if (Takes("=")) {
      Number();
      return Need("#");
    }
    const std::size_t end = rest_.find('#');
    if (end == std::string_view::npos || end == 0) Refuse("a date");
    rest_.remove_prefix(end + 1);
  }
  void Texts() {
    if (Takes("}")) return;
    do Text();
    while (Takes(", "));
    Need("}");
  }
  void Bytes() {
    while (rest_.size() >= 2 && IsHex(rest_[0]) && IsHex(rest_[1])) rest_.remove_prefix(2);
  }
  void Text() {
    Need("\"");
    while (!rest_.empty()) {
      if (Takes("\"\"") || Takes("\\\\") || Takes("\\n") || Takes("\\t")) continue;
      if (Takes("\\x")) {
        if (rest_.size() < 2 || !IsHex(rest_[0]) || !IsHex(rest_[1])) Refuse("two digits");
        rest_.remove_prefix(2);
        continue;
      }
      if (Takes("\"")) return;
      const auto code = static_cast<unsigned char>(rest_.front());
      if (rest_.front() == '\\' || code < 0x20) Refuse("a character");
      rest_.remove_prefix(1);
    }
    Refuse("the quote at the end of a text");
  }

  std::string line_;
  std::string_view rest_;
};

}  // namespace

std::string FaultInTraceLine(std::string_view line) {
  try {
    GrammarReader(line).Line();
    return {};
  } catch (const std::runtime_error& fault) {
    return fault.what();
  }
}

std::string FaultInTrace(const std::vector<std::string>& lines) {
  std::size_t deepest = 0;  // as far in as a line may stand
  for (std::size_t at = 0; at < lines.size(); ++at) {
    const std::string_view line = lines[at];
    const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
    const std::string fault = blanks % 2 != 0 || blanks > deepest
                                  ? "it stands too far in"
                                  : FaultInTraceLine(line.substr(blanks));
    if (!fault.empty()) {
      return "line " + std::to_string(at + 1) + ": " + std::string(line) + "\n" + fault;
    }
    deepest = blanks + 2;
  }
  return {};
}

}  // namespace qortest
