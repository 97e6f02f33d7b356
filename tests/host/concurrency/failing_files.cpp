#include "tests/host/concurrency/failing_files.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace qorhost::test {

namespace fs = std::filesystem;

namespace {

FailingFiles* files = nullptr;
constexpr const char* kName = "failing";

struct File {
  sqlite3_file base;
  sqlite3_file* real;
  const char* name;  // SQLite keeps it until the file is closed
};

File& Of(sqlite3_file* file) {
  return *reinterpret_cast<File*>(file);
}
const sqlite3_io_methods& Real(sqlite3_file* file) {
  return *Of(file).real->pMethods;
}

}  // namespace

/// What SQLite calls.
struct FailingFilesCalls {
  static bool Stopped() { return files->stopped_; }

  static int Close(sqlite3_file* file) { return Real(file).xClose(Of(file).real); }

  static int Read(sqlite3_file* file, void* to, int size, sqlite3_int64 offset) {
    return Stopped() ? SQLITE_IOERR_READ : Real(file).xRead(Of(file).real, to, size, offset);
  }

  static void Remember(sqlite3_file* file, std::int64_t offset, std::int64_t end) {
    sqlite3_int64 size = 0;
    Real(file).xFileSize(Of(file).real, &size);
    FailingFiles::Replaced replaced{offset, {}, size};
    const std::int64_t last = std::min(end, replaced.size);
    if (last > offset) {
      replaced.old.resize(static_cast<std::size_t>(last - offset));
      Real(file).xRead(Of(file).real, replaced.old.data(), static_cast<int>(last - offset), offset);
    }
    files->unsynced_[Of(file).name].push_back(std::move(replaced));
  }

  static int Write(sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
    const auto* bytes = static_cast<const char*>(from);
    if (Of(file).name != nullptr) {
      files->underWay_ = {Of(file).name, offset, {bytes, bytes + size}};
      if (const int code = files->OnCall(true); code != SQLITE_OK) {
        return code;
      }
      Remember(file, offset, offset + size);
    }
    return Real(file).xWrite(Of(file).real, from, size, offset);
  }

  static int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    if (Of(file).name != nullptr) {
      if (files->OnCall(false) != SQLITE_OK) {
        return SQLITE_IOERR_TRUNCATE;
      }
      sqlite3_int64 former = 0;
      Real(file).xFileSize(Of(file).real, &former);
      Remember(file, size, former);
    }
    return Real(file).xTruncate(Of(file).real, size);
  }

  static int Sync(sqlite3_file* file, int flags) {
    if (Of(file).name != nullptr) {
      if (files->OnCall(false) != SQLITE_OK) {
        return SQLITE_IOERR_FSYNC;
      }
      files->unsynced_.erase(Of(file).name);
    }
    return Real(file).xSync(Of(file).real, flags);
  }

  static int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    return Stopped() ? SQLITE_IOERR_FSTAT : Real(file).xFileSize(Of(file).real, size);
  }
  static int Lock(sqlite3_file* file, int level) {
    return Stopped() ? SQLITE_IOERR_LOCK : Real(file).xLock(Of(file).real, level);
  }
  static int Unlock(sqlite3_file* file, int level) {
    return Real(file).xUnlock(Of(file).real, level);
  }
  static int IsReserved(sqlite3_file* file, int* reserved) {
    return Real(file).xCheckReservedLock(Of(file).real, reserved);
  }
  static int Control(sqlite3_file* file, int operation, void* argument) {
    return Real(file).xFileControl(Of(file).real, operation, argument);
  }
  static int SectorSize(sqlite3_file* file) { return Real(file).xSectorSize(Of(file).real); }
  static int Traits(sqlite3_file* file) { return Real(file).xDeviceCharacteristics(Of(file).real); }
  static int ShmMap(sqlite3_file* file, int page, int size, int extend, void volatile** at) {
    if (files->noRoomForIndex_ && extend != 0) {
      errno = ENOSPC;
      return SQLITE_IOERR_SHMSIZE;
    }
    return Stopped() ? SQLITE_IOERR_SHMMAP
                     : Real(file).xShmMap(Of(file).real, page, size, extend, at);
  }
  static int ShmLock(sqlite3_file* file, int offset, int count, int flags) {
    const bool mayFail = (flags & SQLITE_SHM_LOCK) != 0;
    return Stopped() && mayFail ? SQLITE_IOERR_SHMLOCK
                                : Real(file).xShmLock(Of(file).real, offset, count, flags);
  }
  static void ShmBarrier(sqlite3_file* file) { Real(file).xShmBarrier(Of(file).real); }
  static int ShmUnmap(sqlite3_file* file, int remove) {
    return Real(file).xShmUnmap(Of(file).real, Stopped() ? 0 : remove);
  }

  static int Open(sqlite3_vfs* /*vfs*/, sqlite3_filename name, sqlite3_file* file, int flags,
                  int* opened) {
    static constexpr sqlite3_io_methods kMethods{
        2,       Close,      Read,       Write,   Truncate,   Sync,   FileSize,
        Lock,    Unlock,     IsReserved, Control, SectorSize, Traits, ShmMap,
        ShmLock, ShmBarrier, ShmUnmap,   nullptr, nullptr};
    Of(file).base.pMethods = nullptr;
    if (Stopped()) {
      return SQLITE_CANTOPEN;
    }
    Of(file).name = name;
    Of(file).real = reinterpret_cast<sqlite3_file*>(&Of(file) + 1);
    const int code = files->real_->xOpen(files->real_, name, Of(file).real, flags, opened);
    if (code == SQLITE_OK) {
      Of(file).base.pMethods = &kMethods;
    }
    return code;
  }

  static int Delete(sqlite3_vfs* /*vfs*/, const char* name, int syncFolder) {
    if (files->OnCall(false) != SQLITE_OK) {
      return SQLITE_IOERR_DELETE;
    }
    files->unsynced_.erase(name);
    return files->real_->xDelete(files->real_, name, syncFolder);
  }
};

FailingFiles::FailingFiles() : real_(sqlite3_vfs_find(nullptr)) {
  static sqlite3_vfs vfs;
  vfs = *real_;
  vfs.pNext = nullptr;
  vfs.zName = kName;
  vfs.szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
  vfs.xOpen = &FailingFilesCalls::Open;
  vfs.xDelete = &FailingFilesCalls::Delete;
  files = this;
  if (sqlite3_vfs_register(&vfs, 1) != SQLITE_OK) {
    throw std::runtime_error("the files cannot be registered");
  }
}

FailingFiles::~FailingFiles() {
  sqlite3_vfs_unregister(sqlite3_vfs_find(kName));
  sqlite3_vfs_register(real_, 1);
  files = nullptr;
}

void FailingFiles::FailAt(int nth, FileFault fault, std::function<void()> before) {
  Heal();
  nth_ = nth;
  fault_ = fault;
  before_ = std::move(before);
}

void FailingFiles::Heal() {
  nth_ = -1;
  calls_ = 0;
  failed_ = false;
  stopped_ = false;
  noRoomForIndex_ = false;
}

int FailingFiles::OnCall(bool isWrite) {
  if (stopped_) {
    return SQLITE_IOERR;
  }
  if (nth_ < 0 || calls_++ != nth_) {
    return SQLITE_OK;
  }
  failed_ = true;
  if (!isWrite) {
    underWay_ = {};
  }
  if (before_) {
    before_();
  }
  stopped_ = fault_ == FileFault::kStop;
  return fault_ == FileFault::kFull && isWrite ? SQLITE_FULL : SQLITE_IOERR_WRITE;
}

void FailingFiles::CopyAsTheyAre(const fs::path& from, const fs::path& to) const {
  fs::remove_all(to);
  fs::create_directory(to);
  for (const fs::directory_entry& file : fs::directory_iterator(from)) {
    // What readers share goes with the last of them.
    if (file.path().extension() != ".db-shm") {
      fs::copy_file(file.path(), to / file.path().filename());
    }
  }
}

bool FailingFiles::CopyTorn(const fs::path& from, const fs::path& to) const {
  if (underWay_.file.empty()) {
    return false;
  }
  CopyAsTheyAre(from, to);
  std::fstream file(to / fs::path(underWay_.file).filename(),
                    std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(underWay_.offset);
  file.write(underWay_.bytes.data(), static_cast<std::streamsize>(underWay_.bytes.size() / 2));
  return true;
}

void FailingFiles::CopySynced(const fs::path& from, const fs::path& to) const {
  CopyAsTheyAre(from, to);
  for (const auto& [name, writes] : unsynced_) {
    const fs::path copy = to / fs::path(name).filename();
    if (fs::path(name).parent_path() != from || !fs::exists(copy)) {
      continue;
    }
    for (auto write = writes.rbegin(); write != writes.rend(); ++write) {
      {
        std::fstream file(copy, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(write->offset);
        file.write(write->old.data(), static_cast<std::streamsize>(write->old.size()));
      }
      fs::resize_file(copy, static_cast<std::uintmax_t>(write->size));
    }
  }
}

}  // namespace qorhost::test
