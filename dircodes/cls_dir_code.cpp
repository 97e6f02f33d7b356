#include "dircodes/cls_dir_code.h"

#include "frame/member_rows.h"
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

constexpr Parameter kSave[] = {kConnectionParameter,
                               kUnitKeyParameter,
                               {"blnEditDir", ValueType::kBoolean, false, false},
                               {"lngRID", ValueType::kLong, true, 0},
                               {"prevDirCodeIndex", ValueType::kLong, false, 0}};
constexpr Parameter kRetrieveDirCodes[] = {kConnectionParameter,
                                           kUnitKeyParameter,
                                           {"lngRID", ValueType::kLong, false, kNoRid},
                                           {"lngOldValue", ValueType::kLong, false, 0}};
constexpr Parameter kDelete[] = {kConnectionParameter,
                                 kUnitKeyParameter,
                                 {"lngRID", ValueType::kLong},
                                 {"blnDontDisplayMessage", ValueType::kBoolean, false, false},
                                 {"blnValidate", ValueType::kBoolean, false, false}};
constexpr Parameter kRetrieveTenants[] = {{"objConn", ValueType::kObject},
                                          kUnitKeyParameter,
                                          {"lngDirCode", ValueType::kLong, false, 0},
                                          {"blnDIsplayName", ValueType::kBoolean, false, false}};
constexpr Parameter kUpdateDirCode[] = {
    kConnectionParameter, kUnitKeyParameter, {"strDirCode", ValueType::kString}};
constexpr Parameter kMergeSave[] = {kConnectionParameter,
                                    kUnitKeyParameter,
                                    {"strMode", ValueType::kString},
                                    {"strDirCodeDetails", ValueType::kStringArray, true},
                                    {"lngRID", ValueType::kLong, false, 0}};
constexpr Parameter kFetchDirForMerge[] = {
    kConnectionParameter, kUnitKeyParameter, {"arrXDBDirCode", ValueType::kObject, true}};
constexpr Parameter kBase64Dec[] = {{"Base64String", ValueType::kString, true}};

constexpr Member kMembers[] = {
    Property<&clsDirCode::mobjDirCodeScreen, &clsDirCode::set_mobjDirCodeScreen>(
        1, "mobjDirCodeScreen"),
    Property<&clsDirCode::mfrmConnectionScreen, &clsDirCode::set_mfrmConnectionScreen>(
        2, "mfrmConnectionScreen"),
    Operation<&clsDirCode::pbSave>(3, "pbSave", kSave),
    Operation<&clsDirCode::pbRetrieveDirCodes>(4, "pbRetrieveDirCodes", kRetrieveDirCodes),
    Operation<&clsDirCode::pbDelete>(5, "pbDelete", kDelete),
    Operation<&clsDirCode::pbRetrieveTenants>(6, "pbRetrieveTenants", kRetrieveTenants),
    Operation<&clsDirCode::pbUpdateDirCode>(7, "pbUpdateDirCode", kUpdateDirCode),
    Operation<&clsDirCode::pbRetrieveSchedules>(8, "pbRetrieveSchedules",
                                                kConnectionAndUnitParameters),
    Operation<&clsDirCode::pbRetrieveSettingsFromUnit>(9, "pbRetrieveSettingsFromUnit",
                                                       kConnectionAndUnitParameters),
    Operation<&clsDirCode::pbMergeSave>(10, "pbMergeSave", kMergeSave),
    Operation<&clsDirCode::pbFetchDirForMerge>(11, "pbFetchDirForMerge", kFetchDirForMerge),
    Operation<&clsDirCode::pbBase64Dec>(12, "pbBase64Dec", kBase64Dec),
};

}  // namespace

std::span<const Member> clsDirCode::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
