// Files under the store that fail or stop at a chosen write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

struct sqlite3_vfs;

namespace qorhost::test {

/// What happens at the chosen call.
enum class FileFault : std::uint8_t {
  kFull,     ///< the disk is full, for this call alone
  kIoError,  ///< the call fails, and no other does
  kStop,     ///< it and every call behind it fail: what the program does then reaches no file
};

/// While it lives, every file that SQLite opens is one of these; one object at a time. Writes,
/// syncs, truncations and removals count.
class FailingFiles {
 public:
  FailingFiles();
  ~FailingFiles();
  FailingFiles(const FailingFiles&) = delete;
  FailingFiles& operator=(const FailingFiles&) = delete;

  /// From now on the call `nth` (from 0) fails. Calls `before`, if given, before it.
  void FailAt(int nth, FileFault fault, std::function<void()> before = nullptr);
  /// Nothing fails any more, nothing is counted.
  void Heal();
  /// From now on there is no room for what readers share, as on a full disk; until Heal().
  void LeaveNoRoomForTheIndex() { noRoomForIndex_ = true; }
  /// Whether the chosen call came.
  [[nodiscard]] bool failed() const { return failed_; }

  // What is on the disk, to be called in `before` or behind an operation. They copy the files of
  // one folder, which must be different, into another.

  /// As a killed program leaves them.
  void CopyAsTheyAre(const std::filesystem::path& from, const std::filesystem::path& to) const;
  /// With one half of the write that is under way; false when it is no write.
  [[nodiscard]] bool CopyTorn(const std::filesystem::path& from,
                              const std::filesystem::path& to) const;
  /// As a power failure leaves them: without what was written and not synced.
  void CopySynced(const std::filesystem::path& from, const std::filesystem::path& to) const;

 private:
  friend struct FailingFilesCalls;

  /// What a write has replaced: `old` from `offset` on, in a file of `size` bytes.
  struct Replaced {
    std::int64_t offset = 0;
    std::vector<char> old;
    std::int64_t size = 0;
  };
  struct WriteUnderWay {
    std::string file;
    std::int64_t offset = 0;
    std::vector<char> bytes;
  };

  /// The code with which a call that counts ends; 0 when it is to be done.
  [[nodiscard]] int OnCall(bool isWrite);

  sqlite3_vfs* real_;
  int nth_ = -1;
  int calls_ = 0;
  FileFault fault_ = FileFault::kStop;
  std::function<void()> before_;
  bool failed_ = false;
  bool stopped_ = false;
  bool noRoomForIndex_ = false;
  WriteUnderWay underWay_;
  std::map<std::string, std::vector<Replaced>> unsynced_;
};

}  // namespace qorhost::test
