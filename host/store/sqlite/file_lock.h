// Locks on the bytes of a database file by which the engine's connections tell each other what they
// do; see the engine's file format ("lock-byte page").
#pragma once

#include <cstdint>
#include <filesystem>

namespace qorhost::sqlite {

enum class LockedBytes : std::uint8_t {
  kBeginning,  ///< locked for a moment by each connection that begins to read
  kUse,        ///< these, and those that are locked for as long as a connection has the file in use
};

/// Keeps connections out while it lives, this process's among them. Where it ends, the engine's
/// locks that this process has on the same file end, too: it must outlive such connections.
class FileLock {
 public:
  FileLock(const std::filesystem::path& file, LockedBytes bytes);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  /// False for bytes that others have locked. kBeginning is waited for, which is never long.
  [[nodiscard]] bool locked() const noexcept { return locked_; }

 private:
  int descriptor_;
  bool locked_ = false;
};

}  // namespace qorhost::sqlite
