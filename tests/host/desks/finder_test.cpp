// People, cards, codes and phone numbers that are looked for.
#include "host/desks/finder.h"

#include <gmock/gmock.h>

#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::TextOrEmpty;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class FinderTest : public DeskFixture {
 protected:
  void SetUp() override {
    DeskFixture::SetUp();
    Run("UPDATE Tenants SET LastName='Öztürk', FirstName='Zeynep', MiddleInitial='B', "
        "NameAtUnit='Family Lund' WHERE RID=62");
  }

  /// "tenant 62 Öztürk Zeynep B", best first.
  [[nodiscard]] std::vector<std::string> Find(const std::string& text) {
    std::vector<std::string> found;
    for (const auto& row : FindText(session(), session().Units(), text, 50).rows.rows) {
      found.push_back(TextOrEmpty(row[1]) + " " + TextOrEmpty(row[2]) + " " + TextOrEmpty(row[3]));
    }
    return found;
  }
  [[nodiscard]] std::string With(const std::string& text) {
    return TextOrEmpty(FindText(session(), session().Units(), text, 50).rows.rows.at(0).at(4));
  }
};

TEST_F(FinderTest, FindsNamesWithoutAccentsComposedOrNot) {
  for (const char* text :
       {"ozturk zeynep", "ÖZTÜRK ZEY", "O\u0308ztu\u0308rk zeynep b", "zeynep", "family lund"}) {
    EXPECT_THAT(Find(text), ElementsAre("tenant 62 Öztürk Zeynep B")) << text;
  }
}

TEST_F(FinderTest, TheBestMatchStandsFirst) {
  Run("UPDATE Tenants SET LastName='Zeynepsen', FirstName='Zoe', MiddleInitial=NULL WHERE RID=63");
  Run("UPDATE Tenants SET LastName='Zeynep', FirstName=NULL, MiddleInitial=NULL WHERE RID=64");
  EXPECT_THAT(Find("zeynep"), ElementsAre("tenant 64 Zeynep", "tenant 62 Öztürk Zeynep B",
                                          "tenant 63 Zeynepsen Zoe"));
}

TEST_F(FinderTest, AResidentIsToldToBeOne) {
  Run("UPDATE Tenants SET LastName='Qwertz' WHERE RID=80");
  EXPECT_EQ(Find("qwertz").at(0).substr(0, 11), "resident 80");
}

TEST_F(FinderTest, FindsCardsWithTheirHolders) {
  const std::string rid = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62");
  EXPECT_THAT(Find("1002"), Contains("card " + rid + " Corvin 30-Bit Card-1002"));
  EXPECT_THAT(Find("corvin 30-bit card-1002"),
              Contains("card " + rid + " Corvin 30-Bit Card-1002"));
  Run("UPDATE CREDENTIALBANK SET PINNo=60999 WHERE RID=" + rid);
  EXPECT_THAT(Find("60999"), ElementsAre("card " + rid + " Corvin 30-Bit Card-60999"));
  EXPECT_EQ(With("60999"), "Öztürk Zeynep B");
  EXPECT_EQ(With("zeynep"), "Corvin 30-Bit Card-60999, code 102");
}

TEST_F(FinderTest, FindsCodesByTheirNumbersNamesAndPhones) {
  Run("UPDATE DIRECTORYCODE SET DIRECTORYCODE=7177, DISPLAYNAME='Hausmeister', "
      "PHONENUMBER='+49 (30) 123-4567' WHERE RID=12");
  for (const char* text :
       {"7177", "007177", "hausm", "+49 30 1234567", "4930-1234567", "1234567"}) {
    EXPECT_THAT(Find(text), ElementsAre("directory code 12 7177")) << text;
  }
  EXPECT_EQ(With("7177"), "+49 (30) 123-4567; Öztürk Zeynep B");
}

TEST_F(FinderTest, LooksInTheGivenUnitsAlone) {
  const Found found = FindText(session(), {{1, "Harbour Court"}}, "zeynep", 50);
  EXPECT_EQ(found.total, 0U);
}

TEST_F(FinderTest, GivesAsManyAsWereAskedForAndTellsHowManyThereAre) {
  const Found found = FindText(session(), session().Units(), "1", 3);
  EXPECT_EQ(found.rows.rows.size(), 3U);
  EXPECT_GT(found.total, 100U);
}

TEST_F(FinderTest, SuggestsWhatIsNearlySo) {
  for (const char* text : {"zeinep", "zeynp", "zeyneep", "zenyep"}) {
    const Found found = FindText(session(), session().Units(), text, 50);
    EXPECT_EQ(found.total, 0U) << text;
    EXPECT_THAT(found.suggestions, ElementsAre("Öztürk Zeynep B")) << text;
  }
  EXPECT_THAT(FindText(session(), session().Units(), "zzzzzz", 50).suggestions, IsEmpty());
}

TEST_F(FinderTest, ATextWithoutLettersIsAFault) {
  EXPECT_EQ(FieldAtFault([&] { (void)Find(" -'. "); }), find_input::kText);
}

}  // namespace
}  // namespace qorhost::test
