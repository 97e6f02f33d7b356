// Values on their way to the server and back: all as texts.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/dialect/catalog.h"
#include "host/store/cell_values.h"
#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

/// Values with the texts that are sent of them.
class SentValues {
 public:
  SentValues() = default;
  explicit SentValues(std::span<const qorcred::Value> values);

  /// Raises StoreError for an object and other values that no store keeps.
  void Add(const qorcred::Value& value);
  void AddNumber(std::int64_t number);
  void AddText(std::string_view text) { texts_.emplace_back(std::string(text)); }
  void AddNull() { texts_.emplace_back(); }

  /// Valid until the next change.
  [[nodiscard]] std::vector<Sent> sent() const;

  friend bool operator==(const SentValues&, const SentValues&) = default;

 private:
  std::vector<std::optional<std::string>> texts_;
};

/// A cell of a result: after the type that the dialect knows of the column, else after the cell's
/// own; a whole number is a Long then.
[[nodiscard]] qorcred::Value CellOf(const Result& result, int row, int column,
                                    const std::optional<dialect::ColumnType>& type);

/// The type of a column of a SELECT; nothing where the statement does not tell it.
using ColumnTypes = std::vector<std::optional<dialect::ColumnType>>;

/// Reads the rows of one SELECT, which come one by one: what their columns are is asked of the
/// first.
class RowReader {
 public:
  /// The types live longer.
  explicit RowReader(const ColumnTypes& types) : types_(types) {}

  /// Puts the only row of the answer into the cells, of which there is one for each type; how many
  /// bytes they take.
  std::size_t Read(const Result& answer, std::span<qorcred::Value> cells);

 private:
  enum class Form : std::uint8_t { kWholeNumber, kDateText, kOther };
  struct Column {
    std::uint32_t serverType;  // see Result::TypeOf()
    Form form;
  };

  void Look(const Result& first);
  [[nodiscard]] const qorcred::Value& DateIn(std::string_view text);

  const ColumnTypes& types_;
  std::vector<Column> columns_;
  std::string dateText_;  // the latest date
  qorcred::Value date_{""};
};

/// A cell of a row as the triggers tell it. Numbers of a Double column are Doubles in what a row
/// was, and whole ones Longs in what it is, as the audit has them on every engine.
enum class RowState : std::uint8_t { kBefore, kAfter };
[[nodiscard]] qorcred::Value ToldCell(const dialect::Column& column, const nlohmann::json& cell,
                                      RowState state);

/// The type that a column's values are sent with.
[[nodiscard]] std::string_view SentTypeOf(const dialect::Column& column);

}  // namespace qorhost::postgres
