#include "tests/host/end_to_end/building.h"

namespace qortest {

Building::Building(ScreenKind kind) {
  screen_ = kind == ScreenKind::kTenantCreating ? qorhost::MakeTenantCreatingScreen(Now())
                                                : qorhost::MakeCredentialScreen(Now());
  controller_ = std::make_unique<qorcred::clsCredential>(host());
  controller_->set_gmobjCredentialScreen(std::make_shared<GatedObject>("", screen_, gate()));
  screen_->List("cboActivate").AddItem("<None>");
  screen_->List("cboActivate").AddItem("Back");
  controller_->pbRetrieveSchedules(connection(), kUnit);
  controller_->pbRetrieveSettingsFromUnit(connection(), kUnit);
}

std::string Building::Snapshot() {
  std::string rows;
  for (const char* table : {"CredentialBank", "Tenants", "TenantsBackup", "ProgramSteps"}) {
    rows += Rows(std::string("SELECT * FROM ") + table + " ORDER BY RID");
  }
  return rows;
}

void Building::TypeNumbers(std::string_view start, std::string_view end, std::string_view mode) {
  screen_->SetVariable("gstrTag", mode);
  Type("txtPINStart", start);
  Type("txtPINEND", end);
  Type("txtFacilityCode", "7");
  ChooseType(1);
}

void Building::SelectCredential(std::int32_t rid) {
  controller_->pbRetrieveCredentials(connection(), kUnit, -1, rid);
}

void Building::SelectTenant(std::int32_t id) {
  controller_->pbRetrieveTenants(connection(), kUnit);
  qorhost::ListModel& list = screen_->List("cboAssignedTo");
  list.Select(0);
  for (std::int32_t index = 1; index < list.count(); ++index) {
    if (list.ItemData(index) == id) list.Select(index);
  }
}

}  // namespace qortest
