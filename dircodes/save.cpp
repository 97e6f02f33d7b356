// pbSave: a new directory code or an edited one.
#include "dircodes/cls_dir_code.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/row_state.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

// The components of one save. Members are destroyed from the last to the first: the application
// component is created first and released first.
struct SaveComponents {
  ObjectRef stepSender;
  ObjectRef application;
};

std::string CodeShown(const Screen& screen, std::int32_t prevDirCodeIndex) {
  if (TextOrEmpty(screen.Variable("gstrTag")) != "EDIT") {
    return screen.Box("txtdirectorycode").Text();
  }
  const ListControl list = screen.List("cbodirectorycode");
  return prevDirCodeIndex != 0 ? list.ItemText(prevDirCodeIndex) : list.Text();
}

std::string UpdateStatement(std::int32_t unitKey, std::int32_t rid, const DirCodeEntry& entry,
                            std::int16_t state) {
  return Concat(
      "UPDATE DIRECTORYCODE SET DIRECTORYCODE=", entry.code, ",PHONENUMBER='", entry.phone,
      "',EXTENSION='", entry.extension, "',TIMEDELAY=", entry.timeDelay,
      ",DNDSCHEDULEID=", entry.dndSchedule, ",ISDNDCHECKED=", entry.isDndChecked,
      ",CFSCHEDULEID=", entry.cfSchedule, ",ISCFCHECKED=", entry.isCfChecked, ",CFPHONENUMBER='",
      entry.cfPhone, "',CFEXTENSION='", entry.cfExtension, "',CFTIMEDELAY=", entry.cfTimeDelay,
      ",LASTMODIFIEDDATE=", kLastModifiedLiteral, ",ACTIVE=", entry.active, ",STARTDATE='",
      entry.startDateText, "',ENDDATE='", entry.endDateText, "',DISPLAYNAME='", entry.displayName,
      "',MODIFIED=", std::int32_t{state}, ",SHOWDISPLAYNAME=", entry.showDisplayName,
      ",SHOWDIRECTORYCODE=", entry.showDirectoryCode, " WHERE UNITKEY=", unitKey, " AND RID=", rid);
}

std::string InsertStatement(std::int32_t unitKey, std::string_view rowId, const DirCodeEntry& entry,
                            std::string_view oldCode, std::int16_t state) {
  return Concat(
      "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
      "DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,"
      "LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED,"
      "SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(",
      unitKey, ",", rowId, ",", entry.code, ",'", entry.phone, "','", entry.extension, "',",
      entry.timeDelay, ",", entry.dndSchedule, ",", entry.isDndChecked, ",", entry.cfSchedule, ",",
      entry.isCfChecked, ",'", entry.cfPhone, "','", entry.cfExtension, "',", entry.cfTimeDelay,
      ",", kLastModifiedLiteral, ",", entry.active, ",'", entry.startDateText, "','",
      entry.endDateText, "','", entry.displayName, "',", oldCode, ",", std::int32_t{state}, ",",
      entry.showDisplayName, ",", entry.showDirectoryCode, ")");
}

}  // namespace

bool clsDirCode::pbSave(const ObjectRef& objConn, std::int32_t lngUnitKey, bool blnEditDir,
                        std::int32_t* lngRID, std::int32_t prevDirCodeIndex) {
  bool saved = false;
  Trap(host_, "pbSave", [&] {
    SaveComponents components;
    const Screen screen = RequireScreen();
    DirCodeEntry entry;
    entry.code = CodeShown(screen, prevDirCodeIndex);
    if (!IsStored(objConn, lngUnitKey, entry.code) &&
        !FitsCapacity(objConn, lngUnitKey, components.application)) {
      return;
    }
    if (!ReadEntry(screen, entry)) return;

    components.stepSender = host_.CreateComponent(component::kStepSender);
    const StepSender steps(components.stepSender);
    saved = blnEditDir ? SaveEdited(objConn, lngUnitKey, screen, steps, entry)
                       : SaveNew(objConn, lngUnitKey, screen, steps, entry, lngRID);
  });
  return saved;
}

bool clsDirCode::IsStored(const ObjectRef& connection, std::int32_t unitKey,
                          std::string_view code) {
  return !Manager()
              .ExecuteSelect(connection,
                             Concat("SELECT directorycode from directorycode where unitkey = ",
                                    unitKey, " AND DirectoryCode = ", code),
                             error_)
              .HasNoRows();
}

bool clsDirCode::MayStore(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                          const DirCodeEntry& entry, std::int32_t ridToLeaveOut) {
  if (!pbIsDirCodeUnique(connection, entry.code, unitKey, ridToLeaveOut)) {
    screen.Box("txtdirectorycode").SetFocus();
    return false;
  }
  if (Trim(entry.phone) == Trim(entry.cfPhone) &&
      !Ask(host_,
           "The phone numbers for the Directory Code and Call Forwarding are the same. Do you "
           "still want to proceed?")) {
    screen.Box("txtPhoneNocf").SetFocus();
    return false;
  }
  return true;
}

bool clsDirCode::SaveEdited(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                            const StepSender& steps, const DirCodeEntry& entry) {
  const std::int32_t rid = ToLong(screen.Variable("glngrid"));
  if (!MayStore(connection, unitKey, screen, entry, rid)) return false;

  const std::int16_t stored = ReadState(connection, rid);
  const bool knownToUnit = stored == row_state::kInUnit || stored == row_state::kChanged;
  std::string update =
      UpdateStatement(unitKey, rid, entry, knownToUnit ? row_state::kChanged : row_state::kNotSent);
  const Value changed = Manager().ExecuteUpdate(connection, ReplaceEmptyWithNull(std::move(update)),
                                                table::DIRECTORYCODE, error_,
                                                screen.Variable("gstrLastModifiedDate"), rid);
  // Someone else may have changed the row meanwhile: hosts take that for success, too.
  if (AnsweredNumber(changed) <= 0) return true;
  steps.ProgramDirCode(connection, unitKey, rid);
  pbRetrieveDirCodes(connection, unitKey, rid);
  return true;
}

bool clsDirCode::SaveNew(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                         const StepSender& steps, const DirCodeEntry& entry, std::int32_t* newRid) {
  if (!MayStore(connection, unitKey, screen, entry, kNoRid)) return false;

  // While the code's deletion is still to be sent, the unit knows the code.
  const bool inUnit = steps.IsDeletionPending(connection, unitKey, Val(entry.code));
  std::string insert = InsertStatement(unitKey, rowIdText_, entry, inUnit ? entry.code : "Null",
                                       inUnit ? row_state::kInUnit : row_state::kNotSent);
  std::int32_t rid = Manager().ExecuteInsert(connection, ReplaceEmptyWithNull(std::move(insert)),
                                             "", table::DIRECTORYCODE, error_);
  if (newRid != nullptr) *newRid = rid;
  steps.ProgramNewDirCode(connection, unitKey, rid);
  return true;
}

}  // namespace qorcred
