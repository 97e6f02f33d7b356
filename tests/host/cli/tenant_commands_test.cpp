// The commands for tenants, as they are typed and as they print.
#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class TenantCommands : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  [[nodiscard]] Outcome Tenants(std::vector<std::string> words) {
    words.insert(words.begin(), {"--unit", "2", "tenants"});
    return Run(std::move(words));
  }
  [[nodiscard]] nlohmann::json Listed(const std::string& condition) {
    return Rows({"--unit", "2", "tenants", "list", "--where", condition});
  }
};

TEST_F(TenantCommands, ListHasEveryTenantAndEveryField) {
  const nlohmann::json rows = Rows({"--unit", "2", "tenants", "list"});
  ASSERT_EQ(rows.size(), 75U);
  const nlohmann::json row = Listed("code = 101")[0];
  EXPECT_EQ(row["rid"], 61);
  EXPECT_EQ(row["active"], false);
  EXPECT_EQ(row["resident"], false);
  EXPECT_EQ(row["start"], nullptr);
  EXPECT_EQ(row["schedule1"], "Full Access");
  EXPECT_EQ(row["card1"], "Corvin 30-Bit Card-1001");
  EXPECT_EQ(row["card2"], "Transmitter-301");
  EXPECT_EQ(row["code"], 101);
}

TEST_F(TenantCommands, ATenantIsAddedFoundChangedAndDeleted) {
  const Outcome added = Tenants({"add", "--last", "O'Brien", "--first", "Sinéad", "--schedules",
                                 "Full Access,Late Shift,1,0", "--to", "2027-06-30"});
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_THAT(added.out, HasSubstr("Added tenant O'Brien Sinéad (RID 201) in unit 2"));
  const Outcome edited = Tenants({"edit", "sinead obrien", "--last", "Byrne"});
  EXPECT_EQ(edited.status, 0) << edited.err;
  EXPECT_THAT(edited.out, HasSubstr("Changed 1 tenant in unit 2, Linden Park.\n"));
  const Outcome shown = Tenants({"show", "byrne"});
  EXPECT_THAT(shown.out, HasSubstr("Name at unit  Sinéad Byrne\n"));
  EXPECT_THAT(shown.out, HasSubstr("End           2027-06-30 23:59:59\n"));
  EXPECT_EQ(Tenants({"delete", "byrne"}).status, 1);
  EXPECT_EQ(Tenants({"--no", "delete", "byrne"}).status, 1);
  EXPECT_EQ(Listed("name begins with Byrne").size(), 1U);
  const Outcome deleted = Tenants({"delete", "byrne", "--yes"});
  EXPECT_EQ(deleted.status, 0) << deleted.err;
  EXPECT_THAT(deleted.out, HasSubstr("Deleted 1 tenant in unit 2"));
  EXPECT_EQ(Listed("name begins with Byrne").size(), 0U);
}

TEST_F(TenantCommands, ADryRunListsWhatWouldChange) {
  const Outcome tried =
      Tenants({"edit", "--where", "schedule3 = Early Shift", "--schedule3", "Night Shift", "-n"});
  EXPECT_EQ(tried.status, 0) << tried.err;
  EXPECT_THAT(tried.out, HasSubstr("Schedule 3  Early Shift  Night Shift\n"));
  EXPECT_THAT(tried.out,
              HasSubstr("Would have changed 19 tenants in unit 2, Linden Park, and queued 19 "
                        "programming steps. Nothing was changed.\n"));
  EXPECT_EQ(Rows({"steps"}).size(), 0U);
  EXPECT_THAT(Tenants({"add", "--last", "Tried", "-n"}).out,
              HasSubstr("Would have added tenant Tried in unit 2"));
  EXPECT_EQ(Listed("name = Tried").size(), 0U);
}

TEST_F(TenantCommands, AChangeIsOneObjectForPrograms) {
  const nlohmann::json changed =
      Rows({"--unit", "2", "tenants", "end", "62", "--on", "2026-12-31", "--free-cards"});
  EXPECT_EQ(changed["unit"], 2);
  EXPECT_EQ(changed["changed"].size(), 1U);
  EXPECT_EQ(changed["stored"], true);
  EXPECT_EQ(changed["freed_cards"][0], "Corvin 30-Bit Card-1002");
  EXPECT_EQ(changed["fields"][1]["field"], "end");
  EXPECT_EQ(changed["fields"][1]["after"], "2026-12-31T23:59:59");
  EXPECT_EQ(Rows({"steps"}).size(), 1U);
}

TEST_F(TenantCommands, WhatIsStoredSoAlreadyIsTold) {
  const Outcome same = Tenants({"edit", "62", "--code", "102"});
  EXPECT_EQ(same.status, 0) << same.err;
  EXPECT_EQ(same.out, "Nothing to change in unit 2, Linden Park: it is stored so already.\n");
  EXPECT_EQ(Tenants({"edit", "--where", "code = 7777", "--code", "102"}).out,
            "Nobody in unit 2, Linden Park meets the conditions: nothing was changed.\n");
}

TEST_F(TenantCommands, AFullUnitRefusesWhatTheControllerWouldAssign) {
  EXPECT_EQ(Run({"--unit", "1", "tenants", "edit", "1", "--card", "none"}).status, 0);
  EXPECT_EQ(Run({"--unit", "1", "credentials", "add", "--type", "card26", "--start", "1", "--end",
                 "2", "--facility", "12"})
                .status,
            0);
  const Outcome full = Run({"--unit", "1", "tenants", "edit", "1", "--card", "1"});
  EXPECT_EQ(full.status, 1);
  EXPECT_THAT(full.err, HasSubstr("You cannot enter more than 500 combined codes."));
  EXPECT_THAT(full.err, HasSubstr("qorhost: nothing was changed.\n"));
}

TEST_F(TenantCommands, FindTellsWhoHoldsWhatInAllUnits) {
  const nlohmann::json found = Rows({"find", "tanaka", "xen"});
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0]["kind"], "resident");
  EXPECT_EQ(found[0]["unit"], 2);
  EXPECT_EQ(found[0]["with"], "Corvin 30-Bit Card-1040");
  EXPECT_EQ(Rows({"--unit", "1", "find", "tanaka", "xen"}).size(), 0U);
  const Outcome none = Run({"find", "Tanaxa"});
  EXPECT_EQ(none.status, 0);
  EXPECT_EQ(none.out, "");
  EXPECT_THAT(none.err, HasSubstr("nothing found for 'Tanaxa'; did you mean "));
  EXPECT_THAT(Run({"find", "1"}).err, HasSubstr("these are the best 50 of "));
  EXPECT_EQ(Run({"find", "--", "-"}).status, 2);
}

TEST_F(TenantCommands, WhatCannotBeMeantIsAUsage) {
  using Words = std::vector<std::string>;
  for (const Words& words :
       {Words{"edit", "--first", "x"}, Words{"edit", "62", "--where", "code = 1", "--first", "x"},
        Words{"edit", "62"}, Words{"add", "--first", "x"}, Words{"show", "nobody atall"},
        Words{"end", "62"}, Words{"end", "62", "--on", "soon"}, Words{"list", "--where", "floor"},
        Words{"edit", "62", "--schedules", ""}, Words{"edit", "62", "--card", "99999"},
        Words{"edit", "62", "--code", "7777"}}) {
    const Outcome outcome = Tenants(words);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(words) << outcome.err;
    EXPECT_EQ(outcome.out, "") << testing::PrintToString(words);
  }
  EXPECT_THAT(Tenants({"end", "62", "--on", "soon"}).err, HasSubstr("--on 'soon' is no date"));
}

TEST_F(TenantCommands, AWrongScheduleIsToldByTheOptionThatNamedIt) {
  EXPECT_THAT(Tenants({"edit", "62", "--schedule1", "Nite"}).err,
              HasSubstr("--schedule1: 'Nite' is none of the unit's schedules"));
  EXPECT_THAT(Tenants({"edit", "62", "--schedule4", "Nite"}).err, HasSubstr("--schedule4: 'Nite'"));
  EXPECT_THAT(Tenants({"edit", "62", "--schedules", "1,Nite"}).err,
              HasSubstr("--schedules: 'Nite'"));
  EXPECT_EQ(Tenants({"edit", "62", "--schedules", "Nite,1", "--schedule1", "Late Shift"}).status,
            0);
}

}  // namespace
}  // namespace qorhost::test
