// Every shape in which a client may pass an argument, for every type of parameter.
#include <tuple>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

struct TypeCase {
  const char* name;
  VARTYPE type;
};

using ShapeCase = std::tuple<TypeCase, Shape>;

std::string CaseName(const testing::TestParamInfo<ShapeCase>& info) {
  return std::get<0>(info.param).name + NameOf(std::get<1>(info.param));
}

constexpr TypeCase kNumbers[] = {
    {"I1", VT_I1},   {"UI1", VT_UI1}, {"I2", VT_I2},     {"UI2", VT_UI2},         {"I4", VT_I4},
    {"UI4", VT_UI4}, {"INT", VT_INT}, {"UINT", VT_UINT}, {"I8", VT_I8},           {"UI8", VT_UI8},
    {"R4", VT_R4},   {"R8", VT_R8},   {"CY", VT_CY},     {"DECIMAL", VT_DECIMAL}, {"BSTR", VT_BSTR},
};

const auto kShapes = testing::Values(Shape::kValue, Shape::kReference, Shape::kVariantReference,
                                     Shape::kReferenceInVariant);

class NumberShapes : public ComTest, public testing::WithParamInterface<ShapeCase> {
 protected:
  [[nodiscard]] static Variant Content(int number) {
    return Variant::As(std::get<0>(GetParam()).type, number);
  }
  [[nodiscard]] static Shape GivenShape() { return std::get<1>(GetParam()); }
};

TEST_P(NumberShapes, ReachesALongParameter) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  const ComPtr<FakeObject> connection = FakeObject::Make();
  const Shaped unit(GivenShape(), Content(42));
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(connection), unit.argument(), Variant(manager.object));
  ASSERT_EQ(outcome.code, S_OK);
  ASSERT_EQ(manager.state->statements.size(), 1U);
  EXPECT_NE(manager.state->statements[0].find(L"UnitKey=42 "), std::wstring::npos);
}

TEST_P(NumberShapes, SetsALongProperty) {
  const Client report(kDirCodeReport);
  const Shaped unit(GivenShape(), Content(42));
  ASSERT_EQ(report.Put(L"mlngUnitKey", unit.argument()).code, S_OK);
  const Outcome read = report.Get(L"mlngUnitKey");
  ASSERT_EQ(read.code, S_OK);
  ASSERT_EQ(V_VT(&read.result), VT_I4);
  EXPECT_EQ(V_I4(&read.result), 42);
}

TEST_P(NumberShapes, SetsATextProperty) {
  const Client report(kDirCodeReport);
  const Shaped rids(GivenShape(), Content(42));
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", rids.argument()).code, S_OK);
  EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), L"42");
}

TEST_P(NumberShapes, ReachesABooleanParameter) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> connection = FakeObject::Make();
  for (const int number : {1, 0}) {
    const Shaped flag(GivenShape(), Content(number));
    manager.state->statements.clear();
    ASSERT_EQ(report.Call(L"pbGetEntryLength", Variant(connection), flag.argument()).code, S_OK);
    ASSERT_EQ(manager.state->statements.size(), 1U);
    EXPECT_EQ(manager.state->statements[0],
              number == 1 ? L"SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey = 0"
                          : L"SELECT MaxDigitsEntryCode FROM UnitSettings WHERE UnitKey = 0");
  }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, NumberShapes,
                         testing::Combine(testing::ValuesIn(kNumbers), kShapes), CaseName);

class AnyShape : public ComTest, public testing::WithParamInterface<Shape> {};

TEST_P(AnyShape, BooleansReachNumbersAndTexts) {
  const Client report(kDirCodeReport);
  const Shaped flag(GetParam(), Variant(true));
  ASSERT_EQ(report.Put(L"mlngUnitKey", flag.argument()).code, S_OK);
  EXPECT_EQ(NumberIn(report.Get(L"mlngUnitKey").result), -1);
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", flag.argument()).code, S_OK);
  EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), L"True");
}

TEST_P(AnyShape, DatesReachNumbersAsDays) {
  const Client report(kDirCodeReport);
  const Shaped day(GetParam(), Variant::Day(40000));
  ASSERT_EQ(report.Put(L"mlngUnitKey", day.argument()).code, S_OK);
  EXPECT_EQ(NumberIn(report.Get(L"mlngUnitKey").result), 40000);
}

TEST_P(AnyShape, DatesReachTextsInTheUsersForm) {
  const Client report(kDirCodeReport);
  for (const double serial : {40000.0, 45667.5625, 0.25}) {
    BSTR expected = nullptr;
    ASSERT_EQ(VarBstrFromDate(serial, LOCALE_USER_DEFAULT, 0, &expected), S_OK);
    const Shaped day(GetParam(), Variant::Day(serial));
    ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", day.argument()).code, S_OK);
    EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), expected);
    SysFreeString(expected);
  }
}

TEST_P(AnyShape, SinglesReachTextsWithTheirOwnDigits) {
  const Client report(kDirCodeReport);
  const std::pair<float, const wchar_t*> singles[] = {
      {0.1F, L"0.1"}, {-2.5F, L"-2.5"}, {16777216.0F, L"16777216"}, {1e-7F, L"1E-07"}};
  for (const auto& [number, text] : singles) {
    Variant content;
    V_VT(&content) = VT_R4;
    V_R4(&content) = number;
    const Shaped single(GetParam(), content);
    ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", single.argument()).code, S_OK);
    EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), text);
  }
}

TEST_P(AnyShape, TextsReachATextParameter) {
  const Client controller(kCredential);
  const Shaped text(GetParam(), Variant(L"SGVsbG8="));
  const Outcome outcome = controller.Call(L"pbBase64Dec", text.argument());
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(TextIn(outcome.result), L"Hello");
}

TEST_P(AnyShape, ObjectsReachTheHostUnchanged) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  const ComPtr<FakeObject> connection = FakeObject::Make();
  const IDispatch* arrived = nullptr;
  manager.object->On(L"ExecuteSelect", [&arrived](const FakeCall& call) {
    arrived = ObjectIn(call.Argument(0));
    return call.Return(MakeEmptyTable());
  });
  const Shaped first(GetParam(), Variant(connection));
  const Shaped third(GetParam(), Variant(manager.object));
  const Outcome outcome =
      report.Call(L"pbValidate", first.argument(), Variant(7), third.argument());
  ASSERT_EQ(outcome.code, S_OK);
  ASSERT_EQ(V_VT(&outcome.result), VT_BOOL);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(arrived, connection.get());
}

TEST_P(AnyShape, AnUnknownThatIsADispatchCountsAsAnObject) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  const ComPtr<FakeObject> connection = FakeObject::Make();
  const Shaped first(GetParam(), Variant::Unknown(connection.get()));
  const Shaped third(GetParam(), Variant::Unknown(manager.object.get()));
  const Outcome outcome =
      report.Call(L"pbValidate", first.argument(), Variant(7), third.argument());
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
}

TEST_P(AnyShape, AnUnknownThatIsNoDispatchIsRefusedAtItsPlace) {
  const Client report(kDirCodeReport);
  const ComPtr<IClassFactory> factory = FactoryOf(kCredential);
  const Shaped third(GetParam(), Variant::Unknown(factory.get()));
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7), third.argument());
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 0U);
}

TEST_P(AnyShape, AnObjectStandsForItsDefaultValueWhereANumberOrTextIsWanted) {
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> box = FakeObject::Make();
  box->Property(L"", L"17");
  const Shaped given(GetParam(), Variant(box));
  ASSERT_EQ(report.Put(L"mlngUnitKey", given.argument()).code, S_OK);
  EXPECT_EQ(NumberIn(report.Get(L"mlngUnitKey").result), 17);
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", given.argument()).code, S_OK);
  EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), L"17");
}

TEST_P(AnyShape, AReferenceToNothingPassesAsAnObjectAndIsMetWhereItIsUsed) {
  const Client report(kDirCodeReport);
  const Shaped third(GetParam(), Variant(static_cast<IDispatch*>(nullptr)));
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7), third.argument());
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
}

TEST_P(AnyShape, AMissingTextIsTheEmptyText) {
  const Client report(kDirCodeReport);
  Variant nullText(L"");
  SysFreeString(V_BSTR(&nullText));
  V_BSTR(&nullText) = nullptr;
  const Shaped given(GetParam(), nullText);
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", Variant(L"before")).code, S_OK);
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", given.argument()).code, S_OK);
  EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), L"");
}

TEST_P(AnyShape, TextsKeepZerosAndSurrogatePairs) {
  const Client report(kDirCodeReport);
  const std::wstring text(L"a\0b\xD83D\xDE00\x00E4", 6);
  const Shaped given(GetParam(), Variant(text));
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", given.argument()).code, S_OK);
  EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), text);
}

TEST_P(AnyShape, LoneSurrogatesBecomeReplacementCharacters) {
  const Client report(kDirCodeReport);
  const std::pair<const wchar_t*, const wchar_t*> texts[] = {
      {L"\xD83D", L"\xFFFD"},
      {L"\xDE00", L"\xFFFD"},
      {L"a\xD83Dz", L"a\xFFFDz"},
      {L"\xDE00\xD83D", L"\xFFFD\xFFFD"},
  };
  for (const auto& [sent, received] : texts) {
    const Shaped given(GetParam(), Variant(sent));
    ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", given.argument()).code, S_OK);
    EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), received);
  }
}

INSTANTIATE_TEST_SUITE_P(AllShapes, AnyShape, kShapes,
                         [](const auto& shape) { return NameOf(shape.param); });

/// What stands for no value, and what no parameter takes.
class OddArguments : public ComTest {};

TEST_F(OddArguments, EmptyIsZeroAndTheEmptyText) {
  const Client report(kDirCodeReport);
  ASSERT_EQ(report.Put(L"mlngUnitKey", Variant(5)).code, S_OK);
  ASSERT_EQ(report.Put(L"mlngUnitKey", Variant()).code, S_OK);
  EXPECT_EQ(NumberIn(report.Get(L"mlngUnitKey").result), 0);
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", Variant(L"5")).code, S_OK);
  ASSERT_EQ(report.Put(L"gstrRIDsForDeletion", Variant()).code, S_OK);
  EXPECT_EQ(TextIn(report.Get(L"gstrRIDsForDeletion").result), L"");
}

TEST_F(OddArguments, NothingAndEmptyReleaseAScreen) {
  const Client report(kDirCodeReport);
  // Null is what some languages have for it.
  for (const Variant& nothing :
       {Variant(), Variant(static_cast<IDispatch*>(nullptr)), Variant::Null()}) {
    const ComPtr<FakeObject> screen = FakeObject::Make();
    ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(screen)).code, S_OK);
    EXPECT_EQ(ObjectIn(report.Get(L"gfrmTxFilter").result), screen.get());
    ASSERT_EQ(report.Put(L"gfrmTxFilter", nothing).code, S_OK);
    const Outcome read = report.Get(L"gfrmTxFilter");
    ASSERT_EQ(V_VT(&read.result), VT_DISPATCH);
    EXPECT_EQ(V_DISPATCH(&read.result), nullptr);
  }
}

TEST_F(OddArguments, AnOmittedOptionalArgumentTakesItsDefault) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  Variant omitted = Variant::Omitted();
  const Variant omittedByReference = Variant::Reference(omitted);
  SCODE code = DISP_E_PARAMNOTFOUND;
  const Variant omittedByItsCode = Variant::Reference(VT_ERROR, &code);
  ASSERT_EQ(report.Call(L"pbGetEntryLength", connection).code, S_OK);
  ASSERT_EQ(report.Call(L"pbGetEntryLength", connection, omitted).code, S_OK);
  ASSERT_EQ(report.Call(L"pbGetEntryLength", connection, omittedByReference).code, S_OK);
  ASSERT_EQ(report.Call(L"pbGetEntryLength", connection, omittedByItsCode).code, S_OK);
  ASSERT_EQ(manager.state->statements.size(), 4U);
  for (const std::wstring& statement : manager.state->statements) {
    EXPECT_EQ(statement, L"SELECT MaxDigitsEntryCode FROM UnitSettings WHERE UnitKey = 0");
  }
}

struct Mismatch {
  const char* name;
  Variant (*make)();
};

Variant ArrayOfLongs() {
  Variant array;
  V_ARRAY(&array) = SafeArrayCreateVector(VT_I4, 0, 3);
  V_VT(&array) = VT_ARRAY | VT_I4;
  return array;
}

class Mismatches : public ComTest, public testing::WithParamInterface<Mismatch> {};

TEST_P(Mismatches, AreRefusedAtTheirPlaceInALongParameter) {
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> database = FakeObject::Make();
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(FakeObject::Make()), GetParam().make(), Variant(database));
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 1U);
  EXPECT_EQ(V_VT(&outcome.result), VT_EMPTY);
  EXPECT_TRUE(database->calls().empty());
}

INSTANTIATE_TEST_SUITE_P(
    All, Mismatches,
    testing::Values(
        Mismatch{"Text", [] { return Variant(L"twelve"); }},
        Mismatch{"EmptyText", [] { return Variant(L""); }},
        Mismatch{"Null", [] { return Variant::Null(); }},
        Mismatch{"Nothing", [] { return Variant(static_cast<IDispatch*>(nullptr)); }},
        Mismatch{"ObjectWithoutDefaultValue", [] { return Variant(FakeObject::Make()); }},
        Mismatch{"ObjectWhoseDefaultValueIsText",
                 [] {
                   const ComPtr<FakeObject> box = FakeObject::Make();
                   box->Property(L"", L"twelve");
                   return Variant(box);
                 }},
        Mismatch{"ObjectWhoseDefaultValueIsAnObject",
                 [] {
                   const ComPtr<FakeObject> box = FakeObject::Make();
                   box->Property(L"", Variant(FakeObject::Make()));
                   return Variant(box);
                 }},
        Mismatch{"ArrayOfNumbers", ArrayOfLongs},
        Mismatch{"ErrorThatDoesNotMeanOmitted",
                 [] {
                   Variant error = Variant::Omitted();
                   V_ERROR(&error) = E_FAIL;
                   return error;
                 }},
        Mismatch{"UnknownType",
                 [] {
                   Variant odd;
                   V_VT(&odd) = VT_FILETIME;
                   return odd;
                 }},
        Mismatch{"ReferenceToNowhere", [] { return Variant::Reference(VT_I4, nullptr); }},
        Mismatch{"TextReferenceToNowhere", [] { return Variant::Reference(VT_BSTR, nullptr); }}),
    [](const auto& one) { return std::string(one.param.name); });

TEST_F(OddArguments, AnObjectParameterTakesObjectsAlone) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  for (const Variant& odd : {Variant(7), Variant(L"table"), ArrayOfLongs()}) {
    const Outcome outcome = report.Call(L"pbMergeXArrayDBObjects", connection, odd);
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH) << "type " << V_VT(&odd);
    EXPECT_EQ(outcome.badArgument, 0U);
  }
}

TEST_F(OddArguments, EmptyAndNullStandForNoObject) {
  const Client report(kDirCodeReport);
  for (const Variant& nothing :
       {Variant(), Variant::Null(), Variant(static_cast<IDispatch*>(nullptr))}) {
    for (const Shape shape : {Shape::kValue, Shape::kVariantReference}) {
      const FakeManager manager;
      const Shaped connection(shape, nothing);
      const Outcome outcome =
          report.Call(L"pbValidate", connection.argument(), Variant(7), Variant(manager.object));
      ASSERT_EQ(outcome.code, S_OK) << "type " << V_VT(&nothing);
      EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
      EXPECT_EQ(manager.state->statements.size(), 1U);
      EXPECT_EQ(V_VT(&connection.content()), V_VT(&nothing)) << "the client's variable stays";
    }
  }
}

TEST_F(OddArguments, NumbersBeyondALongOverflowAtTheirPlace) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  for (const Variant& number :
       {Variant(2147483648.0), Variant(-2147483649.0), Variant(L"2147483648"), Variant(L"1E300"),
        Variant::As(VT_I8, Variant(2147483648.0)), Variant::As(VT_UI4, Variant(4294967295.0)),
        Variant::As(VT_DECIMAL, Variant(L"99999999999999"))}) {
    const Outcome outcome = report.Call(L"pbValidate", connection, number, connection);
    EXPECT_EQ(outcome.code, DISP_E_OVERFLOW) << "type " << V_VT(&number);
    EXPECT_EQ(outcome.badArgument, 1U);
  }
}

TEST_F(OddArguments, FractionsRoundHalfToEven) {
  const Client report(kDirCodeReport);
  const std::pair<double, int> numbers[] = {
      {2.5, 2}, {3.5, 4}, {-2.5, -2}, {2147483647.4, 2147483647}};
  for (const auto& [sent, received] : numbers) {
    ASSERT_EQ(report.Put(L"mlngUnitKey", Variant(sent)).code, S_OK);
    EXPECT_EQ(NumberIn(report.Get(L"mlngUnitKey").result), received);
  }
}

TEST_F(OddArguments, ArraysOfObjectsAreRefusedAndNotKept) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  {
    Variant array;
    V_ARRAY(&array) = SafeArrayCreateVector(VT_DISPATCH, 0, 1);
    V_VT(&array) = VT_ARRAY | VT_DISPATCH;
    LONG index = 0;
    const ComPtr<FakeObject> element = FakeObject::Make();
    ASSERT_EQ(SafeArrayPutElement(V_ARRAY(&array), &index, static_cast<IDispatch*>(element.get())),
              S_OK);
    Variant inner = ReferenceTo(array);
    for (const Variant& argument :
         {array, ReferenceTo(array), Variant::Reference(array), Variant::Reference(inner)}) {
      const Outcome outcome = report.Call(L"pbValidate", connection, argument, connection);
      EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
      EXPECT_EQ(outcome.badArgument, 1U);
    }
  }
  EXPECT_EQ(FakeObject::Alive(), 1) << "the connection alone";
}

TEST_F(OddArguments, AVariantThatRefersToItselfIsRefused) {
  const Client report(kDirCodeReport);
  VARIANT loop;
  V_VT(&loop) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&loop) = &loop;
  const Outcome put = report.Put(L"mlngUnitKey", loop);
  EXPECT_EQ(put.code, DISP_E_TYPEMISMATCH);
  const Variant connection(FakeObject::Make());
  const Outcome call = report.Call(L"pbValidate", connection, loop, connection);
  EXPECT_EQ(call.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(call.badArgument, 1U);
}

}  // namespace
}  // namespace qortest
