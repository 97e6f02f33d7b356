#include "tests/host/end_to_end/dir_code_building.h"

namespace qortest {

DirCodeBuilding::DirCodeBuilding() {
  Run("UPDATE UnitSettings SET MaxDigitsDirectoryCode=4");
  screen_ = qorhost::MakeDirectoryCodeScreen(Now());
  controller_ = std::make_unique<qorcred::clsDirCode>(host());
  controller_->set_mobjDirCodeScreen(std::make_shared<GatedObject>("", screen_, gate()));
  TellFirmware(std::string(qorhost::kFirmwareWithDisplay));
  controller_->pbRetrieveSchedules(connection(), kUnit);
  controller_->pbRetrieveSettingsFromUnit(connection(), kUnit);
}

void DirCodeBuilding::TellFirmware(std::string firmware) {
  controller_->set_mfrmConnectionScreen(qorhost::MakeConnectionScreen(std::move(firmware)));
}

std::int32_t DirCodeBuilding::Store(std::string_view code, int state) {
  Run("INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, PHONENUMBER, TIMEDELAY, ISDNDCHECKED, "
      "ISCFCHECKED, CFTIMEDELAY, ACTIVE, SHOWDISPLAYNAME, SHOWDIRECTORYCODE, MODIFIED, "
      "OLDDIRECTORYCODE) VALUES (1, " +
      std::string(code) + ", '5550100', 2, 0, 0, 2, 0, 0, 0, " + std::to_string(state) + ", " +
      (state == 1 ? "NULL" : std::string(code)) + ")");
  return static_cast<std::int32_t>(Number("SELECT max(RID) FROM DirectoryCode"));
}

void DirCodeBuilding::TypeNew(std::string_view code) {
  screen_->SetVariable("gstrTag", "");
  screen_->Box("txtdirectorycode").SetText(std::string(code));
  screen_->Box("txtPhoneNo").SetText("5550101");
}

void DirCodeBuilding::Open(std::int32_t rid) {
  controller_->pbRetrieveDirCodes(connection(), kUnit, -1, rid);
  controller_->pbRetrieveDirCodes(connection(), kUnit, rid);
  screen_->SetVariable("gstrTag", "EDIT");
}

bool DirCodeBuilding::SaveNew(std::int32_t* rid) {
  return controller_->pbSave(connection(), kUnit, false, rid);
}

bool DirCodeBuilding::SaveEdited() {
  return controller_->pbSave(connection(), kUnit, true);
}

bool DirCodeBuilding::Delete(std::int32_t rid, bool ask) {
  return controller_->pbDelete(connection(), kUnit, rid, false, ask);
}

bool DirCodeBuilding::Merge(std::string_view mode, const qorhost::UnitCode& code,
                            std::int32_t rid) {
  qorcred::StringArray details = qorhost::DetailsOf(code);
  return controller_->pbMergeSave(connection(), kUnit, mode, details, rid);
}

std::string DirCodeBuilding::Codes() {
  return Rows(
      "SELECT DIRECTORYCODE, OLDDIRECTORYCODE, MODIFIED FROM DirectoryCode ORDER BY DIRECTORYCODE");
}

std::string DirCodeBuilding::Steps() {
  return Rows("SELECT Kind, SubjectRID, Code FROM ProgramSteps ORDER BY RID");
}

std::string DirCodeBuilding::Snapshot() {
  std::string rows;
  for (const char* table : {"DirectoryCode", "Tenants", "ProgramSteps"}) {
    rows += Rows(std::string("SELECT * FROM ") + table + " ORDER BY RID");
  }
  return rows;
}

}  // namespace qortest
