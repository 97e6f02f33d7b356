// Passwords of stores on servers that people type. They stand in memory alone, for as long as the
// process lives, and nobody is told them but the server. Any thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace qorhost {

/// Asks a person for the password of a store, by the name that people may read; nothing for
/// somebody who does not give it. Called on the thread that opens the store.
using PasswordAsker = std::function<std::optional<std::string>(const std::string& shownName)>;

/// Who is asked from now on where a server wants a password that no file and no environment has;
/// none: nobody, and the store cannot be opened then.
void AskForPasswords(PasswordAsker asker);

/// What was typed for a store, by its whole name; "" for nothing.
[[nodiscard]] std::string TypedPassword(const std::string& name);
/// Asks for it, and keeps it for all connections to that store; false where nobody gives it.
[[nodiscard]] bool AskPasswordOf(const std::string& name, const std::string& shownName);
/// To be called when the server has not taken it.
void ForgetPassword(const std::string& name);

}  // namespace qorhost
