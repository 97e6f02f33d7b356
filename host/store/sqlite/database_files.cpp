#include "host/store/sqlite/database_files.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>

namespace qorhost::sqlite {

namespace {

// The formats of the engine's files are documented and do not change.
constexpr std::int64_t kPageSizeInFile = 16;
constexpr std::int64_t kLogHeaderSize = 32;
constexpr std::int64_t kSaltsInLog = 16;
constexpr std::int64_t kFrameHeaderSize = 24;
constexpr std::size_t kFramesInIndex = 16;
constexpr std::size_t kSaltsInIndex = 32;
constexpr std::size_t kCopiedInIndex = 96;
constexpr int kPartOfIndex = 32 * 1024;

/// The engine's numbers in files begin with the highest byte.
std::uint32_t Number(const std::uint8_t* bytes, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t at = 0; at < size; ++at) {
    number = number * 256 + bytes[at];
  }
  return number;
}

/// In the index they are the machine's own.
std::uint32_t NumberInIndex(const volatile std::uint8_t* index, std::size_t place) {
  return *reinterpret_cast<const volatile std::uint32_t*>(index + place);
}

sqlite3_file* FileOf(sqlite3* database, int which) {
  sqlite3_file* file = nullptr;
  const bool known = sqlite3_file_control(database, "main", which, &file) == SQLITE_OK;
  return known && file != nullptr && file->pMethods != nullptr ? file : nullptr;
}

template <std::size_t kSize>
bool ReadBytes(sqlite3_file* file, std::array<std::uint8_t, kSize>& bytes, std::int64_t place) {
  return file->pMethods->xRead(file, bytes.data(), static_cast<int>(kSize), place) == SQLITE_OK;
}

}  // namespace

DatabaseFiles::DatabaseFiles(sqlite3* database)
    : file_(FileOf(database, SQLITE_FCNTL_FILE_POINTER)),
      log_(FileOf(database, SQLITE_FCNTL_JOURNAL_POINTER)) {
  const char* name = sqlite3_db_filename(database, "main");
  if (file_ == nullptr || log_ == nullptr || name == nullptr || file_->pMethods->iVersion < 2) {
    return;
  }
  path_ = name;
  logPath_ = path_ + "-wal";
  indexPath_ = path_ + "-shm";
  logIdentity_ = IdentityOf(logPath_);
  indexIdentity_ = IdentityOf(indexPath_);
  std::array<std::uint8_t, 2> size{};
  if (!logIdentity_ || !indexIdentity_ || !ReadBytes(file_, size, kPageSizeInFile)) {
    return;
  }
  constexpr std::uint32_t kLargest = 65536;  // which two bytes do not hold: it stands as 1
  const std::uint32_t told = Number(size.data(), size.size());
  pageSize_ = told == 1 ? kLargest : told;
  void volatile* index = nullptr;
  const int code = file_->pMethods->xShmMap(file_, 0, kPartOfIndex, 0, &index);
  if (code == SQLITE_OK || code == SQLITE_READONLY) {
    state_ = static_cast<const volatile std::uint8_t*>(index);
  }
}

std::optional<DatabaseFiles::Identity> DatabaseFiles::IdentityOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return std::nullopt;
  }
  return Identity{status.st_dev, status.st_ino};
}

LogState DatabaseFiles::State() const noexcept {
  LogState state;
  for (std::size_t at = 0; at < state.salts.size(); ++at) {
    state.salts[at] = state_[kSaltsInIndex + at];
  }
  state.frames = NumberInIndex(state_, kFramesInIndex);
  state.inFile = std::min(NumberInIndex(state_, kCopiedInIndex), state.frames);
  return state;
}

DatabaseFiles::Stamp DatabaseFiles::StampOfFile() const {
  struct stat status {};
  if (stat(path_.c_str(), &status) != 0) {
    return {};
  }
  // A file may claim any year: what is too large comes round, and is the same for the same moment.
  const auto nanoseconds = [](const timespec& time) {
    constexpr std::uint64_t kInASecond = 1'000'000'000;
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.tv_sec) * kInASecond +
                                     static_cast<std::uint64_t>(time.tv_nsec));
  };
  return {status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

bool DatabaseFiles::logIsInPlace() const {
  return IdentityOf(logPath_) == logIdentity_ && IdentityOf(indexPath_) == indexIdentity_;
}

DatabaseFiles::Page DatabaseFiles::Read(sqlite3_file* file, std::int64_t place) const {
  Page page(pageSize_);
  file->pMethods->xRead(file, page.data(), static_cast<int>(page.size()), place);
  return page;
}

DatabaseFiles::Page DatabaseFiles::PageOfFile(std::uint32_t number) const {
  return Read(file_, (static_cast<std::int64_t>(number) - 1) * pageSize_);
}

bool DatabaseFiles::LogReaches(const LogState& state) const {
  std::array<std::uint8_t, 8> salts{};
  sqlite3_int64 size = 0;
  return ReadBytes(log_, salts, kSaltsInLog) && salts == state.salts &&
         log_->pMethods->xFileSize(log_, &size) == SQLITE_OK &&
         size >= PlaceOfFrame(state.frames + 1);
}

std::int64_t DatabaseFiles::PlaceOfFrame(std::uint32_t number) const {
  return kLogHeaderSize + (static_cast<std::int64_t>(number) - 1) * (kFrameHeaderSize + pageSize_);
}

DatabaseFiles::Frame DatabaseFiles::FrameAt(std::uint32_t number) const {
  std::array<std::uint8_t, 8> header{};
  if (!ReadBytes(log_, header, PlaceOfFrame(number))) {
    return {};
  }
  return {Number(header.data(), 4), Number(header.data() + 4, 4)};
}

DatabaseFiles::Page DatabaseFiles::PageOfFrame(std::uint32_t number) const {
  return Read(log_, PlaceOfFrame(number) + kFrameHeaderSize);
}

}  // namespace qorhost::sqlite
