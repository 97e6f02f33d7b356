// Building statement texts and closing the holes that empty values leave in them.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qorcred {

/// A statement with Null where a value is missing: between ", ," (however many in a row), for
/// "''", after "= " before a comma, and for every "-1". The rules know nothing of literals or
/// numbers: hosts rely on "-12" becoming "Null2". An unchanged statement is handed back as it is.
[[nodiscard]] std::string FixNullValues(std::string sql);

/// The same rules without the one for "-1".
[[nodiscard]] std::string ReplaceEmptyWithNull(std::string sql);

/// The text of a date as FixNullValues() leaves it whole: one that holds "-1" has slashes in the
/// place of its hyphens, any other is handed back as it is.
[[nodiscard]] std::string DateWithoutMinusOne(std::string text);

/// A text or a whole number on its way into Concat(). Does not own the text.
class TextPart {
 public:
  TextPart(std::string_view text) : text_(text) {}
  TextPart(const std::string& text) : text_(text) {}
  TextPart(const char* text) : text_(text) {}
  TextPart(std::int32_t number) {
    const auto end = std::to_chars(digits_.data(), digits_.data() + digits_.size(), number).ptr;
    digitCount_ = static_cast<std::size_t>(end - digits_.data());
  }
  // These would silently become whole numbers.
  TextPart(bool) = delete;
  TextPart(char) = delete;
  TextPart(double) = delete;

  [[nodiscard]] std::string_view View() const {
    return digitCount_ > 0 ? std::string_view(digits_.data(), digitCount_) : text_;
  }

 private:
  std::string_view text_;
  std::array<char, 11> digits_{};  // "-2147483648"
  std::size_t digitCount_ = 0;
};

/// One text from texts and whole numbers (in decimal), with a single allocation.
template <typename... Parts>
[[nodiscard]] std::string Concat(const Parts&... parts) {
  const std::array<TextPart, sizeof...(Parts)> all{TextPart(parts)...};
  std::size_t size = 0;
  for (const TextPart& part : all) size += part.View().size();
  std::string text;
  text.reserve(size);
  for (const TextPart& part : all) text.append(part.View());
  return text;
}

}  // namespace qorcred
