#include "host/store/sqlite/value_functions.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/runtime_error.h"
#include "host/dialect/canonical_date.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"

namespace qorhost::sqlite {

using namespace dialect;

namespace {

using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

[[noreturn]] void RefuseMismatch(const SqlCall& call, std::string_view what) {
  throw RuntimeError(ErrorNumber::kTypeMismatch, "data type mismatch: " + Quoted(call.Text(0)) +
                                                     " is not " + std::string(what));
}

// Numbers.

void Val(const SqlCall& call) {
  if (call.TypeOf(0) == SQLITE_NULL) {
    call.Return(0.0);
  } else if (call.TypeOf(0) == SQLITE_INTEGER) {
    call.Return(static_cast<double>(call.Integer(0)));
  } else {
    call.Return(qorcred::Val(call.Text(0)));
  }
}

// A number where the text is one, else the text.
void Number(const SqlCall& call) {
  if (!call.IsNumber(0)) {
    const std::string text = call.Text(0);
    if (qorcred::IsNumeric(std::string_view(text))) {
      call.Return(qorcred::ToDouble(Value(text)));
      return;
    }
  }
  call.ReturnArgument(0);
}

double WholeOperand(const SqlCall& call, std::size_t index) {
  // Halves go to the even neighbour, as everywhere in the dialect.
  return std::nearbyint(call.NumberOf(index));
}

void RefuseZero(double divisor) {
  if (divisor == 0.0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall, "division by zero");
  }
}

void ReturnFinite(const SqlCall& call, double number) {
  if (!std::isfinite(number)) {
    throw RuntimeError(ErrorNumber::kOverflow);
  }
  call.Return(number);
}

void Divide(const SqlCall& call) {
  const double divisor = call.NumberOf(1);
  RefuseZero(divisor);
  ReturnFinite(call, call.NumberOf(0) / divisor);
}

void WholeDivide(const SqlCall& call) {
  const double divisor = WholeOperand(call, 1);
  RefuseZero(divisor);
  call.Return(
      static_cast<std::int64_t>(qorcred::RoundToLong(std::trunc(WholeOperand(call, 0) / divisor))));
}

void Modulo(const SqlCall& call) {
  const double divisor = WholeOperand(call, 1);
  RefuseZero(divisor);
  call.Return(
      static_cast<std::int64_t>(qorcred::RoundToLong(std::fmod(WholeOperand(call, 0), divisor))));
}

void Power(const SqlCall& call) {
  ReturnFinite(call, std::pow(call.NumberOf(0), call.NumberOf(1)));
}

// Dates.

// A canonical date where the value is one, else the value.
void CanonicalOf(const SqlCall& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(CanonicalDate(*date));
  } else {
    call.ReturnArgument(0);
  }
}

void Serial(const SqlCall& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(date->serial);
  } else {
    RefuseMismatch(call, "a date");
  }
}

void FromSerial(const SqlCall& call) {
  if (const std::optional<qorcred::Date> date = DateFromSerial(call.Double(0))) {
    call.Return(CanonicalDate(*date));
  } else {
    throw RuntimeError(ErrorNumber::kOverflow, "a date outside the years 100 to 9999");
  }
}

// What is written to a column.

void StoreLong(const SqlCall& call) {
  call.Return(static_cast<std::int64_t>(qorcred::RoundToLong(call.NumberOf(0))));
}

void StoreDouble(const SqlCall& call) {
  if (call.IsNumber(0)) {
    call.ReturnArgument(0);
  } else {
    call.Return(call.NumberOf(0));
  }
}

void StoreBoolean(const SqlCall& call) {
  constexpr std::int64_t kTrue = -1;
  if (!call.IsNumber(0) && SameName(call.Text(0), "True")) {
    call.Return(kTrue);
  } else if (!call.IsNumber(0) && SameName(call.Text(0), "False")) {
    call.Return(std::int64_t{0});
  } else {
    call.Return(call.NumberOf(0) != 0.0 ? kTrue : std::int64_t{0});
  }
}

void StoreDate(const SqlCall& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(CanonicalDate(*date));
  } else {
    RefuseMismatch(call, "a date");
  }
}

constexpr std::array kValueFunctions{
    SqlFunction{"desktop_val", 1, Guarded<Val>},
    SqlFunction{"desktop_number", 1, Guarded<PassingNull<Number>>},
    SqlFunction{"desktop_divide", 2, Guarded<PassingNull<Divide>>},
    SqlFunction{"desktop_whole_divide", 2, Guarded<PassingNull<WholeDivide>>},
    SqlFunction{"desktop_modulo", 2, Guarded<PassingNull<Modulo>>},
    SqlFunction{"desktop_power", 2, Guarded<PassingNull<Power>>},
    SqlFunction{"desktop_date", 1, Guarded<PassingNull<CanonicalOf>>},
    SqlFunction{"desktop_serial", 1, Guarded<PassingNull<Serial>>},
    SqlFunction{"desktop_from_serial", 1, Guarded<PassingNull<FromSerial>>},
    SqlFunction{"desktop_store_long", 1, Guarded<PassingNull<StoreLong>>},
    SqlFunction{"desktop_store_double", 1, Guarded<PassingNull<StoreDouble>>},
    SqlFunction{"desktop_store_boolean", 1, Guarded<PassingNull<StoreBoolean>>},
    SqlFunction{"desktop_store_date", 1, Guarded<PassingNull<StoreDate>>},
};

}  // namespace

std::span<const SqlFunction> ValueFunctions() {
  return kValueFunctions;
}

}  // namespace qorhost::sqlite
