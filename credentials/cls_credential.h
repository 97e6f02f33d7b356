// The controller of the credential screen.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "credentials/entry.h"
#include "frame/base64.h"
#include "frame/controls.h"
#include "frame/data_services.h"
#include "frame/host.h"
#include "frame/member_table.h"
#include "frame/siblings.h"

namespace qorcred {

/// Stands for "every credential of the unit" where a row is asked for.
inline constexpr std::int32_t kAllCredentials = -1;

/// Fills the credential screen, checks and stores what the user enters, and deletes, renumbers and
/// assigns credentials. Set gmobjCredentialScreen before any operation that touches controls.
///
/// Every operation takes the host's open connection and the key of the unit being edited, keeps
/// neither, and traps every failure (but pbBase64Dec, which raises): it reports the failure to the
/// Host and returns what its result was by then, False unless already set. One thread only.
class clsCredential final : public Controller {
 public:
  /// Creates the database manager, the step sender and the tenant component through `host`, which
  /// must outlive the controller.
  explicit clsCredential(Host& host);
  ~clsCredential() override;
  clsCredential(const clsCredential&) = delete;
  clsCredential& operator=(const clsCredential&) = delete;

  /// The credential screen. Kept until the host sets another or none.
  [[nodiscard]] const ObjectRef& gmobjCredentialScreen() const { return screen_; }
  void set_gmobjCredentialScreen(ObjectRef screen) { screen_ = std::move(screen); }

  /// Fills cboSchedules1 to cboSchedules4 and selects "Full Access" in each.
  void pbRetrieveSchedules(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// Fills cboAssignedTo with "<Unassigned>" and the unit's tenants; selects nothing.
  void pbRetrieveTenants(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// Adds the credential types to cboCredentialType (without clearing it), disables the facility
  /// code for units that ignore it and, on the screen "frmTBL", sets the default dates.
  void pbRetrieveSettingsFromUnit(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// Stores the entry: a new credential or range, with a tenant for each when `blnIsTBL`; or, when
  /// `blnEditCR`, the door and tenant of the credential selected in cboCredentials.
  /// `lngRID` (may be null) receives the identity of the last credential inserted, also when the
  /// save fails and the row is undone.
  bool pbSave(const ObjectRef& objConn, std::int32_t lngUnitKey, bool blnIsTBL = false,
              bool blnEditCR = false, std::int32_t* lngRID = nullptr);

  /// With kAllCredentials fills cboCredentials and selects the row `lngPreviousRID`; otherwise
  /// loads the credential `lngRID` into the edit controls.
  void pbRetrieveCredentials(const ObjectRef& objConn, std::int32_t lngUnitKey,
                             std::int32_t lngRID = kAllCredentials,
                             std::int32_t lngPreviousRID = 0);

  /// Shows the controls of a transmitter (True) or of a card (False).
  void pbTransmitterCtls(bool blnEnable);

  /// Deletes the credential `lngRID`, after a question when a tenant holds it. The tenant is then
  /// released from the credential selected in cboCredentials. False when the user declined.
  bool pbDelete(const ObjectRef& objConn, std::int32_t lngUnitKey, std::int32_t lngRID);

  /// Gives the credential selected in cboCredentials the number `lngPINNO`.
  bool pbUpdatePinNo(const ObjectRef& objConn, std::int32_t lngPINNO, std::int32_t lngUnitKey);

  /// Writes the names of the unit's doors, shortened, into lblDoor1 to lblDoor4.
  void pbRetrieveDoorDetails(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// Decodes a Base64 text. Raises kOverflow for an invalid character at the start of a group and
  /// kIndexOutOfRange for an empty text or a length that is no multiple of 4.
  std::string pbBase64Dec(std::string_view Base64String);

  /// The public surface above as data.
  [[nodiscard]] static std::span<const Member> MemberTable();
  [[nodiscard]] std::span<const Member> Members() const override { return MemberTable(); }

 private:
  // Population
  void SetDefaultDates(const Screen& screen, const TableView& settings);

  // Entry (checks in a fixed order; each shows its own message)
  bool ReadNumbers(const Screen& screen, CredentialEntry& entry);
  bool ReadCodes(const Screen& screen, CredentialEntry& entry);
  bool IsUnused(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                bool createsTenants, const CredentialEntry& entry);
  bool ReadTenant(const Screen& screen, TenantEntry& tenant);
  bool FitsCapacity(const Screen& screen, const CredentialEntry& entry, std::int16_t maximum,
                    std::int16_t current);
  bool RefuseEntry(const Control& control, std::string_view message);

  // Save and storage
  bool SaveEdited(const ObjectRef& connection, std::int32_t& unitKey, const Screen& screen);
  /// The unit key is the one that the unit's status leaves.
  bool CheckNew(const ObjectRef& connection, std::int32_t& unitKey, const Screen& screen,
                const ObjectRef& application, bool createsTenants, CredentialEntry& entry);
  std::int32_t ReadGroupZeroRid(const ObjectRef& connection, std::int32_t unitKey);
  void StoreNew(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                const ObjectRef& tenantComponent, bool createsTenants, const CredentialEntry& entry,
                std::int32_t* lastRid, bool& saved);
  std::int32_t StoreTenant(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                           const TenantComponent& tenants, const CredentialEntry& entry,
                           std::int32_t number, std::int32_t credentialRid,
                           std::string& newTenantIds);

  // Retrieval
  void FillCredentialList(const Screen& screen, const TableView& credentials,
                          std::int32_t previousRid);
  void LoadCredential(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                      const TableView& credential);

  // Deletion and assignment
  bool pvIsCredentialAssigned(const ObjectRef& connection, std::int32_t unitKey, std::int32_t rid);
  bool pvReleaseCredentialFromTenant(const ObjectRef& connection, std::int32_t unitKey);
  bool pvAssignCredentialToTenant(const ObjectRef& connection, std::int32_t& unitKey);
  void PutIntoSlot(const ObjectRef& connection, std::int32_t unitKey, std::int32_t tenantId,
                   std::int32_t credentialId);
  void ReleaseSlot(const ObjectRef& connection, std::int32_t unitKey, std::string_view slot,
                   std::string_view credentialId);

  /// With `number` -1 checks what the screen shows, otherwise the number alone.
  bool pvValidateCredentialNumber(const ObjectRef& connection, std::int32_t unitKey,
                                  std::int16_t type, std::int32_t number);

  [[nodiscard]] Screen RequireScreen() const { return Screen(screen_); }
  [[nodiscard]] DatabaseManager Manager() const { return DatabaseManager(manager_); }

  Host& host_;
  ObjectRef screen_;
  ObjectRef manager_;
  ObjectRef stepSender_;  // held for the controller's life because hosts count on its creation
  ObjectRef tenants_;
  DatabaseError error_;
  std::string rowIdText_;
  std::string lastModifiedText_;  // asked for at creation; statements spell the placeholder out
  // True while an existing credential is being changed: the duplicate check then takes the number
  // from the list and leaves the selected row out. Stays as it is when a failure ends a save.
  bool mblnEditCredential_ = false;
  Base64Decoder base64_;
};

}  // namespace qorcred
