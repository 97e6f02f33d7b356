#include "tests/dircodes/dir_code_fixture.h"

#include <span>
#include <utility>

#include "frame/base64.h"

namespace qortest {

DirCodeScreen::DirCodeScreen(std::string_view missingAtCreation)
    : host_(std::make_unique<RecordingHost>(ScreenKind::kDirectoryCode)) {
  host_->script().missing = missingAtCreation;
  controller_ = std::make_unique<UnderTest<qorcred::clsDirCode>>(host_->host());
  host_->script().missing.clear();
  controller_->set_mobjDirCodeScreen(host_->screen());
  controller_->set_mfrmConnectionScreen(host_->connectionScreen());
  host_->StartOver();
}

bool DirCodeScreen::SaveNew(std::int32_t* rid) {
  return controller_->pbSave(host_->connection(), kUnit, false, rid);
}

bool DirCodeScreen::SaveEdited(std::int32_t previousIndex) {
  return controller_->pbSave(host_->connection(), kUnit, true, nullptr, previousIndex);
}

bool DirCodeScreen::Delete(std::int32_t rid, bool withoutMessage, bool validate) {
  return controller_->pbDelete(host_->connection(), kUnit, rid, withoutMessage, validate);
}

bool DirCodeScreen::Renumber(std::string_view code) {
  return controller_->pbUpdateDirCode(host_->connection(), kUnit, code);
}

bool DirCodeScreen::Merge(std::string_view mode, qorcred::StringArray& details, std::int32_t rid) {
  return controller_->pbMergeSave(host_->connection(), kUnit, mode, details, rid);
}

void DirCodeScreen::EnterNew(std::string_view code) {
  ListSchedules();
  host_->SetText("txtdirectorycode", code);
  host_->SetText("txtPhoneNo", "5551234");
  SetSpinner("pvnTimeDelay", 5);
  SetSpinner("pvnTimeDelayCF", 7);
  AllowCodes("500");
}

void DirCodeScreen::ShowStored() {
  EnterNew("12");
  host_->AddItem("cbodirectorycode", "<Add New>", -100);
  host_->AddItem("cbodirectorycode", "12", kStoredRow);
  host_->AddItem("cbodirectorycode", "34", 18);
  host_->AddItem("cbodirectorycode", "56", 19);
  host_->Select("cbodirectorycode", 1);
  host_->controls().SetVariable("gstrTag", "EDIT");
  host_->controls().SetVariable("glngrid", kStoredRow);
  host_->controls().SetVariable("gstrLastModifiedDate", "11/20/2026 9:30:00 AM");
}

void DirCodeScreen::ListSchedules() {
  for (const std::string_view list : {"cboSchedules", "cboSchedulesCF"}) {
    host_->AddItem(list, "Full Access", 1);
    host_->AddItem(list, "No Access", 0);
    host_->AddItem(list, "Day", 5);
    host_->AddItem(list, "Night", 9);
  }
}

void DirCodeScreen::CheckDoNotDisturb(std::int32_t index) {
  Check("chkDND");
  host_->Select("cboSchedules", index);
}

void DirCodeScreen::CheckCallForwarding(std::int32_t index, std::string_view phone,
                                        std::string_view extension) {
  Check("chkCallForwarding");
  host_->Select("cboSchedulesCF", index);
  host_->SetText("txtPhoneNocf", phone);
  host_->SetText("txtExtnCF", extension);
}

void DirCodeScreen::Check(std::string_view box, bool checked) {
  host_->controls().Check(box).SetState(checked ? 1 : 0);
}

void DirCodeScreen::SetSpinner(std::string_view spinner, qorcred::Value number) {
  qorcred::Put(host_->controls().Any(spinner), "", std::move(number));
}

void DirCodeScreen::AllowCodes(std::string_view most) {
  host_->database().Replace("FROM UNITTYPES", {.rows = {{qorcred::EncodeBase64(most)}}});
}

void DirCodeScreen::CountCodes(std::string_view credentials, std::string_view entryCodes,
                               std::string_view directoryCodes) {
  host_->script().credentials = credentials;
  host_->script().entryCodes = entryCodes;
  host_->script().directoryCodes = directoryCodes;
}

std::vector<std::string> ItemsOf(RecordingHost& host, std::string_view list) {
  const qorhost::ListModel& box = host.controls().List(list);
  std::vector<std::string> items;
  for (std::int32_t at = 0; at < box.count(); ++at) {
    items.push_back(box.Text(at) + "=" + std::to_string(box.ItemData(at)));
  }
  return items;
}

::testing::AssertionResult DirCodeTest::TranscriptIs(std::string_view expected) {
  return SameLines(Host().transcript().Read(Detail::kEverything), expected);
}

::testing::AssertionResult DirCodeTest::EffectsAre(std::string_view expected) {
  return SameLines(Host().transcript().Read(Detail::kEffects), expected);
}

}  // namespace qortest
