// The statement of the credential report: its two queries, what filter rows add to them and which
// of them remain.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "host/screens/list_model.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::ObjectRef;
using qorcred::ResultTable;
using qorcred::Value;

// Fields by their place in cboField.
constexpr std::int32_t kType = 0;
constexpr std::int32_t kNumber = 1;
constexpr std::int32_t kFacilityCode = 2;
constexpr std::int32_t kName = 3;

constexpr std::string_view kNameColumn = "b.LastName & ' ' & b.FirstName & ' ' & b.MiddleInitial";

std::string Assigned(const std::string& u) {
  return std::string("SELECT ") +
         " iif(CredentialType=0,'Corvin 30 Bit card',iif(CredentialType=1,'Standard 26 Bit "
         "card',iif(CredentialType=2,'Transmitter','Corporate 1000 35-Bit Card'))),"
         " PINNO,a.facilitycode,iif(a.CredentialType<>2,Null,a.IDCode),iif(a.CredentialType<>2,"
         "Null,a.sequencenumber),iif(a.CredentialType<>2,Null,a.buttonnumber), "
         " b.LastName & ' '  &  b.FirstName & ' '  &   b.MiddleInitial "
         ",a.CredentialType,a.RID,b.RID "
         " FROM credentialbank a,  tenants b  where (a.RID = b.CredentialID1  or a.RID = "
         "b.CredentialID2) and a.unitkey=" +
         u + " ";
}

std::string Unassigned(const std::string& u) {
  return std::string(" SELECT ") +
         " IIf([CredentialType]=0,'Corvin 30 Bit card',IIf([CredentialType]=1,'Standard 26 Bit "
         "card',IIf([CredentialType]=2,'Transmitter','Corporate 1000 35-Bit Card'))) AS "
         "'Credential Type', "
         " a.PINNo, a.FacilityCode, iif(a.CredentialType<>2,Null,a.IDCode), "
         "iif(a.CredentialType<>2,Null,a.SequenceNumber), "
         "iif(a.CredentialType<>2,Null,a.ButtonNumber),"
         " 'Unassigned' AS 'Assigned To', a.CredentialType, a.RID, -1 AS 'TenantRID' "
         " FROM credentialbank AS a "
         " WHERE a.UnitKey=" +
         u + " and a.RID Not In (SELECT CredentialID1  FROM   tenants where unitkey=" + u +
         " and Resident=0 and CredentialID1 is not null) "
         " and a.RID Not In (SELECT CredentialID2  FROM   tenants where   unitkey=" +
         u + " and Resident=0 and CredentialID2 is not null) ";
}

/// Both queries with the same addition.
std::string Both(std::string_view added = "") {
  return Assigned("7") + std::string(added) + " Union " + Unassigned("7") + std::string(added);
}
std::string AssignedAlone(std::string_view added = "") {
  return Assigned("7") + std::string(added);
}
std::string UnassignedAlone(std::string_view added = "") {
  return Unassigned("7") + std::string(added);
}

class CredentialStatement : public CredentialReportTest {
 protected:
  void SetUp() override {
    Controller().pbPopulateArrOperators();
    Host().StartOver();
  }
  void FillRow(std::int32_t row, std::int32_t field, std::int32_t place, std::string_view word,
               std::string_view from, std::string_view to = "") {
    ChooseFieldAt(Host(), row, field);
    ChooseOperator(Host(), row, place, word);
    EnterValues(Host(), row, from, to);
  }
  void FillName(std::int32_t row, std::int32_t place, std::string_view value) {
    FillRow(row, kName, place, kOperatorWords[place], value);
  }
  void OfferTypes(std::int32_t row, std::int32_t chosen) {
    auto& types = RowControl<qorhost::ListModel>(Host(), "cboType", row);
    types.Clear();
    for (const std::int32_t type : {0, 1, 2, 9}) {
      types.AddItem("type");
      qorcred::Put(types, "ItemData", types.newIndex(), type);
    }
    types.Select(chosen);
  }
  bool Run() { return Controller().pbGenSql(Connection(), kUnit, rows_, statement_); }
  std::string Composed() {
    EXPECT_TRUE(Run());
    return statement_;
  }

  ObjectRef rows_ = std::make_shared<ResultTable>(3, 2);
  std::string statement_ = "before";
};

TEST_F(CredentialStatement, WithoutFilterIsTheUnionOfBothQueries) {
  EXPECT_EQ(Composed(), Both());
}

TEST_F(CredentialStatement, SpellsTheUnitInDecimal) {
  for (const std::int32_t unit : {0, -1, 2147483647}) {
    const std::string u = std::to_string(unit);
    EXPECT_TRUE(Controller().pbGenSql(Connection(), unit, rows_, statement_));
    EXPECT_EQ(statement_, Assigned(u) + " Union " + Unassigned(u));
  }
}

TEST_F(CredentialStatement, ReadsTheRowsAndRunsTheStatementInThisOrder) {
  rows_ = Host().Watched("arrXDBTx", rows_);
  FillRow(0, kNumber, 0, "=", " 5 ");
  FillRow(2, kType, 1, "equal", "");
  OfferTypes(2, 2);
  ChooseFieldAt(Host(), 3, kName);
  const std::string added = " And a.PINNo =5 AND a.CredentialType=2";
  Database().Select("Union", {{"Transmitter", "5"}, {"Transmitter", "5"}});

  EXPECT_EQ(Composed(), Both(added));

  EXPECT_TRUE(TranscriptIs(R"~(
    cboField.Count -> 7
    cboField(0).ListIndex -> 1
    cboFilter(0).ListIndex -> 0
    cboFilter(0).Text -> "="
    txtFrom(0).Text -> " 5 "
    txtTo(0).Text -> ""
    cboField(1).ListIndex -> -1
    cboFilter(1).ListIndex -> -1
    cboField(2).ListIndex -> 0
    cboFilter(2).ListIndex -> 1
    cboFilter(2).Text -> "equal"
    txtFrom(2).Text -> ""
    txtTo(2).Text -> ""
    cboType(2).ListIndex -> 2
    cboType(2).ItemData(2) -> 2
    cboField(3).ListIndex -> 3
    cboFilter(3).ListIndex -> -1
    cboField(4).ListIndex -> -1
    cboFilter(4).ListIndex -> -1
    cboField(5).ListIndex -> -1
    cboFilter(5).ListIndex -> -1
    cboField(6).ListIndex -> -1
    cboFilter(6).ListIndex -> -1
    CreateObject "qorDBI.clsDBManager"
    arrXDBTx.ReDim 0 0 0 0
    ExecuteSelect ")~" + Both(added) +
                           R"~(" -> 2 rows
    Release "qorDBI.clsDBManager"
  )~"));
}

TEST_F(CredentialStatement, NumbersTakeEveryOperator) {
  const std::string_view symbols[] = {"=", "<>", ">", ">=", "<", "<="};
  const struct {
    std::int32_t field;
    std::string column;
  } fields[] = {{kNumber, "a.PINNo"}, {kFacilityCode, "a.FacilityCode"}};
  for (const auto& field : fields) {
    for (std::int32_t place = 0; place < 6; ++place) {
      FillRow(0, field.field, place, "any word", " 12 ", "99");
      EXPECT_EQ(Composed(),
                Both(" And " + field.column + " " + std::string(symbols[place]) + "12"));
      EnterValues(Host(), 0, "  ", "99");
      EXPECT_EQ(Composed(), Both());
    }
  }
}

TEST_F(CredentialStatement, NumbersTakeRanges) {
  const struct {
    std::int32_t place;
    std::string_view word;
    std::string_view condition;
  } operators[] = {
      {6, "between", "Between 5 And 9"},
      {7, "not between", "Not Between 5 And 9"},
      {6, "  is between ", "Between 5 And 9"},
  };
  for (const auto& one : operators) {
    for (const auto& [field, column] :
         {std::pair{kNumber, "a.PINNo"}, std::pair{kFacilityCode, "a.FacilityCode"}}) {
      FillRow(0, field, one.place, one.word, " 5", "9 ");
      EXPECT_EQ(Composed(), Both(std::string(" AND ") + column + " " + std::string(one.condition)));
    }
  }
}

TEST_F(CredentialStatement, AnUnfinishedRangeNarrowsNothing) {
  for (const auto& [from, to] : {std::pair{"", "9"}, std::pair{"5", ""}, std::pair{"", ""},
                                 std::pair{" ", "9"}, std::pair{"5", "  "}}) {
    FillRow(0, kNumber, 6, "between", from, to);
    EXPECT_EQ(Composed(), Both()) << from << '/' << to;
  }
}

// The word decides between one value and two, the place decides about the text.
TEST_F(CredentialStatement, TheWordAndThePlaceMayDisagree) {
  FillRow(0, kNumber, 0, "between", "5", "9");
  EXPECT_EQ(Composed(), Both(" AND a.PINNo ="));
  FillRow(0, kNumber, 6, "equal", "5", "9");
  EXPECT_EQ(Composed(), Both(" And a.PINNo Between ^1 And ^25"));
  FillRow(0, kNumber, 6, "Between", "5", "9");
  EXPECT_EQ(Composed(), Both(" And a.PINNo Between ^1 And ^25"));
}

TEST_F(CredentialStatement, NamesTakeEveryOperator) {
  const std::string_view texts[] = {"= 'Doe'",          " <> 'Doe'",         " Like 'Doe%'",
                                    " Not Like 'Doe%'", " Like '%Doe' ",     " Not Like '%Doe' ",
                                    " Like '%Doe%' ",   " Not Like '%Doe%' "};
  for (std::int32_t place = 0; place < 8; ++place) {
    FillName(0, place, "  Doe ");
    EXPECT_EQ(Composed(),
              AssignedAlone(" And " + std::string(kNameColumn) + " " + std::string(texts[place])));
  }
}

TEST_F(CredentialStatement, AnEmptyNameChoosesTheQueryByTheWord) {
  for (std::int32_t place = 0; place < 8; ++place) {
    FillName(0, place, " ");
    EXPECT_EQ(Composed(), place % 2 == 0 ? UnassignedAlone() : AssignedAlone())
        << kOperatorWords[place];
  }
}

TEST_F(CredentialStatement, TheWordIsTrimmedAndComparedExactly) {
  for (const std::string_view word : kOperatorWords) {
    const bool finds = word.find("not") == std::string_view::npos;
    FillRow(0, kName, 0, "  " + std::string(word) + " ", "");
    EXPECT_EQ(Composed(), finds ? UnassignedAlone() : AssignedAlone()) << word;
  }
  for (const std::string_view word :
       {"Equal", "EQUAL", "equals", "", "between", "begin with", "does  not equal"}) {
    FillRow(0, kName, 0, word, "");
    EXPECT_EQ(Composed(), Both()) << word;
  }
}

TEST_F(CredentialStatement, BothNameFlagsTogetherGiveTheUnion) {
  const std::string doe = " And " + std::string(kNameColumn) + " = 'Doe'";
  const struct {
    const char* name;
    std::vector<std::pair<std::int32_t, std::string_view>> names;
    std::string expected;
  } rows[] = {
      {"Neither", {}, Both()},
      {"EmptyWanted", {{0, ""}}, UnassignedAlone()},
      {"EmptyWantedTwice", {{0, ""}, {6, ""}}, UnassignedAlone()},
      {"EmptyExcluded", {{1, ""}}, AssignedAlone()},
      {"Restricted", {{0, "Doe"}}, AssignedAlone(doe)},
      {"RestrictedAndExcluded", {{0, "Doe"}, {7, ""}}, AssignedAlone(doe)},
      {"WantedAndExcluded", {{0, ""}, {1, ""}}, Both()},
      {"WantedAndRestricted", {{4, ""}, {0, "Doe"}}, Both(doe)},
      {"RestrictedAndWanted", {{0, "Doe"}, {2, ""}}, Both(doe)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    for (std::int32_t at = 0; at < kFilterRows; ++at) ClearRow(Host(), at);
    std::int32_t at = 0;
    for (const auto& [place, value] : row.names) FillName(at++, place, value);
    EXPECT_EQ(Composed(), row.expected);
  }
}

TEST_F(CredentialStatement, TheTypeTakesItsNumberAndNoOperator) {
  const std::int32_t types[] = {0, 1, 2, 9};
  for (std::int32_t chosen = 0; chosen < 4; ++chosen) {
    for (std::int32_t place = 0; place < 8; ++place) {
      FillRow(0, kType, place, kOperatorWords[place], "ignored", "ignored");
      OfferTypes(0, chosen);
      EXPECT_EQ(Composed(), Both(" AND a.CredentialType=" + std::to_string(types[chosen])));
    }
  }
}

TEST_F(CredentialStatement, ATypeThatIsNotChosenEndsTheOperation) {
  FillRow(0, kType, 0, "equal", "");
  OfferTypes(0, -1);
  EXPECT_FALSE(Run());
  EXPECT_EQ(statement_, "before");
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front(),
            std::pair(std::string("pbGenSql"), ErrorNumber::kIndexOutOfRange));
  EXPECT_TRUE(Host().transcript().StartingWith("CreateObject").empty());
}

TEST_F(CredentialStatement, TakesEveryRowOfTheScreen) {
  std::string added;
  for (std::int32_t row = 0; row < kFilterRows; ++row) {
    FillRow(row, kNumber, 2, ">", std::to_string(row));
    added += " And a.PINNo >" + std::to_string(row);
  }
  EXPECT_EQ(Composed(), Both(added));
}

TEST_F(CredentialStatement, SkipsARowThatLacksOneOfItsChoices) {
  ChooseFieldAt(Host(), 0, kNumber);
  EnterValues(Host(), 0, "5");
  ChooseOperator(Host(), 1, 0, "equal");
  EnterValues(Host(), 1, "6");
  EXPECT_EQ(Composed(), Both());
}

TEST_F(CredentialStatement, AFieldBeyondTheTableAddsNothing) {
  auto& fields = RowControl<qorhost::ListModel>(Host(), "cboField", 0);
  for (int at = 0; at < 6; ++at) fields.AddItem("field");
  for (const std::int32_t place : {4, 5}) {
    fields.Select(place);
    ChooseOperator(Host(), 0, 0, "equal");
    EnterValues(Host(), 0, "5");
    EXPECT_EQ(Composed(), Both());
  }
}

TEST_F(CredentialStatement, AnOperatorBeyondTheTableEndsTheOperation) {
  for (const std::int32_t field : {kNumber, kFacilityCode, kName}) {
    FillRow(0, field, 8, "equal", "5");
    EXPECT_FALSE(Run());
    EXPECT_EQ(statement_, "before");
    FillRow(0, field, 8, "between", "", "");
    EXPECT_TRUE(Run());
    statement_ = "before";
  }
}

// Values go in as they are: quotes are not doubled, nothing in them is replaced in their own row.
TEST_F(CredentialStatement, TakesValuesAsTheyAre) {
  for (const std::string_view value : {"O'Brien", "'; DELETE FROM Tenants; --", "^", "^1", "^^2",
                                       "%_", "{C}", "|", "\xC3\xA9", "\xFF", "\t"}) {
    const std::string text(value);
    FillRow(0, kNumber, 0, "=", value);
    EXPECT_EQ(Composed(), Both(" And a.PINNo =" + text));
    FillName(0, 6, value);
    EXPECT_EQ(Composed(),
              AssignedAlone(" And " + std::string(kNameColumn) + "  Like '%" + text + "%' "));
  }
}

// The values of a range are put into the whole text so far, the values of earlier rows included.
TEST_F(CredentialStatement, ARangeReachesTheRowsBeforeIt) {
  FillName(0, 0, "^1 and ^2");
  FillRow(1, kNumber, 6, "between", "5", "9");
  FillRow(2, kFacilityCode, 0, "=", "^1");
  EXPECT_EQ(Composed(), AssignedAlone(" And " + std::string(kNameColumn) +
                                      " = '5 and 9' AND a.PINNo Between 5 And 9 And "
                                      "a.FacilityCode =^1"));
}

// "^1" first, everywhere; "^2" in what comes of it.
TEST_F(CredentialStatement, TheSecondValueReachesTheFirst) {
  FillRow(0, kNumber, 6, "between", "^2", "9");
  EXPECT_EQ(Composed(), Both(" AND a.PINNo Between 9 And 9"));
  FillRow(0, kNumber, 6, "between", "5", "^1^2");
  EXPECT_EQ(Composed(), Both(" AND a.PINNo Between 5 And ^1^2"));
  FillRow(0, kNumber, 6, "between", "^1", "9");
  EXPECT_EQ(Composed(), Both(" AND a.PINNo Between ^1 And 9"));
}

TEST_F(CredentialStatement, TwoRangesKeepTheirOwnValues) {
  FillRow(0, kNumber, 6, "between", "5", "9");
  FillRow(1, kFacilityCode, 7, "not between", "1", "2");
  EXPECT_EQ(Composed(),
            Both(" AND a.PINNo Between 5 And 9 AND a.FacilityCode Not Between 1 And 2"));
}

// Each range puts its value into those of the ranges before it: a thousand times a thousand
// times...
TEST_F(CredentialStatement, ValuesThatMultiplyBeyondAnyMemoryEndTheOperation) {
  std::string value;
  for (int count = 0; count < 1000; ++count) value += "^1";
  for (std::int32_t row = 0; row < 2; ++row) FillRow(row, kNumber, 6, "between", value, "9");
  EXPECT_GT(Composed().size(), 2'000'000U);
  statement_ = "before";
  Host().StartOver();

  for (std::int32_t row = 2; row < 5; ++row) FillRow(row, kNumber, 6, "between", value, "9");
  EXPECT_FALSE(Run());
  EXPECT_EQ(statement_, "before");
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front(),
            std::pair(std::string("pbGenSql"), ErrorNumber::kOutOfMemory));
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteSelect").empty());
}

TEST_F(CredentialStatement, WithoutOperatorTablesARowEndsTheOperation) {
  for (const std::int32_t field : {kType, kNumber, kFacilityCode, kName}) {
    SCOPED_TRACE(field);
    CredentialReportDesk fresh;
    ChooseFieldAt(fresh.host(), 0, field);
    ChooseOperator(fresh.host(), 0, 6, "between");
    EnterValues(fresh.host(), 0, "5", "9");
    auto& types = RowControl<qorhost::ListModel>(fresh.host(), "cboType", 0);
    types.AddItem("type");
    types.Select(0);

    EXPECT_FALSE(fresh.controller().pbGenSql(fresh.host().connection(), kUnit, rows_, statement_));

    EXPECT_EQ(statement_, "before");
    ASSERT_EQ(fresh.host().services().trapped().size(), 1U);
    EXPECT_EQ(fresh.host().services().trapped().front(),
              std::pair(std::string("pbGenSql"), ErrorNumber::kIndexOutOfRange));
    EXPECT_TRUE(fresh.host().transcript().StartingWith("MsgBox").empty());
  }
}

TEST_F(CredentialStatement, WithoutOperatorTablesAnUnfilteredReportRuns) {
  CredentialReportDesk fresh;
  EXPECT_TRUE(fresh.controller().pbGenSql(fresh.host().connection(), kUnit, rows_, statement_));
  EXPECT_EQ(statement_, Both());
}

TEST_F(CredentialStatement, TheRowsComeBackAsTheManagerGaveThem) {
  const auto given = std::dynamic_pointer_cast<ResultTable>(rows_);
  const auto answer = std::make_shared<ResultTable>(2, 10);
  Database().On("Union", {.table = answer});

  EXPECT_TRUE(Run());

  EXPECT_EQ(rows_, ObjectRef(answer));
  EXPECT_EQ(answer->UpperBound(1), 1);
  EXPECT_EQ(answer->UpperBound(2), 9);
  EXPECT_EQ(given->UpperBound(1), 0);
  EXPECT_EQ(given->UpperBound(2), 0);
}

TEST_F(CredentialStatement, AnEmptyResultIsTrue) {
  EXPECT_TRUE(Run());
  EXPECT_EQ(qorcred::Get(*rows_, "Value", 0, 0), Value(""));
}

TEST_F(CredentialStatement, IsFalseWhenTheManagerReportsAnError) {
  Database().Error("Union", "syntax error");
  EXPECT_FALSE(Run());
  EXPECT_EQ(statement_, Both());
  EXPECT_EQ(qorcred::Get(*rows_, "Value", 0, 0), Value(""));
  EXPECT_TRUE(Host().services().trapped().empty());
  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());

  Database().Replace("Union", {.rows = {{"Transmitter"}}});
  EXPECT_TRUE(Run()) << "an error of an earlier statement must not count";
}

TEST_F(CredentialStatement, HandsTheStatementBackWhenTheSelectRaises) {
  Host().gate().FailOn("ExecuteSelect");
  EXPECT_FALSE(Run());
  EXPECT_EQ(statement_, Both());
  EXPECT_EQ(qorcred::Get(*rows_, "UpperBound", 1), Value(std::int32_t{0}));
  EXPECT_EQ(Host().services().LiveComponents(), 0);
}

TEST_F(CredentialStatement, AnAnswerThatIsNoTableEndsTheOperation) {
  Database().On("Union", {.nothing = true});
  EXPECT_FALSE(Run());
  EXPECT_EQ(statement_, Both());
  ASSERT_EQ(Host().services().trapped().size(), 1U);
}

TEST_F(CredentialStatement, NeedsATableForTheRows) {
  rows_ = nullptr;
  EXPECT_FALSE(Run());
  EXPECT_EQ(rows_, nullptr);
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, ErrorNumber::kObjectNotSet);
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteSelect").empty());
}

TEST_F(CredentialStatement, WithoutAScreenIsFalse) {
  Controller().set_gfrmTxFilter(nullptr);
  EXPECT_FALSE(Run());
  EXPECT_EQ(statement_, "before");
  EXPECT_TRUE(TranscriptIs("Trapped pbGenSql 91 \"Object variable not set\""));
}

TEST_F(CredentialStatement, OneStatementStartsWithoutTheRowsOfTheLast) {
  FillName(0, 0, "Doe");
  EXPECT_TRUE(Run());
  ClearRow(Host(), 0);
  EXPECT_EQ(Composed(), Both());
}

}  // namespace
}  // namespace qortest
