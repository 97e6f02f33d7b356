// What was stored so far: one entry for each unit of work, bound to the entries before it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/store/row_change.h"

namespace qorhost {

/// An audit entry without its rows.
struct WorkEntry {
  std::int64_t entry = 0;
  std::string at;  ///< canonical date text, UTC
  std::string who;
  std::string origin;
  std::optional<std::int32_t> unitKey;  ///< none: the whole store
  std::string what;
};

/// The last entry of a unit and its hash, which every entry of the unit before it has a part in:
/// who has noted it can tell later whether one of them was changed or removed.
struct ChainHead {
  std::int32_t unitKey = 0;
  std::int64_t entry = 0;
  std::string hash;  ///< 64 hexadecimal digits
  friend bool operator==(const ChainHead&, const ChainHead&) = default;
};

/// Where the audit is not as it was written.
struct ChainFault {
  enum class Kind : std::uint8_t {
    kAltered,     ///< the entry is not as it was written, or one before it was removed
    kMissing,     ///< an entry that others refer to is gone
    kUnreadable,  ///< its rows cannot be read
  };
  Kind kind = Kind::kAltered;
  std::int64_t entry = 0;
  std::optional<std::int32_t> unitKey;
  friend bool operator==(const ChainFault&, const ChainFault&) = default;
};

/// A part of SqlSession, and raises what that raises. Its entries are written by units of work; no
/// operation changes or removes one.
class AuditLog {
 public:
  virtual ~AuditLog() = default;
  AuditLog(const AuditLog&) = delete;
  AuditLog& operator=(const AuditLog&) = delete;

  /// The entries behind the one of that number, in the order of their numbers: of one unit, those
  /// of the whole store among them, or all. Of a unit, and behind an entry of the whole store, that
  /// is the order in which they were stored. Others of several units may be stored later than one
  /// with a higher number: who has read to that one does not go on behind it.
  [[nodiscard]] virtual std::vector<WorkEntry> After(std::int64_t entry,
                                                     std::optional<std::int32_t> unitKey) = 0;
  /// Nothing when there is none of that number.
  [[nodiscard]] virtual std::optional<WorkEntry> Find(std::int64_t entry) = 0;
  /// The rows that an entry changed, in the order in which that was done.
  [[nodiscard]] virtual std::vector<RowChange> RowsOf(std::int64_t entry) = 0;

  /// The hash of an entry; empty when there is none of that number.
  [[nodiscard]] virtual std::string HashOf(std::int64_t entry) = 0;
  /// Where each unit's chain ends, in the order of their keys.
  [[nodiscard]] virtual std::vector<ChainHead> Heads() = 0;
  /// Reads the whole audit and tells what is not as it was written, oldest first.
  [[nodiscard]] virtual std::vector<ChainFault> Check() = 0;

  /// Undoes one change as a part of the open unit of work, if all its rows are as the change left
  /// them: nothing then. Else nothing is changed and the identity of the first row that is not
  /// comes back. Of a run of new rows only the first is compared, the others have to be there. The
  /// date of a row's last change is not compared; a row that has one gets a later one.
  [[nodiscard]] virtual std::optional<std::int64_t> PutBack(const RowChange& change) = 0;

 protected:
  AuditLog() = default;
};

}  // namespace qorhost
