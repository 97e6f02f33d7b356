#include "host/store/sqlite/engine_names.h"

namespace qorhost::sqlite {

using namespace dialect;

std::string_view SymbolOf(Operator op) {
  switch (op) {
    case Operator::kAdd:
      return " + ";
    case Operator::kSubtract:
      return " - ";
    case Operator::kMultiply:
      return " * ";
    case Operator::kEqual:
      return " = ";
    case Operator::kNotEqual:
      return " <> ";
    case Operator::kLess:
      return " < ";
    case Operator::kLessOrEqual:
      return " <= ";
    case Operator::kGreater:
      return " > ";
    case Operator::kGreaterOrEqual:
      return " >= ";
    case Operator::kDivide:
    case Operator::kWholeDivide:
    case Operator::kModulo:
    case Operator::kPower:
    case Operator::kNone:
      break;
  }
  return ", ";  // printed as a function of two arguments
}

std::string_view FunctionOf(Operator op) {
  switch (op) {
    case Operator::kDivide:
      return "desktop_divide";
    case Operator::kWholeDivide:
      return "desktop_whole_divide";
    case Operator::kModulo:
      return "desktop_modulo";
    case Operator::kPower:
      return "desktop_power";
    default:
      return "";
  }
}

std::string_view FunctionOf(Function function) {
  switch (function) {
    case Function::kVal:
      return "desktop_val";
    case Function::kFormat:
      return "desktop_format";
    case Function::kUpper:
      return "desktop_ucase";
    case Function::kLower:
      return "desktop_lcase";
    case Function::kLength:
      return "desktop_len";
    case Function::kTrim:
      return "desktop_trim";
    case Function::kTrimLeft:
      return "desktop_ltrim";
    case Function::kTrimRight:
      return "desktop_rtrim";
    case Function::kLeft:
      return "desktop_left";
    case Function::kRight:
      return "desktop_right";
    case Function::kMiddle:
      return "desktop_mid";
    case Function::kIif:
    case Function::kIsNull:
    case Function::kNullTo:
    case Function::kNow:
    case Function::kToday:
      break;
  }
  return "";
}

std::string_view FunctionOf(Aggregate aggregate) {
  switch (aggregate) {
    case Aggregate::kCount:
      return "count";
    case Aggregate::kSum:
      return "sum";
    case Aggregate::kMinimum:
      return "min";
    case Aggregate::kMaximum:
      return "max";
    case Aggregate::kAverage:
      return "avg";
  }
  return "";
}

std::string_view FunctionOf(Coercion coercion, ValueClass valueClass) {
  switch (coercion) {
    case Coercion::kText:
      return valueClass == ValueClass::kDate ? "desktop_date_text" : "desktop_text";
    case Coercion::kNumber:
      return "desktop_number";
    case Coercion::kDate:
      return "desktop_date";
    case Coercion::kStoreLong:
      return "desktop_store_long";
    case Coercion::kStoreDouble:
      return "desktop_store_double";
    case Coercion::kStoreBoolean:
      return "desktop_store_boolean";
    case Coercion::kStoreDate:
      return "desktop_store_date";
    case Coercion::kNone:
      break;
  }
  return "";
}

}  // namespace qorhost::sqlite
