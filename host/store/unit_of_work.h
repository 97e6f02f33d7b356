// One thing that an operator does, stored as a whole or not at all.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame/value.h"
#include "host/store/row_change.h"
#include "host/store/time_stamp.h"

namespace qorhost {

/// Which state of a unit's rows somebody saw. Two are equal only when nobody has changed the unit
/// in between, also when the store was restored or the unit made again.
struct UnitVersion {
  std::int64_t entry = 0;  ///< the audit entry that made it; 0 before the first
  std::int64_t mark = 0;   ///< a random number
  friend bool operator==(const UnitVersion&, const UnitVersion&) = default;
};

/// Who works on a store. What is left out stands as an empty text in the audit.
struct Author {
  std::string who;
  std::string origin;  ///< the program and the machine
  Clock utc;           ///< none: the session's own clock
};

/// What a unit of work is to do.
struct WorkOrder {
  /// That it changes; none, or several, mean the whole store. An engine with a lock for each unit
  /// takes them in the order of their keys; one without locks the whole store.
  std::vector<std::int32_t> units;
  std::string what;                   ///< as the audit names it: "credentials add"
  std::optional<UnitVersion> filled;  ///< of the first unit, when its rows were shown
  bool inParts = false;               ///< it has many savepoints, one after the other
};

/// Why nothing of a unit of work will be stored.
enum class VoidReason : std::uint8_t {
  kNone,
  kStale,
  kReplaced,  ///< another store stands in its place, or none: it has to be opened again
  kFailed,
  kCancelled
};

/// A part of SqlSession, and raises what that raises. Between Begin and its end everything that is
/// written through the session belongs to it, the connection's own transactions, too. The first
/// write takes the right to write, which waits for others as long as Patience says, compares the
/// version and, where it is another one, voids the work; so does a write that fails. Of a void one
/// every statement fails, and nothing stays.
class UnitOfWork {
 public:
  virtual ~UnitOfWork() = default;
  UnitOfWork(const UnitOfWork&) = delete;
  UnitOfWork& operator=(const UnitOfWork&) = delete;

  /// The unit's version now, read without waiting for anybody.
  [[nodiscard]] virtual UnitVersion VersionOf(std::int32_t unitKey) = 0;

  /// Who signs the audit entries from now on.
  virtual void SignAs(Author author) = 0;

  /// Writes nothing and waits for nobody. Refuses a second one inside the first, and one inside an
  /// open transaction.
  virtual void Begin(WorkOrder order) = 0;
  /// Takes the right to write at once, whatever the version.
  virtual void Lock() = 0;
  /// Stores everything with its audit entry and raises the versions; true unless there was nothing
  /// to store. Where it raises, and when the work is void, nothing is stored; it has ended anyway.
  virtual bool Commit() = 0;
  /// The version that the latest commit gave to a unit; nothing when that stored nothing for it.
  [[nodiscard]] virtual std::optional<UnitVersion> Committed(std::int32_t unitKey) const = 0;
  /// From now on a commit does all but storing: it undoes what was written, and tried() has it.
  virtual void OnlyTry() noexcept = 0;
  /// The rows that commits would have stored, in the order in which they were written; nothing
  /// unless units of work are only tried.
  [[nodiscard]] virtual const std::vector<RowChange>& tried() const noexcept = 0;
  /// Ends it with nothing stored; without an open one it does nothing.
  virtual void Undo() noexcept = 0;
  /// Makes it void, once; the first reason stays.
  virtual void Void(VoidReason reason) noexcept = 0;

  [[nodiscard]] virtual bool open() const noexcept = 0;
  /// How many rows it has written so far: two equal numbers mean that nothing was in between.
  [[nodiscard]] virtual std::int64_t written() const noexcept = 0;
  /// How many programming steps it has queued so far and not taken back, also in the place of ones
  /// that waited; of the latest one that wrote when none does, kept or not.
  [[nodiscard]] virtual std::int64_t stepsQueued() const noexcept = 0;
  /// Whether nobody else can write until its end.
  [[nodiscard]] virtual bool locked() const noexcept = 0;
  [[nodiscard]] virtual VoidReason voided() const noexcept = 0;

 protected:
  UnitOfWork() = default;
};

/// A unit of work that ends with this object: undone, unless it was committed before.
class WorkGuard {
 public:
  WorkGuard(UnitOfWork& work, WorkOrder order) : work_(work) { work_.Begin(std::move(order)); }
  ~WorkGuard() {
    if (!ended_) {
      work_.Undo();
    }
  }
  WorkGuard(const WorkGuard&) = delete;
  WorkGuard& operator=(const WorkGuard&) = delete;

  bool Commit() {
    ended_ = true;
    return work_.Commit();
  }
  void Undo() {
    ended_ = true;
    work_.Undo();
  }

 private:
  UnitOfWork& work_;
  bool ended_ = false;
};

}  // namespace qorhost
