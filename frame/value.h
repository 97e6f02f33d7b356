// The variant value that crosses every boundary of the library: a cell, a control's property, an
// argument or a result.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace qorcred {

class Object;

/// A shared reference to anything reached by member name. Null means "nothing".
using ObjectRef = std::shared_ptr<Object>;

/// A date with a time of day: days since 30 December 1899, the fraction being the time.
/// Valid from the year 100 to 9999; see frame/date.h for the arithmetic.
struct Date {
  double serial = 0.0;
  friend bool operator==(const Date&, const Date&) = default;
};

/// No data, as a database column knows it. Not the same as Empty or "".
struct Null {
  friend bool operator==(const Null&, const Null&) = default;
};

/// An optional argument that the caller left out.
struct Missing {
  friend bool operator==(const Missing&, const Missing&) = default;
};

using StringArray = std::vector<std::string>;

enum class ValueType : std::uint8_t {
  kEmpty,
  kNull,
  kBoolean,
  kInteger,  ///< 16 bit, signed
  kLong,     ///< 32 bit, signed
  kDouble,
  kDate,
  kString,  ///< UTF-8
  kObject,
  kStringArray,
  kMissing,
};

/// One value of any of the types above. Copying copies texts and arrays and shares objects.
/// Conversions between the types are in frame/convert.h; a value never converts by itself.
class Value {
 public:
  Value() = default;
  Value(Null null) : data_(null) {}
  Value(Missing missing) : data_(missing) {}
  Value(bool flag) : data_(flag) {}
  Value(std::int16_t number) : data_(number) {}
  Value(std::int32_t number) : data_(number) {}
  Value(double number) : data_(number) {}
  Value(Date date) : data_(date) {}
  Value(std::string text) : data_(std::move(text)) {}
  Value(std::string_view text) : data_(std::in_place_type<std::string>, text) {}
  Value(const char* text) : data_(std::in_place_type<std::string>, text) {}
  Value(ObjectRef object) : data_(std::move(object)) {}
  Value(StringArray texts) : data_(std::move(texts)) {}
  // Any other pointer would silently become a Boolean.
  Value(const void*) = delete;

  [[nodiscard]] ValueType type() const { return static_cast<ValueType>(data_.index()); }
  [[nodiscard]] bool Is(ValueType type) const { return this->type() == type; }

  /// The content when it has exactly type T (bool, std::int16_t, std::string, ...), else null.
  template <typename T>
  [[nodiscard]] const T* As() const {
    return std::get_if<T>(&data_);
  }
  template <typename T>
  [[nodiscard]] T* As() {
    return std::get_if<T>(&data_);
  }

  /// Same type and same content; objects by identity. For the language's "=" see Equals().
  friend bool operator==(const Value&, const Value&) = default;

 private:
  // The alternatives stand in the order of ValueType.
  std::variant<std::monostate, Null, bool, std::int16_t, std::int32_t, double, Date, std::string,
               ObjectRef, StringArray, Missing>
      data_;
};

}  // namespace qorcred
