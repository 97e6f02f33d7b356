// What the functions that the engine calls have in common: their arguments, results and failures.
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "frame/date.h"

namespace qorhost::sqlite {

/// One call of a function: its arguments and where its result goes.
class SqlCall {
 public:
  SqlCall(sqlite3_context* context, int count, sqlite3_value** arguments)
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
  [[nodiscard]] std::string Text(std::size_t index) const;

  // The bytes of a text.
  [[nodiscard]] std::string_view Bytes(std::size_t index) const;

  // A whole number that counts characters.
  [[nodiscard]] std::size_t CountOf(std::size_t index) const;

  // The number that a value is, or that a text as a whole stands for.
  [[nodiscard]] double NumberOf(std::size_t index) const;

  // The date that a value is: a number of serial days, or a text.
  [[nodiscard]] std::optional<qorcred::Date> DateOf(std::size_t index) const;

  void ReturnNull() const { sqlite3_result_null(context_); }
  void Return(std::int64_t number) const { sqlite3_result_int64(context_, number); }
  void Return(double number) const { sqlite3_result_double(context_, number); }
  void Return(std::string_view text) const;
  void ReturnArgument(std::size_t index) const {
    sqlite3_result_value(context_, arguments_[index]);
  }

 private:
  sqlite3_context* context_;
  std::span<sqlite3_value*> arguments_;
};

using SqlFunctionBody = void (*)(const SqlCall&);

/// The callback that the engine sees: whatever the body throws fails the statement and ends here.
template <SqlFunctionBody body>
void Guarded(sqlite3_context* context, int count, sqlite3_value** arguments) {
  try {
    body(SqlCall(context, count, arguments));
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& failure) {
    sqlite3_result_error(context, failure.what(), -1);
  } catch (...) {
    sqlite3_result_error(context, "the function failed", -1);
  }
}

/// As Guarded(), for functions of which Null gives Null.
template <SqlFunctionBody body>
void PassingNull(const SqlCall& call) {
  for (std::size_t index = 0; index < call.count(); ++index) {
    if (call.IsNull(index)) {
      call.ReturnNull();
      return;
    }
  }
  body(call);
}

/// What the engine is told of a function.
struct SqlFunction {
  const char* name;
  int arguments;
  void (*callback)(sqlite3_context*, int, sqlite3_value**);
};

}  // namespace qorhost::sqlite
