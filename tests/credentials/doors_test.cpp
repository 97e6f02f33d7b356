// The names of a unit's doors on the screen's labels.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class DoorDetails : public CredentialTest {
 protected:
  void Doors(std::initializer_list<std::string_view> names) {
    std::vector<Row> rows;
    for (const std::string_view name : names) {
      rows.push_back({kUnit, name});
    }
    Database().Select("from DOORS", std::move(rows));
  }
};

TEST_F(DoorDetails, CutTheNamesWhenTheFirstIsLong) {
  Doors({"Front Entrance Door", "Back", "Garage", "Side Gate Door Two"});

  Controller().pbRetrieveDoorDetails(Connection(), kUnit);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "Select UNITKEY, DOORNAME from DOORS where UNITKEY = 3 order by DOORID" -> 4 rows
    lblDoor1.Caption = "Front Entran"
    lblDoor2.Caption = "Back"
    lblDoor3.Caption = "Garage"
    lblDoor4.Caption = "Side Gate Door"
  )~"));
}

TEST_F(DoorDetails, LeaveLongNamesWholeWhenTheFirstIsShort) {
  Doors({"Main", "Very Long Door Name", "Another Long Door Name", "The Longest Door Name Of All"});

  Controller().pbRetrieveDoorDetails(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select UNITKEY, DOORNAME from DOORS where UNITKEY = 3 order by DOORID" -> 4 rows
    lblDoor1.Caption = "Main"
    lblDoor2.Caption = "Very Long Door Name"
    lblDoor3.Caption = "Another Long Door Name"
    lblDoor4.Caption = "The Longest Door Name Of All"
  )~"));
}

TEST_F(DoorDetails, OfTheFourthLabelAllowTwoCharactersMore) {
  struct Case {
    std::string_view first;
    std::array<std::string_view, 4> captions;
  };
  constexpr std::array<Case, 4> kCases{{
      {"123456789012",
       {"123456789012", "abcdefghijklmnop", "ABCDEFGHIJKLMNOP", "qrstuvwxyzabcdef"}},
      {"1234567890123", {"123456789012", "abcdefghijkl", "ABCDEFGHIJKL", "qrstuvwxyzabcdef"}},
      {"12345678901234", {"123456789012", "abcdefghijkl", "ABCDEFGHIJKL", "qrstuvwxyzabcdef"}},
      {"123456789012345", {"123456789012", "abcdefghijkl", "ABCDEFGHIJKL", "qrstuvwxyzabcd"}},
  }};
  for (const Case& one : kCases) {
    CredentialScreen screen;
    screen.host().database().Select("from DOORS", {{kUnit, one.first},
                                                   {kUnit, "abcdefghijklmnop"},
                                                   {kUnit, "ABCDEFGHIJKLMNOP"},
                                                   {kUnit, "qrstuvwxyzabcdef"}});

    screen.controller().pbRetrieveDoorDetails(screen.host().connection(), kUnit);

    for (std::size_t door = 0; door < one.captions.size(); ++door) {
      EXPECT_EQ(screen.host().controls().Any("lblDoor" + std::to_string(door + 1)).caption(),
                one.captions[door])
          << one.first;
    }
  }
}

TEST_F(DoorDetails, CountCharactersAsTheHostDoes) {
  // Twelve letters of two bytes each fit; a character of two units is not cut in half.
  Doors({"éééééééééééé", "12345678901\U0001F600", "c", "d"});
  Controller().pbRetrieveDoorDetails(Connection(), kUnit);
  EXPECT_EQ(Host().controls().Any("lblDoor1").caption(), "éééééééééééé");
  // No name is cut: the first has twelve characters, however many bytes they take.
  EXPECT_EQ(Host().controls().Any("lblDoor2").caption(), "12345678901\U0001F600");

  CredentialScreen screen;
  screen.host().database().Select("from DOORS", {{kUnit, "12345678901\U0001F600"},
                                                 {kUnit, "ééééééééééééé"},
                                                 {kUnit, "1234567890\U0001F600x"},
                                                 {kUnit, "d"}});
  screen.controller().pbRetrieveDoorDetails(screen.host().connection(), kUnit);
  EXPECT_EQ(screen.host().controls().Any("lblDoor1").caption(), "12345678901");
  EXPECT_EQ(screen.host().controls().Any("lblDoor2").caption(), "éééééééééééé");
  EXPECT_EQ(screen.host().controls().Any("lblDoor3").caption(), "1234567890\U0001F600");
}

TEST_F(DoorDetails, OfAUnitWithoutDoorsChangeNothing) {
  Controller().pbRetrieveDoorDetails(Connection(), kUnit);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "Select UNITKEY, DOORNAME from DOORS where UNITKEY = 3 order by DOORID" -> no rows
  )~"));
}

TEST_F(DoorDetails, WithMissingRowsKeepTheCaptionsSetBefore) {
  Doors({"Main", "Very Long Door Name"});

  Controller().pbRetrieveDoorDetails(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select UNITKEY, DOORNAME from DOORS where UNITKEY = 3 order by DOORID" -> 2 rows
    lblDoor1.Caption = "Main"
    lblDoor2.Caption = "Very Long Door Name"
    Trapped pbRetrieveDoorDetails 9 "Subscript out of range"
  )~"));
}

TEST_F(DoorDetails, BeyondTheFourthAreNotShown) {
  Doors({"A", "B", "C", "D", "E"});

  Controller().pbRetrieveDoorDetails(Connection(), kUnit);

  EXPECT_EQ(Host().transcript().StartingWith("lblDoor").size(), 4U);
}

}  // namespace
}  // namespace qortest
