#include "host/store/sqlite/replacement.h"

#include <fmt/format.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "host/store/sqlite/path_to_open.h"
#include "host/store/sqlite/schema.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace fs = std::filesystem;

namespace {

constexpr int kMostTries = 100;
constexpr std::chrono::milliseconds kPause(50);
constexpr std::uintmax_t kLogHeaderSize = 32;  // without a frame behind it, nothing is in the log

void RemoveSideFiles(const fs::path& file) {
  std::error_code error;
  for (const fs::path& beside : SideFilesOf(file)) {
    fs::remove(beside, error);
    if (error) {
      throw StoreError(fmt::format("'{}' cannot be removed: {}", beside.string(), error.message()),
                       StoreFault::kNoRights);
    }
  }
}

bool HoldsNothing(const fs::path& beside) {
  std::error_code failed;
  const fs::file_status status = fs::symlink_status(beside, failed);
  if (!fs::exists(status)) {
    return true;
  }
  if (!fs::is_regular_file(status)) {
    return false;
  }
  const std::string name = beside.filename().string();
  if (name.ends_with("-shm")) {
    return true;  // it tells where things are in the log
  }
  const std::uintmax_t size = fs::file_size(beside, failed);
  return !failed && (size == 0 || (size == kLogHeaderSize && name.ends_with("-wal")));
}

}  // namespace

std::optional<fs::path> RemainsBeside(const fs::path& place) {
  RequireNameThatFits(place);
  for (const fs::path& beside : SideFilesOf(place)) {
    if (!HoldsNothing(beside)) {
      return beside;
    }
  }
  return std::nullopt;
}

void PutWhereNoneIs(const fs::path& place, const fs::path& fresh,
                    const std::function<void()>& moveInPlace) {
  // A program that had the old store open may hold the index that was left: whoever begins must
  // not meet it there.
  const FileLock lock(fresh, LockedBytes::kBeginning);
  // The name first: whose it is, theirs are the side files.
  moveInPlace();
  try {
    RemoveSideFiles(place);
  } catch (...) {
    std::error_code ignored;
    fs::remove(place, ignored);
    throw;
  }
}

Replacement::Replacement(fs::path file, Patience patience)
    : file_(std::move(file)), patience_(std::move(patience)) {
  for (int tries = 1; !Lock(); ++tries) {
    if (tries == kMostTries) {
      throw StoreError(fmt::format("'{}' is being replaced by other programs: {}", file_.string(),
                                   AdviceFor(StoreFault::kBusy)),
                       StoreFault::kBusy);
    }
  }
  if (database_ != nullptr) {
    EmptyLog();
  }
}

bool Replacement::Lock() {
  database_.reset();
  try {
    database_ = std::make_unique<Database>(file_, OpenMode::kReadWrite, patience_);
    database_->Run("BEGIN IMMEDIATE");  // ends with the connection
    database_->WatchLog();
    database_->RequireOwnLog();
  } catch (const StoreError& failure) {
    if (database_ != nullptr && HasMoved(*database_)) {
      return false;
    }
    database_.reset();
    if (failure.fault() != StoreFault::kNoStore && failure.fault() != StoreFault::kDamaged) {
      throw;
    }
    return true;
  }
  return !HasMoved(*database_);
}

void Replacement::EmptyLog() {
  // The transaction that holds the lock cannot do it itself.
  const Database beside(file_, OpenMode::kReadWrite);
  for (std::chrono::milliseconds waited{};; waited += kPause) {
    Statement checkpoint(beside, "PRAGMA wal_checkpoint(PASSIVE)");
    // In the log, and of these in the file, too; both -1 without a log.
    if (checkpoint.Step() && checkpoint.Number(1) == checkpoint.Number(2)) {
      return;
    }
    if (waited >= patience_.limit || (patience_.waiting && !patience_.waiting(waited))) {
      throw StoreError(
          fmt::format(
              "Another program is reading '{}': nothing was changed; let it finish, then try again",
              file_.string()),
          StoreFault::kBusy);
    }
    std::this_thread::sleep_for(kPause);
  }
}

void Replacement::Put(const fs::path& fresh, const std::function<void()>& moveInPlace) {
  // Where the file system has no such locks, the swap is only as short as it is.
  oldFile_ = std::make_unique<FileLock>(file_, LockedBytes::kBeginning);
  newFile_ = std::make_unique<FileLock>(fresh, LockedBytes::kBeginning);
  RemoveSideFiles(file_);
  moveInPlace();
  RemoveSideFiles(file_);
}

}  // namespace qorhost::sqlite
