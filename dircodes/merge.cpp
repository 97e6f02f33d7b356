// Writes a directory code that a unit holds.
#include "dircodes/cls_dir_code.h"
#include "dircodes/unit_notation.h"
#include "frame/convert.h"
#include "frame/row_state.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

std::string UpdateStatement(std::int32_t unitKey, std::int32_t rid, const StringArray& code,
                            std::string_view displayPart) {
  using namespace unit_place;
  // Without display options a comma is left in front of WHERE; the database manager bears it.
  return Concat("UPDATE DIRECTORYCODE SET DIRECTORYCODE=", code[kCode], ",PHONENUMBER='",
                code[kPhone], "',EXTENSION='", code[kExtension], "',TIMEDELAY=", code[kTimeDelay],
                ",DNDSCHEDULEID=", code[kDndSchedule], ",ISDNDCHECKED=", code[kIsDndChecked],
                ",CFSCHEDULEID=", code[kCfSchedule], ",ISCFCHECKED=", code[kIsCfChecked],
                ",CFPHONENUMBER='", code[kCfPhone], "',CFEXTENSION='", code[kCfExtension],
                "',CFTIMEDELAY=", code[kCfTimeDelay], ",LASTMODIFIEDDATE=", kLastModifiedLiteral,
                ",ACTIVE=", code[kActive], ",STARTDATE='", code[kStartDate], "',ENDDATE='",
                code[kEndDate], "',DISPLAYNAME='", code[kDisplayName],
                "',MODIFIED=0,OLDDIRECTORYCODE=", code[kCode], ",", displayPart,
                " WHERE UNITKEY=", unitKey, " AND RID=", rid);
}

std::string InsertStatement(std::int32_t unitKey, std::string_view rowId, const StringArray& code,
                            std::string_view displayColumns, std::string_view displayValues) {
  using namespace unit_place;
  return Concat(
      "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
      "DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,"
      "LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED",
      displayColumns, ")Values(", unitKey, ",", rowId, ",", code[kCode], ",'", code[kPhone], "','",
      code[kExtension], "',", code[kTimeDelay], ",", code[kDndSchedule], ",", code[kIsDndChecked],
      ",", code[kCfSchedule], ",", code[kIsCfChecked], ",'", code[kCfPhone], "','",
      code[kCfExtension], "',", code[kCfTimeDelay], ",", kLastModifiedLiteral, ",", code[kActive],
      ",'", code[kStartDate], "','", code[kEndDate], "','", code[kDisplayName], "',", code[kCode],
      ",0", displayValues, ")");
}

}  // namespace

bool clsDirCode::pbMergeSave(const ObjectRef& objConn, std::int32_t lngUnitKey,
                             std::string_view strMode, StringArray& strDirCodeDetails,
                             std::int32_t lngRID) {
  bool done = false;
  Trap(host_, "pbMergeSave", [&] {
    if (strMode == "Delete") {
      DeleteAsInUnit(objConn, lngUnitKey, lngRID);
    } else {
      // A mode that is none of the three converts as well, and writes nothing.
      const DisplayOptions display = ConvertToStoreNotation(strDirCodeDetails);
      if (strMode == "Update") {
        UpdateFromUnit(objConn, lngUnitKey, strDirCodeDetails, display, lngRID);
      } else if (strMode == "Insert") {
        InsertFromUnit(objConn, lngUnitKey, strDirCodeDetails, display);
      }
    }
    done = true;
  });
  return done;
}

void clsDirCode::UpdateFromUnit(const ObjectRef& connection, std::int32_t unitKey,
                                const StringArray& details, const DisplayOptions& display,
                                std::int32_t rid) {
  const std::string displayPart =
      UnitHasDisplayOptions()
          ? Concat("SHOWDISPLAYNAME=", display.name, ",SHOWDIRECTORYCODE=", display.code)
          : std::string();
  std::string update = UpdateStatement(unitKey, rid, details, displayPart);
  Manager().ExecuteUpdate(connection, ReplaceEmptyWithNull(std::move(update)), table::DIRECTORYCODE,
                          error_, Missing{}, rid);
}

void clsDirCode::InsertFromUnit(const ObjectRef& connection, std::int32_t unitKey,
                                const StringArray& details, const DisplayOptions& display) {
  const bool withDisplay = UnitHasDisplayOptions();
  std::string insert = InsertStatement(
      unitKey, rowIdText_, details, withDisplay ? ",SHOWDISPLAYNAME,SHOWDIRECTORYCODE" : "",
      withDisplay ? Concat(",", display.name, ",", display.code) : std::string());
  Manager().ExecuteInsert(connection, ReplaceEmptyWithNull(std::move(insert)), "",
                          table::DIRECTORYCODE, error_);
}

void clsDirCode::DeleteAsInUnit(const ObjectRef& connection, std::int32_t unitKey,
                                std::int32_t rid) {
  const bool all = rid == kNoRid;
  std::string remove =
      Concat("DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey=", unitKey,
             all ? std::string() : Concat(" AND RID=", rid));
  const std::int32_t deleted =
      Manager().ExecuteQueryDelete(connection, ReplaceEmptyWithNull(std::move(remove)), error_);
  // Two things hosts rely on: MODIFIED receives the time stamp, and for a single code the tenants
  // are found by the number of deleted rows.
  std::string release = Concat(
      "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED=", kLastModifiedLiteral,
      " WHERE UNITKEY=", unitKey, all ? std::string() : Concat(" AND DIRECTORYCODE=", deleted));
  Manager().ExecuteUpdate(connection, ReplaceEmptyWithNull(std::move(release)),
                          table::DIRECTORYCODE, error_);
}

bool clsDirCode::UnitHasDisplayOptions() const {
  const Screen connectionScreen(connectionScreen_);
  return TextOrEmpty(connectionScreen.Variable("mFirmwareFromHandshake")) !=
         kFirmwareWithoutDisplay;
}

}  // namespace qorcred
