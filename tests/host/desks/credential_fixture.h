// A demo building whose credentials are entered at a desk.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {

class CredentialFixture : public DeskFixture {
 protected:
  CredentialFixture() { replays_ = true; }

  /// A card, or a range of them.
  static NewCredentials Cards(std::string first, std::optional<std::string> last = std::nullopt) {
    NewCredentials entry;
    entry.type = "card26";
    entry.first = std::move(first);
    entry.last = std::move(last);
    entry.facility = "7";
    return entry;
  }
  static DeskScreen ScreenFor(const NewCredentials& entry) {
    return entry.withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials;
  }
  [[nodiscard]] IssuedCredentials Issue(const NewCredentials& entry,
                                        const Progress& progress = nullptr) {
    CredentialDesk desk(session(), kUnit, ScreenFor(entry));
    EnterCredentials(desk, entry);
    return desk.SaveNew(progress);
  }
  [[nodiscard]] std::size_t StoredBetween(const std::string& first, const std::string& last) {
    return CountOf("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo Between " + first +
                   " AND " + last);
  }
  /// The fault in typing the entry in; nothing when there is none.
  [[nodiscard]] std::optional<InputFault> FaultOf(const NewCredentials& entry,
                                                  std::int32_t unit = kUnit) {
    CredentialDesk desk(session(), unit, ScreenFor(entry));
    try {
      EnterCredentials(desk, entry);
    } catch (const InputFault& fault) {
      return fault;
    }
    return std::nullopt;
  }
};

}  // namespace qorhost::test
