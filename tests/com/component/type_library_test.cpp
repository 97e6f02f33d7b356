// The embedded type library against the member tables: names, identifiers, types, directions,
// optional and by-reference parameters; and the defaults of omitted arguments.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "com/classes.h"
#include "com/ownership.h"
#include "com/text.h"
#include "tests/com/component/component_file.h"

namespace qortest {
namespace {

using qorcred::Member;
using qorcred::MemberKind;
using qorcred::Parameter;
using qorcred::ValueType;
using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ComPtr;
using qorcred::com::FromBstr;
using qorcred::com::ToUtf8;

/// A function of a dispinterface.
struct Function {
  std::string name;
  int id = 0;
  INVOKEKIND kind = INVOKE_FUNC;
  std::vector<std::string> parameters;  ///< "[in,out] Optional ByRef Long lngRID"
  std::vector<std::string> defaults;    ///< "lngRID = Long 0", of the optional ones
  std::string result;
};

std::string TypeText(ITypeInfo& info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_VOID:
    case VT_EMPTY:
      return "nothing";
    case VT_BOOL:
      return "Boolean";
    case VT_I4:
      return "Long";
    case VT_BSTR:
      return "String";
    case VT_DISPATCH:
      return "Object";
    case VT_VARIANT:
      return "Variant";
    case VT_SAFEARRAY:
      return "Array of " + TypeText(info, *type.lptdesc);
    case VT_PTR: {
      const std::string target = TypeText(info, *type.lptdesc);
      return target == "IDispatch" ? "Object" : "ByRef " + target;
    }
    case VT_USERDEFINED: {
      ComPtr<ITypeInfo> referred;
      BSTR name = nullptr;
      if (FAILED(info.GetRefTypeInfo(type.hreftype, referred.Receive())) ||
          FAILED(referred->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr))) {
        return "unknown";
      }
      const std::string text = FromBstr(name);
      SysFreeString(name);
      return text;
    }
    default:
      return "type " + std::to_string(type.vt);
  }
}

bool IsOptional(const ELEMDESC& element) {
  return (element.paramdesc.wParamFlags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0;
}

std::string DirectionText(USHORT flags) {
  switch (flags & ~(PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) {
    case PARAMFLAG_FIN:
      return "[in] ";
    case PARAMFLAG_FOUT:
      return "[out] ";
    case PARAMFLAG_FIN | PARAMFLAG_FOUT:
      return "[in,out] ";
    default:
      return "[flags " + std::to_string(flags) + "] ";
  }
}

std::string ParameterText(ITypeInfo& info, const ELEMDESC& element, const std::string& name) {
  return DirectionText(element.paramdesc.wParamFlags) + (IsOptional(element) ? "Optional " : "") +
         TypeText(info, element.tdesc) + " " + name;
}

/// What a client passes for an omitted argument.
std::string DefaultText(const PARAMDESC& parameter) {
  if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) return "none";
  if (parameter.pparamdescex == nullptr) return "lost";
  const VARIANT& value = parameter.pparamdescex->varDefaultValue;
  switch (V_VT(&value)) {
    case VT_BOOL:
      return "Boolean " + std::to_string(V_BOOL(&value));
    case VT_I4:
      return "Long " + std::to_string(V_I4(&value));
    default:
      return "type " + std::to_string(V_VT(&value));
  }
}

Function FunctionAt(ITypeInfo& info, UINT index) {
  Function function;
  FUNCDESC* description = nullptr;
  EXPECT_EQ(info.GetFuncDesc(index, &description), S_OK);
  if (description == nullptr) return function;
  const auto parameters = static_cast<std::size_t>(description->cParams);
  std::vector<BSTR> names(parameters + 1, nullptr);
  UINT count = 0;
  EXPECT_EQ(
      info.GetNames(description->memid, names.data(), static_cast<UINT>(names.size()), &count),
      S_OK);
  function.name = FromBstr(names[0]);
  function.id = description->memid;
  function.kind = description->invkind;
  for (std::size_t at = 0; at < parameters; ++at) {
    const ELEMDESC& element = description->lprgelemdescParam[at];
    const std::string name = at + 1 < count ? FromBstr(names[at + 1]) : "";
    function.parameters.push_back(ParameterText(info, element, name));
    if (IsOptional(element)) {
      function.defaults.push_back(name + " = " + DefaultText(element.paramdesc));
    }
  }
  function.result = TypeText(info, description->elemdescFunc.tdesc);
  for (BSTR name : names) SysFreeString(name);
  info.ReleaseFuncDesc(description);
  return function;
}

std::vector<Function> FunctionsOf(ITypeLib& library, REFIID dispinterface) {
  std::vector<Function> functions;
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(library.GetTypeInfoOfGuid(dispinterface, info.Receive()), S_OK);
  if (!info) return functions;
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
  if (attributes == nullptr) return functions;
  for (UINT index = 0; index < attributes->cFuncs; ++index) {
    Function function = FunctionAt(*info.get(), index);
    // Those of IDispatch itself have no identifiers of ours.
    if (function.id > 0 && function.id < 0x60000000) functions.push_back(std::move(function));
  }
  info->ReleaseTypeAttr(attributes);
  return functions;
}

std::string TypeName(ValueType type) {
  switch (type) {
    case ValueType::kBoolean:
      return "Boolean";
    case ValueType::kLong:
      return "Long";
    case ValueType::kString:
      return "String";
    case ValueType::kObject:
      return "Object";
    case ValueType::kStringArray:
      return "Array of String";
    default:
      return "nothing";
  }
}

std::string ExpectedParameter(const Parameter& parameter) {
  // An optional object has no default of its own type.
  const bool isVariant = parameter.IsOptional() && parameter.type == ValueType::kObject;
  // What is passed by reference may come back changed.
  return std::string(parameter.byRef ? "[in,out] " : "[in] ") +
         (parameter.IsOptional() ? "Optional " : "") + (parameter.byRef ? "ByRef " : "") +
         (isVariant ? "Variant" : TypeName(parameter.type)) + " " + std::string(parameter.name);
}

std::string ExpectedDefault(const Parameter& parameter) {
  const qorcred::Value omitted = parameter.Omitted();
  if (const bool* flag = omitted.As<bool>()) return *flag ? "Boolean -1" : "Boolean 0";
  if (const auto* number = omitted.As<std::int32_t>()) return "Long " + std::to_string(*number);
  return "none";  // an omitted object is told as such
}

std::vector<Function> ExpectedFunctions(std::span<const Member> members) {
  std::vector<Function> functions;
  for (const Member& member : members) {
    const std::string name(member.name);
    if (member.kind == MemberKind::kOperation) {
      Function function{name, member.id, INVOKE_FUNC, {}, {}, TypeName(member.type)};
      for (const Parameter& parameter : member.parameters) {
        function.parameters.push_back(ExpectedParameter(parameter));
      }
      functions.push_back(function);
      continue;
    }
    const std::string value = TypeName(member.type);
    const std::string valuePut = "[in] " + value + " ";
    functions.push_back({name, member.id, INVOKE_PROPERTYGET, {}, {}, value});
    functions.push_back({name, member.id, INVOKE_PROPERTYPUT, {valuePut}, {}, "nothing"});
    if (member.type == ValueType::kObject) {
      functions.push_back({name, member.id, INVOKE_PROPERTYPUTREF, {valuePut}, {}, "nothing"});
    }
  }
  return functions;
}

std::string LineOf(const Function& function) {
  std::string line = std::to_string(function.id) + " " + function.name + " kind " +
                     std::to_string(function.kind) + " (";
  for (const std::string& parameter : function.parameters) {
    // The value of a put has no name of its own.
    const bool isPut =
        function.kind == INVOKE_PROPERTYPUT || function.kind == INVOKE_PROPERTYPUTREF;
    line += (isPut ? parameter.substr(0, parameter.find_last_of(' ')) : parameter) + "; ";
  }
  return line + ") -> " + function.result;
}

std::vector<std::string> LinesOf(const std::vector<Function>& functions) {
  std::vector<std::string> lines;
  for (const Function& function : functions) lines.push_back(LineOf(function));
  std::sort(lines.begin(), lines.end());
  return lines;
}

class TypeLibraryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(LoadTypeLibEx(ComponentFile().c_str(), REGKIND_NONE, library_.Receive()), S_OK);
  }
  [[nodiscard]] ITypeLib& library() { return *library_.get(); }

 private:
  ComPtr<ITypeLib> library_;
};

TEST_F(TypeLibraryTest, EveryDispinterfaceSaysWhatTheMemberTableSays) {
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    EXPECT_EQ(LinesOf(FunctionsOf(library(), comClass.dispinterface)),
              LinesOf(ExpectedFunctions(comClass.members())));
  }
}

// Those of the member tables, in the types of the parameters: a client that binds early passes them
// itself, and gets what one that omits the arguments gets.
TEST_F(TypeLibraryTest, EveryOptionalArgumentHasItsDefault) {
  std::vector<std::string> expected;
  for (const ComClass& comClass : Classes()) {
    for (const Member& member : comClass.members()) {
      for (const Parameter& parameter : member.parameters) {
        if (!parameter.IsOptional()) continue;
        expected.push_back(ToUtf8(comClass.name) + "." + std::string(member.name) + " " +
                           std::string(parameter.name) + " = " + ExpectedDefault(parameter));
      }
    }
  }
  ASSERT_EQ(expected.size(), 17U);
  std::vector<std::string> found;
  for (const ComClass& comClass : Classes()) {
    for (const Function& function : FunctionsOf(library(), comClass.dispinterface)) {
      for (const std::string& one : function.defaults) {
        found.push_back(ToUtf8(comClass.name) + "." + function.name + " " + one);
      }
    }
  }
  EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected));
}

TEST_F(TypeLibraryTest, EveryClassIsACoclassThatCanBeCreated) {
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(library().GetTypeInfoOfGuid(comClass.id, info.Receive()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE, 0);
    EXPECT_EQ(attributes->cImplTypes, 1);
    info->ReleaseTypeAttr(attributes);
    BSTR name = nullptr;
    ASSERT_EQ(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(FromBstr(name), ToUtf8(comClass.name));
    SysFreeString(name);
  }
}

TEST_F(TypeLibraryTest, HasTheIdentifierAndVersionThatTheRegistrationNames) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library().GetLibAttr(&attributes), S_OK);
  EXPECT_TRUE(IsEqualGUID(attributes->guid, qorcred::com::kTypeLibrary));
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
  library().ReleaseTLibAttr(attributes);
}

}  // namespace
}  // namespace qortest
