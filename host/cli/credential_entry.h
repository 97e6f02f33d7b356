// Typing a new credential into the screen.
#pragma once

#include "host/cli/credential_commands.h"
#include "host/cli/credential_desk.h"

namespace qorhost {

/// Sets the screen's controls as `options` say. Raises UsageError for what the screen does not let
/// an operator enter: a control that is hidden or disabled, an entry that a list does not have.
void EnterCredential(CredentialDesk& desk, const AddOptions& options);

/// How many credentials the numbers on the screen ask for, 0 when they do not say.
[[nodiscard]] std::int64_t EnteredCount(const HeadlessScreen& screen);

}  // namespace qorhost
