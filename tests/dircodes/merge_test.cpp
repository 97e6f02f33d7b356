// Writing directory codes as a unit holds them: the conversion of its notation and the statements.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::StringArray;

/// Places in a unit's notation of a code.
enum Place : std::size_t {
  kCode = 4,
  kPhone = 5,
  kExtension = 6,
  kCfPhone = 7,
  kCfExtension = 8,
  kDisplayName = 9,
  kActive = 10,
  kStartUsed = 11,
  kStart = 12,
  kStartTime = 13,
  kEndUsed = 14,
  kEnd = 15,
  kEndTime = 16,
  kDndSchedule = 17,
  kIsDnd = 18,
  kTimeDelay = 19,
  kIsCf = 20,
  kCfSchedule = 21,
  kCfTimeDelay = 22,
  kDisplayMode = 23,
  kPlaces = 24,
};

/// A code with everything filled in, as a unit writes it.
StringArray FullDetails() {
  return {"a",    "b",     "c", "d", "12",     "5551234", "77", "5559876",
          "88",   "Front", "1", "1", "240315", "0930",    "1",  "251231",
          "2359", "9",     "1", "5", "1",      "1",       "7",  "1"};
}

/// The same in the store's notation.
StringArray FullDetailsConverted() {
  return {"a",
          "b",
          "c",
          "d",
          "12",
          "5551234",
          "77",
          "5559876",
          "88",
          "Front",
          "True",
          "1",
          "03/15/2024 09:30",
          "09:30",
          "1",
          "12/31/2025 23:59",
          "23:59",
          "9",
          "True",
          "5",
          "True",
          "1",
          "7",
          "1"};
}

constexpr std::string_view kFullUpdate =
    "UPDATE DIRECTORYCODE SET "
    "DIRECTORYCODE=12,PHONENUMBER='5551234',EXTENSION='77',TIMEDELAY=5,DNDSCHEDULEID=9,"
    "ISDNDCHECKED=True,CFSCHEDULEID=1,ISCFCHECKED=True,CFPHONENUMBER='5559876',CFEXTENSION='88',"
    "CFTIMEDELAY=7,LASTMODIFIEDDATE='_LMDATE_',ACTIVE=True,STARTDATE='03/15/2024 09:30',"
    "ENDDATE='12/31/2025 23:59',DISPLAYNAME='Front',MODIFIED=0,OLDDIRECTORYCODE=12,"
    "SHOWDISPLAYNAME=True,SHOWDIRECTORYCODE=False WHERE UNITKEY=3 AND RID=17";

class DirCodeMerge : public DirCodeTest {
 protected:
  bool Merge(std::string_view mode, StringArray& details, std::int32_t rid = kStoredRow) {
    return Screen().Merge(mode, details, rid);
  }
  bool Update() { return Merge("Update", details_); }
  [[nodiscard]] StringArray& details() { return details_; }
  [[nodiscard]] std::string& detail(Place place) { return details_[place]; }

 private:
  StringArray details_ = FullDetails();
};

TEST_F(DirCodeMerge, UpdatesTheRowWithTheCodeOfTheUnit) {
  EXPECT_TRUE(Update());

  EXPECT_TRUE(TranscriptIs("mFirmwareFromHandshake -> \"FC01.006\"\nExecuteUpdate \"" +
                           std::string(kFullUpdate) + "\" \"DIRECTORYCODE\" - 17 -> 1"));
  EXPECT_EQ(details(), FullDetailsConverted());
}

TEST_F(DirCodeMerge, InsertsTheCodeOfTheUnit) {
  EXPECT_TRUE(Merge("Insert", details(), 0));

  EXPECT_TRUE(TranscriptIs(R"~(
    mFirmwareFromHandshake -> "FC01.006"
    ExecuteInsert "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED,SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(3,_ROWID_,12,'5551234','77',5,9,True,1,True,'5559876','88',7,'_LMDATE_',True,'03/15/2024 09:30','12/31/2025 23:59','Front',12,0,True,False)" "" "DIRECTORYCODE" -> 101
  )~"));
  EXPECT_EQ(details(), FullDetailsConverted());
}

TEST_F(DirCodeMerge, UpdatesAUnitWithoutDisplayOptionsWithACommaInFrontOfWhere) {
  Host().SetFirmware("FC01.005");

  EXPECT_TRUE(Update());

  EXPECT_TRUE(TranscriptIs(R"~(
    mFirmwareFromHandshake -> "FC01.005"
    ExecuteUpdate "UPDATE DIRECTORYCODE SET DIRECTORYCODE=12,PHONENUMBER='5551234',EXTENSION='77',TIMEDELAY=5,DNDSCHEDULEID=9,ISDNDCHECKED=True,CFSCHEDULEID=1,ISCFCHECKED=True,CFPHONENUMBER='5559876',CFEXTENSION='88',CFTIMEDELAY=7,LASTMODIFIEDDATE='_LMDATE_',ACTIVE=True,STARTDATE='03/15/2024 09:30',ENDDATE='12/31/2025 23:59',DISPLAYNAME='Front',MODIFIED=0,OLDDIRECTORYCODE=12, WHERE UNITKEY=3 AND RID=17" "DIRECTORYCODE" - 17 -> 1
  )~"));
}

TEST_F(DirCodeMerge, InsertsForAUnitWithoutDisplayOptionsTheOtherColumns) {
  Host().SetFirmware("FC01.005");

  EXPECT_TRUE(Merge("Insert", details()));

  EXPECT_TRUE(TranscriptIs(R"~(
    mFirmwareFromHandshake -> "FC01.005"
    ExecuteInsert "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED)Values(3,_ROWID_,12,'5551234','77',5,9,True,1,True,'5559876','88',7,'_LMDATE_',True,'03/15/2024 09:30','12/31/2025 23:59','Front',12,0)" "" "DIRECTORYCODE" -> 101
  )~"));
}

TEST_F(DirCodeMerge, WritesDisplayOptionsForEveryOtherFirmware) {
  for (const std::string_view firmware :
       {"", "FC01.004", "FC01.006", "fc01.005", "FC01.005 ", " FC01.005", "FC01.0050"}) {
    DirCodeScreen screen;
    screen.host().SetFirmware(firmware);
    StringArray details = FullDetails();

    EXPECT_TRUE(screen.Merge("Update", details));

    EXPECT_EQ(
        screen.host().transcript().StartingWith("ExecuteUpdate "),
        Lines{"ExecuteUpdate \"" + std::string(kFullUpdate) + "\" \"DIRECTORYCODE\" - 17 -> 1"})
        << firmware;
  }
}

TEST_F(DirCodeMerge, StoresEmptyTextsAsNullAndLeavesEmptyNumbersAlone) {
  StringArray empty(kPlaces);

  EXPECT_TRUE(Merge("Update", empty));
  empty.assign(kPlaces, "");
  EXPECT_TRUE(Merge("Insert", empty));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteUpdate "UPDATE DIRECTORYCODE SET DIRECTORYCODE=,PHONENUMBER=Null,EXTENSION=Null,TIMEDELAY=,DNDSCHEDULEID=,ISDNDCHECKED=False,CFSCHEDULEID=,ISCFCHECKED=False,CFPHONENUMBER=Null,CFEXTENSION=Null,CFTIMEDELAY=,LASTMODIFIEDDATE='_LMDATE_',ACTIVE=False,STARTDATE=Null,ENDDATE=Null,DISPLAYNAME=Null,MODIFIED=0,OLDDIRECTORYCODE=,SHOWDISPLAYNAME=True,SHOWDIRECTORYCODE=True WHERE UNITKEY=3 AND RID=17" "DIRECTORYCODE" - 17 -> 1
    ExecuteInsert "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED,SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(3,_ROWID_,,Null,Null,,,False,,False,Null,Null,,'_LMDATE_',False,Null,Null,Null,,0,True,True)" "" "DIRECTORYCODE" -> 101
  )~"));
}

TEST_F(DirCodeMerge, PutsTextsIntoTheStatementAsTheyAre) {
  detail(kDisplayName) = "O'Neill";
  detail(kPhone) = " 5 ";

  EXPECT_TRUE(Update());

  const std::string update = Host().transcript().StartingWith("ExecuteUpdate ").at(0);
  EXPECT_NE(update.find("DISPLAYNAME='O'Neill'"), std::string::npos);
  EXPECT_NE(update.find("PHONENUMBER=' 5 '"), std::string::npos);
}

TEST_F(DirCodeMerge, UpdatesTheRowThatIsGiven) {
  for (const std::int32_t rid : {-1, 0, 2147483647}) {
    DirCodeScreen screen;
    StringArray details = FullDetails();

    EXPECT_TRUE(screen.Merge("Update", details, rid));

    const std::string update = screen.host().transcript().StartingWith("ExecuteUpdate ").at(0);
    const std::string row = std::to_string(rid);
    EXPECT_NE(update.find(" AND RID=" + row + "\" \"DIRECTORYCODE\" - " + row + " -> 1"),
              std::string::npos)
        << update;
  }
}

TEST_F(DirCodeMerge, SucceedsThoughTheStatementFailed) {
  Database().Error("UPDATE DIRECTORYCODE", "the disk is gone");
  Database().Error("Insert into", "the disk is gone");

  EXPECT_TRUE(Update());
  StringArray details = FullDetails();
  EXPECT_TRUE(Merge("Insert", details));

  EXPECT_TRUE(Host().services().trapped().empty());
}

struct Conversion {
  std::string_view name;
  std::vector<std::pair<Place, std::string>> given;
  std::vector<std::pair<Place, std::string>> converted;
};

void PrintTo(const Conversion& conversion, std::ostream* out) {
  *out << conversion.name;
}

class DirCodeConversion : public DirCodeMerge, public ::testing::WithParamInterface<Conversion> {};

TEST_P(DirCodeConversion, ChangesTheDetailsInPlace) {
  for (const std::string_view mode : {"Update", "Insert", "Neither"}) {
    StringArray details = FullDetails();
    for (const auto& [place, text] : GetParam().given) details[place] = text;
    StringArray expected = FullDetailsConverted();
    for (const auto& [place, text] : GetParam().converted) expected[place] = text;

    EXPECT_TRUE(Merge(mode, details)) << mode;

    EXPECT_EQ(details, expected) << mode;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Details, DirCodeConversion,
    ::testing::Values(
        Conversion{"Everything", {}, {}},
        Conversion{"FlagsOff",
                   {{kActive, "0"}, {kIsDnd, "0"}, {kIsCf, "0"}},
                   {{kActive, "False"}, {kIsDnd, "False"}, {kIsCf, "False"}}},
        Conversion{"FlagsEmpty",
                   {{kActive, ""}, {kIsDnd, ""}, {kIsCf, ""}},
                   {{kActive, "False"}, {kIsDnd, "False"}, {kIsCf, "False"}}},
        Conversion{"FlagsOtherNumbers",
                   {{kActive, "2"}, {kIsDnd, "-1"}, {kIsCf, "11"}},
                   {{kActive, "False"}, {kIsDnd, "False"}, {kIsCf, "False"}}},
        Conversion{"FlagsThatStartWithOne",
                   {{kActive, " 1"}, {kIsDnd, "1.0"}, {kIsCf, "1x"}},
                   {{kActive, "True"}, {kIsDnd, "True"}, {kIsCf, "True"}}},
        Conversion{"FlagsConvertedAlready",
                   {{kActive, "True"}, {kIsDnd, "True"}, {kIsCf, "True"}},
                   {{kActive, "False"}, {kIsDnd, "False"}, {kIsCf, "False"}}},
        Conversion{"StartNotInUse", {{kStartUsed, "0"}}, {{kStartUsed, "0"}, {kStart, ""}}},
        Conversion{"EndNotInUse", {{kEndUsed, "0"}}, {{kEndUsed, "0"}, {kEnd, ""}}},
        Conversion{"DatesWithoutAFlag",
                   {{kStartUsed, ""}, {kEndUsed, ""}},
                   {{kStartUsed, ""}, {kStart, ""}, {kEndUsed, ""}, {kEnd, ""}}},
        Conversion{"DatesInUseAreMarkedWithExactlyOne",
                   {{kStartUsed, " 1"}, {kEndUsed, "1.0"}},
                   {{kStartUsed, " 1"}, {kStart, ""}, {kEndUsed, "1.0"}, {kEnd, ""}}},
        Conversion{"EmptyDates", {{kStart, ""}, {kEnd, ""}}, {{kStart, ""}, {kEnd, ""}}},
        Conversion{
            "EmptyTimes",
            {{kStartTime, ""}, {kEndTime, ""}},
            {{kStart, "03/15/2024 "}, {kStartTime, ""}, {kEnd, "12/31/2025 "}, {kEndTime, ""}}},
        Conversion{"MidnightAndMidday",
                   {{kStartTime, "0000"}, {kEndTime, "1200"}},
                   {{kStart, "03/15/2024 00:00"},
                    {kStartTime, "00:00"},
                    {kEnd, "12/31/2025 12:00"},
                    {kEndTime, "12:00"}}},
        Conversion{"ShortTimes",
                   {{kStartTime, "930"}, {kEndTime, "9"}},
                   {{kStart, "03/15/2024 93:30"},
                    {kStartTime, "93:30"},
                    {kEnd, "12/31/2025 9:9"},
                    {kEndTime, "9:9"}}},
        Conversion{"LongTime",
                   {{kStartTime, "093015"}},
                   {{kStart, "03/15/2024 09:15"}, {kStartTime, "09:15"}}},
        Conversion{"TimesInOtherLetters",
                   {{kStartTime, "\u00e4\u00f6\u00fc\u00df"}, {kEndTime, "a\U0001F600b"}},
                   {{kStart, "03/15/2024 \u00e4\u00f6:\u00fc\u00df"},
                    {kStartTime, "\u00e4\u00f6:\u00fc\u00df"},
                    {kEnd, "12/31/2025 a:b"},
                    {kEndTime, "a:b"}}},
        Conversion{"ShortDates",
                   {{kStart, "2403"}, {kEnd, "1"}},
                   {{kStart, "03/03/2024 09:30"}, {kEnd, "/1/201 23:59"}}},
        Conversion{"DatesInLetters", {{kStart, "abcdef"}}, {{kStart, "cd/ef/20ab 09:30"}}},
        Conversion{"EveryCenturyIsTheSame",
                   {{kStart, "000101"}, {kEnd, "991231"}},
                   {{kStart, "01/01/2000 09:30"}, {kEnd, "12/31/2099 23:59"}}},
        Conversion{"LeapDay", {{kStart, "240229"}}, {{kStart, "02/29/2024 09:30"}}},
        Conversion{"DateThatIsNone",
                   {{kStart, "230229"}, {kEnd, "249999"}},
                   {{kStart, "02/29/2023 09:30"}, {kEnd, "99/99/2024 23:59"}}},
        Conversion{"TimesOfDatesNotInUse",
                   {{kStartUsed, "0"}, {kEndUsed, "0"}},
                   {{kStartUsed, "0"}, {kStart, ""}, {kEndUsed, "0"}, {kEnd, ""}}},
        Conversion{"DisplayModeStays", {{kDisplayMode, "3"}}, {{kDisplayMode, "3"}}}),
    [](const auto& test) { return std::string(test.param.name); });

struct DisplayMode {
  std::string_view name;
  std::string_view mode;
  std::string_view showName;
  std::string_view showCode;
};

class DirCodeDisplayMode : public DirCodeMerge,
                           public ::testing::WithParamInterface<DisplayMode> {};

TEST_P(DirCodeDisplayMode, BecomesTwoFlags) {
  const DisplayMode& mode = GetParam();
  detail(kDisplayMode) = mode.mode;
  StringArray toInsert = details();

  EXPECT_TRUE(Update());
  EXPECT_TRUE(Merge("Insert", toInsert));

  const std::string update = Host().transcript().StartingWith("ExecuteUpdate ").at(0);
  EXPECT_NE(update.find(",SHOWDISPLAYNAME=" + std::string(mode.showName) +
                        ",SHOWDIRECTORYCODE=" + std::string(mode.showCode) + " WHERE"),
            std::string::npos)
      << update;
  const std::string insert = Host().transcript().StartingWith("ExecuteInsert ").at(0);
  EXPECT_NE(
      insert.find(",12,0," + std::string(mode.showName) + "," + std::string(mode.showCode) + ")\""),
      std::string::npos)
      << insert;
}

INSTANTIATE_TEST_SUITE_P(Modes, DirCodeDisplayMode,
                         ::testing::Values(DisplayMode{"One", "1", "True", "False"},
                                           DisplayMode{"Two", "2", "False", "True"},
                                           DisplayMode{"Three", "3", "False", "False"},
                                           DisplayMode{"Zero", "0", "True", "True"},
                                           DisplayMode{"Four", "4", "True", "True"},
                                           DisplayMode{"Empty", "", "True", "True"},
                                           DisplayMode{"BlankInFront", " 1", "True", "True"},
                                           DisplayMode{"ThreeWithZero", "03", "True", "True"}),
                         [](const auto& test) { return std::string(test.param.name); });

class DirCodeShortDetails : public DirCodeMerge, public ::testing::WithParamInterface<int> {};

TEST_P(DirCodeShortDetails, FailWithWhatStoodBeforeConverted) {
  const auto length = static_cast<std::size_t>(GetParam());
  for (const std::string_view mode : {"Update", "Insert", "update", ""}) {
    DirCodeScreen screen;
    StringArray details = FullDetails();
    details.resize(length);
    // Do Not Disturb comes first, then call forwarding and the rest.
    StringArray expected = length > kIsCf ? FullDetailsConverted() : FullDetails();
    if (length > kIsDnd) expected[kIsDnd] = "True";
    expected.resize(length);

    EXPECT_FALSE(screen.Merge(mode, details)) << mode;

    EXPECT_EQ(details, expected) << mode;
    EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEverything),
                          "Trapped pbMergeSave 9 \"Subscript out of range\""))
        << mode;
  }
}

TEST_P(DirCodeShortDetails, DoNotMatterForADeletion) {
  StringArray details(static_cast<std::size_t>(GetParam()), "1");
  const StringArray before = details;

  EXPECT_TRUE(Merge("Delete", details));

  EXPECT_EQ(details, before);
}

INSTANTIATE_TEST_SUITE_P(Lengths, DirCodeShortDetails, ::testing::Range(0, int{kPlaces}));

TEST_F(DirCodeMerge, IgnoresDetailsBehindTheLast) {
  details().emplace_back("more");

  EXPECT_TRUE(Update());

  StringArray expected = FullDetailsConverted();
  expected.emplace_back("more");
  EXPECT_EQ(details(), expected);
}

TEST_F(DirCodeMerge, ConvertsAndWritesNothingInAnyOtherMode) {
  for (const std::string_view mode :
       {"", "update", "insert", "delete", "UPDATE", "DELETE", "Update ", " Insert", "Merge"}) {
    StringArray details = FullDetails();

    EXPECT_TRUE(Merge(mode, details)) << mode;

    EXPECT_EQ(details, FullDetailsConverted()) << mode;
  }
  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(DirCodeMerge, DeletesOneCodeAndClearsTheTenantsByTheNumberOfDeletedRows) {
  Database().Number("DELETE from", 2);

  EXPECT_TRUE(Merge("Delete", details(), 17));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteQueryDelete "DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey=3 AND RID=17" -> 2
    ExecuteUpdate "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE UNITKEY=3 AND DIRECTORYCODE=2" "DIRECTORYCODE" -> 1
  )~"));
  EXPECT_EQ(details(), FullDetails());
}

TEST_F(DirCodeMerge, DeletesEveryCodeAndClearsEveryTenant) {
  Database().Number("DELETE from", 12);

  EXPECT_TRUE(Merge("Delete", details(), -1));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteQueryDelete "DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey=3" -> 12
    ExecuteUpdate "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE UNITKEY=3" "DIRECTORYCODE" -> 1
  )~"));
}

TEST_F(DirCodeMerge, DeletesTheRowZeroWhenNoRowIsGiven) {
  EXPECT_TRUE(Controller().pbMergeSave(Connection(), kUnit, "Delete", details()));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteQueryDelete "DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey=3 AND RID=0" -> 1
    ExecuteUpdate "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE UNITKEY=3 AND DIRECTORYCODE=1" "DIRECTORYCODE" -> 1
  )~"));
}

TEST_F(DirCodeMerge, LooksForTenantsOfTheRowZeroAfterADeletionThatFailed) {
  Database().Error("DELETE from", "the disk is gone");

  EXPECT_TRUE(Merge("Delete", details(), 17));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate "),
            Lines{"ExecuteUpdate \"UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE "
                  "UNITKEY=3 AND DIRECTORYCODE=0\" \"DIRECTORYCODE\" -> 1"});
}

TEST_F(DirCodeMerge, NeedsTheConnectionScreenToWrite) {
  Controller().set_mfrmConnectionScreen(nullptr);

  EXPECT_FALSE(Update());
  StringArray toInsert = FullDetails();
  EXPECT_FALSE(Merge("Insert", toInsert));

  EXPECT_TRUE(Host().transcript().StartingWith("Execute").empty());
  EXPECT_EQ(details(), FullDetailsConverted());
  ASSERT_EQ(Host().services().trapped().size(), 2U);
  EXPECT_EQ(Host().services().trapped().front().second, ErrorNumber::kObjectNotSet);
}

TEST_F(DirCodeMerge, NeedsNoConnectionScreenToDelete) {
  Controller().set_mfrmConnectionScreen(nullptr);

  EXPECT_TRUE(Merge("Delete", details()));

  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(DirCodeMerge, LeavesTheDirectoryCodeScreenAlone) {
  Screen().ShowStored();
  Host().StartOver();

  EXPECT_TRUE(Update());
  EXPECT_TRUE(Merge("Delete", details()));

  EXPECT_EQ(Host().transcript().Read(Detail::kEverything).size(), 4U);
}

}  // namespace
}  // namespace qortest
