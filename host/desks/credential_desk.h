// The credential screen of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "credentials/cls_credential.h"
#include "host/desks/assignment.h"
#include "host/desks/credential_number.h"
#include "host/desks/desk_work.h"
#include "host/desks/issued_credentials.h"
#include "host/desks/outcome.h"
#include "host/desks/progress.h"
#include "host/desks/session.h"
#include "host/screens/credential_screen.h"

namespace qorhost {

enum class DeskScreen : std::uint8_t {
  kCredentials,     ///< enters and edits credentials
  kTenantCreating,  ///< creates a tenant for every credential
};

/// The credential that the screen shows.
struct ShownCredential {
  std::string entry;                ///< as the list shows it: "Transmitter-301"
  std::int32_t rid = 0;             ///< 0 when none is selected
  std::optional<std::string> door;  ///< "<None>" for no door; nothing where there are no doors
  std::string tenant;               ///< who is chosen as its holder; "" for nobody
};

/// What a change of one credential tells: the credential as it is now.
struct ChangedCredential : Outcome {
  ShownCredential credential;
};

/// Opens the screen as the application does: fills its lists, shows the doors and lets selections
/// in the lists load what was selected. The session must outlive the desk. Raises FailureError when
/// a list cannot be filled.
class CredentialDesk {
 public:
  CredentialDesk(DeskSession& session, std::int32_t unitKey, DeskScreen kind);
  ~CredentialDesk();
  CredentialDesk(const CredentialDesk&) = delete;
  CredentialDesk& operator=(const CredentialDesk&) = delete;

  [[nodiscard]] ScreenModel& screen() { return *screen_; }
  [[nodiscard]] ListModel& credentials() const { return screen_->List("cboCredentials"); }
  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }

  /// Whether facility codes are entered for the unit.
  [[nodiscard]] bool takesFacilityCode() const;
  /// Selects the credential in the list, which loads it into the edit controls. By the number that
  /// is printed on it, by its entry as in "Transmitter-301" or by its row as in "rid:17". Raises
  /// InputFault when there is none or more than one, and FailureError when it cannot be loaded.
  ShownCredential Select(std::string_view credential);
  /// The same by its place in the list. Raises FailureError also when somebody else has deleted it.
  void SelectCredential(std::int32_t index);
  /// Selects "<Add New>" and empties what a loaded credential has left: the screen is as it opened,
  /// but for the type, and takes what the type has.
  void StartNew();
  /// What the screen shows now.
  [[nodiscard]] ShownCredential Shown() const;
  /// Who would lose what by SaveEdited(), to be asked for before it: when that changes meanwhile,
  /// the save is stale.
  [[nodiscard]] AssignmentLosses LossesOfSaving();
  /// Fills the list of credentials again and selects the row `rid`, when there is one. Every entry
  /// has its own row, also where the store holds credentials of types that the screen does not
  /// know. Raises FailureError when others never cease to change them meanwhile.
  void RefreshCredentials(std::int32_t rid = 0);

  // The operations, on this screen and unit, each a unit of work. A change is stale when someone
  // else has changed or deleted the credential meanwhile, or changed who holds it; after one that
  // was done the credential is loaded again.

  /// Saves new credentials, `progress` being told of every row.
  IssuedCredentials SaveNew(const Progress& progress = nullptr);
  /// Saves what was chosen for the credential that is selected, unless it is stored so already:
  /// nothing is queued then. A refused one is loaded again: the facts tell what is stored.
  ChangedCredential SaveEdited();
  /// Assigns the credential that SaveNew() has just stored to the tenant at the place `tenant` of
  /// the list. Takes it into the list of credentials, which is not filled again: for long imports.
  Outcome AssignIssued(const IssuedCredentials& issued, std::int32_t tenant);
  /// Deletes the credential that is selected. Raises FailureError when none is.
  Outcome Delete();
  /// Gives the credential that is selected another number, and queues the steps of those who hold
  /// it, unless it has that number already.
  ChangedCredential Renumber(CredentialNumber number);

 private:
  void Open();
  void StartController();
  void FillDoors();
  void ShowTypesControls();
  void FillLists();
  bool ShowRow(std::int32_t rid);
  void LoadAgain(std::int32_t rid);
  void Load(std::int32_t index);
  [[nodiscard]] Outcome Work(std::string what, const std::function<Outcome()>& run);
  [[nodiscard]] Outcome SaveOnce(IssuedCredentials& issued, const Progress& progress);
  [[nodiscard]] Outcome SaveSelected();
  [[nodiscard]] Assignment Chosen() const;
  [[nodiscard]] bool IsStoredAsShown();
  void RequireUnitSettings();

  DeskSession& session_;
  std::int32_t unitKey_;
  DeskScreen kind_;
  std::shared_ptr<ScreenModel> screen_;
  std::optional<Controlled<qorcred::clsCredential>> controller_;
  ShownState shown_;
  bool hidesRows_ = false;    // the controller has made no entries for some of the credentials
  bool hasSettings_ = false;  // when it was looked for last
  Subscription typeSelected_;
  Subscription credentialSelected_;
};

}  // namespace qorhost
