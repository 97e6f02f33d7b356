// From the desktop SQL that controllers and hosts write to an engine's, by a lexer, a parser and a
// tree, which a printer of the engine puts into words. Every literal becomes a bound parameter;
// what a statement looks like without its literals is its shape, and a shape is parsed and printed
// once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/dialect/catalog.h"

namespace qorhost::dialect {

enum class StatementKind : std::uint8_t { kSelect, kInsert, kUpdate, kDelete };

/// A statement that the dialect refuses. what() says what was wrong and where ("line 1, column 42:
/// unknown name 'abc'").
class SqlError : public std::runtime_error {
 public:
  SqlError(const std::string& message, std::size_t line, std::size_t column);

  /// What was wrong, without the place.
  [[nodiscard]] const std::string& message() const noexcept { return message_; }
  [[nodiscard]] std::size_t line() const noexcept { return line_; }
  [[nodiscard]] std::size_t column() const noexcept { return column_; }

 private:
  std::string message_;
  std::size_t line_;
  std::size_t column_;
};

/// The row that an INSERT adds, where each of its values is a literal: the columns in the
/// statement's order, without the identity, which the store gives.
struct AddedRow {
  struct Cell {
    const Column* column = nullptr;
    std::optional<qorcred::Value> constant;  ///< none: the statement's next parameter
  };
  const Table* table = nullptr;
  std::vector<Cell> cells;
};

/// A translated statement without its literals; shared by all statements of the same shape. A
/// prepared statement may be kept by the shape's address for as long as the pointer to it is kept.
/// An expression whose value does not fit its column, a division by zero and the like fail when it
/// runs.
struct Shape {
  StatementKind kind = StatementKind::kSelect;
  std::string table;  ///< the table that INSERT, UPDATE or DELETE changes, as the catalog
                      ///< spells it; empty for SELECT
  std::string sql;    ///< the engine's text; its parameters have the order of the values
  /// The same text with one more parameter, the last: the key of the unit in which the row is
  /// looked for that the statement names by its identity alone. Empty where it names none, and
  /// where the engine does not ask for it.
  std::string sqlInUnit;
  bool takesNewRow = false;  ///< an INSERT whose VALUES name the row-id text
  /// Null unless all that an INSERT does is to add one row of literals.
  std::shared_ptr<const AddedRow> addedRow;
  /// The type of each result column of a SELECT as far as the statement tells it; nothing for
  /// arithmetic and the like, where the value's own type counts. Empty for the other kinds.
  std::vector<std::optional<ColumnType>> resultTypes;
};

/// A statement ready to run. The translator keeps a bounded number of shapes; one that it drops
/// lives on in the pointers handed out.
struct Translation {
  std::shared_ptr<const Shape> shape;
  /// The values of the parameters 1, 2, ... in that order: Long, Double, String (dates in the
  /// canonical text form) or Null. Valid until the next call of Translate.
  std::span<const qorcred::Value> parameters;
};

/// The text that stands for the new row's identity in VALUES.
inline constexpr std::string_view kRowIdText = "_ROWID_";

struct PrintedStatement;
struct Statement;

/// Puts a bound tree, read from `sql`, into the words of an engine. Raises SqlError for what the
/// engine cannot take.
using EnginePrinter = PrintedStatement (*)(std::string_view sql, const Statement& statement);

/// What a statement does, whatever engine is to run it. Raises SqlError for anything that is not
/// exactly one statement of the dialect over the tables of the catalog.
[[nodiscard]] StatementKind KindOf(std::string_view sql);

class Translator {
 public:
  explicit Translator(EnginePrinter print);
  ~Translator();
  Translator(const Translator&) = delete;
  Translator& operator=(const Translator&) = delete;

  /// Translates one statement. `timeStamp` (canonical text form) takes the place of the literal
  /// '_LMDATE_'. Raises SqlError for anything that is not exactly one statement of the dialect over
  /// the tables of the catalog.
  Translation Translate(std::string_view sql, std::string_view timeStamp);

  /// How many statements were parsed so far (the others were found by their shape).
  [[nodiscard]] std::size_t parsed() const noexcept;

 private:
  class Cache;
  std::unique_ptr<Cache> cache_;
};

}  // namespace qorhost::dialect
