#include "host/cli/credential_desk.h"

#include <fmt/format.h>

#include <string>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "trace/tracing_object.h"

namespace qorhost {

namespace {

constexpr std::string_view kNoDoor = "<None>";

std::shared_ptr<HeadlessScreen> MakeScreen(DeskScreen kind, qorcred::Date today) {
  return kind == DeskScreen::kTenantCreating ? MakeTenantCreatingScreen(today)
                                             : MakeCredentialScreen(today);
}

}  // namespace

CredentialDesk::CredentialDesk(StoreSession& session, std::int32_t unitKey, DeskScreen kind)
    : session_(session),
      unitKey_(unitKey),
      kind_(kind),
      screen_(MakeScreen(kind, session.Today())),
      controller_(session.host()) {
  if (session.traced()) {
    controller_.set_gmobjCredentialScreen(std::make_shared<TracingScreen>(
        screen_, session.transcript(),
        [screen = screen_.get()](std::string_view name) { return screen->SpelledName(name); }));
  } else {
    controller_.set_gmobjCredentialScreen(screen_);
  }
  Open();
}

CredentialDesk::~CredentialDesk() {
  screen_->List("cboCredentials").OnSelect(nullptr);
  screen_->List("cboCredentialType").OnSelect(nullptr);
  controller_.set_gmobjCredentialScreen(nullptr);
}

void CredentialDesk::Open() {
  // The screen's own handlers; they stand still while the controller writes the controls.
  screen_->List("cboCredentialType").OnSelect([this](std::int32_t index) {
    const bool transmitter =
        index >= 0 && screen_->List("cboCredentialType").ItemData(index) == qorcred::kTransmitter;
    controller_.pbTransmitterCtls(transmitter);
  });
  screen_->List("cboCredentials").OnSelect([this](std::int32_t index) {
    const bool byController = qorcred::ToBoolean(screen_->Variable("gblnModifiedFromClass"));
    // The first entry, "<Add New>", stands for no row.
    if (index > 0 && !byController) {
      controller_.pbRetrieveCredentials(session_.connection(), unitKey_,
                                        screen_->List("cboCredentials").ItemData(index));
    }
  });

  session_.log().Clear();
  FillDoors();
  controller_.pbRetrieveSchedules(session_.connection(), unitKey_);
  controller_.pbRetrieveTenants(session_.connection(), unitKey_);
  controller_.pbRetrieveSettingsFromUnit(session_.connection(), unitKey_);
  screen_->SetVariable("gblnDisplayFacilityCode", takesFacilityCode());
  RefreshCredentials();
  RequireNoFailure("open the credential screen");

  // A unit with fewer than four doors ends this with a trapped failure, its labels being set.
  controller_.pbRetrieveDoorDetails(session_.connection(), unitKey_);
  session_.log().Clear();
}

void CredentialDesk::FillDoors() {
  ListBox& doors = screen_->List("cboActivate");
  doors.AddItem(std::string(kNoDoor));
  const QueryResult result = session_.sql().Select(
      fmt::format("SELECT DOORNAME FROM DOORS WHERE UNITKEY={} ORDER BY DOORID", unitKey_));
  for (const ResultRow row : result.rows()) {
    doors.AddItem(qorcred::TextOrEmpty(row[0]));
  }
}

void CredentialDesk::RequireNoFailure(std::string_view doing) {
  if (!session_.log().failures.empty()) {
    throw FailureError(fmt::format("cannot {}: {}", doing, session_.log().failures.front()));
  }
}

bool CredentialDesk::takesFacilityCode() const {
  return screen_->Box("txtFacilityCode").enabled();
}

void CredentialDesk::SelectCredential(std::int32_t index) {
  session_.log().Clear();
  screen_->List("cboCredentials").Select(index);
  RequireNoFailure("load the credential");
}

void CredentialDesk::RefreshCredentials(std::int32_t rid) {
  constexpr std::int32_t kWholeList = -1;
  controller_.pbRetrieveCredentials(session_.connection(), unitKey_, kWholeList, rid);
}

bool CredentialDesk::SaveNew(std::int32_t* lastRid) {
  session_.log().Clear();
  return controller_.pbSave(session_.connection(), unitKey_, kind_ == DeskScreen::kTenantCreating,
                            false, lastRid);
}

bool CredentialDesk::SaveEdited() {
  session_.log().Clear();
  return controller_.pbSave(session_.connection(), unitKey_, false, true);
}

bool CredentialDesk::Delete(std::int32_t rid) {
  session_.log().Clear();
  return controller_.pbDelete(session_.connection(), unitKey_, rid);
}

bool CredentialDesk::Renumber(std::int32_t number) {
  session_.log().Clear();
  return controller_.pbUpdatePinNo(session_.connection(), number, unitKey_);
}

}  // namespace qorhost
