// Both report controllers as late-bound clients see them: their members by name and id, their
// arguments and what is handed back.
#include "tests/support/late_bound.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "host/screens/list_model.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Get;
using qorcred::InvokeKind;
using qorcred::Missing;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::ResultTable;
using qorcred::Value;

class LateBoundDirCodeReport : public DirCodeReportTest {};
class LateBoundCredentialReport : public CredentialReportTest {};

TEST_F(LateBoundDirCodeReport, OffersItsMembersUnderFixedIds) {
  EXPECT_TRUE(SameLines(DescribedMembers(Controller()), R"~(
    1 gfrmTxFilter As Object
    2 mlngUnitKey As Long
    3 gstrRIDsForDeletion As String
    4 pvDirCodeReportResult(ByVal lngUnitKey As Long, ByRef objCon As Object, ByRef objGrid As Object, ByVal strSQL As String, ByRef objColGrid As Object, Optional ByRef colValueItem As Object = Nothing)
    5 pbGetUnitName(ByRef objConn As Object, ByVal lngUnitKey As Long) As String
    6 pbPopulateArrOperators() As Boolean
    7 pbGenSql(ByRef objConn As Object, ByVal intUnitKey As Long) As String
    8 pbGetEntryLength(ByRef objCon As Object, Optional ByRef blnDirLength As Boolean = False) As Long
    9 pbDelete(ByRef objConn As Object, ByVal lngUnitKey As Long, ByRef lngRowsDeleted As Long) As Boolean
    10 pbMergeXArrayDBObjects(ByRef arrXDBObj1 As Object, ByRef arrXDBObj2 As Object) As Boolean
    11 pbComboData(ByRef objConn As Object) As String
    12 pbValidate(ByRef objConn As Object, ByVal lngUnitKey As Long, ByRef objDB As Object) As Boolean
  )~"));
}

TEST_F(LateBoundCredentialReport, OffersItsMembersUnderFixedIds) {
  EXPECT_TRUE(SameLines(DescribedMembers(Controller()), R"~(
    1 gfrmTxFilter As Object
    2 mlngUnitKey As Long
    3 gstrRIDsForDeletion As String
    4 pbPopulateArrOperators() As Boolean
    5 pbGenSql(ByRef objConn As Object, ByVal lngUnitKey As Long, ByRef arrXDBTx As Object, ByRef strSQL As String) As Boolean
    6 pbDelete(ByRef objConn As Object, ByVal lngUnitKey As Long, ByRef lngRowsDeleted As Long) As Boolean
    7 pbMergeXArrayDBObjects(ByRef arrXDBObj1 As Object, ByRef arrXDBObj2 As Object) As Boolean
    8 pbValidate(ByRef objConn As Object, ByVal lngUnitKey As Long, ByRef objDB As Object) As Boolean
  )~"));
}

template <typename Report>
class LateBoundReport : public ReportTest<Report> {
 protected:
  template <typename Action>
  static ErrorNumber NumberOf(Action action) {
    return static_cast<ErrorNumber>(ErrorOf(action));
  }
};
TYPED_TEST_SUITE(LateBoundReport, BothReports, ReportNames);

TYPED_TEST(LateBoundReport, TakesAndGivesItsScreen) {
  auto& report = this->Controller();
  Put(report, "gfrmTxFilter", ObjectRef());
  EXPECT_EQ(Get(report, "gfrmTxFilter"), Value(ObjectRef()));
  Put(report, "GFRMTXFILTER", this->Host().screen());
  EXPECT_EQ(Get(report, "gfrmtxfilter"), Value(this->Host().screen()));
  EXPECT_EQ(this->NumberOf([&] { Put(report, "gfrmTxFilter", 5); }), ErrorNumber::kObjectRequired);
  EXPECT_EQ(Get(report, "gfrmTxFilter"), Value(this->Host().screen()));
}

TYPED_TEST(LateBoundReport, TakesAndGivesItsUnit) {
  auto& report = this->Controller();
  EXPECT_EQ(Get(report, "mlngUnitKey"), Value(kUnit));
  Put(report, "MLNGUNITKEY", "12");
  EXPECT_EQ(Get(report, "mlngUnitKey"), Value(std::int32_t{12}));
  Put(report, "mlngUnitKey", 2.5);
  EXPECT_EQ(Get(report, "mlngUnitKey"), Value(std::int32_t{2}));
  EXPECT_EQ(report.mlngUnitKey(), 2);
  EXPECT_EQ(this->NumberOf([&] { Put(report, "mlngUnitKey", "north"); }),
            ErrorNumber::kTypeMismatch);
  EXPECT_EQ(this->NumberOf([&] { Put(report, "mlngUnitKey", 3e9); }), ErrorNumber::kOverflow);
  EXPECT_EQ(this->NumberOf([&] { Put(report, "mlngUnitKey", Null{}); }),
            ErrorNumber::kInvalidUseOfNull);
  EXPECT_EQ(Get(report, "mlngUnitKey"), Value(std::int32_t{2}));
}

TYPED_TEST(LateBoundReport, TakesAndGivesTheChosenRows) {
  auto& report = this->Controller();
  EXPECT_EQ(Get(report, "gstrRIDsForDeletion"), Value(""));
  Put(report, "gstrridsfordeletion", " 17, 18,");
  EXPECT_EQ(Get(report, "gstrRIDsForDeletion"), Value(" 17, 18,"));
  Put(report, "gstrRIDsForDeletion", 17);
  EXPECT_EQ(Get(report, "gstrRIDsForDeletion"), Value("17"));
  EXPECT_EQ(report.gstrRIDsForDeletion(), "17");
  EXPECT_EQ(this->NumberOf([&] { Put(report, "gstrRIDsForDeletion", Null{}); }),
            ErrorNumber::kInvalidUseOfNull);
  EXPECT_EQ(Get(report, "gstrRIDsForDeletion"), Value("17"));
}

TYPED_TEST(LateBoundReport, FillsTheOperatorTables) {
  EXPECT_EQ(Call(this->Controller(), "PBPOPULATEARROPERATORS"), Value(true));
  EXPECT_EQ(this->NumberOf([&] { Call(this->Controller(), "pbPopulateArrOperators", 1); }),
            ErrorNumber::kWrongArgumentCount);
}

TYPED_TEST(LateBoundReport, HandsTheCountOfADeletionBack) {
  this->Database().Number("Delete From CredentialBank", 3);
  for (const Value& before : {Value(std::int32_t{0}), Value("0"), Value()}) {
    std::array<Value, 3> arguments{Value(this->Connection()), Value(kUnit), before};
    EXPECT_EQ(this->Controller().Invoke("pbDelete", InvokeKind::kCall, arguments), Value(true));
    EXPECT_EQ(qorcred::ToLong(arguments[2]), 3);
    EXPECT_EQ(arguments[0], Value(this->Connection()));
    EXPECT_EQ(arguments[1], Value(kUnit));
  }
}

TYPED_TEST(LateBoundReport, LeavesTheCountOfARefusedDeletion) {
  this->Database().Select("from Tenants", {{55}});
  std::array<Value, 3> arguments{Value(this->Connection()), Value(kUnit), Value(std::int32_t{42})};
  EXPECT_EQ(this->Controller().Invoke("pbDelete", InvokeKind::kCall, arguments), Value(false));
  EXPECT_EQ(arguments[2], Value(std::int32_t{42}));
}

TYPED_TEST(LateBoundReport, ChecksWithTheManagerItIsGiven) {
  const ObjectRef manager = this->Host().host().CreateComponent("qorDBI.clsDBManager");
  EXPECT_EQ(Call(this->Controller(), "pbValidate", this->Connection(), kUnit, manager),
            Value(true));
  this->Database().Select("from Tenants", {{55}});
  EXPECT_EQ(Call(this->Controller(), "pbValidate", this->Connection(), kUnit, manager),
            Value(false));
}

TYPED_TEST(LateBoundReport, MergesTheTablesItIsGiven) {
  const auto target = std::make_shared<ResultTable>(1, 1);
  const auto source = std::make_shared<ResultTable>(2, 2);
  source->At(0, 0) = "x";
  std::array<Value, 2> arguments{Value(ObjectRef(target)), Value(ObjectRef(source))};
  EXPECT_EQ(this->Controller().Invoke("pbMergeXArrayDBObjects", InvokeKind::kCall, arguments),
            Value(true));
  EXPECT_EQ(arguments[0], Value(ObjectRef(target)));
  EXPECT_EQ(arguments[1], Value(ObjectRef(source)));
  EXPECT_EQ(target->UpperBound(1), 1);
  EXPECT_EQ(target->At(1, 0), Value("x"));
}

TYPED_TEST(LateBoundReport, RefusesArgumentsBeforeItDoesAnything) {
  const auto error = [this](std::string_view member, auto&&... arguments) {
    return this->NumberOf([&] { Call(this->Controller(), member, arguments...); });
  };
  const ObjectRef& connection = this->Connection();
  EXPECT_EQ(error("pbDelete", connection, "three", 0), ErrorNumber::kTypeMismatch);
  EXPECT_EQ(error("pbDelete", connection, 3e9, 0), ErrorNumber::kOverflow);
  EXPECT_EQ(error("pbDelete", connection, Null{}, 0), ErrorNumber::kInvalidUseOfNull);
  EXPECT_EQ(error("pbDelete", connection, kUnit, "many"), ErrorNumber::kTypeMismatch);
  EXPECT_EQ(error("pbDelete", 1, kUnit, 0), ErrorNumber::kObjectRequired);
  EXPECT_EQ(error("pbDelete", connection, kUnit), ErrorNumber::kArgumentNotOptional);
  EXPECT_EQ(error("pbDelete", connection, kUnit, Missing{}), ErrorNumber::kArgumentNotOptional);
  EXPECT_EQ(error("pbDelete", connection, kUnit, 0, 0), ErrorNumber::kWrongArgumentCount);
  EXPECT_EQ(error("pbValidate", connection, kUnit, "manager"), ErrorNumber::kObjectRequired);
  EXPECT_EQ(error("pbMergeXArrayDBObjects", connection), ErrorNumber::kArgumentNotOptional);
  EXPECT_EQ(error("pbMergeXArrayDBObjects", connection, "x"), ErrorNumber::kObjectRequired);
  EXPECT_TRUE(this->TranscriptIs(""));
}

TYPED_TEST(LateBoundReport, KeepsItsPrivateOperationsToItself) {
  for (const std::string_view member :
       {"pvBuildDirCodeFilter", "pvGetFilterFieldName", "Class_Initialize", "pbDelet", ""}) {
    EXPECT_EQ(this->NumberOf([&] { Call(this->Controller(), member, this->Connection(), kUnit); }),
              ErrorNumber::kUnknownMember)
        << member;
  }
  EXPECT_EQ(this->NumberOf([&] { Put(this->Controller(), "pbDelete", 1); }),
            ErrorNumber::kUnknownMember);
}

TEST_F(LateBoundDirCodeReport, GivesTheStatement) {
  EXPECT_EQ(Call(Controller(), "PBGENSQL", Connection(), "7"),
            Value(Controller().pbGenSql(Connection(), 7)));
}

TEST_F(LateBoundDirCodeReport, LetsTheFailuresOfTheStatementThrough) {
  ChooseField(Host(), 0, 40000);
  ChooseOperator(Host(), 0, 0);
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbGenSql", Connection(), kUnit); }),
            static_cast<int>(ErrorNumber::kOverflow));
}

TEST_F(LateBoundDirCodeReport, TakesAnOmittedLengthAsThatOfEntryCodes) {
  Database().Select("MaxDigitsEntryCode", {{6}});
  Database().Select("MaxDigitsDirectoryCode", {{4}});
  const auto length = [this](auto&&... arguments) {
    return Call(Controller(), "pbGetEntryLength", Connection(), arguments...);
  };
  EXPECT_EQ(length(), Value(std::int32_t{6}));
  EXPECT_EQ(length(Missing{}), Value(std::int32_t{6}));
  EXPECT_EQ(length(false), Value(std::int32_t{6}));
  EXPECT_EQ(length(0), Value(std::int32_t{6}));
  EXPECT_EQ(length(true), Value(std::int32_t{4}));
  EXPECT_EQ(length(-1), Value(std::int32_t{4}));
  EXPECT_EQ(length("True"), Value(std::int32_t{4}));

  std::array<Value, 2> arguments{Value(Connection()), Value(true)};
  Controller().Invoke("pbGetEntryLength", InvokeKind::kCall, arguments);
  EXPECT_EQ(arguments[1], Value(true));
}

TEST_F(LateBoundDirCodeReport, GivesTheUnitsNameAndTheFields) {
  Database().Select("FROM Units", {{"North gate"}});
  Database().Select("SELECT RID, FieldNameDisplay", {{51, "Directory Code"}, {52, "Phone No."}});
  EXPECT_EQ(Call(Controller(), "pbGetUnitName", Connection(), kUnit), Value("North gate"));
  EXPECT_EQ(Call(Controller(), "pbComboData", Connection()), Value("Directory Code|Phone No."));
  EXPECT_EQ(RowControl<qorhost::ListModel>(Host(), "cboField", 6).count(), 2);
}

TEST_F(LateBoundDirCodeReport, ShowsTheReportAndHandsTheLayoutBack) {
  Database().Select("SELECT rows", {{12}});
  const auto given = std::make_shared<ResultTable>();
  for (const ObjectRef& before : {ObjectRef(), ObjectRef(given)}) {
    std::array<Value, 6> arguments{Value(kUnit),         Value(Connection()), Value(Host().grid()),
                                   Value("SELECT rows"), Value(before),       Value(Missing{})};

    EXPECT_EQ(Controller().Invoke("pvDirCodeReportResult", InvokeKind::kCall, arguments), Value());

    const ObjectRef* layout = arguments[4].As<ObjectRef>();
    ASSERT_NE(layout, nullptr);
    ASSERT_NE(*layout, nullptr);
    EXPECT_NE(*layout, before);
    EXPECT_EQ(Get(**layout, "Value", 16, 0), Value("Show Directory Code"));
    EXPECT_EQ(arguments[2], Value(Host().grid()));
    EXPECT_EQ(arguments[5], Value(Missing{}));
  }
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
  EXPECT_EQ(Host().transcript().StartingWith("objGrid.NewValueItem").front(),
            "objGrid.NewValueItem");
}

TEST_F(LateBoundDirCodeReport, TakesTheHostsValueItem) {
  const ObjectRef item = Host().Watched("colValueItem", std::make_shared<qorhost::GridValueItem>());
  Call(Controller(), "pvDirCodeReportResult", kUnit, Connection(), Host().grid(), "SELECT rows",
       ObjectRef(), item);
  EXPECT_TRUE(Host().transcript().StartingWith("objGrid.NewValueItem").empty());
  EXPECT_FALSE(Host().transcript().StartingWith("colValueItem.Value").empty());
}

TEST_F(LateBoundDirCodeReport, ShowsTheReportWithoutTheLastArgument) {
  Database().Select("SELECT rows", {{12}});
  Call(Controller(), "pvDirCodeReportResult", kUnit, Connection(), Host().grid(), "SELECT rows",
       ObjectRef());
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
}

TEST_F(LateBoundDirCodeReport, RefusesAGridThatIsNoObject) {
  EXPECT_EQ(ErrorOf([this] {
              Call(Controller(), "pvDirCodeReportResult", kUnit, Connection(), "grid", "SELECT",
                   ObjectRef());
            }),
            static_cast<int>(ErrorNumber::kObjectRequired));
  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(LateBoundCredentialReport, HandsRowsAndStatementBack) {
  Database().Select("Union", {{"Transmitter"}, {"Transmitter"}});
  const ObjectRef given = std::make_shared<ResultTable>(4, 4);
  std::array<Value, 4> arguments{Value(Connection()), Value("7"), Value(given), Value("before")};

  EXPECT_EQ(Controller().Invoke("pbGenSql", InvokeKind::kCall, arguments), Value(true));

  const ObjectRef* rows = arguments[2].As<ObjectRef>();
  ASSERT_NE(rows, nullptr);
  EXPECT_NE(*rows, given);
  EXPECT_EQ(Get(**rows, "UpperBound", 1), Value(std::int32_t{1}));
  const std::string* statement = arguments[3].As<std::string>();
  ASSERT_NE(statement, nullptr);
  EXPECT_TRUE(statement->starts_with("SELECT  iif(CredentialType=0,"));
  EXPECT_EQ(arguments[0], Value(Connection()));
}

TEST_F(LateBoundCredentialReport, HandsBackWhatThereIsAfterAFailure) {
  Host().gate().FailOn("ExecuteSelect");
  const ObjectRef given = std::make_shared<ResultTable>(4, 4);
  std::array<Value, 4> arguments{Value(Connection()), Value(kUnit), Value(given), Value("")};

  EXPECT_EQ(Controller().Invoke("pbGenSql", InvokeKind::kCall, arguments), Value(false));

  EXPECT_EQ(arguments[2], Value(given));
  EXPECT_NE(arguments[3], Value(""));
}

TEST_F(LateBoundCredentialReport, HasNothingOfTheDirectoryCodes) {
  for (const std::string_view member :
       {"pvDirCodeReportResult", "pbGetUnitName", "pbGetEntryLength", "pbComboData"}) {
    EXPECT_EQ(ErrorOf([&] { Call(Controller(), member, Connection(), kUnit); }),
              static_cast<int>(ErrorNumber::kUnknownMember))
        << member;
  }
}

}  // namespace
}  // namespace qortest
