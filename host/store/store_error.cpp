#include "host/store/store_error.h"

namespace qorhost {

std::string_view AdviceFor(StoreFault fault) {
  switch (fault) {
    case StoreFault::kNoSuchUnit:
      return "the row belongs to a unit that does not exist, or is a unit that other rows belong "
             "to";
    case StoreFault::kBusy:
      return "another program is writing to the store: nothing was changed; let it finish, then "
             "try "
             "again";
    case StoreFault::kNoRights:
      return "check the rights on the file and its folder, or open it for reading only";
    case StoreFault::kReadOnly:
      return "the store cannot be written: check the rights on the file and its folder, or whether "
             "it was opened for reading only";
    case StoreFault::kFull:
      return "the disk is full: make room, then try again";
    case StoreFault::kDisk:
      return "the disk could not be read or written: check it, then try again";
    case StoreFault::kNoStore:
      return "the file is not a store: choose another one";
    case StoreFault::kDamaged:
      return "the store is damaged: put back a copy of it";
    case StoreFault::kCannotOpen:
      return "the file cannot be opened: check its name and the rights on it and its folder";
    case StoreFault::kNoMemory:
      return "there is not enough memory: close other programs, then try again";
    case StoreFault::kTooMuchWork:
      return "the query asks for far more work than a report: narrow it";
    case StoreFault::kTooLong:
      return "the statement or one of its values is too long: use a shorter one";
    case StoreFault::kNoServer:
      return "the server cannot be reached: check its address, the network and whether it runs";
    case StoreFault::kUnknown:
      return "it is not known whether it was stored: look at the history (qorhost history list) "
             "before you do it again";
    case StoreFault::kOther:
    case StoreFault::kRefused:
      break;
  }
  return "";
}

}  // namespace qorhost
