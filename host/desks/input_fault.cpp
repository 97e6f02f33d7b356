#include "host/desks/input_fault.h"

#include <algorithm>
#include <optional>

#include "frame/text.h"

namespace qorhost {

namespace {

constexpr std::string_view kOwnField = "{field}";
constexpr std::string_view kBrace = "{{";  // stands for one

const FieldWord* Find(std::span<const FieldWord> words, std::string_view field) {
  const auto found = std::find_if(words.begin(), words.end(),
                                  [field](const FieldWord& word) { return word.field == field; });
  return found == words.end() ? nullptr : &*found;
}

/// The words for one fault.
class Wording {
 public:
  Wording(std::string_view field, std::string_view value, std::span<const FieldWord> words)
      : field_(field), value_(value), words_(words) {}

  /// The text with what stands for its names in braces, from left to right: what a value holds is
  /// never taken for a name.
  [[nodiscard]] std::string Fill(std::string_view text) const {
    std::string filled;
    while (!text.empty()) {
      const std::size_t open = std::min(text.find('{'), text.size());
      filled += text.substr(0, open);
      text.remove_prefix(open);
      if (text.starts_with(kBrace)) {
        filled += text.front();
        text.remove_prefix(kBrace.size());
        continue;
      }
      const std::size_t close = text.find('}');
      const auto meant =
          close == std::string_view::npos ? std::nullopt : Meant(text.substr(0, close + 1));
      if (meant) {
        filled += *meant;
        text.remove_prefix(close + 1);
      } else if (!text.empty()) {
        filled += text.front();
        text.remove_prefix(1);
      }
    }
    return filled;
  }

 private:
  [[nodiscard]] std::optional<std::string_view> Meant(std::string_view inBraces) const {
    if (inBraces == "{value}") {
      return value_;
    }
    if (inBraces == kOwnField) {
      const FieldWord* word = Find(words_, field_);
      return word == nullptr ? field_ : word->word;
    }
    const FieldWord* other = Find(words_, inBraces.substr(1, inBraces.size() - 2));
    return other == nullptr ? std::nullopt : std::optional(other->word);
  }

  std::string_view field_;
  std::string_view value_;
  std::span<const FieldWord> words_;
};

}  // namespace

InputFault::InputFault(std::string_view field, std::string_view value, std::string_view reason,
                       Kind kind)
    : std::runtime_error(Wording(field, value, {}).Fill(reason)),
      field_(field),
      value_(value),
      reason_(reason),
      kind_(kind) {}

std::string InReason(std::string_view text) {
  return qorcred::ReplaceAll(text, "{", kBrace);
}

std::string_view WordOf(const InputFault& fault, std::span<const FieldWord> words) {
  const FieldWord* word = Find(words, fault.field());
  return word == nullptr || word->word.empty() ? fault.field() : word->word;
}

std::string InWords(const InputFault& fault, std::span<const FieldWord> words) {
  const FieldWord* word = Find(words, fault.field());
  std::string_view reason = fault.reason();
  constexpr std::string_view kNamedFirst = "{field}: ";
  if (word != nullptr && word->word.empty() && reason.starts_with(kNamedFirst)) {
    reason.remove_prefix(kNamedFirst.size());
  }
  std::string text = Wording(fault.field(), fault.value(), words).Fill(reason);
  if (word != nullptr && fault.kind() == InputFault::Kind::kSeeList && !word->seeAlso.empty()) {
    text += ": ";
    text += word->seeAlso;
  }
  return text;
}

}  // namespace qorhost
