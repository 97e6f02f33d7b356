// Arrays of texts that an operation changes.
#include <array>
#include <climits>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

/// How many texts describe a directory code, and those that are looked at here.
constexpr ULONG kTexts = 24;
constexpr LONG kCode = 4;
constexpr LONG kActive = 10;
constexpr LONG kStartTime = 13;

/// A client's array, freed at its end.
class TextArray {
 public:
  TextArray(VARTYPE type, LONG low, ULONG count) : type_(type), low_(low) {
    SAFEARRAYBOUND bound{count, low};
    array_ = SafeArrayCreate(type, 1, &bound);
    for (ULONG at = 0; at < count; ++at) Set(static_cast<LONG>(at), Variant(L""));
  }
  ~TextArray() { SafeArrayDestroy(array_); }
  TextArray(const TextArray&) = delete;
  TextArray& operator=(const TextArray&) = delete;

  void Set(LONG place, Variant value) {
    LONG index = low_ + place;
    void* element = type_ == VT_BSTR ? static_cast<void*>(V_BSTR(&value)) : &value;
    EXPECT_EQ(SafeArrayPutElement(array_, &index, element), S_OK);
  }
  [[nodiscard]] Variant Get(LONG place) const {
    LONG index = low_ + place;
    Variant value;
    if (type_ == VT_BSTR) V_VT(&value) = VT_BSTR;
    void* element = type_ == VT_BSTR ? static_cast<void*>(&V_BSTR(&value)) : &value;
    EXPECT_EQ(SafeArrayGetElement(array_, &index, element), S_OK);
    return value;
  }
  [[nodiscard]] SAFEARRAY** place() { return &array_; }
  [[nodiscard]] VARTYPE type() const { return static_cast<VARTYPE>(VT_ARRAY | type_); }
  [[nodiscard]] ULONG locks() const { return array_->cLocks; }
  /// As a value, which shares the elements. Not to be cleared.
  [[nodiscard]] VARIANT AsValue() const {
    VARIANT value;
    V_VT(&value) = type();
    V_ARRAY(&value) = array_;
    return value;
  }

 private:
  VARTYPE type_;
  LONG low_;
  SAFEARRAY* array_ = nullptr;
};

class CodeDetails : public ComTest {
 protected:
  // A mode that writes nothing still converts the texts.
  static Outcome Merge(const VARIANT& details) {
    const FakeManager manager;
    const auto offered = Offer(manager);
    const OfferedComponent link(L"qorCommn.clsConnectionManager",
                                [] { return ComPtr<IDispatch>(FakeObject::Make().get()); });
    const Client controller(kDirCode);
    return controller.Call(L"pbMergeSave", Variant(FakeObject::Make()), Variant(7), Variant(L"-"),
                           details);
  }

  static void Fill(TextArray& details) {
    details.Set(kCode, Variant(L"0123"));
    details.Set(kActive, Variant(L"1"));
    details.Set(kStartTime, Variant(L"0815"));
  }

  static void ExpectConverted(const TextArray& details) {
    EXPECT_EQ(TextIn(details.Get(kCode)), L"0123");
    EXPECT_EQ(TextIn(details.Get(kActive)), L"True");
    EXPECT_EQ(TextIn(details.Get(kStartTime)), L"08:15");
    EXPECT_EQ(details.locks(), 0U);
  }

  static void ExpectUntouched(const TextArray& details) {
    EXPECT_EQ(TextIn(details.Get(kCode)), L"0123");
    EXPECT_EQ(TextIn(details.Get(kActive)), L"1");
    EXPECT_EQ(TextIn(details.Get(kStartTime)), L"0815");
    EXPECT_EQ(details.locks(), 0U);
  }
};

class CodeDetailsOf : public CodeDetails, public testing::WithParamInterface<VARTYPE> {};

TEST_P(CodeDetailsOf, PassedByReferenceAreConvertedInPlace) {
  for (const LONG low : {0L, 1L, -5L}) {
    TextArray details(GetParam(), low, kTexts);
    Fill(details);
    const Outcome outcome = Merge(Variant::Reference(details.type(), details.place()));
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
    ExpectConverted(details);
  }
}

TEST_P(CodeDetailsOf, InAVariantByReferenceAreConvertedInPlace) {
  TextArray details(GetParam(), 0, kTexts);
  Fill(details);
  VARIANT holder = details.AsValue();
  const Outcome outcome = Merge(Variant::Reference(holder));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(V_ARRAY(&holder), *details.place());
  ExpectConverted(details);
}

TEST_P(CodeDetailsOf, ByReferenceInAVariantByReferenceAreConvertedInPlace) {
  TextArray details(GetParam(), 0, kTexts);
  Fill(details);
  Variant inner = Variant::Reference(details.type(), details.place());
  ASSERT_EQ(Merge(Variant::Reference(inner)).code, S_OK);
  ExpectConverted(details);
}

TEST_P(CodeDetailsOf, PassedByValueStayAsTheyAre) {
  TextArray details(GetParam(), 0, kTexts);
  Fill(details);
  const Outcome outcome = Merge(details.AsValue());
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  ExpectUntouched(details);
}

TEST_P(CodeDetailsOf, ThatTheClientHasLockedAreConvertedAndStayLocked) {
  TextArray details(GetParam(), 0, kTexts);
  Fill(details);
  ASSERT_EQ(SafeArrayLock(*details.place()), S_OK);
  EXPECT_EQ(Merge(Variant::Reference(details.type(), details.place())).code, S_OK);
  EXPECT_EQ(details.locks(), 1U);
  ASSERT_EQ(SafeArrayUnlock(*details.place()), S_OK);
  ExpectConverted(details);
}

TEST_P(CodeDetailsOf, AtTheEndsOfTheBoundsAreConverted) {
  for (const LONG low : {LONG_MAX - static_cast<LONG>(kTexts), LONG_MIN}) {
    TextArray details(GetParam(), low, kTexts);
    Fill(details);
    EXPECT_EQ(Merge(Variant::Reference(details.type(), details.place())).code, S_OK);
    ExpectConverted(details);
  }
}

TEST_P(CodeDetailsOf, NoneAtTheLowestBoundFails) {
  TextArray details(GetParam(), LONG_MIN, 0);
  const Outcome outcome = Merge(Variant::Reference(details.type(), details.place()));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
}

TEST_P(CodeDetailsOf, WithoutMemoryAreRefused) {
  TextArray details(GetParam(), 0, kTexts);
  ASSERT_EQ(SafeArrayDestroyData(*details.place()), S_OK);
  const Outcome outcome = Merge(Variant::Reference(details.type(), details.place()));
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 0U);
  EXPECT_EQ(details.locks(), 0U);
}

TEST_P(CodeDetailsOf, ThatEndTooEarlyFailAndAreUnlocked) {
  TextArray details(GetParam(), 0, kActive + 1);
  const Outcome outcome = Merge(Variant::Reference(details.type(), details.place()));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
  EXPECT_EQ(details.locks(), 0U);
}

TEST_P(CodeDetailsOf, NoneAtAllFails) {
  TextArray details(GetParam(), 0, 0);
  const Outcome outcome = Merge(Variant::Reference(details.type(), details.place()));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
}

INSTANTIATE_TEST_SUITE_P(Elements, CodeDetailsOf, testing::Values(VT_BSTR, VT_VARIANT),
                         [](const auto& one) {
                           return std::string(one.param == VT_BSTR ? "Texts" : "Variants");
                         });

TEST_F(CodeDetails, NumbersAmongThemAreTextsAndKeepTheirTypeUnlessConverted) {
  TextArray details(VT_VARIANT, 0, kTexts);
  Fill(details);
  details.Set(kCode, Variant(123));
  details.Set(kActive, Variant(1));
  ASSERT_EQ(Merge(Variant::Reference(details.type(), details.place())).code, S_OK);
  EXPECT_EQ(V_VT(&static_cast<const VARIANT&>(details.Get(kCode))), VT_I4);
  EXPECT_EQ(TextIn(details.Get(kActive)), L"True");
}

TEST_F(CodeDetails, DatesAmongThemAreTextsInTheUsersForm) {
  constexpr LONG kPhone = 5;
  constexpr double kMoment = 45667.5625;
  BSTR text = nullptr;
  ASSERT_EQ(VarBstrFromDate(kMoment, LOCALE_USER_DEFAULT, 0, &text), S_OK);
  const std::wstring expected = L",0123,'" + std::wstring(text) + L"',";
  SysFreeString(text);

  const FakeManager manager;
  std::wstring statement;
  manager.object->On(L"ExecuteInsert", [&statement](const FakeCall& call) {
    statement = TextIn(call.Argument(1));
    return call.Return(1);
  });
  const auto offered = Offer(manager);
  const OfferedComponent link(L"qorCommn.clsConnectionManager",
                              [] { return ComPtr<IDispatch>(FakeObject::Make().get()); });
  const ComPtr<FakeObject> connectionScreen = FakeObject::Make();
  connectionScreen->Property(L"mFirmwareFromHandshake", Variant(L"1.0"));
  const Client controller(kDirCode);
  ASSERT_EQ(controller.Put(L"mfrmConnectionScreen", Variant(connectionScreen)).code, S_OK);
  TextArray details(VT_VARIANT, 0, kTexts);
  Fill(details);
  details.Set(kPhone, Variant::Day(kMoment));
  const Outcome outcome =
      controller.Call(L"pbMergeSave", Variant(FakeObject::Make()), Variant(7), Variant(L"Insert"),
                      Variant::Reference(details.type(), details.place()));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_NE(statement.find(expected), std::wstring::npos) << testing::PrintToString(statement);
  EXPECT_EQ(V_VT(&static_cast<const VARIANT&>(details.Get(kPhone))), VT_DATE);
}

TEST_F(CodeDetails, WhatIsNoTextAmongThemIsRefusedAtItsPlace) {
  TextArray details(VT_VARIANT, 0, kTexts);
  Fill(details);
  details.Set(kCode, Variant::Null());
  const Outcome outcome = Merge(Variant::Reference(details.type(), details.place()));
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 0U);
  EXPECT_EQ(TextIn(details.Get(kActive)), L"1");
  EXPECT_EQ(details.locks(), 0U);
}

// An element refers to the variable that holds the array: reading it as a text would never end.
TEST_F(CodeDetails, AnArrayThatHoldsItselfIsRefused) {
  TextArray details(VT_VARIANT, 0, kTexts);
  VARIANT holder = details.AsValue();
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(V_ARRAY(&holder), &data), S_OK);
  auto* elements = static_cast<VARIANT*>(data);
  VariantClear(&elements[kActive]);
  elements[kActive] = Variant::Reference(holder);
  SafeArrayUnaccessData(V_ARRAY(&holder));
  for (const VARIANT& passed : {holder, static_cast<const VARIANT&>(Variant::Reference(holder))}) {
    const Outcome outcome = Merge(passed);
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0U);
    EXPECT_EQ(details.locks(), 0U);
  }
}

TEST_F(CodeDetails, OtherArraysAreRefused) {
  std::array<SAFEARRAYBOUND, 2> bounds{{{kTexts, 0}, {2, 0}}};
  const std::pair<VARTYPE, UINT> arrays[] = {{VT_BSTR, 2}, {VT_VARIANT, 2}, {VT_I4, 1}, {VT_R8, 1}};
  for (const auto& [type, dimensions] : arrays) {
    SAFEARRAY* array = SafeArrayCreate(type, dimensions, bounds.data());
    const auto arrayType = static_cast<VARTYPE>(VT_ARRAY | type);
    VARIANT value;
    V_VT(&value) = arrayType;
    V_ARRAY(&value) = array;
    for (const VARIANT& details :
         {static_cast<const VARIANT&>(Variant::Reference(arrayType, &array)), value,
          static_cast<const VARIANT&>(Variant::Reference(value))}) {
      const Outcome outcome = Merge(details);
      EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH) << "type " << type << ", " << dimensions;
      EXPECT_EQ(outcome.badArgument, 0U);
    }
    EXPECT_EQ(array->cLocks, 0U);
    SafeArrayDestroy(array);
  }
}

TEST_F(CodeDetails, NoArrayIsRefused) {
  SAFEARRAY* nothing = nullptr;
  for (const Variant& details :
       {Variant::Reference(VT_ARRAY | VT_BSTR, &nothing), Variant(L"0123"), Variant(), Variant(5),
        Variant(static_cast<IDispatch*>(nullptr))}) {
    const Outcome outcome = Merge(details);
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH) << "type " << V_VT(&details);
    EXPECT_EQ(outcome.badArgument, 0U);
  }
}

}  // namespace
}  // namespace qortest
