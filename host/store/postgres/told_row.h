// What the server tells of a changed row: the text of a notice, taken apart. Every operation has
// one at least, of which few cells are looked at, so that nothing is made of the others.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace qorhost::postgres {

/// The cells of a row as JSON. The texts are those of the notice.
class ToldRow {
 public:
  struct Cell {
    std::string_view column;
    std::string_view json;
  };

  void Add(Cell cell) { cells_.push_back(cell); }
  [[nodiscard]] bool empty() const noexcept { return cells_.empty(); }
  /// "" for a column that the row does not have.
  [[nodiscard]] std::string_view At(std::string_view column) const;

 private:
  std::vector<Cell> cells_;
};

/// One notice, see ChangeTriggersText().
class Told {
 public:
  /// Raises StoreError for a text that is none.
  explicit Told(std::string_view text);
  ~Told() = default;
  Told(Told&&) noexcept = default;
  Told& operator=(Told&&) noexcept = default;
  Told(const Told&) = delete;
  Told& operator=(const Told&) = delete;

  [[nodiscard]] std::string_view table() const noexcept { return table_; }
  /// Empty for a row that was not there.
  [[nodiscard]] const ToldRow& before() const noexcept { return before_; }
  /// Empty for one that is there no longer.
  [[nodiscard]] const ToldRow& after() const noexcept { return after_; }
  /// The identity of the row; of several new ones, of the first and the last.
  [[nodiscard]] std::int64_t rid() const noexcept { return rid_; }
  [[nodiscard]] std::int64_t last() const noexcept { return last_; }

 private:
  std::vector<char> text_;  // what the others look at: it stays where it is when this is moved
  std::string_view table_;
  ToldRow before_;
  ToldRow after_;
  std::int64_t rid_ = 0;
  std::int64_t last_ = 0;
};

}  // namespace qorhost::postgres
