#include "credentials/cls_credential.h"

#include "frame/convert.h"
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

clsCredential& Self(Controller& controller) {
  return static_cast<clsCredential&>(controller);
}

constexpr Parameter kConnection{"objConn", ValueType::kObject, true};
constexpr Parameter kUnitKey{"lngUnitKey", ValueType::kLong};

constexpr Parameter kConnectionAndUnit[] = {kConnection, kUnitKey};
constexpr Parameter kSave[] = {kConnection,
                               kUnitKey,
                               {"blnIsTBL", ValueType::kBoolean, false, true},
                               {"blnEditCR", ValueType::kBoolean, false, true},
                               {"lngRID", ValueType::kLong, true, true}};
constexpr Parameter kRetrieveCredentials[] = {kConnection,
                                              kUnitKey,
                                              {"lngRID", ValueType::kLong, false, true},
                                              {"lngPreviousRID", ValueType::kLong, false, true}};
constexpr Parameter kTransmitterCtls[] = {{"blnEnable", ValueType::kBoolean}};
constexpr Parameter kDelete[] = {kConnection, kUnitKey, {"lngRID", ValueType::kLong}};
constexpr Parameter kUpdatePinNo[] = {kConnection, {"lngPINNO", ValueType::kLong}, kUnitKey};
constexpr Parameter kBase64Dec[] = {{"Base64String", ValueType::kString, true}};

Value RunScreen(Controller& controller, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kGet) return Self(controller).gmobjCredentialScreen();
  Self(controller).set_gmobjCredentialScreen(ObjectIn(arguments[0]));
  return {};
}

using UnitOperation = void (clsCredential::*)(const ObjectRef&, std::int32_t);

template <UnitOperation operation>
Value RunOnUnit(Controller& controller, InvokeKind, Arguments arguments) {
  (Self(controller).*operation)(ObjectIn(arguments[0]), LongIn(arguments[1]));
  return {};
}

Value RunSave(Controller& controller, InvokeKind, Arguments arguments) {
  std::int32_t rid = LongOr(arguments[4], 0);
  const bool saved =
      Self(controller)
          .pbSave(ObjectIn(arguments[0]), LongIn(arguments[1]), BooleanOr(arguments[2], false),
                  BooleanOr(arguments[3], false), &rid);
  arguments[4] = rid;
  return saved;
}

Value RunRetrieveCredentials(Controller& controller, InvokeKind, Arguments arguments) {
  Self(controller)
      .pbRetrieveCredentials(ObjectIn(arguments[0]), LongIn(arguments[1]), LongOr(arguments[2], -1),
                             LongOr(arguments[3], 0));
  return {};
}

Value RunTransmitterCtls(Controller& controller, InvokeKind, Arguments arguments) {
  Self(controller).pbTransmitterCtls(ToBoolean(arguments[0]));
  return {};
}

Value RunDelete(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller)
      .pbDelete(ObjectIn(arguments[0]), LongIn(arguments[1]), LongIn(arguments[2]));
}

Value RunUpdatePinNo(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller)
      .pbUpdatePinNo(ObjectIn(arguments[0]), LongIn(arguments[1]), LongIn(arguments[2]));
}

Value RunBase64Dec(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbBase64Dec(*arguments[0].As<std::string>());
}

constexpr Member kMembers[] = {
    {1, "gmobjCredentialScreen", MemberKind::kProperty, {}, ValueType::kObject, RunScreen},
    {2, "pbRetrieveSchedules", MemberKind::kOperation, kConnectionAndUnit, ValueType::kEmpty,
     RunOnUnit<&clsCredential::pbRetrieveSchedules>},
    {3, "pbRetrieveTenants", MemberKind::kOperation, kConnectionAndUnit, ValueType::kEmpty,
     RunOnUnit<&clsCredential::pbRetrieveTenants>},
    {4, "pbRetrieveSettingsFromUnit", MemberKind::kOperation, kConnectionAndUnit, ValueType::kEmpty,
     RunOnUnit<&clsCredential::pbRetrieveSettingsFromUnit>},
    {5, "pbSave", MemberKind::kOperation, kSave, ValueType::kBoolean, RunSave},
    {6, "pbRetrieveCredentials", MemberKind::kOperation, kRetrieveCredentials, ValueType::kEmpty,
     RunRetrieveCredentials},
    {7, "pbTransmitterCtls", MemberKind::kOperation, kTransmitterCtls, ValueType::kEmpty,
     RunTransmitterCtls},
    {8, "pbDelete", MemberKind::kOperation, kDelete, ValueType::kBoolean, RunDelete},
    {9, "pbUpdatePinNo", MemberKind::kOperation, kUpdatePinNo, ValueType::kBoolean, RunUpdatePinNo},
    {10, "pbRetrieveDoorDetails", MemberKind::kOperation, kConnectionAndUnit, ValueType::kEmpty,
     RunOnUnit<&clsCredential::pbRetrieveDoorDetails>},
    {11, "pbBase64Dec", MemberKind::kOperation, kBase64Dec, ValueType::kString, RunBase64Dec},
};

}  // namespace

std::span<const Member> clsCredential::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
