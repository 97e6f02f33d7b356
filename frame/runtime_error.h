// The numbered failures that the library's operations meet and, where they do not trap, raise.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace qorcred {

/// Numbers as automation hosts know them; COM hands them on unchanged.
enum class ErrorNumber : int {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kIndexOutOfRange = 9,
  kTypeMismatch = 13,
  kInternal = 51,
  kObjectNotSet = 91,
  kInvalidUseOfNull = 94,
  kObjectRequired = 424,
  kCannotCreateComponent = 429,
  kUnknownMember = 438,
  kUnknownArgument = 448,
  kArgumentNotOptional = 449,
  kWrongArgumentCount = 450,
  kApplicationDefined = 1000,
};

/// A failure with its number and a text for people. Thrown inside the library; it leaves a public
/// operation only where that operation's description says so.
class RuntimeError : public std::exception {
 public:
  /// Uses the standard text of `number`.
  explicit RuntimeError(ErrorNumber number);
  RuntimeError(ErrorNumber number, std::string description);

  [[nodiscard]] ErrorNumber number() const noexcept { return number_; }
  [[nodiscard]] const std::string& description() const noexcept { return description_; }
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  ErrorNumber number_;
  std::string description_;
};

/// The standard text of an error number, for example "Overflow".
[[nodiscard]] std::string_view DescriptionOf(ErrorNumber number);

/// The exception being handled as a RuntimeError: itself when it is one, kOutOfMemory for
/// std::bad_alloc, otherwise kInternal with the exception's own text. Call it in a catch block
/// only.
[[nodiscard]] RuntimeError CurrentFailure();

}  // namespace qorcred
