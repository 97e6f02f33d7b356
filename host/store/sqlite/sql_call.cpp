#include "host/store/sqlite/sql_call.h"

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "host/dialect/canonical_date.h"
#include "host/dialect/refusal.h"

namespace qorhost::sqlite {

using namespace dialect;

namespace {

using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

}  // namespace

std::string SqlCall::Text(std::size_t index) const {
  switch (TypeOf(index)) {
    case SQLITE_INTEGER:
      return std::to_string(Integer(index));
    case SQLITE_FLOAT:
      return qorcred::NumberText(Double(index));
    default:
      return std::string(Bytes(index));
  }
}

std::string_view SqlCall::Bytes(std::size_t index) const {
  const void* bytes = sqlite3_value_blob(arguments_[index]);
  const int size = sqlite3_value_bytes(arguments_[index]);
  return {static_cast<const char*>(bytes), static_cast<std::size_t>(bytes == nullptr ? 0 : size)};
}

std::size_t SqlCall::CountOf(std::size_t index) const {
  const std::int32_t number = qorcred::RoundToLong(NumberOf(index));
  if (number < 0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  return static_cast<std::size_t>(number);
}

double SqlCall::NumberOf(std::size_t index) const {
  if (IsNumber(index)) {
    return Double(index);
  }
  const std::string text = Text(index);
  if (!qorcred::IsNumeric(std::string_view(text))) {
    throw RuntimeError(ErrorNumber::kTypeMismatch,
                       "data type mismatch: " + Quoted(text) + " is not a number");
  }
  return qorcred::ToDouble(Value(text));
}

std::optional<qorcred::Date> SqlCall::DateOf(std::size_t index) const {
  if (IsNumber(index)) {
    return DateFromSerial(Double(index));
  }
  const std::string_view text = Bytes(index);
  const std::optional<qorcred::Date> canonical = FromCanonicalDate(text);
  return canonical ? canonical : qorcred::ParseDate(text);
}

void SqlCall::Return(std::string_view text) const {
  // A text without bytes may have no address, which the engine would take for Null.
  const char* bytes = text.empty() ? "" : text.data();
  sqlite3_result_text64(context_, bytes, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

}  // namespace qorhost::sqlite
