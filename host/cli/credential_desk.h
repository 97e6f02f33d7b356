// The credential screen of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "credentials/cls_credential.h"
#include "host/cli/store_session.h"
#include "host/screens/credential_screen.h"

namespace qorhost {

enum class DeskScreen : std::uint8_t {
  kCredentials,     ///< enters and edits credentials
  kTenantCreating,  ///< creates a tenant for every credential
};

/// Opens the screen as the application does: fills its lists, shows the doors and lets selections
/// in the lists load what was selected. The session must outlive the desk. Raises FailureError when
/// a list cannot be filled.
class CredentialDesk {
 public:
  CredentialDesk(StoreSession& session, std::int32_t unitKey, DeskScreen kind);
  ~CredentialDesk();
  CredentialDesk(const CredentialDesk&) = delete;
  CredentialDesk& operator=(const CredentialDesk&) = delete;

  [[nodiscard]] ScreenModel& screen() { return *screen_; }
  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }

  /// Whether facility codes are entered for the unit.
  [[nodiscard]] bool takesFacilityCode() const;
  /// Selects a credential in the list, which loads it into the edit controls. Raises FailureError
  /// when it cannot be loaded.
  void SelectCredential(std::int32_t index);
  /// Fills the list of credentials again and selects the row `rid`, when there is one.
  void RefreshCredentials(std::int32_t rid = 0);

  // The operations, on this screen and unit. The session's log tells what happened on the way.
  bool SaveNew(std::int32_t* lastRid);
  bool SaveEdited();
  bool Delete(std::int32_t rid);
  bool Renumber(std::int32_t number);

 private:
  void Open();
  void FillDoors();
  void RequireNoFailure(std::string_view doing);

  StoreSession& session_;
  std::int32_t unitKey_;
  DeskScreen kind_;
  std::shared_ptr<ScreenModel> screen_;
  qorcred::clsCredential controller_;
  Subscription typeSelected_;
  Subscription credentialSelected_;
};

}  // namespace qorhost
