#include "host/dialect/parameters.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/runtime_error.h"
#include "host/dialect/canonical_date.h"
#include "host/dialect/format_picture.h"
#include "host/dialect/like_pattern.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"

namespace qorhost::dialect {

namespace {

using qorcred::Value;

constexpr std::size_t kDayLength = 10;  // of YYYY-MM-DD

void SetText(Value& value, std::string_view text) {
  if (auto* held = value.As<std::string>(); held != nullptr) {
    held->assign(text);
  } else {
    value = Value(text);
  }
}

// One literal on its way into one parameter.
class Converter {
 public:
  Converter(const Bindings& bindings, const Parameter& parameter, Value& value)
      : bindings_(bindings),
        parameter_(parameter),
        literal_(bindings.literals[parameter.literal]),
        value_(value) {}

  void Convert() {
    if (literal_.kind == LiteralKind::kTimeStamp) {
      StoreTimeStamp();
      return;
    }
    switch (parameter_.conversion) {
      case Conversion::kNone:
        return Keep();
      case Conversion::kToText:
        return ToText();
      case Conversion::kPattern:
        return ToTextOf([](std::string_view text) { static_cast<void>(ReadPattern(text)); });
      case Conversion::kPicture:
        return ToTextOf(RequirePicture);
      case Conversion::kCompareNumber:
        return CompareNumber();
      case Conversion::kCompareBoolean:
        return CompareBoolean();
      case Conversion::kCompareDate:
        return CompareDate(false);
      case Conversion::kOrderDate:
        return CompareDate(true);
      case Conversion::kRowCount:
        return RowCount();
      case Conversion::kStore:
        return Store();
    }
  }

 private:
  [[noreturn]] void Refuse(const std::string& message) const {
    dialect::Refuse(bindings_.sql, literal_.offset, message);
  }

  [[noreturn]] void RefuseColumn(std::string_view takes) const {
    const std::string content = (parameter_.negated ? "-" : "") + std::string(literal_.content);
    Refuse("data type mismatch: column " + std::string(parameter_.target->name) + " takes " +
           std::string(takes) + ", not " + Quoted(content));
  }

  [[nodiscard]] double Number() const {
    return parameter_.negated ? -literal_.number : literal_.number;
  }

  [[nodiscard]] bool IsText() const { return literal_.kind == LiteralKind::kText; }

  void SetNumber(double number) { value_ = number; }

  void SetLong(std::int32_t number) { value_ = number; }

  [[nodiscard]] qorcred::Date DateOfLiteral() const {
    if (const std::optional<qorcred::Date> date = qorcred::ParseDate(literal_.content)) {
      return *date;
    }
    Refuse(Quoted(literal_.content) + " is not a date");
  }

  // The number that a text as a whole stands for.
  [[nodiscard]] std::optional<double> NumberOfText() const {
    const std::string text = TextOf(literal_);
    if (!qorcred::IsNumeric(std::string_view(text))) {
      return std::nullopt;
    }
    try {
      return qorcred::ToDouble(Value(text));
    } catch (const qorcred::RuntimeError&) {
      return std::nullopt;
    }
  }

  // The date that the literal, a text or a number, stands for.
  [[nodiscard]] std::optional<qorcred::Date> DateOfValue() const {
    switch (literal_.kind) {
      case LiteralKind::kNumber:
        return DateFromSerial(Number());
      case LiteralKind::kText:
        return qorcred::ParseDate(TextOf(literal_));
      case LiteralKind::kDate:
      case LiteralKind::kTimeStamp:
        break;
    }
    return DateOfLiteral();
  }

  // -1 or 0 for what reads as True or False.
  [[nodiscard]] std::optional<bool> TruthOfText() const {
    const std::string text = TextOf(literal_);
    if (SameName(text, "True") || SameName(text, "Yes") || SameName(text, "On")) {
      return true;
    }
    if (SameName(text, "False") || SameName(text, "No") || SameName(text, "Off")) {
      return false;
    }
    return std::nullopt;
  }

  void Keep() {
    switch (literal_.kind) {
      case LiteralKind::kNumber:
        KeepNumber();
        break;
      case LiteralKind::kDate:
        SetText(value_, CanonicalDate(DateOfLiteral()));
        break;
      case LiteralKind::kText:
      case LiteralKind::kTimeStamp:
        KeepText();
        break;
    }
  }

  void KeepNumber() {
    if (literal_.isLong) {
      SetLong(static_cast<std::int32_t>(Number()));
    } else {
      SetNumber(Number());
    }
  }

  void KeepText() {
    if (literal_.hasQuotes) {
      SetText(value_, TextOf(literal_));
    } else {
      SetText(value_, literal_.content);
    }
  }

  void ToText() {
    switch (literal_.kind) {
      case LiteralKind::kNumber:
        SetText(value_, qorcred::NumberText(Number()));
        break;
      case LiteralKind::kDate:
        SetText(value_, qorcred::DateText(DateOfLiteral()));
        break;
      case LiteralKind::kText:
      case LiteralKind::kTimeStamp:
        KeepText();
        break;
    }
  }

  // The text of the literal, where `require` does not object.
  void ToTextOf(void (*require)(std::string_view text)) {
    ToText();
    try {
      require(*value_.As<std::string>());
    } catch (const qorcred::RuntimeError& error) {
      Refuse(error.description());
    }
  }

  void CompareNumber() {
    if (literal_.kind == LiteralKind::kDate) {
      SetNumber(DateOfLiteral().serial);
    } else if (const std::optional<double> number = IsText() ? NumberOfText() : std::nullopt) {
      SetNumber(*number);
    } else {
      Keep();  // a text that is no number equals none
    }
  }

  void CompareBoolean() {
    if (const std::optional<bool> truth = IsText() ? TruthOfText() : std::nullopt) {
      SetLong(*truth ? -1 : 0);
    } else {
      CompareNumber();
    }
  }

  void CompareDate(bool mustBeDate) {
    if (const std::optional<qorcred::Date> date = DateOfValue()) {
      SetText(value_, CanonicalDate(*date));
    } else if (mustBeDate) {
      Refuse("data type mismatch: " + Quoted(literal_.content) + " is not a date");
    } else {
      ToText();  // what is no date equals none
    }
  }

  void RowCount() {
    if (literal_.kind != LiteralKind::kNumber || !literal_.isLong) {
      Refuse("TOP takes a whole number of rows");
    }
    KeepNumber();
  }

  void StoreTimeStamp() {
    if (parameter_.conversion == Conversion::kStore &&
        parameter_.target->type == ColumnType::kIdentity) {
      RefuseColumn("numbers");
    }
    SetText(value_, bindings_.timeStamp);
  }

  void Store() {
    switch (parameter_.target->type) {
      case ColumnType::kIdentity:
      case ColumnType::kLong:
        StoreLong();
        break;
      case ColumnType::kDouble:
        SetNumber(NumberForColumn());
        break;
      case ColumnType::kBoolean:
        StoreBoolean();
        break;
      case ColumnType::kDate:
        if (const std::optional<qorcred::Date> date = DateOfValue()) {
          SetText(value_, CanonicalDate(*date));
        } else {
          RefuseColumn("dates");
        }
        break;
      case ColumnType::kText:
        ToText();
        break;
    }
  }

  [[nodiscard]] double NumberForColumn() const {
    if (literal_.kind == LiteralKind::kDate) {
      return DateOfLiteral().serial;
    }
    if (!IsText()) {
      return Number();
    }
    if (const std::optional<double> number = NumberOfText()) {
      return *number;
    }
    RefuseColumn("numbers");
  }

  void StoreLong() {
    if (literal_.isLong) {
      KeepNumber();
      return;
    }
    try {
      SetLong(qorcred::RoundToLong(NumberForColumn()));
    } catch (const qorcred::RuntimeError&) {
      RefuseColumn("numbers of 32 bits");
    }
  }

  void StoreBoolean() {
    if (const std::optional<bool> truth = IsText() ? TruthOfText() : std::nullopt) {
      SetLong(*truth ? -1 : 0);
      return;
    }
    const std::optional<double> number = IsText() ? NumberOfText() : NumberForColumn();
    if (!number) {
      RefuseColumn("True or False");
    }
    SetLong(*number != 0.0 ? -1 : 0);
  }

  const Bindings& bindings_;
  const Parameter& parameter_;
  const Literal& literal_;
  Value& value_;
};

}  // namespace

void SetParameter(const Bindings& bindings, const Parameter& parameter, Value& value) {
  switch (parameter.source) {
    case ParameterSource::kNow:
      SetText(value, bindings.timeStamp);
      return;
    case ParameterSource::kToday:
      SetText(value, std::string(bindings.timeStamp.substr(0, kDayLength)) + " 00:00:00");
      return;
    case ParameterSource::kLiteral:
      break;
  }
  Converter(bindings, parameter, value).Convert();
}

}  // namespace qorhost::dialect
