#include "dircodes/cls_dir_code.h"

#include "frame/convert.h"
#include "frame/trap.h"

namespace qorcred {

clsDirCode::clsDirCode(Host& host) : host_(host) {
  // Each step is tried, whatever became of the one before.
  constexpr std::string_view kOperation = "Class_Initialize";
  Trap(host_, kOperation,
       [this] { manager_ = host_.CreateComponent(component::kDatabaseManager); });
  Trap(host_, kOperation,
       [this] { connectionManager_ = host_.CreateComponent(component::kConnectionManager); });
  Trap(host_, kOperation, [this] { rowIdText_ = Manager().RowIdText(); });
  Trap(host_, kOperation, [this] { lastModifiedText_ = Manager().LastModifiedText(); });
}

clsDirCode::~clsDirCode() {
  manager_.reset();
}

std::string clsDirCode::pbBase64Dec(std::string_view Base64String) {
  return base64_.Decode(host_, Base64String);
}

namespace {

clsDirCode& Self(Controller& controller) {
  return static_cast<clsDirCode&>(controller);
}

constexpr Parameter kConnection{"objConn", ValueType::kObject, true};
constexpr Parameter kUnitKey{"lngUnitKey", ValueType::kLong};

constexpr Parameter kConnectionAndUnit[] = {kConnection, kUnitKey};
constexpr Parameter kSave[] = {kConnection,
                               kUnitKey,
                               {"blnEditDir", ValueType::kBoolean, false, true},
                               {"lngRID", ValueType::kLong, true, true},
                               {"prevDirCodeIndex", ValueType::kLong, false, true}};
constexpr Parameter kRetrieveDirCodes[] = {kConnection,
                                           kUnitKey,
                                           {"lngRID", ValueType::kLong, false, true},
                                           {"lngOldValue", ValueType::kLong, false, true}};
constexpr Parameter kDelete[] = {kConnection,
                                 kUnitKey,
                                 {"lngRID", ValueType::kLong},
                                 {"blnDontDisplayMessage", ValueType::kBoolean, false, true},
                                 {"blnValidate", ValueType::kBoolean, false, true}};
constexpr Parameter kRetrieveTenants[] = {{"objConn", ValueType::kObject},
                                          kUnitKey,
                                          {"lngDirCode", ValueType::kLong, false, true},
                                          {"blnDIsplayName", ValueType::kBoolean, false, true}};
constexpr Parameter kUpdateDirCode[] = {kConnection, kUnitKey, {"strDirCode", ValueType::kString}};
constexpr Parameter kMergeSave[] = {kConnection,
                                    kUnitKey,
                                    {"strMode", ValueType::kString},
                                    {"strDirCodeDetails", ValueType::kStringArray, true},
                                    {"lngRID", ValueType::kLong, false, true}};
constexpr Parameter kFetchDirForMerge[] = {
    kConnection, kUnitKey, {"arrXDBDirCode", ValueType::kObject, true}};
constexpr Parameter kBase64Dec[] = {{"Base64String", ValueType::kString, true}};

Value RunScreen(Controller& controller, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kGet) return Self(controller).mobjDirCodeScreen();
  Self(controller).set_mobjDirCodeScreen(ObjectIn(arguments[0]));
  return {};
}

Value RunConnectionScreen(Controller& controller, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kGet) return Self(controller).mfrmConnectionScreen();
  Self(controller).set_mfrmConnectionScreen(ObjectIn(arguments[0]));
  return {};
}

using UnitOperation = void (clsDirCode::*)(const ObjectRef&, std::int32_t);

template <UnitOperation operation>
Value RunOnUnit(Controller& controller, InvokeKind, Arguments arguments) {
  (Self(controller).*operation)(ObjectIn(arguments[0]), LongIn(arguments[1]));
  return {};
}

Value RunSave(Controller& controller, InvokeKind, Arguments arguments) {
  std::int32_t rid = LongOr(arguments[3], 0);
  const bool saved = Self(controller)
                         .pbSave(ObjectIn(arguments[0]), LongIn(arguments[1]),
                                 BooleanOr(arguments[2], false), &rid, LongOr(arguments[4], 0));
  arguments[3] = rid;
  return saved;
}

Value RunRetrieveDirCodes(Controller& controller, InvokeKind, Arguments arguments) {
  Self(controller)
      .pbRetrieveDirCodes(ObjectIn(arguments[0]), LongIn(arguments[1]), LongOr(arguments[2], -1),
                          LongOr(arguments[3], 0));
  return {};
}

Value RunDelete(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller)
      .pbDelete(ObjectIn(arguments[0]), LongIn(arguments[1]), LongIn(arguments[2]),
                BooleanOr(arguments[3], false), BooleanOr(arguments[4], false));
}

Value RunRetrieveTenants(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller)
      .pbRetrieveTenants(ObjectIn(arguments[0]), LongIn(arguments[1]), LongOr(arguments[2], 0),
                         BooleanOr(arguments[3], false));
}

Value RunUpdateDirCode(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller)
      .pbUpdateDirCode(ObjectIn(arguments[0]), LongIn(arguments[1]), TextIn(arguments[2]));
}

Value RunMergeSave(Controller& controller, InvokeKind, Arguments arguments) {
  StringArray details = *arguments[3].As<StringArray>();
  const bool done = Self(controller)
                        .pbMergeSave(ObjectIn(arguments[0]), LongIn(arguments[1]),
                                     TextIn(arguments[2]), details, LongOr(arguments[4], 0));
  arguments[3] = std::move(details);
  return done;
}

Value RunFetchDirForMerge(Controller& controller, InvokeKind, Arguments arguments) {
  ObjectRef table = ObjectIn(arguments[2]);
  const bool done =
      Self(controller).pbFetchDirForMerge(ObjectIn(arguments[0]), LongIn(arguments[1]), table);
  arguments[2] = std::move(table);
  return done;
}

Value RunBase64Dec(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbBase64Dec(TextIn(arguments[0]));
}

constexpr Member kMembers[] = {
    {1, "mobjDirCodeScreen", MemberKind::kProperty, {}, ValueType::kObject, RunScreen},
    {2, "mfrmConnectionScreen", MemberKind::kProperty, {}, ValueType::kObject, RunConnectionScreen},
    {3, "pbSave", MemberKind::kOperation, kSave, ValueType::kBoolean, RunSave},
    {4, "pbRetrieveDirCodes", MemberKind::kOperation, kRetrieveDirCodes, ValueType::kEmpty,
     RunRetrieveDirCodes},
    {5, "pbDelete", MemberKind::kOperation, kDelete, ValueType::kBoolean, RunDelete},
    {6, "pbRetrieveTenants", MemberKind::kOperation, kRetrieveTenants, ValueType::kBoolean,
     RunRetrieveTenants},
    {7, "pbUpdateDirCode", MemberKind::kOperation, kUpdateDirCode, ValueType::kBoolean,
     RunUpdateDirCode},
    {8, "pbRetrieveSchedules", MemberKind::kOperation, kConnectionAndUnit, ValueType::kEmpty,
     RunOnUnit<&clsDirCode::pbRetrieveSchedules>},
    {9, "pbRetrieveSettingsFromUnit", MemberKind::kOperation, kConnectionAndUnit, ValueType::kEmpty,
     RunOnUnit<&clsDirCode::pbRetrieveSettingsFromUnit>},
    {10, "pbMergeSave", MemberKind::kOperation, kMergeSave, ValueType::kBoolean, RunMergeSave},
    {11, "pbFetchDirForMerge", MemberKind::kOperation, kFetchDirForMerge, ValueType::kBoolean,
     RunFetchDirForMerge},
    {12, "pbBase64Dec", MemberKind::kOperation, kBase64Dec, ValueType::kString, RunBase64Dec},
};

}  // namespace

std::span<const Member> clsDirCode::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
