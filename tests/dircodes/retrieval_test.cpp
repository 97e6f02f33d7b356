// Filling the list of directory codes and loading one code into the edit controls.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Null;
using qorcred::Value;

/// Columns of the query for codes.
enum Column : std::size_t {
  kCode = 2,
  kPhone = 3,
  kExtension = 4,
  kTimeDelay = 5,
  kDndSchedule = 6,
  kIsDndChecked = 7,
  kCfSchedule = 8,
  kIsCfChecked = 9,
  kCfPhone = 10,
  kCfExtension = 11,
  kCfTimeDelay = 12,
  kLastModified = 13,
  kActive = 14,
  kStartDate = 15,
  kEndDate = 16,
  kDisplayName = 17,
  kShowDisplayName = 18,
  kShowDirectoryCode = 19,
};

/// A stored code with everything filled in.
Row FullCode() {
  return {kUnit,
          kStoredRow,
          12,
          "5551234",
          "77",
          5,
          9,
          true,
          1,
          true,
          "5559876",
          "88",
          7,
          FromCivil({2026, 11, 20, 9, 30, 0}),
          true,
          FromCivil({2026, 11, 21, 10, 0, 0}),
          FromCivil({2027, 11, 21, 23, 59, 59}),
          "Front desk",
          true,
          false};
}

/// The row of a code of which nothing else is read.
Row Listed(std::int32_t rid, Value code) {
  Row row(20, Value(Null{}));
  row[0] = kUnit;
  row[1] = rid;
  row[2] = std::move(code);
  return row;
}

class DirCodeList : public DirCodeTest {
 protected:
  void SetCodeLength(std::int32_t digits) {
    qorcred::Put(Host().controls().Box("txtdirectorycode"), "MaxLength", digits);
  }
  [[nodiscard]] std::vector<std::string> ListedCodes() {
    return ItemsOf(Host(), "cbodirectorycode");
  }
};

TEST_F(DirCodeList, OfAUnitWithoutCodesOffersToAddOneAndSelectsNothing) {
  Controller().pbRetrieveDirCodes(Connection(), kUnit);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  ORDER BY DIRECTORYCODE" -> no rows
    cbodirectorycode.Clear
    cbodirectorycode.AddItem "<Add New>"
    cbodirectorycode.NewIndex -> 0
    cbodirectorycode.ItemData(0) = -100
  )~"));
  EXPECT_EQ(ListedCodes(), std::vector<std::string>{"<Add New>=-100"});
  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), -1);
}

TEST_F(DirCodeList, ShowsEachCodeWithAsManyDigitsAsTheUnitAllows) {
  SetCodeLength(4);
  Database().Select("FROM DIRECTORYCODE", {Listed(17, 7), Listed(18, "34"), Listed(19, 12345)});

  Controller().pbRetrieveDirCodes(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  ORDER BY DIRECTORYCODE" -> 3 rows
    cbodirectorycode.Clear
    cbodirectorycode.AddItem "<Add New>"
    cbodirectorycode.ItemData(0) = -100
    cbodirectorycode.AddItem "0007"
    cbodirectorycode.ItemData(1) = 17
    cbodirectorycode.AddItem "0034"
    cbodirectorycode.ItemData(2) = 18
    cbodirectorycode.AddItem "12345"
    cbodirectorycode.ItemData(3) = 19
  )~"));
  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), -1);
}

struct CodeLength {
  std::string_view name;
  std::int32_t digits;
  Value code;
  std::string_view shown;
};

class DirCodeLength : public DirCodeList, public ::testing::WithParamInterface<CodeLength> {};

TEST_P(DirCodeLength, GivesTheNumberOfDigits) {
  SetCodeLength(GetParam().digits);
  Database().Select("FROM DIRECTORYCODE", {Listed(17, GetParam().code)});

  Controller().pbRetrieveDirCodes(Connection(), kUnit);

  EXPECT_EQ(ListedCodes(),
            (std::vector<std::string>{"<Add New>=-100", std::string(GetParam().shown) + "=17"}));
}

INSTANTIATE_TEST_SUITE_P(Lengths, DirCodeLength,
                         ::testing::Values(CodeLength{"WithoutLimit", 0, 7, "7"},
                                           CodeLength{"OneDigit", 1, 7, "7"},
                                           CodeLength{"TwoDigits", 2, 7, "07"},
                                           CodeLength{"AsLongAsTheCode", 4, 1234, "1234"},
                                           CodeLength{"Zero", 3, 0, "000"},
                                           CodeLength{"WholeDouble", 3, 42.0, "042"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(DirCodeList, SelectsTheCodeThatWasSelectedBefore) {
  Database().Select("FROM DIRECTORYCODE", {Listed(17, 12), Listed(18, 34), Listed(19, 56)});

  Controller().pbRetrieveDirCodes(Connection(), kUnit, -1, 19);

  EXPECT_EQ(Host().transcript().StartingWith("cbodirectorycode.ListIndex"),
            Lines{"cbodirectorycode.ListIndex = 3"});
  EXPECT_EQ(Host().transcript().Read(Detail::kEverything).back(), "cbodirectorycode.ListIndex = 3");
}

TEST_F(DirCodeList, SelectsTheFirstCode) {
  Database().Select("FROM DIRECTORYCODE", {Listed(17, 12), Listed(18, 34)});

  Controller().pbRetrieveDirCodes(Connection(), kUnit, -1, 17);

  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), 1);
}

TEST_F(DirCodeList, WithoutTheCodeThatWasSelectedBeforeSelectsNothing) {
  Database().Select("FROM DIRECTORYCODE", {Listed(17, 12), Listed(18, 34)});

  Controller().pbRetrieveDirCodes(Connection(), kUnit, -1, 99);

  EXPECT_TRUE(Host().transcript().StartingWith("cbodirectorycode.ListIndex").empty());
}

TEST_F(DirCodeList, NeverTouchesTheEditControls) {
  Database().Select("FROM DIRECTORYCODE", {FullCode()});

  Controller().pbRetrieveDirCodes(Connection(), kUnit, -1, kStoredRow);

  for (const std::string& line : Host().transcript().Read(Detail::kEffects)) {
    EXPECT_TRUE(line.starts_with("cbodirectorycode.") || line.starts_with("ExecuteSelect "))
        << line;
  }
}

TEST_F(DirCodeList, ReplacesWhatItHeldBefore) {
  Screen().ShowStored();
  Database().Select("FROM DIRECTORYCODE", {Listed(20, 99)});

  Controller().pbRetrieveDirCodes(Connection(), kUnit);

  EXPECT_EQ(ListedCodes(), (std::vector<std::string>{"<Add New>=-100", "99=20"}));
}

TEST_F(DirCodeList, AfterAFailedStatementOffersToAddACode) {
  Database().Error("FROM DIRECTORYCODE", "the disk is gone");

  Controller().pbRetrieveDirCodes(Connection(), kUnit);

  EXPECT_EQ(ListedCodes(), std::vector<std::string>{"<Add New>=-100"});
}

class StoredDirCode : public DirCodeTest {
 protected:
  void Stored(const Row& code) { Database().Select("FROM DIRECTORYCODE", {code}); }
  void Load() { Controller().pbRetrieveDirCodes(Connection(), kUnit, kStoredRow); }
};

TEST_F(StoredDirCode, IsShownInTheEditControls) {
  Screen().ListSchedules();
  Stored(FullCode());
  Database().Select("FROM Tenants", {{55, "Doe", "Jane", "Q"}});

  Load();

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  AND RID=17 ORDER BY DIRECTORYCODE" -> 1 row
    gblnModifiedFromClass = True
    glngrid = 17
    txtdirectorycode.Text = "12"
    txtPhoneNo.Text = "5551234"
    txtExtn.Text = "77"
    pvnTimeDelay = 5
    chkDND.Value = 1
    cboSchedules.ListCount -> 4
    cboSchedules.ItemData(0) -> 1
    cboSchedules.ItemData(1) -> 0
    cboSchedules.ItemData(2) -> 5
    cboSchedules.ItemData(3) -> 9
    cboSchedules.ListIndex = 3
    chkCallForwarding.Value = 1
    cboSchedulesCF.ListCount -> 4
    cboSchedulesCF.ItemData(0) -> 1
    cboSchedulesCF.ListIndex = 0
    txtPhoneNocf.Text = "5559876"
    txtExtnCF.Text = "88"
    pvnTimeDelayCF = 7
    gstrLastModifiedDate = "11/20/2026 9:30:00 AM"
    chkActive.Value = 1
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.Value = #11/21/2027 11:59:59 PM#
    txtDisplayName.Text = "Front desk"
    chkShowDisplayName.Value = 1
    chkShowDirCode.Value = 0
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=17 ORDER BY LastName,FirstName,MiddleInitial " -> 1 row
    lstTenants.Clear
    lstTenants.AddItem "Doe Jane Q"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 55
    cmdedit.Enabled -> True
    cmdSelect.Enabled = False
    gblnModifiedFromClass = False
  )~"));
}

TEST_F(StoredDirCode, WithoutAnythingIsShownEmpty) {
  Screen().ShowStored();
  Screen().CheckDoNotDisturb(2);
  Screen().CheckCallForwarding(3, "5559876", "88");
  for (const std::string_view box : {"chkActive", "chkShowDisplayName", "chkShowDirCode"}) {
    Screen().Check(box);
  }
  Host().controls().Date("dtpStart").Choose(FromCivil({2026, 1, 1, 0, 0, 0}));
  Host().controls().Date("dtpEnd").Choose(FromCivil({2026, 1, 2, 0, 0, 0}));
  Host().SetText("txtDisplayName", "Front desk");
  Host().StartOver();
  Stored(Listed(kStoredRow, 12));

  Load();

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  AND RID=17 ORDER BY DIRECTORYCODE" -> 1 row
    gblnModifiedFromClass = True
    glngrid = 17
    txtdirectorycode.Text = "12"
    txtPhoneNo.Text = ""
    txtExtn.Text = ""
    pvnTimeDelay = 0
    chkDND.Value = 0
    cboSchedules.ListIndex = -1
    chkCallForwarding.Value = 0
    cboSchedulesCF.ListIndex = -1
    txtPhoneNocf.Text = ""
    txtExtnCF.Text = ""
    pvnTimeDelayCF = 0
    gstrLastModifiedDate = ""
    chkActive.Value = 0
    dtpStart.Value = Null
    dtpEnd.Value = Null
    txtDisplayName.Text = ""
    chkShowDisplayName.Value = 0
    chkShowDirCode.Value = 0
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=17 ORDER BY LastName,FirstName,MiddleInitial " -> no rows
    lstTenants.Clear
    lstTenants.AddItem "<Unassigned>"
    lstTenants.ItemData(0) = -100
    cmdSelect.Enabled = False
    gblnModifiedFromClass = False
  )~"));
}

TEST_F(StoredDirCode, ThatIsMissingLeavesTheControlsAsTheyWere) {
  Screen().ShowStored();
  Host().StartOver();

  Controller().pbRetrieveDirCodes(Connection(), kUnit, 99, kStoredRow);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  AND RID=99 ORDER BY DIRECTORYCODE" -> no rows
  )~"));
}

TEST_F(StoredDirCode, InTheRowZeroIsLoadedAndNotTakenForAll) {
  Controller().pbRetrieveDirCodes(Connection(), kUnit, 0);

  EXPECT_NE(Host().transcript().StartingWith("ExecuteSelect ").at(0).find(" AND RID=0 "),
            std::string::npos);
  EXPECT_TRUE(Host().transcript().StartingWith("cbodirectorycode").empty());
}

TEST_F(StoredDirCode, ShowsTheScheduleThatComesFirst) {
  for (const std::string_view list : {"cboSchedules", "cboSchedulesCF"}) {
    Host().AddItem(list, "Full Access", 1);
    Host().AddItem(list, "Day", 9);
    Host().AddItem(list, "Day again", 9);
  }
  Row code = FullCode();
  code[kDndSchedule] = "9";
  code[kCfSchedule] = 9.0;
  Stored(code);

  Load();

  EXPECT_EQ(Host().controls().List("cboSchedules").selected(), 1);
  EXPECT_EQ(Host().controls().List("cboSchedulesCF").selected(), 1);
  EXPECT_TRUE(Host().transcript().StartingWith("cboSchedules.ItemData(2)").empty());
}

TEST_F(StoredDirCode, ShowsTheScheduleNumberedZero) {
  Screen().ListSchedules();
  Row code = FullCode();
  code[kDndSchedule] = 0;
  code[kCfSchedule] = 0;
  Stored(code);

  Load();

  EXPECT_EQ(Host().controls().List("cboSchedules").SelectedText(), "No Access");
  EXPECT_EQ(Host().controls().List("cboSchedulesCF").SelectedText(), "No Access");
}

TEST_F(StoredDirCode, WithAScheduleThatIsNotListedLeavesTheSelection) {
  Screen().ListSchedules();
  Host().Select("cboSchedules", 2);
  Row code = FullCode();
  code[kDndSchedule] = 77;
  Stored(code);

  Load();

  EXPECT_EQ(Host().controls().List("cboSchedules").selected(), 2);
  EXPECT_TRUE(Host().transcript().StartingWith("cboSchedules.ListIndex = ").empty());
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(StoredDirCode, WithoutASearchForAMissingScheduleSelectsNone) {
  Screen().ListSchedules();
  Host().Select("cboSchedules", 2);
  Row code = FullCode();
  code[kDndSchedule] = Null{};
  Stored(code);

  Load();

  EXPECT_EQ(Host().transcript().StartingWith("cboSchedules."),
            Lines{"cboSchedules.ListIndex = -1"});
  EXPECT_EQ(Host().controls().List("cboSchedules").selected(), -1);
}

struct Flag {
  std::string_view name;
  Value cell;
  std::int16_t state;
};

class DirCodeFlag : public StoredDirCode, public ::testing::WithParamInterface<Flag> {};

TEST_P(DirCodeFlag, ChecksTheBoxOrNot) {
  constexpr std::pair<Column, std::string_view> kBoxes[] = {
      {kIsDndChecked, "chkDND"},
      {kIsCfChecked, "chkCallForwarding"},
      {kActive, "chkActive"},
      {kShowDisplayName, "chkShowDisplayName"},
      {kShowDirectoryCode, "chkShowDirCode"}};
  Row code = FullCode();
  for (const auto& [column, box] : kBoxes) {
    code[column] = GetParam().cell;
    Screen().Check(box, GetParam().state == 0);
  }
  Stored(code);

  Load();

  for (const auto& [column, box] : kBoxes) {
    EXPECT_EQ(Host().controls().Check(box).state(), GetParam().state) << box;
  }
}

INSTANTIATE_TEST_SUITE_P(Cells, DirCodeFlag,
                         ::testing::Values(Flag{"True", true, 1}, Flag{"MinusOne", -1, 1},
                                           Flag{"One", 1, 1}, Flag{"TextTrue", "True", 1},
                                           Flag{"False", false, 0}, Flag{"Zero", 0, 0},
                                           Flag{"TextFalse", "False", 0}, Flag{"Null", Null{}, 0},
                                           Flag{"EmptyText", "", 0}),
                         [](const auto& test) { return std::string(test.param.name); });

struct Spin {
  std::string_view name;
  Value cell;
  std::string_view shown;
};

class DirCodeDelay : public StoredDirCode, public ::testing::WithParamInterface<Spin> {};

TEST_P(DirCodeDelay, IsShownAsANumber) {
  Row code = FullCode();
  code[kTimeDelay] = GetParam().cell;
  code[kCfTimeDelay] = GetParam().cell;
  Stored(code);

  Load();

  EXPECT_EQ(Host().transcript().StartingWith("pvnTimeDelay "),
            Lines{"pvnTimeDelay = " + std::string(GetParam().shown)});
  EXPECT_EQ(Host().transcript().StartingWith("pvnTimeDelayCF "),
            Lines{"pvnTimeDelayCF = " + std::string(GetParam().shown)});
}

INSTANTIATE_TEST_SUITE_P(Cells, DirCodeDelay,
                         ::testing::Values(Spin{"Number", 12, "12"}, Spin{"Text", "12", "12"},
                                           Spin{"TextThatStartsWithANumber", "12s", "12"},
                                           Spin{"OtherText", "soon", "0"},
                                           Spin{"Null", Null{}, "0"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(StoredDirCode, WithOneDateShowsTheOtherUnchecked) {
  Row code = FullCode();
  code[kStartDate] = Null{};
  Stored(code);

  Load();

  EXPECT_FALSE(Host().controls().Date("dtpStart").chosen());
  EXPECT_EQ(Host().controls().Date("dtpEnd").Chosen(),
            Value(FromCivil({2027, 11, 21, 23, 59, 59})));
}

TEST_F(StoredDirCode, HeldBySomebodyLooksTwiceAndAllowsToSelectWhileItCannotBeEdited) {
  Host().controls().Any("cmdedit").SetEnabled(false);
  Host().controls().Any("cmdSelect").SetEnabled(false);
  Stored(FullCode());
  Database().Select("FROM Tenants", {{55, "Doe", "Jane", "Q"}});

  Load();

  const Lines all = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(all.size(), 13U);
  EXPECT_TRUE(SameLines(Lines(all.end() - 13, all.end()), R"~(
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=17 ORDER BY LastName,FirstName,MiddleInitial " -> 1 row
    lstTenants.Clear
    lstTenants.AddItem "Doe Jane Q"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 55
    cmdedit.Enabled -> False
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=17 ORDER BY LastName,FirstName,MiddleInitial " -> 1 row
    lstTenants.Clear
    lstTenants.AddItem "Doe Jane Q"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 55
    cmdSelect.Enabled = True
    gblnModifiedFromClass = False
  )~"));
}

TEST_F(StoredDirCode, HeldByNobodyDoesNotAllowToSelect) {
  Host().controls().Any("cmdedit").SetEnabled(false);
  Stored(FullCode());

  Load();

  EXPECT_EQ(Host().transcript().StartingWith("lstTenants.Clear").size(), 2U);
  EXPECT_FALSE(Host().controls().Any("cmdSelect").enabled());
}

TEST_F(StoredDirCode, TakesTheAnswerOfTheSecondLookForTheButton) {
  Host().controls().Any("cmdedit").SetEnabled(false);
  Stored(FullCode());
  Database().Select("FROM Tenants", {{55, "Doe", "Jane", "Q"}});
  Database().Select("FROM Tenants", {});

  Load();

  EXPECT_EQ(Host().transcript().StartingWith("cmdSelect"), Lines{"cmdSelect.Enabled = False"});
}

TEST_F(StoredDirCode, IsMarkedAsWrittenByTheControllerWhileTheControlsAreWrittenOnly) {
  Stored(FullCode());

  Load();

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  EXPECT_EQ(effects.at(1), "gblnModifiedFromClass = True");
  EXPECT_EQ(effects.back(), "gblnModifiedFromClass = False");
}

TEST_F(StoredDirCode, ThatCannotBeShownIsNoLongerMarkedAfterwards) {
  Stored(FullCode());
  Host().gate().FailOn("txtExtn.Text=");

  Load();

  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().first, "pbRetrieveDirCodes");
  EXPECT_EQ(Host().controls().Variable("gblnModifiedFromClass"), Value(false));
  EXPECT_TRUE(Host().transcript().StartingWith("pvnTimeDelay").empty());
}

// The tenants' result raises to callers of pbRetrieveTenants; here the caller is trapped.
TEST_F(StoredDirCode, TrapsAFailureOfTheTenantsResult) {
  Stored(FullCode());
  Database().Select("FROM Tenants", {{55}});

  EXPECT_EQ(ErrorOf([this] { Load(); }), 0);

  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().first, "pbRetrieveDirCodes");
  EXPECT_EQ(Host().services().trapped().front().second, qorcred::ErrorNumber::kIndexOutOfRange);
  EXPECT_EQ(Host().controls().Variable("gblnModifiedFromClass"), Value(false));
}

TEST_F(StoredDirCode, TrapsAFailureOfItsOwnResult) {
  Database().Select("FROM DIRECTORYCODE", {{kUnit, kStoredRow, 12}});

  EXPECT_EQ(ErrorOf([this] { Load(); }), 0);

  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, qorcred::ErrorNumber::kIndexOutOfRange);
  EXPECT_EQ(Host().controls().Variable("gblnModifiedFromClass"), Value(false));
}

}  // namespace
}  // namespace qortest
