// Cuts a statement into tokens, and into its shape and its literals.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qorhost::dialect {

/// The longest statement that is read, in bytes.
inline constexpr std::size_t kLongestStatement = std::size_t{1} << 20U;

enum class LiteralKind : std::uint8_t {
  kNumber,
  kText,
  kDate,       ///< between # marks
  kTimeStamp,  ///< the text that stands for the time of the change
};

/// A literal of a statement; `content` is the text between its marks, quotes inside still doubled.
struct Literal {
  std::string_view content;
  double number = 0.0;     ///< of a number
  std::size_t offset = 0;  ///< of its first byte in the statement
  std::size_t end = 0;     ///< where the statement goes on behind it
  LiteralKind kind = LiteralKind::kNumber;
  char quote = 0;          ///< the mark around a text
  bool isLong = false;     ///< a number without point or exponent that fits 32 bits
  bool hasQuotes = false;  ///< a text with doubled quotes inside
};

/// The text of a text literal, doubled quotes made single.
[[nodiscard]] std::string TextOf(const Literal& literal);

enum class TokenKind : std::uint8_t {
  kWord,
  kBracketed,  ///< a name in brackets; the token's text is the name
  kLiteral,
  kSymbol,
  kEnd,
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::string_view text;    ///< the word, the name or the symbol; the whole literal
  std::size_t offset = 0;   ///< of its first byte in the statement
  std::size_t end = 0;      ///< where the statement goes on behind it
  std::size_t literal = 0;  ///< of a literal: its position among the statement's literals
};

/// Replaces `key` by the statement with each literal replaced by a mark of its kind, and `literals`
/// by the literals in the order in which they stand. Both keep their capacity. Raises SqlError for
/// what is no token: an unclosed text, a comment, a malformed number, a character of no meaning.
void ReadShape(std::string_view sql, std::string& key, std::vector<Literal>& literals);

/// A statement without its literals: the texts between them and their kinds. It owns its texts.
struct Skeleton {
  std::vector<std::string> texts;  ///< one more than there are literals
  std::vector<LiteralKind> kinds;
};

[[nodiscard]] Skeleton SkeletonOf(std::string_view sql, const std::vector<Literal>& literals);

/// Reads a statement along the skeleton of another: true when they differ in their literals only.
/// `literals` is then what ReadShape() would give; otherwise its content has no meaning. Much
/// faster than reading the shape.
[[nodiscard]] bool ReadAlong(std::string_view sql, const Skeleton& skeleton,
                             std::vector<Literal>& literals);

/// The tokens of a statement that ReadShape() has accepted, a kEnd last.
[[nodiscard]] std::vector<Token> Tokenize(std::string_view sql);

/// The token that begins at `offset`, behind blanks, whatever stands before it. Raises SqlError as
/// ReadShape() does.
[[nodiscard]] Token TokenAt(std::string_view sql, std::size_t offset);

}  // namespace qorhost::dialect
