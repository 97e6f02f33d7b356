// The floor: controllers written by hand, as far as creation, a put and a save go.
#pragma once

#include <windows.h>

#include "com/ownership.h"

namespace qorbench {

/// Makes objects that create the same components as the component's class of that name, ask the
/// manager for the same texts and let go of all of it with their end. "clsCredential" has
/// gmobjCredentialScreen and pbSave of a range of cards, the reports have mlngUnitKey; no other
/// member and no checks of what the host answers.
[[nodiscard]] qorcred::com::ComPtr<IClassFactory> HandWrittenFactory(const wchar_t* className);

}  // namespace qorbench
