#include "host/store/postgres/letter_functions.h"

#include <fmt/format.h>

#include <string_view>

#include "host/dialect/folding.h"

namespace qorhost::postgres {

namespace {

constexpr char32_t kFirstNonAscii = 0x80;
// Latin, Greek, Cyrillic, Armenian and Hebrew end before it.
constexpr char32_t kFirstUncommon = 0x600;
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kLastSurrogate = 0xDFFF;
constexpr char32_t kLastPoint = 0x10FFFF;

std::string Utf8Of(char32_t point) {
  const auto low = [point](unsigned shift) {
    return static_cast<char>(0x80U | ((static_cast<unsigned>(point) >> shift) & 0x3FU));
  };
  const auto high = [point](unsigned mark, unsigned shift) {
    return static_cast<char>(mark | (static_cast<unsigned>(point) >> shift));
  };
  if (point < kFirstNonAscii) {
    return {static_cast<char>(point)};
  }
  if (point < 0x800) {
    return {high(0xC0, 6), low(0)};
  }
  if (point < 0x10000) {
    return {high(0xE0, 12), low(6), low(0)};
  }
  return {high(0xF0, 18), low(12), low(6), low(0)};
}

/// Characters and, in the same order, what becomes of them.
struct Mapping {
  std::string from;
  std::string to;
};

using Map = char32_t (*)(char32_t) noexcept;

Mapping MappingUpTo(char32_t end, Map map) {
  Mapping mapping;
  for (char32_t point = kFirstNonAscii; point < end; ++point) {
    if (point >= kFirstSurrogate && point <= kLastSurrogate) {
      continue;
    }
    // Texts are made of the few alone that become another: there are a million others.
    if (const char32_t mapped = map(point); mapped != point) {
      mapping.from += Utf8Of(point);
      mapping.to += Utf8Of(mapped);
    }
  }
  return mapping;
}

/// Most texts are ASCII, most of the others are of the common alphabets: the server goes through
/// the list of letters once for each character.
std::string LetterFunction(std::string_view name, std::string_view ofAscii, Map map) {
  const Mapping common = MappingUpTo(kFirstUncommon, map);
  const Mapping all = MappingUpTo(kLastPoint + 1, map);
  return fmt::format(R"sql(
CREATE FUNCTION desktop.{0}(content text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF octet_length(content) = length(content) THEN
    RETURN {1}(content COLLATE "C");
  END IF;
  IF content COLLATE "C" !~ '[\u0600-\U0010FFFF]' THEN
    RETURN translate({1}(content COLLATE "C"), '{2}', '{3}');
  END IF;
  RETURN translate({1}(content COLLATE "C"), '{4}', '{5}');
END $$;
)sql",
                     name, ofAscii, common.from, common.to, all.from, all.to);
}

}  // namespace

std::string LetterFunctions() {
  return LetterFunction("key", "lower", dialect::FoldPoint) +
         LetterFunction("ucase", "upper", dialect::UpperPoint) +
         LetterFunction("lcase", "lower", dialect::LowerPoint);
}

}  // namespace qorhost::postgres
