#include "host/store/sqlite/text_functions.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "frame/date.h"
#include "frame/format.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "frame/value.h"
#include "host/dialect/folding.h"

namespace qorhost::sqlite {

using namespace dialect;

namespace {

using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

constexpr std::size_t kLongestPattern = 1024;

// Texts.

void TextOf(const SqlCall& call) {
  if (call.IsNumber(0)) {
    call.Return(call.Text(0));
  } else {
    call.ReturnArgument(0);
  }
}

void DateTextOf(const SqlCall& call) {
  if (const std::optional<qorcred::Date> date = call.DateOf(0)) {
    call.Return(qorcred::DateText(*date));
  } else {
    TextOf(call);
  }
}

void Upper(const SqlCall& call) {
  call.Return(UpperText(call.Text(0)));
}

void Lower(const SqlCall& call) {
  call.Return(LowerText(call.Text(0)));
}

void Length(const SqlCall& call) {
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

void Trim(const SqlCall& call) {
  call.Return(WithoutBlanks(call.Text(0), true, true));
}

void TrimLeft(const SqlCall& call) {
  call.Return(WithoutBlanks(call.Text(0), true, false));
}

void TrimRight(const SqlCall& call) {
  call.Return(WithoutBlanks(call.Text(0), false, true));
}

void Left(const SqlCall& call) {
  const std::string text = call.Text(0);
  call.Return(qorcred::LeftUtf16(text, call.CountOf(1)));
}

// The text behind its first `units` units.
std::string_view Behind(std::string_view text, std::size_t units) {
  return text.substr(qorcred::LeftUtf16(text, units).size());
}

void Right(const SqlCall& call) {
  const std::string text = call.Text(0);
  const std::size_t length = qorcred::Utf16Length(text);
  const std::size_t wanted = call.CountOf(1);
  call.Return(Behind(text, length > wanted ? length - wanted : 0));
}

void Middle(const SqlCall& call) {
  const std::string text = call.Text(0);
  const std::size_t start = call.CountOf(1);
  if (start == 0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  const std::string_view rest = Behind(text, start - 1);
  call.Return(call.count() > 2 ? qorcred::LeftUtf16(rest, call.CountOf(2)) : rest);
}

// Pictures. Null gives ''.

Value ValueOf(const SqlCall& call) {
  switch (call.TypeOf(0)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return Value(call.Double(0));
    default:
      return Value(call.Bytes(0));
  }
}

void FormatAs(const SqlCall& call, const Value& value) {
  call.Return(qorcred::Format(value, call.Text(1)));
}

void Format(const SqlCall& call) {
  if (call.IsNull(0)) {
    call.Return(std::string_view());
  } else if (call.count() == 1 || call.IsNull(1)) {
    TextOf(call);
  } else {
    FormatAs(call, ValueOf(call));
  }
}

void FormatDate(const SqlCall& call) {
  const std::optional<qorcred::Date> date = call.IsNull(0) ? std::nullopt : call.DateOf(0);
  if (!date) {
    Format(call);
  } else if (call.count() == 1 || call.IsNull(1)) {
    call.Return(qorcred::DateText(*date));
  } else {
    FormatAs(call, Value(*date));
  }
}

// LIKE, as the engine calls it: the pattern, then the text.
void Like(const SqlCall& call) {
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

constexpr std::array kTextFunctions{
    SqlFunction{"like", 2, Guarded<PassingNull<Like>>},
    SqlFunction{"desktop_text", 1, Guarded<PassingNull<TextOf>>},
    SqlFunction{"desktop_date_text", 1, Guarded<PassingNull<DateTextOf>>},
    SqlFunction{"desktop_ucase", 1, Guarded<PassingNull<Upper>>},
    SqlFunction{"desktop_lcase", 1, Guarded<PassingNull<Lower>>},
    SqlFunction{"desktop_len", 1, Guarded<PassingNull<Length>>},
    SqlFunction{"desktop_trim", 1, Guarded<PassingNull<Trim>>},
    SqlFunction{"desktop_ltrim", 1, Guarded<PassingNull<TrimLeft>>},
    SqlFunction{"desktop_rtrim", 1, Guarded<PassingNull<TrimRight>>},
    SqlFunction{"desktop_left", 2, Guarded<PassingNull<Left>>},
    SqlFunction{"desktop_right", 2, Guarded<PassingNull<Right>>},
    SqlFunction{"desktop_mid", 2, Guarded<PassingNull<Middle>>},
    SqlFunction{"desktop_mid", 3, Guarded<PassingNull<Middle>>},
    SqlFunction{"desktop_format", 1, Guarded<Format>},
    SqlFunction{"desktop_format", 2, Guarded<Format>},
    SqlFunction{"desktop_format_date", 1, Guarded<FormatDate>},
    SqlFunction{"desktop_format_date", 2, Guarded<FormatDate>},
};

}  // namespace

std::span<const SqlFunction> TextFunctions() {
  return kTextFunctions;
}

}  // namespace qorhost::sqlite
