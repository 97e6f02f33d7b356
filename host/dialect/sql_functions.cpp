#include "host/dialect/sql_functions.h"

#include <sqlite3.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/format.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/dialect/canonical_date.h"
#include "host/dialect/folding.h"
#include "host/dialect/lexer.h"
#include "host/dialect/names.h"

namespace qorhost::dialect {

namespace {

using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

constexpr std::size_t kLongestPattern = 1024;

// One call of a function: its arguments and where its result goes.
class Call {
 public:
  Call(sqlite3_context* context, int count, sqlite3_value** arguments)
      : context_(context), arguments_(arguments, static_cast<std::size_t>(count)) {}

  [[nodiscard]] sqlite3_context* context() const { return context_; }
  [[nodiscard]] std::size_t count() const { return arguments_.size(); }

  [[nodiscard]] int TypeOf(std::size_t index) const {
    return sqlite3_value_type(arguments_[index]);
  }
  [[nodiscard]] bool IsNull(std::size_t index) const { return TypeOf(index) == SQLITE_NULL; }
  [[nodiscard]] bool IsNumber(std::size_t index) const {
    return TypeOf(index) == SQLITE_INTEGER || TypeOf(index) == SQLITE_FLOAT;
  }
  [[nodiscard]] std::int64_t Integer(std::size_t index) const {
    return sqlite3_value_int64(arguments_[index]);
  }
  [[nodiscard]] double Double(std::size_t index) const {
    return sqlite3_value_double(arguments_[index]);
  }

  // The text of any value but Null: numbers as the dialect writes them.
  [[nodiscard]] std::string Text(std::size_t index) const {
    switch (TypeOf(index)) {
      case SQLITE_INTEGER:
        return std::to_string(Integer(index));
      case SQLITE_FLOAT:
        return qorcred::NumberText(Double(index));
      default:
        return std::string(Bytes(index));
    }
  }

  // The bytes of a text.
  [[nodiscard]] std::string_view Bytes(std::size_t index) const {
    const void* bytes = sqlite3_value_blob(arguments_[index]);
    const int size = sqlite3_value_bytes(arguments_[index]);
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(bytes == nullptr ? 0 : size)};
  }

  // A whole number that counts characters.
  [[nodiscard]] std::size_t CountOf(std::size_t index) const {
    const std::int32_t number = qorcred::RoundToLong(NumberOf(index));
    if (number < 0) {
      throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
    }
    return static_cast<std::size_t>(number);
  }

  // The number that a value is, or that a text as a whole stands for.
  [[nodiscard]] double NumberOf(std::size_t index) const {
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

  // The date that a value is: a number of serial days, or a text.
  [[nodiscard]] std::optional<qorcred::Date> DateOf(std::size_t index) const {
    if (IsNumber(index)) {
      return DateFromSerial(Double(index));
    }
    const std::string_view text = Bytes(index);
    const std::optional<qorcred::Date> canonical = FromCanonicalDate(text);
    return canonical ? canonical : qorcred::ParseDate(text);
  }

  void ReturnNull() const { sqlite3_result_null(context_); }
  void Return(std::int64_t number) const { sqlite3_result_int64(context_, number); }
  void Return(double number) const { sqlite3_result_double(context_, number); }
  void Return(std::string_view text) const {
    // A text without bytes may have no address, which the engine would take for Null.
    const char* bytes = text.empty() ? "" : text.data();
    sqlite3_result_text64(context_, bytes, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  void ReturnArgument(std::size_t index) const {
    sqlite3_result_value(context_, arguments_[index]);
  }

 private:
  sqlite3_context* context_;
  std::span<sqlite3_value*> arguments_;
};

using Body = void (*)(const Call&);

// The callback that the engine sees: whatever the body throws fails the statement and ends here.
template <Body body>
void Guarded(sqlite3_context* context, int count, sqlite3_value** arguments) {
  try {
    body(Call(context, count, arguments));
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& failure) {
    sqlite3_result_error(context, failure.what(), -1);
  } catch (...) {
    sqlite3_result_error(context, "the function failed", -1);
  }
}

// As Guarded(), for functions of which Null gives Null.
template <Body body>
void PassingNull(const Call& call) {
  for (std::size_t index = 0; index < call.count(); ++index) {
    if (call.IsNull(index)) {
      call.ReturnNull();
      return;
    }
  }
  body(call);
}

[[noreturn]] void RefuseMismatch(const Call& call, std::string_view what) {
  throw RuntimeError(ErrorNumber::kTypeMismatch, "data type mismatch: " + Quoted(call.Text(0)) +
                                                     " is not " + std::string(what));
}

// Texts.

void TextOf(const Call& call) {
  if (call.IsNumber(0)) {
    call.Return(call.Text(0));
  } else {
    call.ReturnArgument(0);
  }
}

void DateTextOf(const Call& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(qorcred::DateText(*date));
  } else {
    TextOf(call);
  }
}

void Upper(const Call& call) {
  call.Return(UpperText(call.Text(0)));
}

void Lower(const Call& call) {
  call.Return(LowerText(call.Text(0)));
}

void Length(const Call& call) {
  call.Return(static_cast<std::int64_t>(qorcred::Utf16Length(call.Text(0))));
}

std::string_view WithoutBlanks(std::string_view text, bool left, bool right) {
  const std::size_t first = left ? text.find_first_not_of(' ') : 0;
  if (first == std::string_view::npos) {
    return {};
  }
  const std::size_t last = right ? text.find_last_not_of(' ') + 1 : text.size();
  return last > first ? text.substr(first, last - first) : std::string_view();
}

void Trim(const Call& call) {
  call.Return(WithoutBlanks(call.Text(0), true, true));
}

void TrimLeft(const Call& call) {
  call.Return(WithoutBlanks(call.Text(0), true, false));
}

void TrimRight(const Call& call) {
  call.Return(WithoutBlanks(call.Text(0), false, true));
}

void Left(const Call& call) {
  const std::string text = call.Text(0);
  call.Return(qorcred::LeftUtf16(text, call.CountOf(1)));
}

// The text behind its first `units` units.
std::string_view Behind(std::string_view text, std::size_t units) {
  return text.substr(qorcred::LeftUtf16(text, units).size());
}

void Right(const Call& call) {
  const std::string text = call.Text(0);
  const std::size_t length = qorcred::Utf16Length(text);
  const std::size_t wanted = call.CountOf(1);
  call.Return(Behind(text, length > wanted ? length - wanted : 0));
}

void Middle(const Call& call) {
  const std::string text = call.Text(0);
  const std::size_t start = call.CountOf(1);
  if (start == 0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  const std::string_view rest = Behind(text, start - 1);
  call.Return(call.count() > 2 ? qorcred::LeftUtf16(rest, call.CountOf(2)) : rest);
}

// Numbers.

void Val(const Call& call) {
  if (call.TypeOf(0) == SQLITE_NULL) {
    call.Return(0.0);
  } else if (call.TypeOf(0) == SQLITE_INTEGER) {
    call.Return(static_cast<double>(call.Integer(0)));
  } else {
    call.Return(qorcred::Val(call.Text(0)));
  }
}

// A number where the text is one, else the text.
void Number(const Call& call) {
  if (!call.IsNumber(0)) {
    const std::string text = call.Text(0);
    if (qorcred::IsNumeric(std::string_view(text))) {
      call.Return(qorcred::ToDouble(Value(text)));
      return;
    }
  }
  call.ReturnArgument(0);
}

double WholeOperand(const Call& call, std::size_t index) {
  // Halves go to the even neighbour, as everywhere in the dialect.
  return std::nearbyint(call.NumberOf(index));
}

void RefuseZero(double divisor) {
  if (divisor == 0.0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall, "division by zero");
  }
}

void ReturnFinite(const Call& call, double number) {
  if (!std::isfinite(number)) {
    throw RuntimeError(ErrorNumber::kOverflow);
  }
  call.Return(number);
}

void Divide(const Call& call) {
  const double divisor = call.NumberOf(1);
  RefuseZero(divisor);
  ReturnFinite(call, call.NumberOf(0) / divisor);
}

void WholeDivide(const Call& call) {
  const double divisor = WholeOperand(call, 1);
  RefuseZero(divisor);
  call.Return(
      static_cast<std::int64_t>(qorcred::RoundToLong(std::trunc(WholeOperand(call, 0) / divisor))));
}

void Modulo(const Call& call) {
  const double divisor = WholeOperand(call, 1);
  RefuseZero(divisor);
  call.Return(
      static_cast<std::int64_t>(qorcred::RoundToLong(std::fmod(WholeOperand(call, 0), divisor))));
}

void Power(const Call& call) {
  ReturnFinite(call, std::pow(call.NumberOf(0), call.NumberOf(1)));
}

// Dates.

// A canonical date where the value is one, else the value.
void CanonicalOf(const Call& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(CanonicalDate(*date));
  } else {
    call.ReturnArgument(0);
  }
}

void Serial(const Call& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(date->serial);
  } else {
    RefuseMismatch(call, "a date");
  }
}

void FromSerial(const Call& call) {
  if (const std::optional<qorcred::Date> date = DateFromSerial(call.Double(0))) {
    call.Return(CanonicalDate(*date));
  } else {
    throw RuntimeError(ErrorNumber::kOverflow, "a date outside the years 100 to 9999");
  }
}

// Pictures. Null gives ''.

Value ValueOf(const Call& call) {
  switch (call.TypeOf(0)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return Value(call.Double(0));
    default:
      return Value(call.Bytes(0));
  }
}

void FormatAs(const Call& call, const Value& value) {
  call.Return(qorcred::Format(value, call.Text(1)));
}

void Format(const Call& call) {
  if (call.IsNull(0)) {
    call.Return(std::string_view());
  } else if (call.count() == 1 || call.IsNull(1)) {
    TextOf(call);
  } else {
    FormatAs(call, ValueOf(call));
  }
}

void FormatDate(const Call& call) {
  const std::optional<qorcred::Date> date = call.IsNull(0) ? std::nullopt : call.DateOf(0);
  if (!date) {
    Format(call);
  } else if (call.count() == 1 || call.IsNull(1)) {
    call.Return(qorcred::DateText(*date));
  } else {
    FormatAs(call, Value(*date));
  }
}

// What is written to a column.

void StoreLong(const Call& call) {
  call.Return(static_cast<std::int64_t>(qorcred::RoundToLong(call.NumberOf(0))));
}

void StoreDouble(const Call& call) {
  if (call.IsNumber(0)) {
    call.ReturnArgument(0);
  } else {
    call.Return(call.NumberOf(0));
  }
}

void StoreBoolean(const Call& call) {
  constexpr std::int64_t kTrue = -1;
  if (!call.IsNumber(0) && SameName(call.Text(0), "True")) {
    call.Return(kTrue);
  } else if (!call.IsNumber(0) && SameName(call.Text(0), "False")) {
    call.Return(std::int64_t{0});
  } else {
    call.Return(call.NumberOf(0) != 0.0 ? kTrue : std::int64_t{0});
  }
}

void StoreDate(const Call& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(CanonicalDate(*date));
  } else {
    RefuseMismatch(call, "a date");
  }
}

// LIKE, as the engine calls it: the pattern, then the text.
void Like(const Call& call) {
  const auto destroy = [](void* pattern) {
    const std::unique_ptr<std::u32string> owned(static_cast<std::u32string*>(pattern));
  };
  const auto* kept = static_cast<const std::u32string*>(sqlite3_get_auxdata(call.context(), 0));
  std::u32string fresh;
  if (kept == nullptr) {
    fresh = Folded(call.Text(0));
    if (fresh.size() > kLongestPattern) {
      throw RuntimeError(ErrorNumber::kInvalidProcedureCall, "the pattern of LIKE is too long");
    }
  }
  call.Return(
      std::int64_t{MatchesPattern(Folded(call.Text(1)), kept == nullptr ? fresh : *kept) ? 1 : 0});
  if (kept == nullptr) {
    sqlite3_set_auxdata(call.context(), 0,
                        std::make_unique<std::u32string>(std::move(fresh)).release(), destroy);
  }
}

int Collate(void* /*unused*/, int leftSize, const void* left, int rightSize, const void* right) {
  return CompareFolded({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                       {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

using Callback = void (*)(sqlite3_context*, int, sqlite3_value**);

struct FunctionEntry {
  const char* name;
  int arguments;
  Callback callback;
};

constexpr std::array kFunctions{
    FunctionEntry{"like", 2, Guarded<PassingNull<Like>>},
    FunctionEntry{"desktop_text", 1, Guarded<PassingNull<TextOf>>},
    FunctionEntry{"desktop_date_text", 1, Guarded<PassingNull<DateTextOf>>},
    FunctionEntry{"desktop_ucase", 1, Guarded<PassingNull<Upper>>},
    FunctionEntry{"desktop_lcase", 1, Guarded<PassingNull<Lower>>},
    FunctionEntry{"desktop_len", 1, Guarded<PassingNull<Length>>},
    FunctionEntry{"desktop_trim", 1, Guarded<PassingNull<Trim>>},
    FunctionEntry{"desktop_ltrim", 1, Guarded<PassingNull<TrimLeft>>},
    FunctionEntry{"desktop_rtrim", 1, Guarded<PassingNull<TrimRight>>},
    FunctionEntry{"desktop_left", 2, Guarded<PassingNull<Left>>},
    FunctionEntry{"desktop_right", 2, Guarded<PassingNull<Right>>},
    FunctionEntry{"desktop_mid", 2, Guarded<PassingNull<Middle>>},
    FunctionEntry{"desktop_mid", 3, Guarded<PassingNull<Middle>>},
    FunctionEntry{"desktop_val", 1, Guarded<Val>},
    FunctionEntry{"desktop_number", 1, Guarded<PassingNull<Number>>},
    FunctionEntry{"desktop_divide", 2, Guarded<PassingNull<Divide>>},
    FunctionEntry{"desktop_whole_divide", 2, Guarded<PassingNull<WholeDivide>>},
    FunctionEntry{"desktop_modulo", 2, Guarded<PassingNull<Modulo>>},
    FunctionEntry{"desktop_power", 2, Guarded<PassingNull<Power>>},
    FunctionEntry{"desktop_date", 1, Guarded<PassingNull<CanonicalOf>>},
    FunctionEntry{"desktop_serial", 1, Guarded<PassingNull<Serial>>},
    FunctionEntry{"desktop_from_serial", 1, Guarded<PassingNull<FromSerial>>},
    FunctionEntry{"desktop_format", 1, Guarded<Format>},
    FunctionEntry{"desktop_format", 2, Guarded<Format>},
    FunctionEntry{"desktop_format_date", 1, Guarded<FormatDate>},
    FunctionEntry{"desktop_format_date", 2, Guarded<FormatDate>},
    FunctionEntry{"desktop_store_long", 1, Guarded<PassingNull<StoreLong>>},
    FunctionEntry{"desktop_store_double", 1, Guarded<PassingNull<StoreDouble>>},
    FunctionEntry{"desktop_store_boolean", 1, Guarded<PassingNull<StoreBoolean>>},
    FunctionEntry{"desktop_store_date", 1, Guarded<PassingNull<StoreDate>>},
};

void RequireOk(sqlite3* database, int result) {
  if (result != SQLITE_OK) {
    throw std::runtime_error(std::string("the engine refuses the dialect's functions: ") +
                             sqlite3_errmsg(database));
  }
}

}  // namespace

void RegisterSqlFunctions(sqlite3* database) {
  RequireOk(database, sqlite3_create_collation_v2(database, "DESKTOP", SQLITE_UTF8, nullptr,
                                                  &Collate, nullptr));
  for (const FunctionEntry& function : kFunctions) {
    RequireOk(database,
              sqlite3_create_function_v2(database, function.name, function.arguments,
                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                         nullptr, function.callback, nullptr, nullptr, nullptr));
  }
}

}  // namespace qorhost::dialect
