#include "tests/support/scripted_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qortest {

using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::RuntimeError;
using qorcred::SameMember;
using qorcred::Value;
using qorcred::ValueType;

namespace {

constexpr std::int32_t kTenantIdOffset = 1000;

void ExpectConnection(std::string_view member, const Value& argument, const ObjectRef& connection) {
  const ObjectRef* given = argument.As<ObjectRef>();
  EXPECT_TRUE(given != nullptr && *given == connection)
      << member << " did not get the host's connection";
}

void RequireArguments(std::string_view member, qorcred::Arguments arguments, std::size_t wanted) {
  if (arguments.size() != wanted) {
    ADD_FAILURE() << member << " was called with " << arguments.size() << " arguments";
    throw RuntimeError(ErrorNumber::kWrongArgumentCount);
  }
}

/// `qorTent.clsTenant`.
class ScriptedTenant final : public qorcred::Object {
 public:
  ScriptedTenant(FaultGate& gate, ServiceScript& script, ObjectRef connection)
      : gate_(gate), script_(script), connection_(std::move(connection)) {}

  Value Invoke(std::string_view member, InvokeKind kind, qorcred::Arguments arguments) override {
    EXPECT_EQ(kind, InvokeKind::kCall) << member;
    gate_.Pass(member);
    if (SameMember(member, "pbGetMaxGroupIDOrLinkID")) {
      RequireArguments(member, arguments, 3);
      ExpectConnection(member, arguments[1], connection_);
      return script_.linkCode;
    }
    if (SameMember(member, "pbIncrementMaxGroupIDOrLinkIDByOne")) {
      RequireArguments(member, arguments, 4);
      ExpectConnection(member, arguments[1], connection_);
      script_.linkCode += qorcred::ToLong(arguments[3]);
      return {};
    }
    if (SameMember(member, "pbGetTenantID")) {
      RequireArguments(member, arguments, 3);
      ExpectConnection(member, arguments[0], connection_);
      return qorcred::ToLong(arguments[2]) + kTenantIdOffset;
    }
    if (SameMember(member, "pvCreateProgramSteps")) {
      RequireArguments(member, arguments, 3);
      ExpectConnection(member, arguments[0], connection_);
      return {};
    }
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }

 private:
  FaultGate& gate_;
  ServiceScript& script_;
  ObjectRef connection_;
};

/// `qorAppln.clsApplication`: nine arguments, of which it fills in the sixth to the eighth.
class ScriptedApplication final : public qorcred::Object {
 public:
  ScriptedApplication(FaultGate& gate, ServiceScript& script, ObjectRef connection)
      : gate_(gate), script_(script), connection_(std::move(connection)) {}

  Value Invoke(std::string_view member, InvokeKind kind, qorcred::Arguments arguments) override {
    EXPECT_EQ(kind, InvokeKind::kCall) << member;
    gate_.Pass(member);
    if (!SameMember(member, "pbGetUnitStatus")) {
      throw RuntimeError(ErrorNumber::kUnknownMember);
    }
    RequireArguments(member, arguments, 9);
    ExpectConnection(member, arguments[0], connection_);
    EXPECT_TRUE(arguments[2].Is(ValueType::kInteger));
    for (std::size_t at = 3; at < arguments.size(); ++at) {
      EXPECT_TRUE(arguments[at].Is(ValueType::kString)) << at;
    }
    if (script_.unitKeyAfterwards) arguments[1] = *script_.unitKeyAfterwards;
    arguments[5] = script_.credentials;
    arguments[6] = script_.entryCodes;
    arguments[7] = script_.directoryCodes;
    return {};
  }

 private:
  FaultGate& gate_;
  ServiceScript& script_;
  ObjectRef connection_;
};

/// `qorSPS.clsSendProgSteps`: every operation takes the connection, the unit and a row or code.
class ScriptedStepSender final : public qorcred::Object {
 public:
  ScriptedStepSender(FaultGate& gate, const ServiceScript& script, ObjectRef connection)
      : gate_(gate), script_(script), connection_(std::move(connection)) {}

  Value Invoke(std::string_view member, InvokeKind kind, qorcred::Arguments arguments) override {
    EXPECT_EQ(kind, InvokeKind::kCall) << member;
    gate_.Pass(member);
    const bool asks = SameMember(member, "pbDeleteDirCodePrgStepExists");
    if (!asks && !SameMember(member, "pbGenDirCodePrgStep") &&
        !SameMember(member, "pbGenChgDirCodePrgStep") &&
        !SameMember(member, "pbGenDelDirCodePrgStep") &&
        !SameMember(member, "pbDeleteDirCodePrgStep")) {
      throw RuntimeError(ErrorNumber::kUnknownMember);
    }
    RequireArguments(member, arguments, 3);
    ExpectConnection(member, arguments[0], connection_);
    EXPECT_TRUE(arguments[1].Is(ValueType::kLong)) << member;
    EXPECT_TRUE(qorcred::IsNumeric(arguments[2])) << member;
    if (script_.unitKeyAfterwards) arguments[1] = *script_.unitKeyAfterwards;
    if (script_.rowAfterwards && !asks) arguments[2] = *script_.rowAfterwards;
    return asks ? Value(script_.deletionStepExists) : Value();
  }

 private:
  FaultGate& gate_;
  const ServiceScript& script_;
  ObjectRef connection_;
};

/// `qorCommn.clsConnectionManager`: keeps the link to the unit alive.
class ScriptedConnectionManager final : public qorcred::Object {
 public:
  explicit ScriptedConnectionManager(FaultGate& gate) : gate_(gate) {}

  Value Invoke(std::string_view member, InvokeKind kind, qorcred::Arguments arguments) override {
    EXPECT_EQ(kind, InvokeKind::kCall) << member;
    gate_.Pass(member);
    if (!SameMember(member, "pbPing")) {
      throw RuntimeError(ErrorNumber::kUnknownMember);
    }
    RequireArguments(member, arguments, 0);
    return {};
  }

 private:
  FaultGate& gate_;
};

}  // namespace

ScriptedHost::ScriptedHost(FaultGate& gate, ServiceScript& script, ObjectRef connection)
    : gate_(gate), script_(script), connection_(std::move(connection)) {}

int ScriptedHost::LiveComponents() const {
  return static_cast<int>(std::count_if(components_.begin(), components_.end(),
                                        [](const auto& one) { return !one.expired(); }));
}

ObjectRef ScriptedHost::CreateComponent(std::string_view programmaticId) {
  gate_.Pass("CreateObject " + std::string(programmaticId));
  if (programmaticId == script_.missing) throw RuntimeError(ErrorNumber::kCannotCreateComponent);
  ObjectRef component;
  if (programmaticId == "qorDBI.clsDBManager") {
    component = std::make_shared<ScriptedManager>(gate_, script_.database, connection_);
  } else if (programmaticId == "qorSPS.clsSendProgSteps") {
    component = std::make_shared<ScriptedStepSender>(gate_, script_, connection_);
  } else if (programmaticId == "qorCommn.clsConnectionManager") {
    component = std::make_shared<ScriptedConnectionManager>(gate_);
  } else if (programmaticId == "qorTent.clsTenant") {
    component = std::make_shared<ScriptedTenant>(gate_, script_, connection_);
  } else if (programmaticId == "qorAppln.clsApplication") {
    component = std::make_shared<ScriptedApplication>(gate_, script_, connection_);
  } else {
    throw RuntimeError(ErrorNumber::kCannotCreateComponent);
  }
  components_.push_back(component);
  return component;
}

qorcred::MessageButton ScriptedHost::ShowMessage(std::string_view /*text*/,
                                                 qorcred::MessageStyle style,
                                                 std::string_view /*title*/) {
  gate_.Pass("MsgBox");
  return style == qorcred::MessageStyle::kQuestion ? script_.questionAnswer
                                                   : qorcred::MessageButton::kOk;
}

qorcred::Date ScriptedHost::Now() {
  gate_.Pass("Now");
  if (!script_.nextTimes.empty()) {
    script_.now = script_.nextTimes.front();
    script_.nextTimes.pop_front();
  }
  return script_.now;
}

void ScriptedHost::LetEventsRun() {
  gate_.Pass("DoEvents");
}

std::string ScriptedHost::DateText(qorcred::Date date) {
  return script_.dateText.empty() ? Host::DateText(date) : script_.dateText;
}

void ScriptedHost::ReportFailure(std::string_view operation,
                                 const qorcred::RuntimeError& failure) noexcept {
  trapped_.emplace_back(operation, failure.number());
}

}  // namespace qortest
