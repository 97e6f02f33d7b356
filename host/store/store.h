// What every engine's store can do.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/store/patience.h"
#include "host/store/sql_session.h"
#include "host/store/time_stamp.h"

namespace qorhost {

enum class OpenMode : std::uint8_t {
  kReadOnly,
  kReadWrite,  ///< the store must exist
  kCreate,     ///< the store is created when there is none
};

/// An open store, used by one thread; host/store/engines opens it.
class Store {
 public:
  virtual ~Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  /// Begins work on it; rows are stamped with the clock's time. One session at a time, which must
  /// end before the store.
  [[nodiscard]] virtual std::unique_ptr<SqlSession> StartSession(Clock clock) = 0;
  /// How long writers wait for others from now on.
  virtual void SetPatience(Patience patience) = 0;
  /// Puts all that it holds into its own file, so that this may be moved alone. Raises StoreError
  /// when it cannot.
  virtual void GatherInFile() = 0;
  /// Writes all that it holds at one moment into an empty file, which is a store then; others go on
  /// reading and writing meanwhile. Raises StoreError.
  virtual void CopyInto(const std::filesystem::path& emptyFile) = 0;
  /// What is damaged in the file itself, a line each; reads all of it.
  [[nodiscard]] virtual std::vector<std::string> Damages() = 0;
  /// How the store is called in messages.
  [[nodiscard]] virtual const std::string& name() const noexcept = 0;
  [[nodiscard]] virtual bool readOnly() const noexcept = 0;
  /// Statements that were started and not yet ended: 0 between any two operations.
  [[nodiscard]] virtual int busyStatements() const noexcept = 0;

 protected:
  Store() = default;
};

}  // namespace qorhost
