#include "host/store/sqlite/engine_error.h"

#include <fmt/format.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <string_view>
#include <system_error>

namespace qorhost::sqlite {

namespace {

// The low byte of an extended result code is the primary one.
constexpr int kPrimaryMask = 0xFF;

bool HasNoSpace(sqlite3* database) {
  const char* name = sqlite3_db_filename(database, "main");
  struct statvfs disk {};
  if (name == nullptr || *name == '\0' || statvfs(name, &disk) != 0) {
    return false;
  }
  const bool countsFiles = disk.f_files != 0;
  return disk.f_bavail == 0 || (countsFiles && disk.f_favail == 0);
}

bool HasLimitOfSize() {
  struct rlimit size {};
  return getrlimit(RLIMIT_FSIZE, &size) == 0 && size.rlim_cur != RLIM_INFINITY;
}

/// What a person can do about a failure for which the system gave a reason.
std::string_view AdviceAbout(int reason, StoreFault fault) {
  return reason == EFBIG
             ? "a limit on the size of files is reached: raise it (ulimit -f), then try "
               "again"
             : AdviceFor(fault);
}

/// What the system said, where the engine has but one word for all of it: 0 when that is unknown.
int SystemReason(sqlite3* database, int code) {
  const StoreFault fault = FaultOf(code);
  const bool foundInFile = code == SQLITE_IOERR_SHORT_READ || code == SQLITE_IOERR_DATA ||
                           code == SQLITE_IOERR_CORRUPTFS;
  if ((fault != StoreFault::kDisk && fault != StoreFault::kCannotOpen) || foundInFile) {
    return 0;
  }
  const int reason = sqlite3_system_errno(database);
  // The log and its index cannot grow: by then the reason may have been overwritten.
  if (reason != EDQUOT && HasNoSpace(database)) {
    return ENOSPC;
  }
  return reason == 0 && code == SQLITE_IOERR_WRITE && HasLimitOfSize() ? EFBIG : reason;
}

}  // namespace

StoreFault FaultOf(int code) {
  if (code == SQLITE_CONSTRAINT_FOREIGNKEY) {
    return StoreFault::kNoSuchUnit;
  }
  switch (code & kPrimaryMask) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return StoreFault::kBusy;
    case SQLITE_PERM:
      return StoreFault::kNoRights;
    case SQLITE_READONLY:
      return StoreFault::kReadOnly;
    case SQLITE_FULL:
      return StoreFault::kFull;
    case SQLITE_IOERR:
      return StoreFault::kDisk;
    case SQLITE_NOTADB:
      return StoreFault::kNoStore;
    case SQLITE_CORRUPT:
      return StoreFault::kDamaged;
    case SQLITE_CANTOPEN:
      return StoreFault::kCannotOpen;
    case SQLITE_NOMEM:
      return StoreFault::kNoMemory;
    case SQLITE_INTERRUPT:
      return StoreFault::kTooMuchWork;
    case SQLITE_TOOBIG:
      return StoreFault::kTooLong;
    default:
      return StoreFault::kOther;
  }
}

StoreError LastError(sqlite3* database, const std::string& doing) {
  const int code = database == nullptr ? SQLITE_NOMEM : sqlite3_extended_errcode(database);
  std::string text = database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database);
  StoreFault fault = FaultOf(code);
  const int reason = database == nullptr ? 0 : SystemReason(database, code);
  if (reason != 0) {
    text = std::generic_category().message(reason);
    fault = reason == ENOSPC || reason == EDQUOT ? StoreFault::kFull : fault;
  }
  const std::string_view advice = AdviceAbout(reason, fault);
  return StoreError(advice.empty() ? fmt::format("{}: {}", doing, text)
                                   : fmt::format("{}: {} ({})", doing, text, advice),
                    fault);
}

}  // namespace qorhost::sqlite
