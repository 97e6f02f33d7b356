#include "host/store/server_passwords.h"

#include <map>
#include <mutex>
#include <utility>

namespace qorhost {

namespace {

struct Passwords {
  std::mutex mutex;
  PasswordAsker asker;
  std::map<std::string, std::string> typed;  // by names of stores
};

Passwords& All() {
  static Passwords all;
  return all;
}

}  // namespace

void AskForPasswords(PasswordAsker asker) {
  Passwords& all = All();
  const std::lock_guard lock(all.mutex);
  all.asker = std::move(asker);
}

std::string TypedPassword(const std::string& name) {
  Passwords& all = All();
  const std::lock_guard lock(all.mutex);
  const auto found = all.typed.find(name);
  return found == all.typed.end() ? "" : found->second;
}

bool AskPasswordOf(const std::string& name, const std::string& shownName) {
  Passwords& all = All();
  PasswordAsker asker;
  {
    const std::lock_guard lock(all.mutex);
    asker = all.asker;
  }
  const std::optional<std::string> given = asker ? asker(shownName) : std::nullopt;
  if (!given || given->empty()) {
    return false;
  }
  const std::lock_guard lock(all.mutex);
  all.typed[name] = *given;
  return true;
}

void ForgetPassword(const std::string& name) {
  Passwords& all = All();
  const std::lock_guard lock(all.mutex);
  all.typed.erase(name);
}

}  // namespace qorhost
