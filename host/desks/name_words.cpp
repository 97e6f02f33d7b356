#include "host/desks/name_words.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "frame/text.h"
#include "frame/utf8.h"
#include "host/dialect/folding.h"

namespace qorhost {

namespace {

struct PlainLetter {
  char32_t letter;
  std::string_view plain;
};

/// Letters that people type without their stroke, although it is no accent that can be taken off.
constexpr std::array kStroked{
    PlainLetter{U'æ', "ae"}, PlainLetter{U'ð', "d"}, PlainLetter{U'ø', "o"},
    PlainLetter{U'þ', "th"}, PlainLetter{U'đ', "d"}, PlainLetter{U'ħ', "h"},
    PlainLetter{U'ı', "i"},  PlainLetter{U'ł', "l"}, PlainLetter{U'œ', "oe"}};

std::string LowerAsciiText(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), qorcred::LowerAscii);
  return lower;
}

using Letters = std::vector<utf8proc_int32_t>;

constexpr auto kWithoutMarks = static_cast<utf8proc_option_t>(
    UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT | UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK);
constexpr auto kComposed = static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE);

/// Its letters, each with its marks behind it as far as `options` leave them; nothing for a text
/// that is not UTF-8.
std::optional<Letters> Decomposed(std::string_view text, utf8proc_option_t options) {
  Letters letters(text.size() * 2);
  const auto decompose = [&] {
    return utf8proc_decompose(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                              static_cast<utf8proc_ssize_t>(text.size()), letters.data(),
                              static_cast<utf8proc_ssize_t>(letters.size()), options);
  };
  utf8proc_ssize_t count = decompose();
  if (count > static_cast<utf8proc_ssize_t>(letters.size())) {
    letters.resize(static_cast<std::size_t>(count));
    count = decompose();
  }
  if (count < 0) {
    return std::nullopt;
  }
  letters.resize(static_cast<std::size_t>(count));
  return letters;
}

void AppendLetter(std::string& text, utf8proc_int32_t letter) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const utf8proc_ssize_t size = utf8proc_encode_char(letter, bytes.data());
  text.append(bytes.begin(), bytes.begin() + size);
}

bool IsApostrophe(char32_t letter) {
  return letter == U'\'' || letter == U'\u2019' || letter == U'\u02BC';
}

bool IsOfWord(char32_t letter) {
  constexpr char32_t kFirstBeyondAscii = 0x80;
  if (letter < kFirstBeyondAscii) {
    const char ascii = static_cast<char>(letter);
    return qorcred::IsDigit(ascii) || (ascii >= 'a' && ascii <= 'z');
  }
  if (letter >= qorcred::kInvalidByte) {
    return true;
  }
  const utf8proc_category_t category = utf8proc_category(static_cast<utf8proc_int32_t>(letter));
  return category <= UTF8PROC_CATEGORY_NO && category != UTF8PROC_CATEGORY_CN;
}

}  // namespace

std::string Plain(std::string_view text) {
  if (qorcred::IsAscii(text)) {
    return LowerAsciiText(text);
  }
  const std::optional<Letters> letters = Decomposed(text, kWithoutMarks);
  if (!letters) {
    return LowerAsciiText(text);
  }
  std::string plain;
  for (const utf8proc_int32_t letter : *letters) {
    const auto* stroked =
        std::find_if(kStroked.begin(), kStroked.end(), [letter](const PlainLetter& known) {
          return known.letter == static_cast<char32_t>(letter);
        });
    if (stroked != kStroked.end()) {
      plain += stroked->plain;
    } else {
      AppendLetter(plain, letter);
    }
  }
  return plain;
}

std::u32string FoldedText(std::string_view text) {
  std::optional<Letters> letters;
  if (!qorcred::IsAscii(text)) {
    letters = Decomposed(text, kComposed);
  }
  if (!letters) {
    return dialect::Folded(text);
  }
  const utf8proc_ssize_t count = utf8proc_normalize_utf32(
      letters->data(), static_cast<utf8proc_ssize_t>(letters->size()), kComposed);
  std::u32string folded;
  for (utf8proc_ssize_t at = 0; at < count; ++at) {
    folded += dialect::FoldPoint(static_cast<char32_t>((*letters)[static_cast<std::size_t>(at)]));
  }
  return folded;
}

Words WordsOf(std::string_view text) {
  const std::string plain = Plain(text);
  Words words;
  bool inside = false;
  for (std::size_t position = 0; position < plain.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(plain, position);
    if (!IsApostrophe(character.codePoint)) {
      const bool ofWord = IsOfWord(character.codePoint);
      if (ofWord && !inside) {
        words.emplace_back();
      }
      if (ofWord) {
        words.back().append(plain, position, character.length);
      }
      inside = ofWord;
    }
    position += character.length;
  }
  return words;
}

/// Lower case, words apart: what WordsOf() does to a text of ASCII.
void NameReader::AddPlain(std::string_view ascii) {
  bool inside = false;
  for (const char given : ascii) {
    const char letter = qorcred::LowerAscii(given);
    if (letter == '\'') {
      continue;
    }
    const bool ofWord = IsOfWord(static_cast<unsigned char>(letter));
    if (ofWord && !inside) {
      ends_.emplace_back(letters_.size(), 0);
    }
    if (ofWord) {
      letters_ += letter;
      ends_.back().second = letters_.size();
    }
    inside = ofWord;
  }
}

const std::vector<std::string_view>& NameReader::Read(
    std::initializer_list<std::string_view> texts) {
  letters_.clear();
  ends_.clear();
  for (const std::string_view text : texts) {
    if (qorcred::IsAscii(text)) {
      AddPlain(text);
      continue;
    }
    for (const std::string& word : WordsOf(text)) {
      ends_.emplace_back(letters_.size(), letters_.size() + word.size());
      letters_ += word;
    }
  }
  words_.clear();
  for (const auto& [begin, end] : ends_) {
    words_.push_back(std::string_view(letters_).substr(begin, end - begin));
  }
  return words_;
}

WantedWords::WantedWords(Words words) : words_(std::move(words)) {
  // A word that a shorter one begins, too, is left for who needs it.
  std::stable_sort(words_.begin(), words_.end(),
                   [](const auto& one, const auto& other) { return one.size() > other.size(); });
}

NameMatch WantedWords::MatchOf(std::span<const std::string_view> name) const {
  if (words_.empty() || words_.size() > name.size()) {
    return NameMatch::kNone;
  }
  taken_.assign(name.size(), false);
  bool wholeWords = true;
  for (const std::string& part : words_) {
    std::optional<std::size_t> found;
    for (std::size_t at = 0; at < name.size(); ++at) {
      if (!taken_[at] && name[at].starts_with(part) && (!found || name[at] == part)) {
        found = at;
      }
    }
    if (!found) {
      return NameMatch::kNone;
    }
    taken_[*found] = true;
    wholeWords = wholeWords && name[*found] == part;
  }
  if (!wholeWords) {
    return NameMatch::kParts;
  }
  return words_.size() == name.size() ? NameMatch::kWhole : NameMatch::kWords;
}

NameMatch MatchOf(const Words& wanted, const Words& name) {
  return WantedWords(wanted).MatchOf(std::vector<std::string_view>(name.begin(), name.end()));
}

std::vector<std::size_t> BestMatches(const Words& wanted, std::span<const Words> names) {
  NameMatch best = NameMatch::kParts;
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < names.size(); ++at) {
    const NameMatch match = MatchOf(wanted, names[at]);
    if (match > best) {
      best = match;
      places.clear();
    }
    if (match == best) {
      places.push_back(at);
    }
  }
  return places;
}

}  // namespace qorhost
