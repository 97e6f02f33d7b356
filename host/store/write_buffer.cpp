#include "host/store/write_buffer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>

#include "host/store/store_error.h"

namespace qorhost {

namespace {

using dialect::AddedRow;
using dialect::ColumnType;
using dialect::Table;
using qorcred::Value;
using qorcred::ValueType;

constexpr std::string_view kTenants = "Tenants";

// What ranges, imports and merges write by the thousand. Their tests hold them against the schemas.
constexpr std::array<std::string_view, 5> kHeldTables{"CredentialBank", "Tenants", "TenantsBackup",
                                                      "ProgramSteps", "DirectoryCode"};

// Longer ones go by themselves: what is held is small.
constexpr std::size_t kLongestText = 4096;

/// Whether every store takes the value for a column of that type, as it is.
bool Fits(ColumnType column, const Value& value) {
  switch (value.type()) {
    case ValueType::kNull:
      return true;
    case ValueType::kLong:
      return column == ColumnType::kLong || column == ColumnType::kBoolean ||
             column == ColumnType::kDouble;
    case ValueType::kDouble:
      return column == ColumnType::kDouble;
    case ValueType::kString: {
      const std::string& text = *value.As<std::string>();
      return (column == ColumnType::kText || column == ColumnType::kDate) &&
             text.size() <= kLongestText && text.find('\0') == std::string::npos;
    }
    default:
      return false;
  }
}

bool Fits(const AddedRow& form, std::span<const Value> values, const dialect::Column* unit) {
  std::size_t next = 0;
  bool hasUnit = false;
  for (const AddedRow::Cell& cell : form.cells) {
    const Value& value = cell.constant ? *cell.constant : values[next++];
    if (!Fits(cell.column->type, value)) {
      return false;
    }
    hasUnit = hasUnit || (cell.column == unit && value.Is(ValueType::kLong));
  }
  return hasUnit;
}

/// The number that a row has in a column; nothing where it is left out or no number.
std::optional<std::int64_t> NumberOf(const AddedRow& form, std::span<const Value> values,
                                     std::string_view column) {
  std::size_t next = 0;
  for (const AddedRow::Cell& cell : form.cells) {
    const Value& value = cell.constant ? *cell.constant : values[next++];
    if (cell.column->name == column) {
      const auto* number = value.As<std::int32_t>();
      return number == nullptr ? std::nullopt : std::optional<std::int64_t>(*number);
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::size_t> HeldRows::PlaceOf(std::string_view column) const {
  const auto found =
      std::find_if(form_->cells.begin(), form_->cells.end(),
                   [column](const AddedRow::Cell& cell) { return cell.column->name == column; });
  return found == form_->cells.end()
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(found - form_->cells.begin()));
}

double HeldRows::DoubleIn(const HeldCell& cell) {
  return std::bit_cast<double>(cell.number);
}

std::optional<std::int64_t> HeldRows::NumberIn(std::size_t row,
                                               std::optional<std::size_t> place) const {
  if (!place) {
    return std::nullopt;
  }
  const HeldCell& cell = CellsOf(row)[*place];
  return cell.kind == HeldCell::Kind::kNumber ? std::optional(cell.number) : std::nullopt;
}

void HeldRows::Add(std::int32_t rid, std::span<const Value> values) {
  std::size_t next = 0;
  for (const AddedRow::Cell& cell : form_->cells) {
    AddCell(cell.constant ? *cell.constant : values[next++]);
  }
  rids_.push_back(rid);
}

void HeldRows::AddCell(const Value& value) {
  HeldCell cell;
  if (const auto* number = value.As<std::int32_t>()) {
    cell.kind = HeldCell::Kind::kNumber;
    cell.number = *number;
  } else if (const auto* fraction = value.As<double>()) {
    cell.kind = HeldCell::Kind::kDouble;
    cell.number = std::bit_cast<std::int64_t>(*fraction);
  } else if (const auto* text = value.As<std::string>()) {
    // Most rows have the time stamp of the row above.
    const HeldCell above =
        cells_.size() < columns() ? HeldCell() : cells_[cells_.size() - columns()];
    cell.kind = HeldCell::Kind::kText;
    cell.length = static_cast<std::uint32_t>(text->size());
    if (above.kind == HeldCell::Kind::kText && TextIn(above) == *text) {
      cell.number = above.number;
    } else {
      cell.number = static_cast<std::int64_t>(texts_.size());
      texts_ += *text;
    }
  }
  cells_.push_back(cell);
}

void HeldRows::Clear() {
  rids_.clear();
  cells_.clear();
  texts_.clear();
}

bool IsHeldTable(std::string_view table) {
  return std::find(kHeldTables.begin(), kHeldTables.end(), table) != kHeldTables.end();
}

void WriteBuffer::Grant(const Table& table, std::int64_t first, std::int64_t last) {
  last = std::min<std::int64_t>(last, std::numeric_limits<std::int32_t>::max());
  if (first > last || !IsHeldTable(table.name)) {
    return;
  }
  Identities* known = Of(table);
  if (known == nullptr) {
    known = &identities_.emplace_back(
        Identities{&table, dialect::FindColumn(table, "UnitKey"), {}, 0, false});
  }
  known->ranges.emplace_back(first, last);
}

void WriteBuffer::Withdraw(const Table& table) {
  if (Identities* const known = Of(table)) {
    known->Clear();
  }
}

void WriteBuffer::ForgetAll() {
  for (Identities& known : identities_) {
    known.Clear();
  }
  linkCodes_.Forget();
}

WriteBuffer::Identities* WriteBuffer::Of(const Table& table) {
  const auto found =
      std::find_if(identities_.begin(), identities_.end(),
                   [&table](const Identities& known) { return known.table == &table; });
  return found == identities_.end() ? nullptr : &*found;
}

std::int32_t WriteBuffer::Identities::Next() {
  auto& [next, last] = ranges[used];
  const auto identity = static_cast<std::int32_t>(next++);
  used += next > last ? 1 : 0;
  return identity;
}

void WriteBuffer::Identities::Clear() {
  ranges.clear();
  used = 0;
  isLookedAt = false;
}

/// The rows of a form, behind those that are held already; null where its table has rows of another
/// form.
HeldRows* WriteBuffer::RowsFor(const std::shared_ptr<const AddedRow>& form) {
  const auto filled = forms_.begin() + static_cast<std::ptrdiff_t>(filled_);
  for (auto rows = forms_.begin(); rows != filled; ++rows) {
    if ((*rows)->form() == form) {
      return rows->get();
    }
    if (&(*rows)->table() == form->table) {
      return nullptr;
    }
  }
  auto free = std::find_if(filled, forms_.end(),
                           [&form](const auto& rows) { return rows->form() == form; });
  if (free == forms_.end()) {
    constexpr std::size_t kMostForms = 32;
    if (forms_.size() >= kMostForms) {
      forms_.resize(filled_);
    }
    forms_.push_back(std::make_unique<HeldRows>(form));
    free = forms_.end() - 1;
  }
  std::rotate(forms_.begin() + static_cast<std::ptrdiff_t>(filled_), free, free + 1);
  return forms_[filled_++].get();
}

std::optional<std::int32_t> WriteBuffer::Hold(const std::shared_ptr<const AddedRow>& form,
                                              std::span<const Value> values) {
  Identities* const known = Of(*form->table);
  if (failed_ || known == nullptr || known->empty() || !Fits(*form, values, known->unit)) {
    return std::nullopt;
  }
  if (!known->isLookedAt && !writer_.TakesAnyRow(*form->table)) {
    known->Clear();
    return std::nullopt;
  }
  known->isLookedAt = true;
  HeldRows* const rows = RowsFor(form);
  if (rows == nullptr) {
    return std::nullopt;
  }
  const std::int32_t rid = known->Next();
  rows->Add(rid, values);
  if (rows->count() >= most_) {
    Write();
  }
  return rid;
}

void WriteBuffer::Write() {
  if (failed_) {
    throw StoreError("The operation was given up after an earlier failure: nothing was stored");
  }
  FollowTenants();
  try {
    for (std::size_t form = 0; form < filled_; ++form) {
      writer_.Write(*forms_[form]);
    }
    if (LinkCodes::Known* const codes = linkCodes_.changed()) {
      writer_.KeepLinkCode(codes->unitKey, codes->counter);
      codes->changed = false;
    }
  } catch (...) {
    failed_ = true;
    throw;
  }
  for (std::size_t form = 0; form < filled_; ++form) {
    forms_[form]->Clear();
  }
  filled_ = 0;
  followed_ = 0;
}

void WriteBuffer::Discard() noexcept {
  for (std::size_t form = 0; form < filled_; ++form) {
    forms_[form]->Clear();
  }
  filled_ = 0;
  followed_ = 0;
  failed_ = false;
  ForgetAll();
}

const HeldRows* WriteBuffer::RowsOf(std::string_view table) const {
  for (std::size_t form = 0; form < filled_; ++form) {
    if (forms_[form]->table().name == table) {
      return forms_[form].get();
    }
  }
  return nullptr;
}

std::int64_t WriteBuffer::held() const noexcept {
  std::size_t rows = linkCodes_.hasChanged() ? 1 : 0;
  for (std::size_t form = 0; form < filled_; ++form) {
    rows += forms_[form]->count();
  }
  return static_cast<std::int64_t>(rows);
}

LinkCodes& WriteBuffer::linkCodes() {
  FollowTenants();
  return linkCodes_;
}

void WriteBuffer::NoteWritten(const AddedRow& form, std::span<const Value> values) {
  if (form.table->name == kTenants) {
    linkCodes_.NoteTenant(NumberOf(form, values, "UnitKey"), NumberOf(form, values, "LINKCODE"));
  }
}

void WriteBuffer::FollowTenants() {
  const HeldRows* const tenants = RowsOf(kTenants);
  if (tenants == nullptr || followed_ == tenants->count()) {
    return;
  }
  const std::optional<std::size_t> unit = tenants->PlaceOf("UnitKey");
  const std::optional<std::size_t> code = tenants->PlaceOf("LINKCODE");
  for (; followed_ < tenants->count(); ++followed_) {
    linkCodes_.NoteTenant(tenants->NumberIn(followed_, unit), tenants->NumberIn(followed_, code));
  }
}

}  // namespace qorhost
