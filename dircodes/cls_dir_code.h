// The controller of the directory-code screen.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "dircodes/entry.h"
#include "dircodes/unit_notation.h"
#include "frame/base64.h"
#include "frame/controls.h"
#include "frame/data_services.h"
#include "frame/host.h"
#include "frame/member_table.h"
#include "frame/row_state.h"
#include "frame/siblings.h"

namespace qorcred {

/// Fills the directory-code screen, checks and stores what the user enters, deletes and renumbers
/// codes, and merges the codes that a unit holds. Set mobjDirCodeScreen before any operation that
/// touches controls, and mfrmConnectionScreen before a merge.
///
/// Every operation takes the host's open connection and the key of the unit being edited, keeps
/// neither, and traps every failure: it reports the failure to the Host and returns what its result
/// was by then, False unless already set. Two things are raised to the caller instead: what
/// pbBase64Dec raises, and a failing call into a result table while pbRetrieveSchedules,
/// pbRetrieveSettingsFromUnit or pbRetrieveTenants runs. One thread only.
class clsDirCode final : public Controller {
 public:
  /// Creates the database manager and the connection manager through `host`, which must outlive the
  /// controller. What cannot be created is done without: the operations that need it then fail.
  explicit clsDirCode(Host& host);
  ~clsDirCode() override;
  clsDirCode(const clsDirCode&) = delete;
  clsDirCode& operator=(const clsDirCode&) = delete;

  /// The directory-code screen. Kept until the host sets another or none.
  [[nodiscard]] const ObjectRef& mobjDirCodeScreen() const { return screen_; }
  void set_mobjDirCodeScreen(ObjectRef screen) { screen_ = std::move(screen); }

  /// The screen of the link to the unit: its mFirmwareFromHandshake tells which columns a merge
  /// writes. Kept until the host sets another or none.
  [[nodiscard]] const ObjectRef& mfrmConnectionScreen() const { return connectionScreen_; }
  void set_mfrmConnectionScreen(ObjectRef screen) { connectionScreen_ = std::move(screen); }

  /// Stores the entry: a new code or, when `blnEditDir`, the row glngrid of the screen.
  /// With the screen's gstrTag "EDIT" the code is read from the list cbodirectorycode, from its
  /// item `prevDirCodeIndex` unless that is 0. `lngRID` (may be null) receives a new row's
  /// identity.
  bool pbSave(const ObjectRef& objConn, std::int32_t lngUnitKey, bool blnEditDir = false,
              std::int32_t* lngRID = nullptr, std::int32_t prevDirCodeIndex = 0);

  /// With `lngRID` kNoRid fills cbodirectorycode and selects the row `lngOldValue`; otherwise loads
  /// the code in the row `lngRID` into the edit controls.
  void pbRetrieveDirCodes(const ObjectRef& objConn, std::int32_t lngUnitKey,
                          std::int32_t lngRID = kNoRid, std::int32_t lngOldValue = 0);

  /// Deletes the row `lngRID`, after a question when `blnValidate`, and then takes it from the
  /// tenants too. True only in that last case: without the question False means nothing.
  bool pbDelete(const ObjectRef& objConn, std::int32_t lngUnitKey, std::int32_t lngRID,
                bool blnDontDisplayMessage = false, bool blnValidate = false);

  /// Fills lstTenants with the tenants that refer to the row `lngDirCode`, or for kNoRid with those
  /// that refer to none. False when there are none.
  bool pbRetrieveTenants(const ObjectRef& objConn, std::int32_t lngUnitKey,
                         std::int32_t lngDirCode = 0, bool blnDIsplayName = false);

  /// Gives the row glngrid of the screen the code `strDirCode`.
  bool pbUpdateDirCode(const ObjectRef& objConn, std::int32_t lngUnitKey,
                       std::string_view strDirCode);

  /// Fills cboSchedules and cboSchedulesCF; selects nothing.
  void pbRetrieveSchedules(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// Sets how long a code may be and, unless a stored code is selected, the default dates.
  void pbRetrieveSettingsFromUnit(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// Writes one code that a unit holds. `strMode` is "Insert", "Update" or "Delete"; any other
  /// writes nothing. `strDirCodeDetails` holds 24 texts in the unit's notation, which all modes but
  /// "Delete" change in place to the store's. "Delete" with `lngRID` kNoRid deletes every code.
  bool pbMergeSave(const ObjectRef& objConn, std::int32_t lngUnitKey, std::string_view strMode,
                   StringArray& strDirCodeDetails, std::int32_t lngRID = 0);

  /// Puts a table into `arrXDBDirCode`: unit key, RID and code of every stored code and, behind
  /// them, the same with the previous code for every code that still has one. Row 0 is empty when
  /// nothing is stored. Keeps the link to the unit alive while it works.
  bool pbFetchDirForMerge(const ObjectRef& objConn, std::int32_t lngUnitKey,
                          ObjectRef& arrXDBDirCode);

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
  /// `entry` comes with the code as it was read. Raises what reading the controls raises.
  bool ReadEntry(const Screen& screen, DirCodeEntry& entry);
  bool ReadCode(const Screen& screen, DirCodeEntry& entry);
  bool ReadPhone(const Screen& screen, DirCodeEntry& entry);
  bool ReadCallForwarding(const Screen& screen, DirCodeEntry& entry);
  static void ReadSchedules(const Screen& screen, DirCodeEntry& entry);
  bool ReadActivePeriod(const Screen& screen, DirCodeEntry& entry);
  bool RefuseEntry(const Control& control, std::string_view message);

  // Save
  /// Leaves the application component in `application`, for the operation to keep to its end.
  bool FitsCapacity(const ObjectRef& connection, std::int32_t& unitKey, ObjectRef& application);
  bool IsStored(const ObjectRef& connection, std::int32_t unitKey, std::string_view code);
  bool MayStore(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                const DirCodeEntry& entry, std::int32_t ridToLeaveOut);
  bool SaveEdited(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                  const StepSender& steps, const DirCodeEntry& entry);
  bool SaveNew(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
               const StepSender& steps, const DirCodeEntry& entry, std::int32_t* newRid);

  // Retrieval
  void FillCodeList(const Screen& screen, const TableView& codes, std::int32_t oldRid);
  void LoadCode(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                const TableView& code);

  // Record checks
  bool pbIsDirCodeUnique(const ObjectRef& connection, std::string_view code, std::int32_t unitKey,
                         std::int32_t ridToLeaveOut);
  bool pbIsDirCodeAssignedToTenant(const ObjectRef& connection, std::int32_t unitKey,
                                   std::int32_t rid);
  /// The row's MODIFIED value; see frame/row_state.h.
  std::int16_t ReadState(const ObjectRef& connection, std::int32_t rid);

  // Renumbering and deletion
  bool IsCodeAcceptable(const Screen& screen, std::string_view code);
  static void ReplaceSelectedCode(const Screen& screen, std::string_view code, std::int32_t rid);
  void QueueRenumbering(const ObjectRef& connection, std::int32_t& unitKey, std::int32_t rid,
                        std::int16_t state);
  bool ConfirmDeletion(const ObjectRef& connection, std::int32_t unitKey, std::int32_t rid);
  void QueueDeletion(const ObjectRef& connection, std::int32_t& unitKey, std::int32_t& rid);
  void ReleaseFromTenants(const ObjectRef& connection, std::int32_t unitKey, std::int32_t rid);

  // Merge
  void UpdateFromUnit(const ObjectRef& connection, std::int32_t unitKey, const StringArray& details,
                      const DisplayOptions& display, std::int32_t rid);
  void InsertFromUnit(const ObjectRef& connection, std::int32_t unitKey, const StringArray& details,
                      const DisplayOptions& display);
  void DeleteAsInUnit(const ObjectRef& connection, std::int32_t unitKey, std::int32_t rid);
  void AppendPreviousCodes(const TableView& previous, const TableView& codes);
  [[nodiscard]] bool UnitHasDisplayOptions() const;

  [[nodiscard]] Screen RequireScreen() const { return Screen(screen_); }
  [[nodiscard]] DatabaseManager Manager() const { return DatabaseManager(manager_); }

  Host& host_;
  ObjectRef screen_;
  ObjectRef connectionScreen_;
  ObjectRef connectionManager_;
  ObjectRef manager_;
  DatabaseError error_;
  std::string rowIdText_;
  std::string lastModifiedText_;  // asked for at creation; statements spell the placeholder out
  Base64Decoder base64_;
};

}  // namespace qorcred
