// Inputs that are wrong before any controller is asked.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qorhost {

/// What a front end calls an input.
struct FieldWord {
  std::string_view field;    ///< a desk's own name
  std::string_view word;     ///< "" when the front end has none: messages go without then
  std::string_view seeAlso;  ///< where it is listed what can be given; may be ""
};

/// What a person gave and a desk cannot take. `field` is the desk's own name of the input, one of
/// the constants beside the desk's entry. In `reason`, a sentence, {field} stands for what the
/// front end calls it, {value} for what was given, any other field's name in braces for what that
/// one is called, and {{ for a brace. All texts are as they came.
class InputFault : public std::runtime_error {
 public:
  enum class Kind : std::uint8_t {
    kWrong,
    kSeeList,  ///< what can be given is listed somewhere: the front end says where
  };

  InputFault(std::string_view field, std::string_view value, std::string_view reason,
             Kind kind = Kind::kWrong);

  [[nodiscard]] std::string_view field() const noexcept { return field_; }
  [[nodiscard]] const std::string& value() const noexcept { return value_; }
  [[nodiscard]] const std::string& reason() const noexcept { return reason_; }
  [[nodiscard]] Kind kind() const noexcept { return kind_; }

 private:
  std::string_view field_;
  std::string value_;
  std::string reason_;
  Kind kind_;
};

/// A text from a store or a person, as it has to stand in a reason: nothing in it stands for
/// something else.
[[nodiscard]] std::string InReason(std::string_view text);

/// What a front end calls the input; the desk's own name where it has no word.
[[nodiscard]] std::string_view WordOf(const InputFault& fault, std::span<const FieldWord> words);

/// The reason in the words of a front end. A field without a word goes by its own name.
[[nodiscard]] std::string InWords(const InputFault& fault, std::span<const FieldWord> words);

}  // namespace qorhost
