// Names as people look for them: by their words, without accents and letter case.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace qorhost {

/// The text in lower case and without accents, however these are encoded: "Öztürk" is "ozturk",
/// "Søren" is "soren". Bytes that are not UTF-8 stay.
[[nodiscard]] std::string Plain(std::string_view text);

/// The text as folded code points, as conditions compare it: letter case does not count, nor
/// whether an accent is encoded with its letter or behind it (NFC, NFD); accents themselves do.
/// What is not UTF-8 is folded as it is.
[[nodiscard]] std::u32string FoldedText(std::string_view text);

/// What a text is sorted by, as people do it: without accents and letter case, so that Öztürk
/// stands behind Ozan and in front of Petrov; what is the same so by its bytes.
struct TextOrder {
  std::string plain;
  std::string text;

  TextOrder() = default;
  explicit TextOrder(std::string_view given) : plain(Plain(given)), text(given) {}
  [[nodiscard]] friend bool operator==(const TextOrder& one, const TextOrder& other) = default;
  [[nodiscard]] friend bool operator<(const TextOrder& one, const TextOrder& other) {
    return std::tie(one.plain, one.text) < std::tie(other.plain, other.text);
  }
};

/// The words of a plain text: letters and digits; apostrophes are no part of a word and do not
/// divide it ("O'Brien" is "obrien"), everything else divides.
using Words = std::vector<std::string>;
[[nodiscard]] Words WordsOf(std::string_view text);

/// The same of many texts, one after the other, in memory that is used again.
class NameReader {
 public:
  /// The words of the texts, as if blanks stood between them. Valid until the next call.
  const std::vector<std::string_view>& Read(std::initializer_list<std::string_view> texts);

 private:
  void AddPlain(std::string_view ascii);

  std::string letters_;                                    // of all words
  std::vector<std::pair<std::size_t, std::size_t>> ends_;  // where each begins and ends there
  std::vector<std::string_view> words_;
};

/// How well the words that are looked for go with a name; a better one is a greater one.
enum class NameMatch : std::uint8_t {
  kNone,
  kParts,  ///< each begins a word of the name, no two of them the same
  kWords,  ///< each is a word of the name
  kWhole,  ///< they are all the words of the name, in whatever order
};

/// Words that are looked for, in many names.
class WantedWords {
 public:
  explicit WantedWords(Words words);

  [[nodiscard]] const Words& words() const { return words_; }
  /// Without a word nothing matches. Takes as long as both have words.
  [[nodiscard]] NameMatch MatchOf(std::span<const std::string_view> name) const;

 private:
  Words words_;  // the longest first
  mutable std::vector<bool> taken_;
};

/// How well `wanted` goes with one name.
[[nodiscard]] NameMatch MatchOf(const Words& wanted, const Words& name);

/// The places of the names with which `wanted` goes best, in their order; none where it goes with
/// none of them.
[[nodiscard]] std::vector<std::size_t> BestMatches(const Words& wanted,
                                                   std::span<const Words> names);

}  // namespace qorhost
