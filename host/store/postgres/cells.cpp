#include "host/store/postgres/cells.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "host/store/postgres/table_text.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::ColumnType;
using qorcred::Value;

// The server's numbers of types.
constexpr std::uint32_t kInt8 = 20;
constexpr std::uint32_t kInt2 = 21;
constexpr std::uint32_t kInt4 = 23;
constexpr std::uint32_t kFloat8 = 701;
constexpr std::uint32_t kJson = 3802;

constexpr bool IsOfWholeNumbers(std::uint32_t type) {
  return type == kInt8 || type == kInt2 || type == kInt4;
}

/// Whether its cells are numbers, or may be.
constexpr bool IsOfNumbers(std::uint32_t type) {
  return IsOfWholeNumbers(type) || type == kFloat8 || type == kJson;
}

/// As the server writes one: digits, behind a "-" or not. By hand, for most cells are such numbers.
std::int64_t WholeNumberIn(std::string_view text) {
  constexpr std::uint64_t kTen = 10;
  const bool isNegative = text.starts_with('-');
  std::uint64_t number = 0;
  for (const char digit : text.substr(isNegative ? 1 : 0)) {
    number = number * kTen + static_cast<std::uint64_t>(digit - '0');
  }
  return static_cast<std::int64_t>(isNegative ? 0 - number : number);
}

/// A number with all its digits.
std::string TextOf(double number) {
  std::array<char, 32> buffer;
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

double NumberIn(std::string_view text) {
  double number = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// A number of arithmetic: whole ones that fit are Longs.
Value LongOrDouble(double number) {
  const bool isLong = number == std::trunc(number) &&
                      number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
  return isLong ? Value(static_cast<std::int32_t>(number)) : Value(number);
}

Value PlainCell(std::uint32_t type, std::string_view text, bool isTyped) {
  switch (type) {
    case kInt2:
    case kInt4:
    case kInt8:
      return WholeNumber(WholeNumberIn(text));
    case kFloat8:
      return isTyped ? Value(NumberIn(text)) : LongOrDouble(NumberIn(text));
    case kJson: {
      const auto json = nlohmann::json::parse(text);
      return json.is_string() ? Value(json.get<std::string>()) : LongOrDouble(json.get<double>());
    }
    default:
      return {text};
  }
}

/// A cell that is not Null, by the server's number of its type and what the dialect knows of it.
Value CellValue(std::uint32_t type, std::string_view text, const std::optional<ColumnType>& known) {
  const CellKind kind = known ? CellKindOf(*known) : CellKind::kPlain;
  if (kind == CellKind::kPlain) {
    return PlainCell(type, text, known.has_value());
  }
  const bool isBoolean = kind == CellKind::kBoolean;
  if (!IsOfNumbers(type)) {
    return isBoolean ? Value(text) : DateOrText(text);
  }
  const Value plain = PlainCell(type, text, true);
  if (const auto* number = plain.As<std::int32_t>()) {
    return isBoolean ? Value(*number != 0) : DateOrNumber(*number);
  }
  if (const auto* number = plain.As<double>()) {
    return isBoolean ? Value(*number != 0.0) : DateOrNumber(*number);
  }
  return isBoolean ? plain : DateOrText(*plain.As<std::string>());
}

/// What a column holds that takes numbers as well as time stamps.
Value NumberOrText(const std::string& text) {
  const std::size_t sign = text.rfind('-', 0) == 0 ? 1 : 0;
  const bool isNumber = text.size() > sign && text.size() <= sign + 10 &&
                        text.find_first_not_of("0123456789", sign) == std::string::npos;
  return isNumber ? WholeNumber(static_cast<std::int64_t>(NumberIn(text))) : Value(text);
}

}  // namespace

SentValues::SentValues(std::span<const Value> values) {
  texts_.reserve(values.size());
  for (const Value& value : values) {
    Add(value);
  }
}

void SentValues::AddNumber(std::int64_t number) {
  texts_.emplace_back(std::to_string(number));
}

void SentValues::Add(const Value& value) {
  switch (value.type()) {
    case qorcred::ValueType::kLong:
      return AddNumber(*value.As<std::int32_t>());
    case qorcred::ValueType::kInteger:
      return AddNumber(*value.As<std::int16_t>());
    case qorcred::ValueType::kBoolean:
      return AddNumber(*value.As<bool>() ? -1 : 0);
    case qorcred::ValueType::kDouble:
      texts_.emplace_back(TextOf(*value.As<double>()));
      return;
    case qorcred::ValueType::kString:
      return AddText(*value.As<std::string>());
    case qorcred::ValueType::kNull:
    case qorcred::ValueType::kEmpty:
      return AddNull();
    default:
      throw StoreError("A value of this kind cannot be stored: use a number, a text or Null");
  }
}

std::vector<Sent> SentValues::sent() const {
  return {texts_.begin(), texts_.end()};
}

Value CellOf(const Result& result, int row, int column, const std::optional<ColumnType>& type) {
  const auto text = result.Cell(row, column);
  return text ? CellValue(result.TypeOf(column), *text, type) : Value(qorcred::Null{});
}

void RowReader::Look(const Result& first) {
  for (std::size_t column = 0; column < types_.size(); ++column) {
    const std::uint32_t type = first.TypeOf(static_cast<int>(column));
    const CellKind kind = types_[column] ? CellKindOf(*types_[column]) : CellKind::kPlain;
    const Form form = kind == CellKind::kPlain && IsOfWholeNumbers(type) ? Form::kWholeNumber
                      : kind == CellKind::kDate && !IsOfNumbers(type)    ? Form::kDateText
                                                                         : Form::kOther;
    columns_.push_back({type, form});
  }
}

std::size_t RowReader::Read(const Result& answer, std::span<Value> cells) {
  if (columns_.empty()) {
    Look(answer);
  }
  std::size_t bytes = cells.size() * sizeof(Value);
  for (std::size_t at = 0; at < cells.size(); ++at) {
    const auto text = answer.Cell(0, static_cast<int>(at));
    const Column& column = columns_[at];
    if (!text) {
      cells[at] = qorcred::Null{};
    } else if (column.form == Form::kWholeNumber) {
      cells[at] = WholeNumber(WholeNumberIn(*text));
    } else if (column.form == Form::kDateText) {
      cells[at] = DateIn(*text);
    } else {
      cells[at] = CellValue(column.serverType, *text, types_[at]);
      bytes += cells[at].Is(qorcred::ValueType::kString) ? text->size() : 0;
    }
  }
  return bytes;
}

/// Rows that were stored together have one date.
const Value& RowReader::DateIn(std::string_view text) {
  if (text != dateText_) {
    date_ = DateOrText(text);
    dateText_ = text;
  }
  return date_;
}

Value ToldCell(const dialect::Column& column, const nlohmann::json& cell, RowState state) {
  if (cell.is_null()) {
    return {qorcred::Null{}};
  }
  if (cell.is_string()) {
    const auto text = cell.get<std::string>();
    return TakesTimeStamps(column) ? NumberOrText(text) : Value(text);
  }
  if (column.type == ColumnType::kDouble) {
    const auto number = cell.get<double>();
    return state == RowState::kAfter ? LongOrDouble(number) : Value(number);
  }
  return WholeNumber(cell.get<std::int64_t>());
}

std::string_view SentTypeOf(const dialect::Column& column) {
  switch (column.type) {
    case ColumnType::kLong:
      return TakesTimeStamps(column) ? "text" : "int4";
    case ColumnType::kIdentity:
    case ColumnType::kBoolean:
      return "int4";
    case ColumnType::kDouble:
      return "float8";
    case ColumnType::kDate:
    case ColumnType::kText:
      break;
  }
  return "text";
}

}  // namespace qorhost::postgres
