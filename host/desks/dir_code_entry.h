// Typing a directory code's settings into the screen.
#pragma once

#include "host/cli/dir_code_commands.h"
#include "host/desks/dir_code_desk.h"

namespace qorhost {

/// Ticks what a new code has unless the entry says otherwise: active, name and code shown.
void TickForNewCode(DirCodeDesk& desk);

/// Sets the screen's controls as `entry` says; the others stay. Raises UsageError for what cannot
/// be typed or chosen, and for texts that the store's statements cannot take.
void EnterCode(DirCodeDesk& desk, const CodeEntry& entry);

/// Whether the entry changes anything.
[[nodiscard]] bool IsEmpty(const CodeEntry& entry);

}  // namespace qorhost
