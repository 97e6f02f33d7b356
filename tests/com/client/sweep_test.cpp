// Every member of every class, called with everything.
#include <set>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

/// What a call may end with: done, raised, or refused in automation's own words.
const std::set<HRESULT> kOutcomes{S_OK,
                                  DISP_E_EXCEPTION,
                                  DISP_E_MEMBERNOTFOUND,
                                  DISP_E_TYPEMISMATCH,
                                  DISP_E_OVERFLOW,
                                  DISP_E_BADPARAMCOUNT,
                                  DISP_E_PARAMNOTOPTIONAL,
                                  DISP_E_PARAMNOTFOUND};

constexpr WORD kFlags[] = {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT,
                           DISPATCH_PROPERTYPUTREF};

class Sweep : public ComTest, public testing::WithParamInterface<const wchar_t*> {
 protected:
  // One of every kind of content.
  static std::vector<Variant> Contents() {
    std::vector<Variant> contents{Variant(),
                                  Variant::Null(),
                                  Variant::Omitted(),
                                  Variant(true),
                                  Variant(static_cast<short>(-1)),
                                  Variant(7),
                                  Variant(-2147483647),
                                  Variant(1e300),
                                  Variant(L""),
                                  Variant(L"12"),
                                  Variant(L"' OR 1=1 --"),
                                  Variant(std::wstring(5, L'\0')),
                                  Variant(L"\xD83D"),
                                  Variant::Day(40000),
                                  Variant::Day(1e9),
                                  Variant::As(VT_CY, Variant(5)),
                                  Variant::As(VT_DECIMAL, Variant(5)),
                                  Variant::As(VT_UI8, Variant(5)),
                                  Variant(static_cast<IDispatch*>(nullptr)),
                                  Variant(FakeObject::Make()),
                                  Variant::Unknown(nullptr)};
    for (const VARTYPE type : {VT_BSTR, VT_VARIANT, VT_I4, VT_UI1}) {
      Variant array;
      V_ARRAY(&array) = SafeArrayCreateVector(type, 0, 24);
      V_VT(&array) = static_cast<VARTYPE>(VT_ARRAY | type);
      contents.push_back(std::move(array));
    }
    return contents;
  }

  // No host is there: operations find nothing that they could show or store.
  static std::unique_ptr<OfferedComponent> Missing(const wchar_t* programmaticId) {
    return std::make_unique<OfferedComponent>(programmaticId, [] { return ComPtr<IDispatch>(); });
  }
};

// The number 0 as a credential's new one is refused by a message box, which nobody answers here.
bool ShowsABox(const Client& controller, DISPID member, const VARIANT& content, std::size_t count) {
  const DISPID renumbering = controller.IdOf(L"pbUpdatePinNo");
  return renumbering != DISPID_UNKNOWN && member == renumbering && V_VT(&content) == VT_EMPTY &&
         count == 3;
}

TEST_P(Sweep, EndsEveryCallInOneOfTheKnownWays) {
  const auto manager = Missing(L"qorDBI.clsDBManager");
  const auto link = Missing(L"qorCommn.clsConnectionManager");
  const auto tenants = Missing(L"qorTent.clsTenant");
  const Client controller(GetParam());
  const std::vector<Variant> contents = Contents();
  constexpr DISPID kLastMember = 14;
  constexpr std::size_t kMostArguments = 8;
  int calls = 0;
  for (DISPID member = -1; member <= kLastMember; ++member) {
    for (const WORD flags : kFlags) {
      for (const Variant& content : contents) {
        for (std::size_t count = 0; count <= kMostArguments; ++count) {
          if (ShowsABox(controller, member, content, count)) continue;
          for (const Shape shape : {Shape::kValue, Shape::kReference, Shape::kVariantReference}) {
            const Shaped argument(shape, content);
            const std::vector<VARIANT> arguments(count, argument.argument());
            const Outcome outcome = controller.Invoke(member, flags, arguments, {});
            ++calls;
            ASSERT_TRUE(kOutcomes.contains(outcome.code))
                << std::hex << outcome.code << " from member " << member << " with " << count
                << " of type " << V_VT(&content);
          }
        }
      }
    }
  }
  EXPECT_GT(calls, 10'000);
}

INSTANTIATE_TEST_SUITE_P(Classes, Sweep,
                         testing::Values(kCredential, kDirCode, kDirCodeReport, kCredentialReport),
                         [](const auto& one) {
                           const std::wstring name = one.param;
                           return std::string(name.begin() + 8, name.end());
                         });

}  // namespace
}  // namespace qortest
