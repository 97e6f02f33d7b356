// The controllers as tests use them: with what they touch of their host written into the program's
// SurfaceRecord.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"
#include "tests/support/noting_object.h"
#include "tests/support/surface_record.h"

namespace qortest {

template <typename Class>
constexpr std::string_view kClassName = "";
template <>
inline constexpr std::string_view kClassName<qorcred::clsCredential> = "clsCredential";
template <>
inline constexpr std::string_view kClassName<qorcred::clsDirCode> = "clsDirCode";
template <>
inline constexpr std::string_view kClassName<qorcred::clsDirCodeReport> = "clsDirCodeReport";
template <>
inline constexpr std::string_view kClassName<qorcred::clsCredentialReport> = "clsCredentialReport";

/// Notes that an argument came back changed.
inline void NoteChanged(std::string_view parameter) {
  SurfaceRecord::Instance().Note(part::kArgument, parameter);
}

/// Which object a reference refers to, without keeping it alive.
class Identity {
 public:
  explicit Identity(const qorcred::ObjectRef& object) : object_(object) {}

  [[nodiscard]] bool IsStill(const qorcred::ObjectRef& other) const {
    return !object_.owner_before(other) && !other.owner_before(object_);
  }

 private:
  std::weak_ptr<qorcred::Object> object_;
};

/// What an argument holds: for the pointer to a result, the result.
template <typename Given>
auto ContentOf(const Given& given) {
  if constexpr (std::is_same_v<Given, std::int32_t*>) {
    return given == nullptr ? 0 : *given;
  } else {
    return given;
  }
}

template <typename Given>
concept HoldsObject = std::is_convertible_v<Given&, qorcred::ObjectRef> &&
    !std::is_null_pointer_v<std::remove_const_t<Given>>;

/// An argument of a native operation on its way: objects are handed over noted and come back bare,
/// everything else as it is. Notes when it comes back changed.
template <typename Given>
class HandedOver {
 public:
  HandedOver(std::string_view parameter, Given& given)
      : parameter_(parameter), given_(given), before_(ContentOf(given)) {}
  ~HandedOver() {
    if (ContentOf(given_) != before_) NoteChanged(parameter_);
  }
  HandedOver(const HandedOver&) = delete;
  HandedOver& operator=(const HandedOver&) = delete;

  Given& get() { return given_; }

 private:
  std::string_view parameter_;
  Given& given_;
  decltype(ContentOf(std::declval<Given&>())) before_;
};

/// What cannot change.
template <typename Given>
requires(!HoldsObject<Given> &&
         (std::is_const_v<Given> || std::is_null_pointer_v<Given>)) class HandedOver<Given> {
 public:
  HandedOver(std::string_view /*parameter*/, Given& given) : given_(given) {}
  Given& get() { return given_; }

 private:
  Given& given_;
};

template <HoldsObject Given>
class HandedOver<Given> {
 public:
  HandedOver(std::string_view parameter, Given& given)
      : parameter_(parameter),
        given_(given),
        object_(Noted(given, PartOf(parameter))),
        before_(object_) {
    // What an operation replaces it lets go of: no reference is held here meanwhile.
    if constexpr (std::is_same_v<Given, qorcred::ObjectRef>) {
      if (PartOf(parameter) == part::kTable) given_.reset();
    }
  }
  ~HandedOver() {
    if (!before_.IsStill(object_)) NoteChanged(parameter_);
    if constexpr (std::is_same_v<Given, qorcred::ObjectRef>) given_ = Bare(object_);
  }
  HandedOver(const HandedOver&) = delete;
  HandedOver& operator=(const HandedOver&) = delete;

  qorcred::ObjectRef& get() { return object_; }

 private:
  std::string_view parameter_;
  Given& given_;
  qorcred::ObjectRef object_;
  Identity before_;
};

/// A controller of that class, by name and natively.
template <typename Class>
class NotedController : public qorcred::Controller {
 public:
  explicit NotedController(qorcred::Host& host) : host_(host), controller_(Created(host_)) {}

  [[nodiscard]] std::span<const qorcred::Member> Members() const override {
    return controller_.Members();
  }

  qorcred::Value Invoke(std::string_view name, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override {
    const qorcred::Member* member = qorcred::FindMember(Members(), name);
    if (member == nullptr) return controller_.Invoke(name, kind, arguments);
    for (std::size_t at = 0; at < arguments.size(); ++at) {
      const bool isArgument = at < member->parameters.size();
      NoteObject(arguments[at], isArgument ? member->parameters[at].name : member->name);
    }
    const BareAtTheEnd bare{arguments};
    const SurfaceRecord::Operation running(kClassName<Class>, member->name);
    const ChangedArguments changed(*member, arguments);
    for (std::size_t at = 0; at < std::min(arguments.size(), member->parameters.size()); ++at) {
      const std::string* text = arguments[at].template As<std::string>();
      if (text != nullptr) NoteHandedStatement(member->parameters[at], *text);
    }
    qorcred::Value result = controller_.Invoke(name, kind, arguments);
    if (const std::string* text = result.template As<std::string>()) {
      NoteComposedStatement(*member, *text);
    }
    MakeBare(result);
    return result;
  }

 protected:
  [[nodiscard]] Class& controller() { return controller_; }
  [[nodiscard]] const Class& controller() const { return controller_; }

  /// Runs `call` with the arguments `given` as the operation of that name.
  template <typename Call, typename... Given>
  decltype(auto) Run(std::string_view operation, Call&& call, Given&&... given) {
    return RunWith(operation, call, std::index_sequence_for<Given...>(), given...);
  }

 private:
  struct BareAtTheEnd {
    qorcred::Arguments arguments;
    ~BareAtTheEnd() {
      for (qorcred::Value& argument : arguments) MakeBare(argument);
    }
  };

  /// Notes at the end which arguments came back changed.
  class ChangedArguments {
   public:
    ChangedArguments(const qorcred::Member& member, qorcred::Arguments arguments)
        : member_(member), arguments_(arguments) {
      for (std::size_t at = 0; at < arguments.size(); ++at) {
        const qorcred::ObjectRef* object = arguments[at].As<qorcred::ObjectRef>();
        values_.push_back(object == nullptr ? Converted(at) : qorcred::Value());
        objects_.emplace_back(object == nullptr ? nullptr : *object);
      }
    }
    ~ChangedArguments() {
      for (std::size_t at = 0; at < std::min(values_.size(), member_.parameters.size()); ++at) {
        const qorcred::ObjectRef* object = arguments_[at].As<qorcred::ObjectRef>();
        const bool isStill = objects_[at].IsStill(object == nullptr ? nullptr : *object) &&
                             (object != nullptr || Converted(at) == values_[at]);
        if (!isStill) NoteChanged(member_.parameters[at].name);
      }
    }
    ChangedArguments(const ChangedArguments&) = delete;
    ChangedArguments& operator=(const ChangedArguments&) = delete;

   private:
    // As the operation gets it: its type is no change.
    [[nodiscard]] qorcred::Value Converted(std::size_t at) const {
      if (at >= member_.parameters.size()) return arguments_[at];
      try {
        return qorcred::ConvertArgument(member_.parameters[at].type, arguments_[at]);
      } catch (const qorcred::RuntimeError&) {
        return arguments_[at];
      }
    }

    const qorcred::Member& member_;
    qorcred::Arguments arguments_;
    std::vector<qorcred::Value> values_;
    std::vector<Identity> objects_;
  };

  static Class Created(qorcred::Host& host) {
    const SurfaceRecord::Operation running(kClassName<Class>, kCreation);
    return Class(host);
  }

  static void NoteObject(qorcred::Value& value, std::string_view name) {
    const qorcred::ObjectRef* object = value.template As<qorcred::ObjectRef>();
    if (object != nullptr && !PartOf(name).empty()) value = Noted(*object, PartOf(name));
  }

  template <typename Call, std::size_t... at, typename... Given>
  decltype(auto) RunWith(std::string_view operation, Call& call, std::index_sequence<at...>,
                         Given&... given) {
    const qorcred::Member* member = qorcred::FindMember(Members(), operation);
    const SurfaceRecord::Operation running(kClassName<Class>, member->name);
    (NoteHandedStatement(member->parameters[at], given), ...);
    using Result = decltype(call(HandedOver<Given>({}, given).get()...));
    if constexpr (std::is_void_v<Result>) {
      call(HandedOver<Given>(member->parameters[at].name, given).get()...);
    } else {
      Result result = call(HandedOver<Given>(member->parameters[at].name, given).get()...);
      NoteComposedStatement(*member, result);
      return result;
    }
  }

  template <typename Given>
  static void NoteHandedStatement(const qorcred::Parameter& parameter, const Given& given) {
    if constexpr (std::is_convertible_v<const Given&, std::string_view> &&
                  !std::is_null_pointer_v<Given>) {
      if (parameter.name == "strSQL" && !parameter.byRef) {
        SurfaceRecord::Instance().HandOver(std::string_view(given));
      }
    }
  }

  // A statement that is an operation's result is for the host to run.
  template <typename Result>
  static void NoteComposedStatement(const qorcred::Member& member, const Result& result) {
    if constexpr (std::is_same_v<Result, std::string>) {
      if (member.name == "pbGenSql") SurfaceRecord::Instance().Note(part::kStatement, result);
    }
  }

  NotingHost host_;
  Class controller_;
};

/// The controller of that class on `host`, which must outlive it: used like the controller itself.
template <typename Class>
class UnderTest;

template <>
class UnderTest<qorcred::clsCredential> final : public NotedController<qorcred::clsCredential> {
 public:
  using NotedController::NotedController;

  [[nodiscard]] qorcred::ObjectRef gmobjCredentialScreen() const {
    return Bare(controller().gmobjCredentialScreen());
  }
  void set_gmobjCredentialScreen(const qorcred::ObjectRef& screen) {
    controller().set_gmobjCredentialScreen(Noted(screen, part::kScreen));
  }

  template <typename... Given>
  decltype(auto) pbRetrieveSchedules(Given&&... given) {
    return this->Run(
        "pbRetrieveSchedules",
        [this](auto&... as) { return this->controller().pbRetrieveSchedules(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveTenants(Given&&... given) {
    return this->Run(
        "pbRetrieveTenants",
        [this](auto&... as) { return this->controller().pbRetrieveTenants(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveSettingsFromUnit(Given&&... given) {
    return this->Run(
        "pbRetrieveSettingsFromUnit",
        [this](auto&... as) { return this->controller().pbRetrieveSettingsFromUnit(as...); },
        given...);
  }
  template <typename... Given>
  decltype(auto) pbSave(Given&&... given) {
    return this->Run(
        "pbSave", [this](auto&... as) { return this->controller().pbSave(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveCredentials(Given&&... given) {
    return this->Run(
        "pbRetrieveCredentials",
        [this](auto&... as) { return this->controller().pbRetrieveCredentials(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbTransmitterCtls(Given&&... given) {
    return this->Run(
        "pbTransmitterCtls",
        [this](auto&... as) { return this->controller().pbTransmitterCtls(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbDelete(Given&&... given) {
    return this->Run(
        "pbDelete", [this](auto&... as) { return this->controller().pbDelete(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbUpdatePinNo(Given&&... given) {
    return this->Run(
        "pbUpdatePinNo", [this](auto&... as) { return this->controller().pbUpdatePinNo(as...); },
        given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveDoorDetails(Given&&... given) {
    return this->Run(
        "pbRetrieveDoorDetails",
        [this](auto&... as) { return this->controller().pbRetrieveDoorDetails(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbBase64Dec(Given&&... given) {
    return this->Run(
        "pbBase64Dec", [this](auto&... as) { return this->controller().pbBase64Dec(as...); },
        given...);
  }
};

template <>
class UnderTest<qorcred::clsDirCode> final : public NotedController<qorcred::clsDirCode> {
 public:
  using NotedController::NotedController;

  [[nodiscard]] qorcred::ObjectRef mobjDirCodeScreen() const {
    return Bare(controller().mobjDirCodeScreen());
  }
  void set_mobjDirCodeScreen(const qorcred::ObjectRef& screen) {
    controller().set_mobjDirCodeScreen(Noted(screen, part::kScreen));
  }
  [[nodiscard]] qorcred::ObjectRef mfrmConnectionScreen() const {
    return Bare(controller().mfrmConnectionScreen());
  }
  void set_mfrmConnectionScreen(const qorcred::ObjectRef& screen) {
    controller().set_mfrmConnectionScreen(Noted(screen, part::kConnectionScreen));
  }

  template <typename... Given>
  decltype(auto) pbSave(Given&&... given) {
    return this->Run(
        "pbSave", [this](auto&... as) { return this->controller().pbSave(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveDirCodes(Given&&... given) {
    return this->Run(
        "pbRetrieveDirCodes",
        [this](auto&... as) { return this->controller().pbRetrieveDirCodes(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbDelete(Given&&... given) {
    return this->Run(
        "pbDelete", [this](auto&... as) { return this->controller().pbDelete(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveTenants(Given&&... given) {
    return this->Run(
        "pbRetrieveTenants",
        [this](auto&... as) { return this->controller().pbRetrieveTenants(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbUpdateDirCode(Given&&... given) {
    return this->Run(
        "pbUpdateDirCode",
        [this](auto&... as) { return this->controller().pbUpdateDirCode(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveSchedules(Given&&... given) {
    return this->Run(
        "pbRetrieveSchedules",
        [this](auto&... as) { return this->controller().pbRetrieveSchedules(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbRetrieveSettingsFromUnit(Given&&... given) {
    return this->Run(
        "pbRetrieveSettingsFromUnit",
        [this](auto&... as) { return this->controller().pbRetrieveSettingsFromUnit(as...); },
        given...);
  }
  template <typename... Given>
  decltype(auto) pbMergeSave(Given&&... given) {
    return this->Run(
        "pbMergeSave", [this](auto&... as) { return this->controller().pbMergeSave(as...); },
        given...);
  }
  template <typename... Given>
  decltype(auto) pbFetchDirForMerge(Given&&... given) {
    return this->Run(
        "pbFetchDirForMerge",
        [this](auto&... as) { return this->controller().pbFetchDirForMerge(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbBase64Dec(Given&&... given) {
    return this->Run(
        "pbBase64Dec", [this](auto&... as) { return this->controller().pbBase64Dec(as...); },
        given...);
  }
};

/// What the reports share.
template <typename Class>
class NotedReport : public NotedController<Class> {
 public:
  using NotedController<Class>::NotedController;

  [[nodiscard]] qorcred::ObjectRef gfrmTxFilter() const {
    return Bare(this->controller().gfrmTxFilter());
  }
  void set_gfrmTxFilter(const qorcred::ObjectRef& screen) {
    this->controller().set_gfrmTxFilter(Noted(screen, part::kScreen));
  }
  [[nodiscard]] std::int32_t mlngUnitKey() const { return this->controller().mlngUnitKey(); }
  void set_mlngUnitKey(std::int32_t unitKey) { this->controller().set_mlngUnitKey(unitKey); }
  [[nodiscard]] const std::string& gstrRIDsForDeletion() const {
    return this->controller().gstrRIDsForDeletion();
  }
  void set_gstrRIDsForDeletion(std::string rids) {
    this->controller().set_gstrRIDsForDeletion(std::move(rids));
  }

  template <typename... Given>
  decltype(auto) pbPopulateArrOperators(Given&&... given) {
    return this->Run(
        "pbPopulateArrOperators",
        [this](auto&... as) { return this->controller().pbPopulateArrOperators(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbMergeXArrayDBObjects(Given&&... given) {
    return this->Run(
        "pbMergeXArrayDBObjects",
        [this](auto&... as) { return this->controller().pbMergeXArrayDBObjects(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbValidate(Given&&... given) {
    return this->Run(
        "pbValidate", [this](auto&... as) { return this->controller().pbValidate(as...); },
        given...);
  }
  template <typename... Given>
  decltype(auto) pbDelete(Given&&... given) {
    return this->Run(
        "pbDelete", [this](auto&... as) { return this->controller().pbDelete(as...); }, given...);
  }
};

template <>
class UnderTest<qorcred::clsDirCodeReport> final : public NotedReport<qorcred::clsDirCodeReport> {
 public:
  using NotedReport::NotedReport;

  template <typename... Given>
  decltype(auto) pvDirCodeReportResult(Given&&... given) {
    return this->Run(
        "pvDirCodeReportResult",
        [this](auto&... as) { return this->controller().pvDirCodeReportResult(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbGetUnitName(Given&&... given) {
    return this->Run(
        "pbGetUnitName", [this](auto&... as) { return this->controller().pbGetUnitName(as...); },
        given...);
  }
  template <typename... Given>
  decltype(auto) pbGenSql(Given&&... given) {
    return this->Run(
        "pbGenSql", [this](auto&... as) { return this->controller().pbGenSql(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbGetEntryLength(Given&&... given) {
    return this->Run(
        "pbGetEntryLength",
        [this](auto&... as) { return this->controller().pbGetEntryLength(as...); }, given...);
  }
  template <typename... Given>
  decltype(auto) pbComboData(Given&&... given) {
    return this->Run(
        "pbComboData", [this](auto&... as) { return this->controller().pbComboData(as...); },
        given...);
  }
};

template <>
class UnderTest<qorcred::clsCredentialReport> final
    : public NotedReport<qorcred::clsCredentialReport> {
 public:
  using NotedReport::NotedReport;

  template <typename... Given>
  decltype(auto) pbGenSql(Given&&... given) {
    return this->Run(
        "pbGenSql", [this](auto&... as) { return this->controller().pbGenSql(as...); }, given...);
  }
};

}  // namespace qortest
