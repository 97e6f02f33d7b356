#include "host/store/store_error.h"

#include <fmt/format.h>
#include <sqlite3.h>

namespace qorhost {

namespace {

// The low byte of an extended result code is the primary one.
constexpr int kPrimaryMask = 0xFF;

}  // namespace

StoreError::StoreError(const std::string& message, int code)
    : std::runtime_error(message), code_(code) {}

std::string AdviceFor(int code) {
  if (code == SQLITE_CONSTRAINT_FOREIGNKEY) {
    return "the row belongs to a unit that does not exist, or is a unit that other rows belong to";
  }
  switch (code & kPrimaryMask) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "another program is writing to the store: let it finish, then try again";
    case SQLITE_PERM:
      return "check the rights on the file and its folder, or open it for reading only";
    case SQLITE_READONLY:
      return "the store cannot be written: check the rights on the file and its folder, or whether "
             "it was opened for reading only";
    case SQLITE_FULL:
      return "the disk is full: make room, then try again";
    case SQLITE_IOERR:
      return "the disk could not be read or written: check it, then try again";
    case SQLITE_NOTADB:
      return "the file is not a store: choose another one";
    case SQLITE_CORRUPT:
      return "the store is damaged: put back a copy of it";
    case SQLITE_CANTOPEN:
      return "the file cannot be opened: check its name and the rights on it and its folder";
    case SQLITE_NOMEM:
      return "there is not enough memory: close other programs, then try again";
    case SQLITE_INTERRUPT:
      return "the query asks for far more work than a report: narrow it";
    case SQLITE_TOOBIG:
      return "the statement or one of its values is too long: use a shorter one";
    default:
      return "";
  }
}

StoreError LastError(sqlite3* database, const std::string& doing) {
  const int code = database == nullptr ? SQLITE_NOMEM : sqlite3_extended_errcode(database);
  const char* text = database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database);
  const std::string advice = AdviceFor(code);
  return StoreError(advice.empty() ? fmt::format("{}: {}", doing, text)
                                   : fmt::format("{}: {} ({})", doing, text, advice),
                    code);
}

}  // namespace qorhost
