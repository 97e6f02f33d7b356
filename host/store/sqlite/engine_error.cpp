#include "host/store/sqlite/engine_error.h"

#include <fmt/format.h>
#include <sqlite3.h>

namespace qorhost::sqlite {

namespace {

// The low byte of an extended result code is the primary one.
constexpr int kPrimaryMask = 0xFF;

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
  const char* text = database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database);
  const StoreFault fault = FaultOf(code);
  const std::string_view advice = AdviceFor(fault);
  return StoreError(advice.empty() ? fmt::format("{}: {}", doing, text)
                                   : fmt::format("{}: {} ({})", doing, text, advice),
                    fault);
}

}  // namespace qorhost::sqlite
