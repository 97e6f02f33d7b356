// The commands for units, doors and schedules.
#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class BuildingCommands : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }
};

TEST_F(BuildingCommands, UnitsAloneAndUnitsListAreTheSame) {
  EXPECT_EQ(Run({"units"}).out, Run({"units", "list"}).out);
  EXPECT_EQ(Run({"doors"}).out, Run({"doors", "list"}).out);
  EXPECT_EQ(Run({"schedules"}).out, Run({"schedules", "list"}).out);
}

TEST_F(BuildingCommands, AUnitIsAddedSetUpAndDeleted) {
  const Outcome added = Run({"units", "add", "Annex", "--type", "Entry Panel 500"});
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_EQ(added.out, "Added unit 4, Annex.\n");
  EXPECT_EQ(Run({"units", "edit", "4", "--name", "Garden House", "--code-digits", "5"}).out,
            "Set up unit 4, Garden House.\n");
  EXPECT_EQ(Run({"units", "edit", "4", "--code-digits", "5"}).out,
            "Set up unit 4, Garden House, as before; nothing was changed.\n");
  const nlohmann::json rows = Rows({"units", "list", "--settings", "--unit", "4"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0]["capacity"], 500);
  EXPECT_EQ(rows[0]["code_digits"], 5);
  EXPECT_EQ(rows[0]["ignores_facility"], false);
  EXPECT_EQ(rows[0]["default_end"], "none");
  EXPECT_EQ(Run({"units", "delete", "4"}).out, "Deleted unit 4, Garden House.\n");
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(BuildingCommands, SeveralUnitsAreSetUpAllOrNone) {
  const Outcome set = Run({"units", "edit", "2", "3", "2", "--default-end", "90d"});
  EXPECT_EQ(set.status, 0) << set.err;
  EXPECT_EQ(set.out, "Set up unit 2, Linden Park; unit 3, Mill Street Lofts.\n");
  const auto ends = [this] {
    std::vector<std::string> all;
    for (const auto& row : Rows({"units", "list", "--settings"})) {
      all.push_back(row["default_end"]);
    }
    return all;
  };
  EXPECT_EQ(ends()[1], "90d");
  EXPECT_EQ(ends()[2], "90d");
  EXPECT_EQ(Rows({"history", "list", "--limit", "1"})[0]["what"], "edit units 2, 3");
  EXPECT_EQ(Run({"units", "edit", "2", "99", "--default-end", "none"}).status, 2);
  EXPECT_EQ(ends()[1], "90d");
  EXPECT_EQ(Run({"units", "edit", "2", "3", "--default-end", "none", "-n"}).status, 0);
  EXPECT_EQ(ends()[2], "90d");
  const Outcome named = Run({"units", "edit", "2", "3", "--name", "Both"});
  EXPECT_EQ(named.status, 2);
  EXPECT_EQ(named.err, "qorhost: --name is of one unit: name one unit, or leave it out\n");
}

TEST_F(BuildingCommands, SeveralDoorsAreRenamedAllOrNone) {
  const auto names = [this] {
    std::vector<std::string> all;
    for (const auto& row : Rows({"doors", "list", "--unit", "2"})) {
      all.push_back(row["name"]);
    }
    return all;
  };
  const std::vector<std::string> before = names();
  const Outcome renamed =
      Run({"--unit", "2", "doors", "edit", "3", "4", "--name", "Garden", "--name", "Yard"});
  EXPECT_EQ(renamed.status, 0) << renamed.err;
  EXPECT_EQ(renamed.out, "Door 3 in unit 2, Linden Park is called Garden now, and was " +
                             before[2] +
                             "; Door 4 in unit 2, Linden Park is called Yard now, and "
                             "was " +
                             before[3] + ".\n");
  EXPECT_EQ(names()[2], "Garden");
  EXPECT_EQ(names()[3], "Yard");
  EXPECT_EQ(
      Run({"--unit", "2", "doors", "edit", "3", "4", "--name", "Pool", "--name", "Pool"}).status,
      2);
  EXPECT_EQ(names()[2], "Garden") << "one of two is nothing";
  const Outcome few = Run({"--unit", "2", "doors", "edit", "3", "4", "--name", "Pool"});
  EXPECT_EQ(few.status, 2);
  EXPECT_EQ(few.err,
            "qorhost: 1 name for 2 doors: give each door one with --name, in the same order\n");
}

TEST_F(BuildingCommands, AUnitWithSomethingInItIsDeletedWithConsentAlone) {
  const Outcome refused = Run({"units", "delete", "2"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("unit 2, Linden Park has 75 tenants, 145 credentials, 6 "
                                     "directory codes, which are deleted with it. Go on?"));
  EXPECT_EQ(Run({"units", "delete", "2", "--no"}).status, 1);
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  EXPECT_EQ(Run({"units", "delete", "2", "-n"}).status, 0) << "a trial asks nothing";
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  const Outcome deleted = Run({"units", "delete", "2", "--yes"});
  EXPECT_EQ(deleted.status, 0) << deleted.err;
  EXPECT_EQ(Rows({"units"}).size(), 2U);
}

TEST_F(BuildingCommands, ACapacityThatOtherUnitsShareIsAskedFor) {
  EXPECT_EQ(Run({"units", "add", "Annex", "--type", "Entry Panel 2000"}).status, 0);
  const Outcome refused = Run({"units", "edit", "2", "--capacity", "3000"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("The capacity of the type 'Entry Panel 2000' is that of unit "
                                     "4, Annex as well. Change it for all of them?"));
  EXPECT_EQ(Run({"units", "edit", "2", "--capacity", "3000", "--yes"}).status, 0);
  EXPECT_EQ(Rows({"units", "--unit", "4"})[0]["capacity"], 3000);
}

TEST_F(BuildingCommands, WrongValuesAreNamedByTheirOptions) {
  struct Row {
    std::vector<std::string> words;
    std::string told;
  };
  for (const Row& row :
       {Row{{"units", "edit", "2", "--capacity", "32768"},
            "--capacity '32768' must be a whole number from 1 to 32767, in digits alone"},
        Row{{"units", "edit", "9", "--name", "X"}, "there is no unit '9'"},
        Row{{"units", "edit", "2"}, "say what to change"},
        Row{{"units", "add", "X"},
            "a new unit needs --type: one that is stored, or the name of a new one with its "
            "capacity"},
        Row{{"doors", "edit", "7", "--name", "X", "--unit", "2"},
            "the unit has no door '7': 'qorhost doors' lists them"},
        Row{{"schedules", "edit", "Full Access", "--name", "X", "--unit", "2"},
            "every unit has the schedule 'Full Access', as it is"},
        Row{{"schedules", "delete", "X", "--unit", "2"},
            "the unit has no schedule 'X': 'qorhost schedules' lists them"},
        Row{{"schedules", "add", "X"}, "say which unit to change"}}) {
    const Outcome outcome = Run(row.words);
    EXPECT_EQ(outcome.status, 2) << row.told;
    EXPECT_THAT(outcome.err, HasSubstr(row.told));
  }
}

TEST_F(BuildingCommands, ADoorIsRenamed) {
  const Outcome outcome = Run({"doors", "edit", "4", "--name", "Yard", "--unit", "2"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(
      outcome.out,
      "Door 4 in unit 2, Linden Park is called Yard now, and was Service Corridor Level Two.\n");
  EXPECT_EQ(Rows({"doors", "--unit", "2"})[3]["name"], "Yard");
}

TEST_F(BuildingCommands, SchedulesAreAddedRenamedAndDeleted) {
  const auto add =
      nlohmann::json::parse(Run({"schedules", "add", "Gardeners", "--unit", "2", "--json"}).out);
  EXPECT_EQ(add["added"][0]["id"], 6);
  EXPECT_EQ(add["stored"], true);
  EXPECT_EQ(Run({"schedules", "edit", "6", "--name", "Garden", "--unit", "2", "-n"}).out,
            "The schedule 6 in unit 2, Linden Park is called Garden now, and was Gardeners; this "
            "was a trial, nothing was changed.\n");
  EXPECT_EQ(Run({"schedules", "edit", "6", "--name", "Garden", "--unit", "2"}).status, 0);
  EXPECT_EQ(Run({"schedules", "delete", "Garden", "--unit", "2", "--no"}).status, 1);
  EXPECT_EQ(Run({"schedules", "delete", "Garden", "--unit", "2"}).out,
            "Deleted the schedule 6, Garden, in unit 2, Linden Park.\n");
  const Outcome used = Run({"schedules", "delete", "Late Shift", "--unit", "2"});
  EXPECT_EQ(used.status, 1);
  EXPECT_THAT(used.err, HasSubstr("the schedule 3, Late Shift, is in use by 19 tenants: "));
}

}  // namespace
}  // namespace qorhost::test
