// Objects that clients create by name.
#include <gtest/gtest.h>

#include <string>

#include "tests/com/support/component.h"

namespace comtest {
namespace {

TEST(Creation, CredentialControllerDecodesBase64) {
  const ComPtr<IDispatch> controller = CreateObject(L"qorCred.clsCredential");
  ASSERT_TRUE(controller);

  std::wstring name = L"pbBase64Dec";
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  ASSERT_EQ(controller->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);

  VARIANT text;
  V_VT(&text) = VT_BSTR;
  V_BSTR(&text) = SysAllocString(L"SGVsbG8=");
  DISPPARAMS parameters{&text, nullptr, 1, 0};
  VARIANT result;
  VariantInit(&result);
  EXPECT_EQ(controller->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                               &result, nullptr, nullptr),
            S_OK);
  ASSERT_EQ(V_VT(&result), VT_BSTR);
  EXPECT_EQ(std::wstring(V_BSTR(&result)), L"Hello");
  VariantClear(&result);
  VariantClear(&text);
}

}  // namespace
}  // namespace comtest
