// Questions to lists at the command line: one set of options for all of them.
#include <gmock/gmock.h>

#include <set>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ListCommands : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }
};

/// The commands whose lists answer questions, with what they need to have rows.
const std::vector<std::vector<std::string>> kLists{{"credentials", "list"},
                                                   {"dircodes", "list"},
                                                   {"tenants", "list"},
                                                   {"units", "list"},
                                                   {"doors", "list"},
                                                   {"schedules", "list"},
                                                   {"history", "list"},
                                                   {"find", "tanaka"},
                                                   {"report", "dircodes"},
                                                   {"report", "credentials"},
                                                   {"access", "list"},
                                                   {"attention", "list"},
                                                   {"overview"}};

std::vector<std::string> With(std::vector<std::string> words, std::vector<std::string> more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

TEST_F(ListCommands, AFieldGoesByTheNamesOfListsAndOfReports) {
  const nlohmann::json code =
      Rows({"dircodes", "list", "--unit", "2", "--where", "Directory Code between 101 AND 102",
            "--where", "Directory Status = yes", "--sort", "-Directory Code", "--columns",
            "Phone No.,code"});
  ASSERT_EQ(code.size(), 2U);
  EXPECT_EQ(code[0]["code"], 102);
  EXPECT_EQ(code[0].size(), 2U);
  EXPECT_TRUE(code[0].contains("phone"));
  const nlohmann::json reported =
      Rows({"report", "dircodes", "--unit", "2", "--where", "code = 101", "--where",
            "active = Active", "--sort", "-code", "--columns", "phone,Directory Code"});
  ASSERT_EQ(reported.size(), 1U);
  EXPECT_EQ(reported[0]["Directory Code"], 101);
  EXPECT_EQ(reported[0]["Phone No."], code[1]["phone"]);
  EXPECT_EQ(Rows({"report", "credentials", "--unit", "2", "--where", "type = card26", "--where",
                  "tenant =", "--columns", "number,tenant"}),
            Rows({"report", "credentials", "--unit", "2", "--where", "Credential Type = card26",
                  "--where", "Tenant Name =", "--columns", "Card Number,Assigned To"}));
  EXPECT_EQ(Rows({"credentials", "list", "--unit", "2", "--where", "Assigned To begins with O'B"}),
            Rows({"credentials", "list", "--unit", "2", "--where", "tenant begins with O'B"}));
  EXPECT_EQ(Rows({"tenants", "list", "--unit", "2", "--where", "Directory Code = 101"}),
            Rows({"tenants", "list", "--unit", "2", "--where", "code = 101"}));
}

TEST_F(ListCommands, ATypeIsComparedBothWays) {
  const std::vector<std::string> list{"credentials", "list", "--unit", "2", "--where"};
  const std::size_t all = Rows({"credentials", "list", "--unit", "2"}).size();
  const std::size_t transmitters = Rows(With(list, {"type = transmitter"})).size();
  EXPECT_GT(transmitters, 0U);
  EXPECT_EQ(Rows(With(list, {"type <> transmitter"})).size(), all - transmitters);
  const Outcome reported =
      Run({"report", "credentials", "--unit", "2", "--where", "type <> transmitter"});
  EXPECT_EQ(reported.status, 2);
  EXPECT_THAT(reported.err, HasSubstr("has no operator that goes with 'Credential Type': equal"));
}

TEST_F(ListCommands, AllTakeAnOrderColumnsAndALimit) {
  for (const auto& list : kLists) {
    SCOPED_TRACE(list.front() + " " + list.back());
    const nlohmann::json all = Rows(With(list, {"--all-units"}));
    ASSERT_FALSE(all.empty());
    const std::string field = all[0].items().begin().key();
    const nlohmann::json first =
        Rows(With(list, {"--all-units", "--sort", field, "--columns", field, "--limit", "1"}));
    const nlohmann::json last =
        Rows(With(list, {"--all-units", "--sort", "-" + field, "--columns", field}));
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].size(), 1U);
    EXPECT_EQ(last.size(), all.size());
    EXPECT_EQ(Run(With(list, {"--sort", "nothing"})).status, 2);
    EXPECT_EQ(Run(With(list, {"--columns", "nothing"})).status, 2);
    EXPECT_EQ(Run(With(list, {"--limit", "0"})).status, 2);
    EXPECT_EQ(Run(With(list, {"--where", "nothing = 1"})).status, 2);
    EXPECT_EQ(Run(With(list, {"--all-units", "--unit", "2"})).status, 2);
  }
}

TEST_F(ListCommands, AWrongQuestionPrintsNoTitle) {
  EXPECT_EQ(Run({"tenants", "list", "--sort", "floor"}).out, "");
  EXPECT_EQ(Run({"report", "credentials", "--sort", "floor"}).out, "");
}

TEST_F(ListCommands, OfOneUnitStandUnderItsNameAndOfAllWithItsKey) {
  EXPECT_THAT(Run({"tenants", "list", "--unit", "2"}).out, StartsWith("Unit 2, Linden Park\nRID"));
  unitOfEnvironment_ = "2";
  EXPECT_THAT(Run({"tenants", "list"}).out, StartsWith("Unit 2, Linden Park\nRID"));
  EXPECT_THAT(Run({"tenants", "list", "--all-units"}).out, StartsWith("Unit  RID  Name"));
  EXPECT_EQ(Rows({"tenants", "list", "--all-units"}).size(), 200U);
  EXPECT_THAT(Run({"report", "dircodes", "--all-units"}).out, StartsWith("Unit  Directory Code"));
}

TEST_F(ListCommands, WhatIsChangedInOneUnitIsListedOfTheOneThatTheEnvironmentNames) {
  const auto unitsIn = [this](const std::vector<std::string>& words) {
    std::set<int> units;
    for (const nlohmann::json& row : Rows(words)) {
      units.insert(row["unit"].get<int>());
    }
    return units;
  };
  for (const char* unit : {"1", "2"}) {
    ASSERT_EQ(Run({"--unit", unit, "dircodes", "edit", "101", "--phone", "555-0999"}).status, 0);
  }
  const std::set<int> changed{1, 2};
  const std::set<int> all{1, 2, 3};
  for (const std::string list : {"doors", "schedules", "steps"}) {
    SCOPED_TRACE(list);
    const std::set<int>& every = list == "steps" ? changed : all;
    unitOfEnvironment_.reset();
    EXPECT_EQ(unitsIn({list, "list"}), every);
    unitOfEnvironment_ = "2";
    EXPECT_EQ(unitsIn({list}), std::set<int>{2});
    EXPECT_EQ(unitsIn({list, "list"}), std::set<int>{2});
    EXPECT_EQ(unitsIn({list, "list", "--unit", "1"}), std::set<int>{1});
    EXPECT_EQ(unitsIn({list, "list", "--all-units"}), every);
    unitOfEnvironment_ = "77";
    EXPECT_EQ(Run({list, "list"}).status, 2);
  }
}

TEST_F(ListCommands, OthersLookAtAllUnitsWhateverTheEnvironmentNames) {
  unitOfEnvironment_ = "2";
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  EXPECT_EQ(Rows({"units", "list", "--settings"}).size(), 3U);
  EXPECT_EQ(Rows({"overview"}).size(), 3U);
  EXPECT_EQ(Rows({"find", "1004"}).size(), 3U);
  EXPECT_EQ(Run({"--unit", "1", "doors", "edit", "4", "--name", "Yard"}).status, 0);
  EXPECT_EQ(Rows({"history", "list", "--where", "unit = 1"}).size(), 1U);
}

TEST_F(ListCommands, FitTheTerminalAndGoWholeIntoAPipe) {
  columns_ = 60;
  EXPECT_THAT(Run({"units", "list"}).out, HasSubstr("Pending steps"));
  outputIsTerminal_ = true;
  const std::string fitted = Run({"units", "list"}).out;
  EXPECT_THAT(fitted, AllOf(HasSubstr("Mill Street …"), HasSubstr("3 rows (not shown: ")));
  EXPECT_THAT(Run({"units", "list", "--columns", "unit,name"}).out,
              AllOf(HasSubstr("Mill Street Lofts"), Not(HasSubstr("not shown"))));
}

TEST_F(ListCommands, ReportsTakeTheWordsThatTheyPrint) {
  EXPECT_EQ(Rows({"report", "dircodes", "--where", "Directory Status = Active"}).size(), 10U);
  EXPECT_EQ(Rows({"report", "dircodes", "--where", "Directory Status = inactive"}).size(), 0U);
  EXPECT_EQ(Rows({"dircodes", "list", "--where", "Directory Status = Active"}).size(), 10U);
  EXPECT_EQ(Rows({"dircodes", "list", "--where", "active = inactive"}).size(), 0U);
  EXPECT_EQ(Rows({"report", "credentials", "--where", "Assigned To begins with Abbott"}),
            Rows({"report", "credentials", "--where", "Tenant Name begins with Abbott"}));
  const nlohmann::json sorted =
      Rows({"report", "credentials", "--sort=-Card Number", "--limit", "2"});
  EXPECT_GE(sorted[0]["Card Number"], sorted[1]["Card Number"]);
}

TEST_F(ListCommands, ANewLimitOfFindIsKeptAndAConditionLooksAtAllThatMatch) {
  EXPECT_EQ(Rows({"find", "1", "--limit", "70"}).size(), 70U);
  const nlohmann::json codes = Rows({"find", "1", "--where", "kind = directory code"});
  EXPECT_FALSE(codes.empty());
  EXPECT_EQ(codes[0]["kind"], "directory code");
}

TEST_F(ListCommands, AMomentIsGivenBackAsItIsPrinted) {
  ASSERT_EQ(Run({"--unit", "2", "dircodes", "edit", "101", "--phone", "555-0999"}).status, 0);
  const std::string queued = Rows({"steps", "list"})[0]["queued"];
  EXPECT_EQ(Rows({"steps", "list", "--where", "queued >= " + queued}).size(), 1U) << queued;
  EXPECT_EQ(Rows({"steps", "list", "--where", "queued = " + queued}).size(), 1U) << queued;
  EXPECT_EQ(Rows({"steps", "list", "--where", "queued > " + queued}).size(), 0U) << queued;
  const nlohmann::json done = Rows({"history", "list"});
  const std::string time = done.back()["time"];
  EXPECT_EQ(Rows({"history", "list", "--where", "time = " + time}),
            Rows({"history", "list", "--since", time}));
  EXPECT_EQ(Rows({"history", "list", "--since", "2099-01-01T00:00:00+14:00"}).size(), 0U);
  const std::string end = "2026-12-31T18:00:00";
  ASSERT_EQ(Run({"--unit", "2", "tenants", "edit", "rid:62", "--to", end}).status, 0);
  const nlohmann::json ending = Rows({"--unit", "2", "tenants", "list", "--where", "end = " + end});
  ASSERT_EQ(ending.size(), 1U);
  EXPECT_EQ(ending[0]["end"], end);
}

TEST_F(ListCommands, ALimitOfTheHistoryShowsTheLatest) {
  EXPECT_EQ(Run({"doors", "edit", "4", "--name", "Yard", "--unit", "2"}).status, 0);
  const nlohmann::json latest = Rows({"history", "list", "--limit", "1"});
  ASSERT_EQ(latest.size(), 1U);
  EXPECT_EQ(latest[0]["entry"], 2);
  EXPECT_EQ(Rows({"history", "list", "--where", "unit = 2"}).size(), 1U);
  EXPECT_EQ(Rows({"history", "list", "--sort", "entry", "--limit", "1"})[0]["entry"], 1);
}

}  // namespace
}  // namespace qorhost::test
