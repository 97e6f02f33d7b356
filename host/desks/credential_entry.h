// Typing a new credential into the screen.
#pragma once

#include <cstdint>
#include <optional>

#include "host/cli/credential_commands.h"
#include "host/desks/credential_desk.h"

namespace qorhost {

/// Sets the screen's controls as `options` say. Raises UsageError for what the screen does not let
/// an operator enter: a control that is hidden or disabled, an entry that a list does not have.
void EnterCredential(CredentialDesk& desk, const AddOptions& options);

/// The numbers on the screen, read as the controller reads them.
struct EnteredNumbers {
  std::int64_t first = 0;
  std::int64_t last = 0;

  [[nodiscard]] std::int64_t Count() const { return last - first + 1; }
};

/// Nothing when the boxes hold no range of credential numbers.
[[nodiscard]] std::optional<EnteredNumbers> ReadEntered(const ScreenModel& screen);

}  // namespace qorhost
