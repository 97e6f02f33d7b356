// What comes back through arguments, and what is left alone.
#include <limits>

#include "tests/com/client/answered_box.h"
#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr int kDeleted = 3;

/// A report controller whose deletion deletes kDeleted rows.
class DeletedRows : public ComTest {
 protected:
  static Outcome Delete(const FakeManager& manager, const VARIANT& rows) {
    const auto offered = Offer(manager);
    const Client report(kCredentialReport);
    EXPECT_EQ(report.Put(L"gstrRIDsForDeletion", Variant(L"1,2")).code, S_OK);
    return report.Call(L"pbDelete", Variant(FakeObject::Make()), Variant(7), rows);
  }
};

struct TypeCase {
  const char* name;
  VARTYPE type;
};

class DeletedRowsAs : public DeletedRows, public testing::WithParamInterface<TypeCase> {
 protected:
  [[nodiscard]] static Variant Zero() { return Variant::As(GetParam().type, Variant(0)); }
};

TEST_P(DeletedRowsAs, ComeBackInTheTypeOfTheReference) {
  FakeManager manager;
  manager.state->deleted = Variant(kDeleted);
  const Shaped rows(Shape::kReference, Zero());
  const Outcome outcome = Delete(manager, rows.argument());
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(V_VT(&rows.content()), GetParam().type);
  EXPECT_EQ(NumberIn(Variant::As(VT_I4, rows.content())), kDeleted);
}

TEST_P(DeletedRowsAs, ComeBackThroughAReferenceInAVariant) {
  FakeManager manager;
  manager.state->deleted = Variant(kDeleted);
  const Shaped rows(Shape::kReferenceInVariant, Zero());
  ASSERT_EQ(Delete(manager, rows.argument()).code, S_OK);
  EXPECT_EQ(V_VT(&rows.content()), GetParam().type);
  EXPECT_EQ(NumberIn(Variant::As(VT_I4, rows.content())), kDeleted);
}

TEST_P(DeletedRowsAs, ComeBackAsALongInAVariant) {
  FakeManager manager;
  manager.state->deleted = Variant(kDeleted);
  const Shaped rows(Shape::kVariantReference, Zero());
  ASSERT_EQ(Delete(manager, rows.argument()).code, S_OK);
  ASSERT_EQ(V_VT(&rows.content()), VT_I4);
  EXPECT_EQ(V_I4(&rows.content()), kDeleted);
}

TEST_P(DeletedRowsAs, AreNotWrittenToAValue) {
  FakeManager manager;
  manager.state->deleted = Variant(kDeleted);
  const Shaped rows(Shape::kValue, Zero());
  const Outcome outcome = Delete(manager, rows.argument());
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(NumberIn(Variant::As(VT_I4, rows.content())), 0);
}

TEST_P(DeletedRowsAs, LeaveAVariantThatIsRightAlreadyInItsType) {
  FakeManager manager;
  manager.state->deleted = Variant(kDeleted);
  const Shaped rows(Shape::kVariantReference, Variant::As(GetParam().type, Variant(kDeleted)));
  ASSERT_EQ(Delete(manager, rows.argument()).code, S_OK);
  EXPECT_EQ(V_VT(&rows.content()), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(AllTypes, DeletedRowsAs,
                         testing::Values(TypeCase{"I1", VT_I1}, TypeCase{"UI1", VT_UI1},
                                         TypeCase{"I2", VT_I2}, TypeCase{"UI2", VT_UI2},
                                         TypeCase{"I4", VT_I4}, TypeCase{"UI4", VT_UI4},
                                         TypeCase{"INT", VT_INT}, TypeCase{"UINT", VT_UINT},
                                         TypeCase{"I8", VT_I8}, TypeCase{"UI8", VT_UI8},
                                         TypeCase{"R4", VT_R4}, TypeCase{"R8", VT_R8},
                                         TypeCase{"CY", VT_CY}, TypeCase{"DECIMAL", VT_DECIMAL},
                                         TypeCase{"DATE", VT_DATE}, TypeCase{"BSTR", VT_BSTR}),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_F(DeletedRows, OfAnEmptyVariantBecomeALong) {
  FakeManager manager;
  manager.state->deleted = Variant(kDeleted);
  Variant empty;
  ASSERT_EQ(Delete(manager, Variant::Reference(empty)).code, S_OK);
  ASSERT_EQ(V_VT(&empty), VT_I4);
  EXPECT_EQ(V_I4(&empty), kDeleted);
}

TEST_F(DeletedRows, OfWhichThereAreNoneReachAnEmptyVariable) {
  AnsweredBox box(L"Pello RT", IDOK);
  const FakeManager manager;
  Variant empty;
  const Outcome outcome = Delete(manager, Variant::Reference(empty));
  EXPECT_EQ(box.Seen().text, L"Credentials(s) are not deleted successfully.");
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
  ASSERT_EQ(V_VT(&empty), VT_I4);
  EXPECT_EQ(V_I4(&empty), 0);
}

TEST_F(DeletedRows, ThatDoNotFitAreAnOverflowAtTheirPlaceAndTheResultStands) {
  const std::pair<VARTYPE, int> limits[] = {
      {VT_I1, 128}, {VT_UI1, 256}, {VT_I2, 32768}, {VT_UI2, 65536}};
  for (const auto& [type, number] : limits) {
    FakeManager manager;
    manager.state->deleted = Variant(number);
    const Shaped rows(Shape::kReference, Variant::As(type, Variant(7)));
    const Outcome outcome = Delete(manager, rows.argument());
    EXPECT_EQ(outcome.code, DISP_E_OVERFLOW) << "type " << type;
    EXPECT_EQ(outcome.badArgument, 0U);
    ASSERT_EQ(V_VT(&outcome.result), VT_BOOL);
    EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
    EXPECT_EQ(NumberIn(Variant::As(VT_I4, rows.content())), 7);
  }
}

TEST_F(DeletedRows, AreLeftAloneWhenTheDeletionFails) {
  const FakeManager manager;
  manager.object->On(L"ExecuteQueryDelete", [](const FakeCall&) { return E_FAIL; });
  for (const VARTYPE type : {VT_I2, VT_I4, VT_R8, VT_BSTR}) {
    for (const Shape shape : {Shape::kReference, Shape::kVariantReference}) {
      const Shaped rows(shape, Variant::As(type, Variant(77)));
      const Outcome outcome = Delete(manager, rows.argument());
      ASSERT_EQ(outcome.code, S_OK);
      EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
      EXPECT_EQ(V_VT(&rows.content()), type);
      EXPECT_EQ(NumberIn(Variant::As(VT_I4, rows.content())), 77);
    }
  }
}

TEST_F(DeletedRows, AreLeftAloneWhenAnotherArgumentIsRefused) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kCredentialReport);
  LONG rows = 77;
  const Outcome outcome = report.Call(L"pbDelete", Variant(FakeObject::Make()), Variant(L"unit"),
                                      Variant::Reference(VT_I4, &rows));
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 1U);
  EXPECT_EQ(rows, 77);
  EXPECT_TRUE(manager.state->statements.empty());
}

/// A credential report without filter rows.
class ReportStatement : public ComTest {
 protected:
  [[nodiscard]] static ComPtr<FakeObject> EmptyFilterScreen() {
    const ComPtr<FakeObject> fields = FakeObject::Make();
    fields->Property(L"Count", Variant(0));
    ComPtr<FakeObject> screen = FakeObject::Make();
    screen->Property(L"cboField", Variant(fields));
    return screen;
  }

  static Outcome GenerateSql(const FakeManager& manager, const VARIANT& rows,
                             const VARIANT& statement) {
    const auto offered = Offer(manager);
    const Client report(kCredentialReport);
    EXPECT_EQ(report.Put(L"gfrmTxFilter", Variant(EmptyFilterScreen())).code, S_OK);
    return report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7), rows, statement);
  }
};

TEST_F(ReportStatement, ComesBackInATextReference) {
  const FakeManager manager;
  Bstr statement(L"before");
  const Outcome outcome = GenerateSql(manager, Variant(MakeEmptyTable()),
                                      Variant::Reference(VT_BSTR, statement.place()));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  ASSERT_EQ(manager.state->statements.size(), 1U);
  EXPECT_EQ(statement.text(), manager.state->statements[0]);
  EXPECT_EQ(statement.text().rfind(L"SELECT  iif(CredentialType=0,", 0), 0U);
}

TEST_F(ReportStatement, ComesBackWhereNoTextWas) {
  const FakeManager manager;
  BSTR statement = nullptr;
  const Variant reference = Variant::Reference(VT_BSTR, &statement);
  ASSERT_EQ(GenerateSql(manager, Variant(MakeEmptyTable()), reference).code, S_OK);
  ASSERT_NE(statement, nullptr);
  EXPECT_EQ(std::wstring(statement), manager.state->statements.at(0));
  SysFreeString(statement);
}

TEST_F(ReportStatement, ReplacesWhateverAVariantHeld) {
  for (const Variant& before : {Variant(), Variant(L"before"), Variant(5), Variant(true)}) {
    const FakeManager manager;
    Variant statement = before;
    ASSERT_EQ(GenerateSql(manager, Variant(MakeEmptyTable()), Variant::Reference(statement)).code,
              S_OK);
    EXPECT_EQ(TextIn(statement), manager.state->statements.at(0));
  }
}

TEST_F(ReportStatement, DoesNotFitANumberReference) {
  const FakeManager manager;
  LONG number = 5;
  const Outcome outcome =
      GenerateSql(manager, Variant(MakeEmptyTable()), Variant::Reference(VT_I4, &number));
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 0U);
  EXPECT_EQ(number, 5);
}

TEST_F(ReportStatement, ThatDoesNotFitKeepsNothingElseFromComingBack) {
  const FakeManager manager;
  LONG number = 5;
  IDispatch* rows = MakeEmptyTable().Detach();
  const Outcome outcome = GenerateSql(manager, Variant::Reference(VT_DISPATCH, &rows),
                                      Variant::Reference(VT_I4, &number));
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 0U);
  ASSERT_EQ(V_VT(&outcome.result), VT_BOOL);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(rows, manager.state->answer.get());
  rows->Release();
}

TEST_F(ReportStatement, IsNotWrittenToAValue) {
  const FakeManager manager;
  const Variant statement(L"before");
  ASSERT_EQ(GenerateSql(manager, Variant(MakeEmptyTable()), statement).code, S_OK);
  EXPECT_EQ(TextIn(statement), L"before");
}

TEST_F(ReportStatement, RowsReplaceTheObjectInEveryKindOfReference) {
  const Variant statement(L"");
  {
    const FakeManager manager;
    IDispatch* rows = MakeEmptyTable().Detach();
    ASSERT_EQ(GenerateSql(manager, Variant::Reference(VT_DISPATCH, &rows), statement).code, S_OK);
    EXPECT_EQ(rows, manager.state->answer.get());
    rows->Release();
  }
  {
    const FakeManager manager;
    IUnknown* rows = MakeEmptyTable().Detach();
    ASSERT_EQ(GenerateSql(manager, Variant::Reference(VT_UNKNOWN, &rows), statement).code, S_OK);
    EXPECT_EQ(rows, static_cast<IDispatch*>(manager.state->answer.get()));
    rows->Release();
  }
  {
    const FakeManager manager;
    Variant rows(MakeEmptyTable());
    ASSERT_EQ(GenerateSql(manager, Variant::Reference(rows), statement).code, S_OK);
    EXPECT_EQ(ObjectIn(rows), manager.state->answer.get());
  }
  {
    const FakeManager manager;
    Variant rows(MakeEmptyTable());
    Variant reference = ReferenceTo(rows);
    ASSERT_EQ(GenerateSql(manager, Variant::Reference(reference), statement).code, S_OK);
    EXPECT_EQ(ObjectIn(rows), manager.state->answer.get());
  }
}

TEST_F(ReportStatement, RowsOfAValueStayTheClients) {
  const FakeManager manager;
  const ComPtr<FakeObject> table = MakeEmptyTable();
  const Variant rows(table);
  ASSERT_EQ(GenerateSql(manager, rows, Variant(L"")).code, S_OK);
  EXPECT_EQ(ObjectIn(rows), table.get());
}

TEST_F(ComTest, ObjectsThatAnOperationOnlyReadsStayWhereTheyAre) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  const ComPtr<FakeObject> connection = FakeObject::Make();
  IDispatch* first = connection.get();
  Variant third(manager.object);
  ASSERT_EQ(report
                .Call(L"pbValidate", Variant::Reference(VT_DISPATCH, &first), Variant(7),
                      Variant::Reference(third))
                .code,
            S_OK);
  EXPECT_EQ(first, connection.get());
  EXPECT_EQ(ObjectIn(third), manager.object.get());
}

TEST_F(ComTest, TheTableOfTheLayoutComesBack) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> columns = FakeObject::Make();
  columns->Property(L"Count", Variant(0));
  const ComPtr<FakeObject> grid = FakeObject::Make();
  grid->Property(L"Columns", Variant(columns));
  IDispatch* layout = nullptr;
  ASSERT_EQ(report
                .Call(L"pvDirCodeReportResult", Variant(7), Variant(FakeObject::Make()),
                      Variant(grid), Variant(L"SELECT 1"), Variant::Reference(VT_DISPATCH, &layout))
                .code,
            S_OK);
  ASSERT_NE(layout, nullptr);
  EXPECT_EQ(layout, manager.state->answer.get());
  layout->Release();
}

TEST_F(ComTest, TheTextToDecodeIsLeftAsItIs) {
  const Client controller(kCredential);
  Bstr text(L"SGVsbG8=");
  const BSTR before = *text.place();
  const Outcome outcome =
      controller.Call(L"pbBase64Dec", Variant::Reference(VT_BSTR, text.place()));
  EXPECT_EQ(TextIn(outcome.result), L"Hello");
  EXPECT_EQ(*text.place(), before);
}

}  // namespace
}  // namespace qortest
