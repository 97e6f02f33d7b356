#include "tests/host/end_to_end/report_attempts.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace qortest {

namespace {

constexpr std::size_t kMillion = 1'000'000;

std::string Times(std::size_t count, std::string_view piece) {
  std::string text;
  text.reserve(count * piece.size());
  for (std::size_t index = 0; index < count; ++index) text += piece;
  return text;
}

Attempt Million(std::string name, std::string_view piece) {
  return {std::move(name), Times(kMillion / piece.size(), piece),
          "1,000,000 bytes of `" + Visible(piece, 8) + "`"};
}

Attempt Nested(std::size_t depth) {
  return {"nested parentheses", Times(depth, "(") + "7" + Times(depth, ")"),
          "`7` in " + std::to_string(depth) + " pairs"};
}

void AddQuotes(std::vector<Attempt>& attempts) {
  for (const Attempt& attempt : {
           Attempt{"apostrophe", "'", ""},
           Attempt{"apostrophe, doubled", "''", ""},
           Attempt{"apostrophe in a name", "O'Brien", ""},
           Attempt{"apostrophe in a name, doubled", "O''Brien", ""},
           Attempt{"apostrophe behind a backslash", "\\'", ""},
           Attempt{"double quote", "\"", ""},
           Attempt{"look-alikes of an apostrophe", "\u2019\u02BC\uFF07 OR 1 = 1", ""},
           Attempt{"apostrophe, overlong UTF-8", "\xC0\xA7 OR 1 = 1", ""},
           Attempt{"always true", "' OR '%' = '", ""},
           Attempt{"always true, no quotes", "0 OR 1 = 1", ""},
           Attempt{"never true", "0 AND 1 = 2", ""},
       }) {
    attempts.push_back(attempt);
  }
}

void AddStatements(std::vector<Attempt>& attempts) {
  for (const Attempt& attempt : {
           Attempt{"comment to the line's end", "x' --", ""},
           Attempt{"comment to the line's end, no quotes", "0 --", ""},
           Attempt{"comment left open", "x' /*", ""},
           Attempt{"comment between words", "0 /* */ OR 1 = 1", ""},
           Attempt{"comment marks in a text", "-- /* */ ;", ""},
           Attempt{"semicolon", ";", ""},
           Attempt{"second statement, DELETE", "x'; DELETE FROM DirectoryCode; SELECT '", ""},
           Attempt{"second statement, DELETE, no quotes", "0; DELETE FROM CredentialBank", ""},
           Attempt{"second statement, DROP", "x'; DROP TABLE Tenants; SELECT '", ""},
           Attempt{"second statement, DROP, no quotes", "0; DROP TABLE Tenants", ""},
           Attempt{"second statement, UPDATE", "x'; UPDATE Tenants SET LastName = 'x", ""},
           Attempt{"second statement, UPDATE, no quotes", "0; UPDATE Tenants SET Resident = 1", ""},
           Attempt{"second statement, INSERT, no quotes", "0; INSERT INTO Units VALUES (9)", ""},
           Attempt{"second SELECT", "0; SELECT LastName FROM Tenants", ""},
           Attempt{"DELETE in a sub-select", "0 OR a.RID IN (DELETE FROM Tenants)", ""},
           Attempt{"SELECT INTO", "0 UNION SELECT * INTO Copy FROM Tenants", ""},
           Attempt{"the engine's words: ATTACH", "0; ATTACH 'x.db' AS x", ""},
           Attempt{"the engine's words: PRAGMA", "0; PRAGMA writable_schema = 1", ""},
           Attempt{"the engine's words: schema",
                   "0 OR EXISTS (SELECT 1 FROM sqlite_schema WHERE sql = '')", ""},
           Attempt{"the engine's words: functions", "load_extension('x')", ""},
           Attempt{"the desktop's words: functions", "Shell('x')", ""},
       }) {
    attempts.push_back(attempt);
  }
}

void AddReaders(std::vector<Attempt>& attempts) {
  for (const Attempt& attempt : {
           Attempt{"other units' rows", "x%' OR DirectoryCode.UnitKey <> 1 OR 'a' = '", ""},
           Attempt{"other units' rows, no quotes", "0 OR a.UnitKey <> 1", ""},
           Attempt{"other table",
                   "0 UNION SELECT LastName, 1, 1, 1, 1, 1, FirstName, 1, RID, 1 FROM Tenants", ""},
           Attempt{"a name that ends a quote",
                   "0 UNION SELECT 1 AS [x\"; DROP TABLE Tenants --], 1, 1, 1, 1, 1, 1, 1, 1, 1"
                   " FROM Tenants",
                   ""},
           Attempt{"other table, a yes or no",
                   "0 OR EXISTS (SELECT RID FROM Tenants WHERE LastName LIKE 'R%')", ""},
           Attempt{"other table, in a text",
                   "x' OR EXISTS (SELECT RID FROM Tenants WHERE LastName LIKE 'R%') OR 'a' = 'b",
                   ""},
       }) {
    attempts.push_back(attempt);
  }
}

void AddMarks(std::vector<Attempt>& attempts) {
  for (const Attempt& attempt : {
           Attempt{"wildcards", "%", ""},
           Attempt{"wildcard of one character", "_", ""},
           Attempt{"wildcards of the desktop", "*", ""},
           Attempt{"set of characters", "[A-Z]", ""},
           Attempt{"bracket left open", "[", ""},
           Attempt{"bracketed name", "[a].[RID]", ""},
           Attempt{"date mark", "#1/1/2026#", ""},
           Attempt{"date mark left open", "#", ""},
           Attempt{"placeholders of the templates", "^ ^1 ^2 {C} {V}", ""},
           Attempt{"parameters of the engine", "?1 :a @b $c", ""},
           Attempt{"parameter of the engine", "?", ""},
           Attempt{"number out of range", "1e999", ""},
           Attempt{"number in other digits", "0x10", ""},
           Attempt{"number with two points", "1.2.3", ""},
           Attempt{"no value", "NULL", ""},
       }) {
    attempts.push_back(attempt);
  }
}

void AddBytes(std::vector<Attempt>& attempts) {
  using namespace std::string_literals;
  for (const Attempt& attempt : {
           Attempt{"NUL", "Ro\0e"s, ""},
           Attempt{"NUL behind an apostrophe", "x'\0"s, ""},
           Attempt{"control characters", "\x01\x02\x1B[2J\x7F", ""},
           Attempt{"marks of the translator", "7 \x01\x02\x03\x04 7", ""},
           Attempt{"line end", "x'\r\nOR 'a' = 'a", ""},
           Attempt{"UTF-8, cut off", "\xE2\x82", ""},
           Attempt{"UTF-8, not well-formed", "\xFF\xFE\x80", ""},
           Attempt{"UTF-8, half of a pair", "\xED\xA0\x80", ""},
           Attempt{"text read right to left", "\u202E;eor", ""},
       }) {
    attempts.push_back(attempt);
  }
}

void AddLongOnes(std::vector<Attempt>& attempts) {
  for (const Attempt& attempt : {
           Attempt{"longest pattern", Times(1000, "a"), "1,000 bytes of `a`"},
           Attempt{"pattern that matches in many ways", Times(400, "%e") + "q",
                   "`%e` 400 times, `q`"},
           Attempt{"long condition", "0" + Times(5000, " OR 1 = 2"), "`OR 1 = 2` 5,000 times"},
           Attempt{"many selects", "0" + Times(300, " UNION SELECT 1"),
                   "`UNION SELECT 1` 300 times"},
           Nested(50),
           Nested(100'000),
           Million("a million letters", "a"),
           Million("a million digits", "7"),
           Million("a million apostrophes", "'"),
           Million("a million double quotes", "\""),
           Million("a million parentheses", "("),
           Million("a million wildcards", "%"),
           Million("a million brackets", "["),
           Million("a million semicolons", ";"),
           Million("a million minus signs", "- "),
           Million("a million placeholders", "^1"),
           Million("a million bytes that are no text", "\xFF"),
           Million("a million blanks within", "x                x"),
       }) {
    attempts.push_back(attempt);
  }
}

// How many bytes of `text` from `at` on make a character that can be shown; 0 for none.
std::size_t ShownBytes(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
  };
  const unsigned first = byte(at);
  if (first >= 0x20U && first < 0x7FU) return 1;
  // Quotation marks and wide letters; marks that change the direction stay numbers.
  const unsigned second = byte(at + 1);
  const auto follows = [&](std::size_t index) { return (byte(index) & 0xC0U) == 0x80U; };
  if (first >= 0xC2U && first <= 0xDFU && follows(at + 1)) return 2;
  const bool isMark = first == 0xE2U && second == 0x80U && byte(at + 2) >= 0xA8U;
  const bool isPlain = first > 0xE0U && first <= 0xEFU && first != 0xEDU && !isMark;
  if (isPlain && follows(at + 1) && follows(at + 2)) return 3;
  return 0;
}

}  // namespace

std::string Visible(std::string_view text, std::size_t most) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string visible;
  for (std::size_t at = 0; at < text.size();) {
    if (visible.size() >= most) return visible + "...";
    if (const std::size_t shown = ShownBytes(text, at); shown > 0) {
      visible += text.substr(at, shown);
      at += shown;
    } else {
      const auto byte = static_cast<unsigned char>(text[at]);
      visible += "\\x";
      visible += kDigits[byte / 16U];
      visible += kDigits[byte % 16U];
      ++at;
    }
  }
  return visible;
}

std::vector<Attempt> Attempts() {
  std::vector<Attempt> attempts;
  AddQuotes(attempts);
  AddStatements(attempts);
  AddReaders(attempts);
  AddMarks(attempts);
  AddBytes(attempts);
  AddLongOnes(attempts);
  return attempts;
}

}  // namespace qortest
