// What the controllers' and factories' interfaces promise beside calls.
#include <array>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

struct ClassCase {
  const wchar_t* programmaticId;
  const wchar_t* typeName;
};

void PrintTo(const ClassCase& one, std::ostream* out) {
  for (const wchar_t* at = one.programmaticId; *at != L'\0'; ++at) *out << static_cast<char>(*at);
}

class Interfaces : public ComTest, public testing::WithParamInterface<ClassCase> {
 protected:
  [[nodiscard]] static const wchar_t* Name() { return GetParam().programmaticId; }

  [[nodiscard]] static ComPtr<ITypeInfo> TypeInfoOf(const Client& controller) {
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(controller.get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Receive()), S_OK);
    return info;
  }

  [[nodiscard]] static IID DispinterfaceOf(const Client& controller) {
    const ComPtr<ITypeInfo> info = TypeInfoOf(controller);
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const IID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
  }
};

TEST_P(Interfaces, EveryInterfaceLeadsToEveryOther) {
  const Client controller(Name());
  const std::array<IID, 4> all{IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo,
                               DispinterfaceOf(controller)};
  ComPtr<IUnknown> identity;
  ASSERT_EQ(controller.get()->QueryInterface(IID_IUnknown, identity.ReceiveVoid()), S_OK);
  for (const IID& one : all) {
    ComPtr<IUnknown> first;
    ASSERT_EQ(controller.get()->QueryInterface(one, first.ReceiveVoid()), S_OK);
    for (const IID& other : all) {
      ComPtr<IUnknown> second;
      ASSERT_EQ(first->QueryInterface(other, second.ReceiveVoid()), S_OK);
      ComPtr<IUnknown> back;
      ASSERT_EQ(second->QueryInterface(IID_IUnknown, back.ReceiveVoid()), S_OK);
      EXPECT_EQ(back.get(), identity.get());
    }
  }
}

TEST_P(Interfaces, OthersAreRefused) {
  const Client controller(Name());
  for (const IID& other :
       {IID_IClassFactory, IID_IPersist, IID_IMarshal, IID_ITypeInfo, IID_NULL}) {
    IUnknown* found = controller.get();
    EXPECT_EQ(controller.get()->QueryInterface(other, reinterpret_cast<void**>(&found)),
              E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
  }
  EXPECT_EQ(controller.get()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_P(Interfaces, FactoriesMakeWhatIsAskedFor) {
  const ComPtr<IClassFactory> factory = FactoryOf(Name());
  ASSERT_TRUE(factory);
  ComPtr<IUnknown> unknown;
  ASSERT_EQ(factory->QueryInterface(IID_IUnknown, unknown.ReceiveVoid()), S_OK);
  EXPECT_EQ(factory->QueryInterface(IID_IDispatch, unknown.ReceiveVoid()), E_NOINTERFACE);
  EXPECT_EQ(factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  for (const IID& wanted : {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo}) {
    ComPtr<IUnknown> made;
    EXPECT_EQ(factory->CreateInstance(nullptr, wanted, made.ReceiveVoid()), S_OK);
    EXPECT_TRUE(made);
  }
}

TEST_P(Interfaces, AggregationIsRefused) {
  const ComPtr<IClassFactory> factory = FactoryOf(Name());
  const ComPtr<FakeObject> outer = FakeObject::Make();
  ComPtr<IUnknown> made;
  EXPECT_EQ(factory->CreateInstance(static_cast<IDispatch*>(outer.get()), IID_IUnknown,
                                    made.ReceiveVoid()),
            CLASS_E_NOAGGREGATION);
  EXPECT_FALSE(made);
}

TEST_P(Interfaces, EveryObjectIsANewOne) {
  const Client one(Name());
  const Client other(Name());
  EXPECT_NE(one.get(), other.get());
}

TEST_P(Interfaces, TheTypeDescriptionIsTheClasses) {
  const Client controller(Name());
  UINT count = 0;
  ASSERT_EQ(controller.get()->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1U);
  const ComPtr<ITypeInfo> info = TypeInfoOf(controller);
  BSTR name = nullptr;
  ASSERT_EQ(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(std::wstring(name), GetParam().typeName);
  SysFreeString(name);
}

TEST_P(Interfaces, TheTypeDescriptionKnowsTheObjectsIdentifiers) {
  const Client controller(Name());
  const ComPtr<ITypeInfo> info = TypeInfoOf(controller);
  for (DISPID id = 1; id <= 8; ++id) {
    BSTR name = nullptr;
    UINT count = 0;
    ASSERT_EQ(info->GetNames(id, &name, 1, &count), S_OK) << id;
    ASSERT_EQ(count, 1U);
    EXPECT_EQ(controller.IdOf(name), id);
    SysFreeString(name);
  }
}

TEST_P(Interfaces, OddRequestsForTheTypeDescriptionAreRefused) {
  const Client controller(Name());
  EXPECT_EQ(controller.get()->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(controller.get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(controller.get()->GetTypeInfo(1, LOCALE_USER_DEFAULT, info.Receive()), DISP_E_BADINDEX);
  EXPECT_FALSE(info);
}

TEST_P(Interfaces, ErrorObjectsAreLeftForCallsAlone) {
  const Client controller(Name());
  ComPtr<ISupportErrorInfo> support;
  ASSERT_EQ(controller.get()->QueryInterface(IID_ISupportErrorInfo, support.ReceiveVoid()), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(DispinterfaceOf(controller)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IUnknown), S_FALSE);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_ISupportErrorInfo), S_FALSE);
}

INSTANTIATE_TEST_SUITE_P(Classes, Interfaces,
                         testing::Values(ClassCase{kCredential, L"_clsCredential"},
                                         ClassCase{kDirCode, L"_clsDirCode"},
                                         ClassCase{kDirCodeReport, L"_clsDirCodeReport"},
                                         ClassCase{kCredentialReport, L"_clsCredentialReport"}),
                         [](const auto& one) {
                           const std::wstring name = one.param.typeName;
                           return std::string(name.begin() + 1, name.end());
                         });

}  // namespace
}  // namespace qortest
