#include "host/dialect/lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "frame/text.h"
#include "host/dialect/translator.h"

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

constexpr std::size_t kLongestDate = 64;
constexpr std::size_t kLongestExcerpt = 40;
// Digits that an accumulator of 64 bits holds without a check.
constexpr std::size_t kSafeDigits = 18;

ByteClass ClassOf(char byte) noexcept {
  return kByteClasses[static_cast<unsigned char>(byte)];
}

bool IsDigit(char byte) noexcept {
  return byte >= '0' && byte <= '9';
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
  explicit Lexer(std::string_view sql) : sql_(sql) {}

  // The next token; of a literal also its content, in literal().
  Token Next() {
    while (position_ < sql_.size() && ClassOf(sql_[position_]) == ByteClass::kBlank) {
      ++position_;
    }
    const bool afterName = nameEnd_ == position_;
    const std::size_t start = position_;
    if (start == sql_.size()) {
      return {TokenKind::kEnd, {}, start, 0};
    }
    switch (ClassOf(sql_[start])) {
      case ByteClass::kWord:
        return Word(start);
      case ByteClass::kDigit:
        return Number(start);
      case ByteClass::kQuote:
        return Text(start);
      case ByteClass::kHash:
        return DateLiteral(start);
      case ByteClass::kBracket:
        return Bracketed(start);
      case ByteClass::kSymbol:
        // ".5" is a number, but not directly behind a name, where the point leads to a column.
        if (sql_[start] == '.' && !afterName && IsDigitAt(start + 1)) {
          return Number(start);
        }
        return Symbol(start);
      case ByteClass::kBlank:
      case ByteClass::kBad:
        break;
    }
    Refuse(sql_, start, "a character that has no meaning here");
  }

  [[nodiscard]] const Literal& literal() const { return literal_; }

 private:
  [[nodiscard]] bool IsDigitAt(std::size_t index) const {
    return index < sql_.size() && IsDigit(sql_[index]);
  }

  Token Finish(TokenKind kind, std::size_t start, std::size_t end) {
    position_ = end;
    return {kind, sql_.substr(start, end - start), start, 0};
  }

  Token Word(std::size_t start) {
    std::size_t end = start + 1;
    while (end < sql_.size() &&
           (ClassOf(sql_[end]) == ByteClass::kWord || ClassOf(sql_[end]) == ByteClass::kDigit)) {
      ++end;
    }
    nameEnd_ = end;
    return Finish(TokenKind::kWord, start, end);
  }

  Token Bracketed(std::size_t start) {
    const std::size_t end = sql_.find(']', start);
    if (end == std::string_view::npos || end == start + 1) {
      Refuse(sql_, start,
             end == std::string_view::npos ? "a name in brackets that is not closed"
                                           : "brackets without a name");
    }
    const std::string_view name = sql_.substr(start + 1, end - start - 1);
    if (std::any_of(name.begin(), name.end(), IsControl)) {
      Refuse(sql_, start, "a name with a control character");
    }
    position_ = end + 1;
    nameEnd_ = position_;
    return {TokenKind::kBracketed, name, start, 0};
  }

  Token Symbol(std::size_t start) {
    const std::string_view pair = sql_.substr(start, 2);
    if (pair == "--" || pair == "/*") {
      Refuse(sql_, start, "comments are not allowed");
    }
    const bool isPair = pair == "<>" || pair == "<=" || pair == ">=";
    return Finish(TokenKind::kSymbol, start, start + (isPair ? 2 : 1));
  }

  Token Number(std::size_t start) {
    std::size_t end = start;
    std::int64_t whole = 0;
    while (IsDigitAt(end)) {
      if (end - start < kSafeDigits) {
        whole = whole * 10 + (sql_[end] - '0');
      }
      ++end;
    }
    bool isWhole = end - start <= kSafeDigits;
    if (end < sql_.size() && sql_[end] == '.') {
      isWhole = false;
      do {
        ++end;
      } while (IsDigitAt(end));
    }
    if (end < sql_.size() && (sql_[end] == 'E' || sql_[end] == 'e')) {
      const bool hasSign = end + 1 < sql_.size() && (sql_[end + 1] == '+' || sql_[end + 1] == '-');
      std::size_t digits = end + (hasSign ? 2U : 1U);
      if (IsDigitAt(digits)) {
        isWhole = false;
        while (IsDigitAt(digits)) {
          ++digits;
        }
        end = digits;
      }
    }
    if (end < sql_.size() && (ClassOf(sql_[end]) == ByteClass::kWord || sql_[end] == '.')) {
      Refuse(sql_, start, "a malformed number");
    }
    literal_ = Literal{sql_.substr(start, end - start)};
    literal_.offset = start;
    literal_.isLong = isWhole && whole <= std::numeric_limits<std::int32_t>::max();
    literal_.number = isWhole ? static_cast<double>(whole) : ParseDouble(start, end);
    return Finish(TokenKind::kLiteral, start, end);
  }

  double ParseDouble(std::size_t start, std::size_t end) {
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

  Token Text(std::size_t start) {
    const char quote = sql_[start];
    bool hasQuotes = false;
    std::size_t end = start;
    while (true) {
      end = sql_.find(quote, end + 1);
      if (end == std::string_view::npos) {
        Refuse(sql_, start, "a text that is not closed");
      }
      if (end + 1 == sql_.size() || sql_[end + 1] != quote) {
        break;
      }
      hasQuotes = true;
      ++end;
    }
    literal_ = Literal{sql_.substr(start + 1, end - start - 1)};
    literal_.offset = start;
    literal_.kind =
        literal_.content == kLastModifiedText ? LiteralKind::kTimeStamp : LiteralKind::kText;
    literal_.quote = quote;
    literal_.hasQuotes = hasQuotes;
    return Finish(TokenKind::kLiteral, start, end + 1);
  }

  Token DateLiteral(std::size_t start) {
    const std::size_t end = sql_.substr(0, start + 1 + kLongestDate).find('#', start + 1);
    if (end == std::string_view::npos) {
      Refuse(sql_, start, "a date that is not closed");
    }
    literal_ = Literal{sql_.substr(start + 1, end - start - 1)};
    literal_.offset = start;
    literal_.kind = LiteralKind::kDate;
    return Finish(TokenKind::kLiteral, start, end + 1);
  }

  std::string_view sql_;
  std::size_t position_ = 0;
  std::size_t nameEnd_ = std::string_view::npos;  // where the last name ended
  Literal literal_;
};

bool StartsPoint(char byte) noexcept {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

}  // namespace

std::string TextOf(const Literal& literal) {
  if (!literal.hasQuotes) {
    return std::string(literal.content);
  }
  const std::string doubled(2, literal.quote);
  return qorcred::ReplaceAll(literal.content, doubled, std::string_view(doubled).substr(1));
}

void Refuse(std::string_view sql, std::size_t offset, const std::string& message) {
  std::size_t line = 1;
  std::size_t column = 1;
  for (const char byte : sql.substr(0, offset)) {
    if (byte == '\n') {
      ++line;
      column = 1;
    } else if (StartsPoint(byte)) {
      ++column;
    }
  }
  throw SqlError(message, line, column);
}

std::string Quoted(std::string_view text) {
  std::string_view excerpt = text;
  if (excerpt.size() > kLongestExcerpt) {
    std::size_t end = kLongestExcerpt;
    while (end > 0 && !StartsPoint(excerpt[end])) {
      --end;
    }
    excerpt = excerpt.substr(0, end);
  }
  std::string quoted = "'";
  quoted += excerpt;
  return quoted + (excerpt.size() < text.size() ? "...'" : "'");
}

void ReadShape(std::string_view sql, std::string& key, std::vector<Literal>& literals) {
  key.clear();
  literals.clear();
  if (sql.size() > kLongestStatement) {
    Refuse(sql, 0, "the statement is too long");
  }
  if (const std::size_t zero = sql.find('\0'); zero != std::string_view::npos) {
    Refuse(sql, zero, "a character that has no meaning here");
  }
  Lexer lexer(sql);
  std::size_t copied = 0;
  while (true) {
    const Token token = lexer.Next();
    if (token.kind == TokenKind::kLiteral) {
      key.append(sql.substr(copied, token.offset - copied));
      key += MarkOf(lexer.literal().kind);
      copied = token.offset + token.text.size();
      literals.push_back(lexer.literal());
    } else if (token.kind == TokenKind::kEnd) {
      key.append(sql.substr(copied));
      return;
    }
  }
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
