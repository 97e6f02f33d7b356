#include "host/dialect/lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "frame/schema.h"
#include "frame/text.h"
#include "host/dialect/refusal.h"

namespace qorhost::dialect {

namespace {

enum class ByteClass : std::uint8_t {
  kBad,
  kBlank,
  kWord,
  kDigit,
  kQuote,
  kHash,
  kBracket,
  kSymbol
};

constexpr std::array<ByteClass, 256> kByteClasses = [] {
  std::array<ByteClass, 256> classes{};
  const auto set = [&classes](std::string_view bytes, ByteClass byteClass) {
    for (const char byte : bytes) {
      classes[static_cast<unsigned char>(byte)] = byteClass;
    }
  };
  set(" \t\r\n", ByteClass::kBlank);
  set("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", ByteClass::kWord);
  set("0123456789", ByteClass::kDigit);
  set("'\"", ByteClass::kQuote);
  set("#", ByteClass::kHash);
  set("[", ByteClass::kBracket);
  set("(),.;*/\\^&+-=<>", ByteClass::kSymbol);
  for (std::size_t byte = 0x80; byte < classes.size(); ++byte) {
    classes[byte] = ByteClass::kWord;
  }
  return classes;
}();

// Whether a byte goes on a word.
constexpr std::array<bool, 256> kGoesOnWord = [] {
  std::array<bool, 256> goesOn{};
  for (std::size_t byte = 0; byte < goesOn.size(); ++byte) {
    goesOn[byte] =
        kByteClasses[byte] == ByteClass::kWord || kByteClasses[byte] == ByteClass::kDigit;
  }
  return goesOn;
}();

constexpr std::size_t kLongestDate = 64;
// Digits that an accumulator of 64 bits holds without a check.
constexpr std::size_t kSafeDigits = 18;

ByteClass ClassOf(char byte) noexcept {
  return kByteClasses[static_cast<unsigned char>(byte)];
}

bool IsControl(char byte) noexcept {
  return static_cast<unsigned char>(byte) < 0x20U;
}

char MarkOf(LiteralKind kind) noexcept {
  // Control characters, which no statement holds outside its literals.
  return static_cast<char>(static_cast<int>(kind) + 1);
}

class Lexer {
 public:
  explicit Lexer(std::string_view sql, std::size_t begin = 0) : sql_(sql), position_(begin) {}

  // Reads the literal that begins at `position`, for which what stands before it is no matter:
  // false when there is none.
  bool LiteralAt(std::size_t position, Literal& literal) {
    position_ = position;
    if (position >= sql_.size()) {
      return false;
    }
    const ByteClass byteClass = ClassHere();
    if (byteClass != ByteClass::kDigit && byteClass != ByteClass::kQuote &&
        byteClass != ByteClass::kHash) {
      return false;
    }
    ReadLiteral(byteClass, literal);
    return true;
  }

  // Goes to the next literal and reads it; false when there is none. What stands before it is
  // checked for what is no token, but not cut into tokens: most statements are known by their
  // shape.
  bool NextLiteral(Literal& literal) {
    while (position_ < sql_.size()) {
      if (const ByteClass byteClass = ClassHere(); byteClass == ByteClass::kBlank) {
        ++position_;
      } else if (byteClass == ByteClass::kWord) {
        SkipWord();
      } else if (StartsLiteral(byteClass)) {
        ReadLiteral(byteClass, literal);
        return true;
      } else if (byteClass == ByteClass::kBracket) {
        SkipBracketed();
      } else {
        SkipSymbol(byteClass);
      }
    }
    return false;
  }

  Token Next() {
    while (position_ < sql_.size() && ClassHere() == ByteClass::kBlank) {
      ++position_;
    }
    Token token;
    token.offset = position_;
    if (position_ == sql_.size()) {
      return token;
    }
    const ByteClass byteClass = ClassHere();
    if (byteClass == ByteClass::kWord) {
      token.kind = TokenKind::kWord;
      SkipWord();
    } else if (StartsLiteral(byteClass)) {
      token.kind = TokenKind::kLiteral;
      Literal literal;
      ReadLiteral(byteClass, literal);
    } else if (byteClass == ByteClass::kBracket) {
      token.kind = TokenKind::kBracketed;
      SkipBracketed();
      token.text = sql_.substr(token.offset + 1, position_ - token.offset - 2);
      token.end = position_;
      return token;
    } else {
      token.kind = TokenKind::kSymbol;
      SkipSymbol(byteClass);
    }
    token.text = sql_.substr(token.offset, position_ - token.offset);
    token.end = position_;
    return token;
  }

 private:
  [[nodiscard]] ByteClass ClassHere() const { return ClassOf(sql_[position_]); }

  [[nodiscard]] bool IsDigitAt(std::size_t index) const {
    return index < sql_.size() && qorcred::IsDigit(sql_[index]);
  }

  [[nodiscard]] bool StartsLiteral(ByteClass byteClass) const {
    switch (byteClass) {
      case ByteClass::kDigit:
      case ByteClass::kQuote:
      case ByteClass::kHash:
        return true;
      case ByteClass::kSymbol:
        // ".5" is a number, but not directly behind a name, where the point leads to a column.
        return sql_[position_] == '.' && nameEnd_ != position_ && IsDigitAt(position_ + 1);
      default:
        return false;
    }
  }

  void ReadLiteral(ByteClass byteClass, Literal& literal) {
    literal.offset = position_;
    if (byteClass == ByteClass::kQuote) {
      ReadText(literal);
    } else if (byteClass == ByteClass::kHash) {
      ReadDate(literal);
    } else {
      ReadNumber(literal);
    }
    literal.end = position_;
  }

  void SkipWord() {
    do {
      ++position_;
    } while (position_ < sql_.size() && kGoesOnWord[static_cast<unsigned char>(sql_[position_])]);
    nameEnd_ = position_;
  }

  void SkipBracketed() {
    const std::size_t end = sql_.find(']', position_);
    if (end == std::string_view::npos) {
      Refuse(sql_, position_, "a name in brackets that is not closed");
    }
    const std::string_view name = sql_.substr(position_ + 1, end - position_ - 1);
    if (name.empty()) {
      Refuse(sql_, position_, "brackets without a name");
    }
    if (std::any_of(name.begin(), name.end(), IsControl)) {
      Refuse(sql_, position_, "a name with a control character");
    }
    position_ = end + 1;
    nameEnd_ = position_;
  }

  void SkipSymbol(ByteClass byteClass) {
    if (byteClass != ByteClass::kSymbol) {
      Refuse(sql_, position_, "a character that has no meaning here");
    }
    const char first = sql_[position_];
    const char second = position_ + 1 < sql_.size() ? sql_[position_ + 1] : ' ';
    if ((first == '-' && second == '-') || (first == '/' && second == '*')) {
      Refuse(sql_, position_, "comments are not allowed");
    }
    const bool isPair =
        (first == '<' && (second == '>' || second == '=')) || (first == '>' && second == '=');
    position_ += isPair ? 2 : 1;
  }

  void ReadNumber(Literal& literal) {
    const std::size_t start = position_;
    std::size_t end = start;
    std::int64_t whole = 0;
    while (IsDigitAt(end)) {
      if (end - start < kSafeDigits) {
        whole = whole * 10 + (sql_[end] - '0');
      }
      ++end;
    }
    const std::size_t digits = end - start;
    end = EndOfNumber(end);
    const bool isWhole = end - start == digits && digits <= kSafeDigits;
    if (end < sql_.size() && (ClassOf(sql_[end]) == ByteClass::kWord || sql_[end] == '.')) {
      Refuse(sql_, start, "a malformed number");
    }
    literal.kind = LiteralKind::kNumber;
    literal.content = sql_.substr(start, end - start);
    literal.isLong = isWhole && whole <= std::numeric_limits<std::int32_t>::max();
    literal.number = isWhole ? static_cast<double>(whole) : ParseDouble(start, end);
    position_ = end;
  }

  // Where a number ends whose first digits end at `end`.
  [[nodiscard]] std::size_t EndOfNumber(std::size_t end) const {
    if (end < sql_.size() && sql_[end] == '.') {
      do {
        ++end;
      } while (IsDigitAt(end));
    }
    if (end < sql_.size() && (sql_[end] == 'E' || sql_[end] == 'e')) {
      const bool hasSign = end + 1 < sql_.size() && (sql_[end + 1] == '+' || sql_[end + 1] == '-');
      std::size_t exponent = end + (hasSign ? 2U : 1U);
      if (IsDigitAt(exponent)) {
        while (IsDigitAt(exponent)) {
          ++exponent;
        }
        end = exponent;
      }
    }
    return end;
  }

  [[nodiscard]] double ParseDouble(std::size_t start, std::size_t end) const {
    double number = 0.0;
    const auto [stop, error] =
        std::from_chars(sql_.data() + start, sql_.data() + end, number, std::chars_format::general);
    if (error == std::errc::result_out_of_range) {
      Refuse(sql_, start, "a number that is too large or too small");
    }
    if (error != std::errc{} || stop != sql_.data() + end || !std::isfinite(number)) {
      Refuse(sql_, start, "a malformed number");
    }
    return number;
  }

  void ReadText(Literal& literal) {
    const std::size_t start = position_;
    const char quote = sql_[start];
    std::size_t end = start;
    while (true) {
      end = sql_.find(quote, end + 1);
      if (end == std::string_view::npos) {
        Refuse(sql_, start, "a text that is not closed");
      }
      if (end + 1 == sql_.size() || sql_[end + 1] != quote) {
        break;
      }
      literal.hasQuotes = true;
      ++end;
    }
    literal.content = sql_.substr(start + 1, end - start - 1);
    literal.kind = literal.content == qorcred::kLastModifiedText ? LiteralKind::kTimeStamp
                                                                 : LiteralKind::kText;
    literal.quote = quote;
    position_ = end + 1;
  }

  void ReadDate(Literal& literal) {
    const std::size_t start = position_;
    const std::size_t end = sql_.substr(0, start + 1 + kLongestDate).find('#', start + 1);
    if (end == std::string_view::npos) {
      Refuse(sql_, start, "a date that is not closed");
    }
    literal.content = sql_.substr(start + 1, end - start - 1);
    literal.kind = LiteralKind::kDate;
    position_ = end + 1;
  }

  std::string_view sql_;
  std::size_t position_;
  std::size_t nameEnd_ = std::string_view::npos;  // where the last name ended
};

}  // namespace

std::string TextOf(const Literal& literal) {
  if (!literal.hasQuotes) {
    return std::string(literal.content);
  }
  const std::string doubled(2, literal.quote);
  return qorcred::ReplaceAll(literal.content, doubled, std::string_view(doubled).substr(1));
}

void ReadShape(std::string_view sql, std::string& key, std::vector<Literal>& literals) {
  literals.clear();
  if (sql.size() > kLongestStatement) {
    Refuse(sql, 0, "the statement is too long");
  }
  if (const std::size_t zero = sql.find('\0'); zero != std::string_view::npos) {
    Refuse(sql, zero, "a character that has no meaning here");
  }
  // A mark is never longer than the literal it stands for.
  key.resize(sql.size());
  auto written = key.begin();
  std::size_t copied = 0;
  const auto copyUntil = [&](std::size_t end) {
    written = std::copy(sql.begin() + static_cast<std::ptrdiff_t>(copied),
                        sql.begin() + static_cast<std::ptrdiff_t>(end), written);
  };
  Lexer lexer(sql);
  while (lexer.NextLiteral(literals.emplace_back())) {
    copyUntil(literals.back().offset);
    *written = MarkOf(literals.back().kind);
    ++written;
    copied = literals.back().end;
  }
  literals.pop_back();
  copyUntil(sql.size());
  key.resize(static_cast<std::size_t>(written - key.begin()));
}

Skeleton SkeletonOf(std::string_view sql, const std::vector<Literal>& literals) {
  Skeleton skeleton;
  std::size_t copied = 0;
  for (const Literal& literal : literals) {
    skeleton.texts.emplace_back(sql.substr(copied, literal.offset - copied));
    skeleton.kinds.push_back(literal.kind);
    copied = literal.end;
  }
  skeleton.texts.emplace_back(sql.substr(copied));
  return skeleton;
}

bool ReadAlong(std::string_view sql, const Skeleton& skeleton, std::vector<Literal>& literals) {
  if (sql.size() > kLongestStatement || sql.find('\0') != std::string_view::npos) {
    return false;
  }
  literals.assign(skeleton.kinds.size(), Literal{});
  Lexer lexer(sql);
  std::size_t position = 0;
  for (std::size_t index = 0; index < skeleton.kinds.size(); ++index) {
    const std::string& text = skeleton.texts[index];
    if (sql.compare(position, text.size(), text) != 0 ||
        !lexer.LiteralAt(position + text.size(), literals[index]) ||
        literals[index].kind != skeleton.kinds[index]) {
      return false;
    }
    position = literals[index].end;
  }
  return sql.substr(position) == skeleton.texts.back();
}

Token TokenAt(std::string_view sql, std::size_t offset) {
  return Lexer(sql, offset).Next();
}

std::vector<Token> Tokenize(std::string_view sql) {
  std::vector<Token> tokens;
  Lexer lexer(sql);
  std::size_t literals = 0;
  do {
    tokens.push_back(lexer.Next());
    if (tokens.back().kind == TokenKind::kLiteral) {
      tokens.back().literal = literals;
      ++literals;
    }
  } while (tokens.back().kind != TokenKind::kEnd);
  return tokens;
}

}  // namespace qorhost::dialect
