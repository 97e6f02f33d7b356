// Typed views of the data services that the host supplies: the connection, the database manager
// and the result table.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "frame/controls.h"
#include "frame/object.h"
#include "frame/runtime_error.h"

namespace qorcred {

/// The manager's verdict on the last statement, handed by reference to every call.
struct DatabaseError {
  bool flag = false;
  std::string text;
};

/// A failing call into a result table: the failure that the table raised, under a type of its own
/// for the few operations whose callers get to know of it.
class TableFailure : public RuntimeError {
 public:
  using RuntimeError::RuntimeError;
  explicit TableFailure(RuntimeError failure) : RuntimeError(std::move(failure)) {}
};

/// A query's result: rows and columns from 0, cells by position. Every call raises TableFailure.
class TableView : public View {
 public:
  using View::View;

  [[nodiscard]] Value Cell(std::int32_t row, std::int32_t column) const {
    return Marked([&] { return Get(object(), "", row, column); });
  }
  void SetCell(std::int32_t row, std::int32_t column, const Value& value) const {
    Marked([&] { Put(object(), "", row, column, value); });
  }
  [[nodiscard]] std::int32_t LowerRow() const { return Bound("LowerBound", 1); }
  [[nodiscard]] std::int32_t UpperRow() const { return Bound("UpperBound", 1); }
  [[nodiscard]] std::int32_t LowerColumn() const { return Bound("LowerBound", 2); }
  [[nodiscard]] std::int32_t UpperColumn() const { return Bound("UpperBound", 2); }
  void ReDim(std::int32_t lowRow, std::int32_t highRow, std::int32_t lowColumn,
             std::int32_t highColumn) const {
    Marked([&] { Call(object(), "ReDim", lowRow, highRow, lowColumn, highColumn); });
  }
  void InsertRow(std::int32_t before) const {
    Marked([&] { Call(object(), "InsertRows", before); });
  }
  void DeleteRow(std::int32_t row) const {
    Marked([&] { Call(object(), "DeleteRows", row); });
  }
  /// Sorts rows by the texts of one column, upwards and without regard to letter case.
  void SortByText(std::int32_t firstRow, std::int32_t lastRow, std::int32_t column) const;

  /// Whether cell (0, 0) counts as the empty string, the sign of no rows.
  [[nodiscard]] bool HasNoRows() const { return IsEmptyText(Cell(0, 0)); }

 private:
  [[nodiscard]] std::int32_t Bound(std::string_view which, std::int32_t dimension) const {
    return ToLong(Marked([&] { return Get(object(), which, dimension); }));
  }

  // Runs one call on the table and marks whatever it raises.
  template <typename TableCall>
  static auto Marked(TableCall&& call) -> decltype(call()) {
    try {
      return call();
    } catch (...) {
      throw TableFailure(CurrentFailure());
    }
  }
};

/// The host's open connection.
class Connection : public View {
 public:
  using View::View;

  void BeginTrans() const { Call(object(), "BeginTrans"); }
  void CommitTrans() const { Call(object(), "CommitTrans"); }
  void RollbackTrans() const { Call(object(), "RollbackTrans"); }
  /// Runs a statement past the manager. How many rows it affected is not looked at.
  void Execute(std::string sql) const;
};

/// The number of rows or the identity in a manager's answer; no answer counts as 0.
[[nodiscard]] std::int32_t AnsweredNumber(const Value& answer);

/// `qorDBI.clsDBManager`. A failed statement raises nothing: it sets the error's flag and text.
class DatabaseManager : public View {
 public:
  using View::View;

  [[nodiscard]] TableView ExecuteSelect(const ObjectRef& connection, std::string sql,
                                        DatabaseError& error) const;
  /// The same; no table at all counts as one without rows.
  [[nodiscard]] TableView ExecuteSelectOrEmpty(const ObjectRef& connection, std::string sql,
                                               DatabaseError& error) const;
  [[nodiscard]] Value ExecuteScalar(const ObjectRef& connection, std::string sql,
                                    DatabaseError& error) const;
  /// Returns the number of rows changed as the manager gives it: see AnsweredNumber().
  /// `lastModified` may be Missing.
  Value ExecuteUpdate(const ObjectRef& connection, std::string sql, std::string_view table,
                      DatabaseError& error, const Value& lastModified, const Value& rid) const;
  Value ExecuteUpdate(const ObjectRef& connection, std::string sql, std::string_view table,
                      DatabaseError& error) const;
  /// Returns the new row's identity, below 1 on failure.
  std::int32_t ExecuteInsert(const ObjectRef& connection, std::string sql,
                             std::string_view lastModified, std::string_view table,
                             DatabaseError& error) const;
  void ExecuteDelete(const ObjectRef& connection, std::string_view table, std::int32_t rid,
                     DatabaseError& error) const;
  std::int32_t ExecuteQueryDelete(const ObjectRef& connection, std::string sql,
                                  DatabaseError& error) const;

  [[nodiscard]] std::string RowIdText() const {
    return ToText(Call(object(), "pbGetRowIDStringConstant"));
  }
  [[nodiscard]] std::string LastModifiedText() const {
    return ToText(Call(object(), "pbGetLastModifiedDateStringConstant"));
  }

 private:
  [[nodiscard]] Value Select(const ObjectRef& connection, std::string sql,
                             DatabaseError& error) const;
};

}  // namespace qorcred
