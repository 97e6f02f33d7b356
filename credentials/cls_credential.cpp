#include "credentials/cls_credential.h"

#include "frame/member_rows.h"
#include "frame/trap.h"

namespace qorcred {

clsCredential::clsCredential(Host& host) : host_(host) {
  Trap(host_, "Class_Initialize", [this] {
    manager_ = host_.CreateComponent(component::kDatabaseManager);
    stepSender_ = host_.CreateComponent(component::kStepSender);
    tenants_ = host_.CreateComponent(component::kTenant);
    rowIdText_ = Manager().RowIdText();
    lastModifiedText_ = Manager().LastModifiedText();
  });
}

clsCredential::~clsCredential() {
  manager_.reset();
  stepSender_.reset();
  tenants_.reset();
}

std::string clsCredential::pbBase64Dec(std::string_view Base64String) {
  return base64_.Decode(host_, Base64String);
}

namespace {

constexpr Parameter kSave[] = {kConnectionParameter,
                               kUnitKeyParameter,
                               {"blnIsTBL", ValueType::kBoolean, false, false},
                               {"blnEditCR", ValueType::kBoolean, false, false},
                               {"lngRID", ValueType::kLong, true, 0}};
constexpr Parameter kRetrieveCredentials[] = {kConnectionParameter,
                                              kUnitKeyParameter,
                                              {"lngRID", ValueType::kLong, false, kAllCredentials},
                                              {"lngPreviousRID", ValueType::kLong, false, 0}};
constexpr Parameter kTransmitterCtls[] = {{"blnEnable", ValueType::kBoolean}};
constexpr Parameter kDelete[] = {
    kConnectionParameter, kUnitKeyParameter, {"lngRID", ValueType::kLong}};
constexpr Parameter kUpdatePinNo[] = {
    kConnectionParameter, {"lngPINNO", ValueType::kLong}, kUnitKeyParameter};
constexpr Parameter kBase64Dec[] = {{"Base64String", ValueType::kString, true}};

constexpr Member kMembers[] = {
    Property<&clsCredential::gmobjCredentialScreen, &clsCredential::set_gmobjCredentialScreen>(
        1, "gmobjCredentialScreen"),
    Operation<&clsCredential::pbRetrieveSchedules>(2, "pbRetrieveSchedules",
                                                   kConnectionAndUnitParameters),
    Operation<&clsCredential::pbRetrieveTenants>(3, "pbRetrieveTenants",
                                                 kConnectionAndUnitParameters),
    Operation<&clsCredential::pbRetrieveSettingsFromUnit>(4, "pbRetrieveSettingsFromUnit",
                                                          kConnectionAndUnitParameters),
    Operation<&clsCredential::pbSave>(5, "pbSave", kSave),
    Operation<&clsCredential::pbRetrieveCredentials>(6, "pbRetrieveCredentials",
                                                     kRetrieveCredentials),
    Operation<&clsCredential::pbTransmitterCtls>(7, "pbTransmitterCtls", kTransmitterCtls),
    Operation<&clsCredential::pbDelete>(8, "pbDelete", kDelete),
    Operation<&clsCredential::pbUpdatePinNo>(9, "pbUpdatePinNo", kUpdatePinNo),
    Operation<&clsCredential::pbRetrieveDoorDetails>(10, "pbRetrieveDoorDetails",
                                                     kConnectionAndUnitParameters),
    Operation<&clsCredential::pbBase64Dec>(11, "pbBase64Dec", kBase64Dec),
};

}  // namespace

std::span<const Member> clsCredential::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
