// Rows that a session has added and not written yet: their identities are given out at once, and
// many of them go into one statement.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/dialect/translator.h"
#include "host/store/link_codes.h"

namespace qorhost {

/// A value of a row that is held, as a store keeps it. Of a text its place among the rows' texts.
struct HeldCell {
  enum class Kind : std::uint8_t { kNull, kNumber, kDouble, kText };
  Kind kind = Kind::kNull;
  std::uint32_t length = 0;  ///< of a text, in bytes
  std::int64_t number = 0;   ///< where a text begins; the bits of a double
};

/// Rows of one form, in the order of their identities, which rise.
class HeldRows {
 public:
  explicit HeldRows(std::shared_ptr<const dialect::AddedRow> form) : form_(std::move(form)) {}

  [[nodiscard]] const std::shared_ptr<const dialect::AddedRow>& form() const { return form_; }
  [[nodiscard]] const dialect::Table& table() const { return *form_->table; }
  [[nodiscard]] std::size_t columns() const { return form_->cells.size(); }
  /// The place of a column in the rows; nothing where they leave it to the store.
  [[nodiscard]] std::optional<std::size_t> PlaceOf(std::string_view column) const;

  [[nodiscard]] std::size_t count() const { return rids_.size(); }
  [[nodiscard]] std::span<const std::int32_t> rids() const { return rids_; }
  [[nodiscard]] std::span<const HeldCell> CellsOf(std::size_t row) const {
    return std::span(cells_).subspan(row * columns(), columns());
  }
  [[nodiscard]] static double DoubleIn(const HeldCell& cell);
  /// Valid until the next change.
  [[nodiscard]] std::string_view TextIn(const HeldCell& cell) const {
    return std::string_view(texts_).substr(static_cast<std::size_t>(cell.number), cell.length);
  }
  /// The number in a row's column; nothing where it holds none.
  [[nodiscard]] std::optional<std::int64_t> NumberIn(std::size_t row,
                                                     std::optional<std::size_t> place) const;

  /// `values` are those of the form's parameters, each fit to be held.
  void Add(std::int32_t rid, std::span<const qorcred::Value> values);
  void Clear();

 private:
  void AddCell(const qorcred::Value& value);

  std::shared_ptr<const dialect::AddedRow> form_;
  std::vector<std::int32_t> rids_;
  std::vector<HeldCell> cells_;
  std::string texts_;
};

/// The engine's part. It raises StoreError, and has told then which row could not be stored.
class RowWriter {
 public:
  virtual ~RowWriter() = default;
  RowWriter(const RowWriter&) = delete;
  RowWriter& operator=(const RowWriter&) = delete;

  /// Whether the table has no rule that somebody has added to the schema: a trigger, a unique
  /// index.
  [[nodiscard]] virtual bool TakesAnyRow(const dialect::Table& table) = 0;
  /// Stores the rows, of which there is one at least, under the identities that they have.
  virtual void Write(const HeldRows& rows) = 0;
  /// Stores a unit's next link code.
  virtual void KeepLinkCode(std::int32_t unitKey, std::int64_t next) = 0;

 protected:
  RowWriter() = default;
};

/// Whether rows of a table can be held: nothing that a row says can keep the store from taking it,
/// for the table has no key but the unit and the identity, and no link to another table. That its
/// unit is named and its columns take such values is looked at for each row.
[[nodiscard]] bool IsHeldTable(std::string_view table);

/// To be used by whoever has the right to write, as long as nobody else can. Identities are given
/// out as far as they were granted.
class WriteBuffer {
 public:
  /// Writes when it holds `most` rows of a table. The writer must live longer.
  WriteBuffer(RowWriter& writer, std::size_t most) : writer_(writer), most_(most) {}

  /// Rows that are added to the table from now on have these identities, in their order, behind
  /// those that were granted before.
  void Grant(const dialect::Table& table, std::int64_t first, std::int64_t last);
  [[nodiscard]] bool HasIdentities(const dialect::Table& table) {
    const Identities* const known = Of(table);
    return known != nullptr && !known->empty();
  }
  /// Nothing more is known of the table: a row was added to it past the buffer.
  void Withdraw(const dialect::Table& table);
  /// Nothing is known any more, of any table and any link code.
  void ForgetAll();

  /// Holds a row, the values being those of the form's parameters, and returns its identity;
  /// nothing when it has to be written at once. May write, and raises what Write() raises.
  [[nodiscard]] std::optional<std::int32_t> Hold(
      const std::shared_ptr<const dialect::AddedRow>& form, std::span<const qorcred::Value> values);

  /// Writes everything that is held: the tables in the order of their first rows. Raises
  /// StoreError; after that it raises again and again, until what it has failed in is undone.
  void Write();
  /// What is held is dropped: its transaction was undone.
  void Discard() noexcept;

  /// The unwritten rows of a table; null where there are none.
  [[nodiscard]] const HeldRows* RowsOf(std::string_view table) const;
  /// How many rows Write() would write.
  [[nodiscard]] std::int64_t held() const noexcept;

  /// Those of the unit that is worked on. They follow the tenants that are held.
  [[nodiscard]] LinkCodes& linkCodes();
  /// A tenant was written past the buffer, which knows the link codes all the same.
  void NoteWritten(const dialect::AddedRow& form, std::span<const qorcred::Value> values);

 private:
  struct Identities {
    const dialect::Table* table = nullptr;
    const dialect::Column* unit = nullptr;
    std::vector<std::pair<std::int64_t, std::int64_t>> ranges;  // the next one first
    std::size_t used = 0;                                       // ranges
    bool isLookedAt = false;                                    // takes any row

    [[nodiscard]] bool empty() const { return used == ranges.size(); }
    [[nodiscard]] std::int32_t Next();
    void Clear();
  };

  [[nodiscard]] Identities* Of(const dialect::Table& table);
  [[nodiscard]] HeldRows* RowsFor(const std::shared_ptr<const dialect::AddedRow>& form);
  void FollowTenants();

  RowWriter& writer_;
  std::size_t most_;
  std::vector<std::unique_ptr<HeldRows>> forms_;  // those with rows first, in the order of these
  std::size_t filled_ = 0;                        // of the forms
  std::vector<Identities> identities_;
  LinkCodes linkCodes_;
  std::size_t followed_ = 0;  // of the held tenants
  bool failed_ = false;
};

}  // namespace qorhost
