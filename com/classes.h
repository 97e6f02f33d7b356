// The classes that clients can create.
#pragma once

#include <windows.h>

#include <span>

#include "com/controller_room.h"
#include "com/identities.h"
#include "frame/member_table.h"

namespace qorcred::com {

/// One class with all that it is known by. The identifiers never change.
struct ComClass {
  CLSID id;
  IID dispinterface;
  const wchar_t* name;            ///< "clsCredential"
  const wchar_t* programmaticId;  ///< "qorCred.clsCredential"
  const Identity& identity;
  std::span<const Member> (*members)();
  ControllerMaker maker;
};

[[nodiscard]] std::span<const ComClass> Classes();

/// The class with that identifier; null when there is none.
[[nodiscard]] const ComClass* FindClass(REFCLSID id);

/// The type library of all classes.
extern const GUID kTypeLibrary;

}  // namespace qorcred::com
