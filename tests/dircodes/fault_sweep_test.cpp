// Every operation with every one of its calls failing: nothing escapes, the result is what it was
// by then, and nothing is kept.
#include <array>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::MessageButton;
using qorcred::Null;
using qorcred::Value;

using Result = std::optional<bool>;

// Settings without a row have no second column: reading it is the table's failure, and raised.
constexpr int kNoSuchColumn = 9;

/// One use of the controller. `act` gives the operation's result, nothing for one without.
struct Scenario {
  std::string_view name;
  std::string_view operation;
  std::function<void(DirCodeScreen&)> arrange;
  std::function<Result(DirCodeScreen&)> act;
  /// The result when no call fails.
  Result expected = std::nullopt;
  /// The result when the last call fails; False when any other does.
  bool afterLastCall = false;
  /// The results when the first, the second, ... statement fails; none without a result.
  std::vector<bool> afterFailedStatement = {};
  /// What a failed statement raises to the caller; 0 when it raises nothing.
  int raisedByFailedStatement = 0;
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
  return out << scenario.name;
}

Row StoredCode() {
  return {kUnit, kStoredRow, 12,     "5551234",    "77", 5,    9,
          true,  1,          true,   "5559876",    "88", 7,    FromCivil({2026, 11, 20, 9, 30, 0}),
          true,  Null{},     Null{}, "Front desk", true, false};
}

void ShowFull(DirCodeScreen& screen) {
  screen.ShowStored();
  screen.CheckDoNotDisturb(2);
  screen.CheckCallForwarding(3, "5551234", "9");
  screen.host().SetText("txtExtn", "7");
  screen.Check("chkActive");
  screen.host().script().questionAnswer = MessageButton::kYes;
  screen.host().database().Select("SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER", {StoredCode()});
  screen.host().database().Select("FROM Tenants", {{55, "Doe", "Jane", Null{}}});
  screen.host().database().Number("SELECT MODIFIED", 2);
}

void EnterFull(DirCodeScreen& screen) {
  ShowFull(screen);
  screen.host().controls().SetVariable("gstrTag", "");
}

Result None() {
  return std::nullopt;
}

Result MergeSample(DirCodeScreen& screen, std::string_view mode) {
  qorcred::StringArray details(24, "1");
  details[12] = details[15] = "240315";
  details[13] = details[16] = "0930";
  return screen.Merge(mode, details);
}

const std::array kScenarios{
    Scenario{.name = "Schedules",
             .operation = "pbRetrieveSchedules",
             .arrange =
                 [](DirCodeScreen& screen) {
                   screen.host().database().Select("from Schedules", {{9, "Night"}, {5, "Day"}});
                 },
             .act =
                 [](DirCodeScreen& screen) {
                   screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);
                   return None();
                 }},
    Scenario{.name = "Settings",
             .operation = "pbRetrieveSettingsFromUnit",
             .arrange =
                 [](DirCodeScreen& screen) {
                   screen.host().database().Select("FROM UnitSettings", {{4, true, 2, Null{}, 30}});
                 },
             .act =
                 [](DirCodeScreen& screen) {
                   screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(),
                                                                  kUnit);
                   return None();
                 },
             .raisedByFailedStatement = kNoSuchColumn},
    Scenario{
        .name = "SettingsOnALeapDay",
        .operation = "pbRetrieveSettingsFromUnit",
        .arrange =
            [](DirCodeScreen& screen) {
              screen.host().script().now = FromCivil({2028, 2, 29, 10, 0, 0});
              screen.host().database().Select("FROM UnitSettings", {{4, true, 0, Null{}, Null{}}});
            },
        .act =
            [](DirCodeScreen& screen) {
              screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);
              return None();
            },
        .raisedByFailedStatement = kNoSuchColumn},
    Scenario{.name = "Tenants",
             .operation = "pbRetrieveTenants",
             .arrange =
                 [](DirCodeScreen& screen) {
                   screen.host().database().Select("FROM Tenants", {{55, "Doe", "Jane", Null{}}});
                 },
             .act = [](DirCodeScreen& screen) -> Result {
               return screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit, 17);
             },
             .expected = true,
             .afterFailedStatement = {false}},
    Scenario{.name = "CodeList",
             .operation = "pbRetrieveDirCodes",
             .arrange =
                 [](DirCodeScreen& screen) {
                   screen.host().database().Select("FROM DIRECTORYCODE", {StoredCode()});
                 },
             .act =
                 [](DirCodeScreen& screen) {
                   screen.controller().pbRetrieveDirCodes(screen.host().connection(), kUnit, -1,
                                                          kStoredRow);
                   return None();
                 }},
    Scenario{.name = "LoadedCode",
             .operation = "pbRetrieveDirCodes",
             .arrange = ShowFull,
             .act =
                 [](DirCodeScreen& screen) {
                   screen.controller().pbRetrieveDirCodes(screen.host().connection(), kUnit,
                                                          kStoredRow);
                   return None();
                 }},
    Scenario{.name = "NewCode",
             .operation = "pbSave",
             .arrange = EnterFull,
             .act = [](DirCodeScreen& screen) -> Result { return screen.SaveNew(); },
             .expected = true,
             .afterFailedStatement = {true, false, true, true}},
    Scenario{.name = "EditedCode",
             .operation = "pbSave",
             .arrange = ShowFull,
             .act = [](DirCodeScreen& screen) -> Result { return screen.SaveEdited(); },
             .expected = true,
             .afterLastCall = false,
             .afterFailedStatement = {true, false, true, true, true, true, true}},
    Scenario{.name = "RefusedCode",
             .operation = "pbSave",
             .arrange = [](DirCodeScreen& screen) { screen.EnterNew(""); },
             .act = [](DirCodeScreen& screen) -> Result { return screen.SaveNew(); },
             .expected = false,
             .afterFailedStatement = {false, false}},
    Scenario{.name = "DeletionWithQuestion",
             .operation = "pbDelete",
             .arrange = ShowFull,
             .act = [](DirCodeScreen& screen) -> Result {
               return screen.Delete(kStoredRow, false, true);
             },
             .expected = true,
             .afterLastCall = true,
             .afterFailedStatement = {true, true, true, true, true}},
    Scenario{.name = "DeletionWithoutQuestion",
             .operation = "pbDelete",
             .arrange = ShowFull,
             .act = [](DirCodeScreen& screen) -> Result { return screen.Delete(kStoredRow); },
             .expected = false,
             .afterFailedStatement = {false, false}},
    Scenario{.name = "Renumbering",
             .operation = "pbUpdateDirCode",
             .arrange = ShowFull,
             .act = [](DirCodeScreen& screen) -> Result { return screen.Renumber("7"); },
             .expected = true,
             .afterFailedStatement = {true, true, true}},
    Scenario{.name = "MergedInsert",
             .operation = "pbMergeSave",
             .arrange = [](DirCodeScreen&) {},
             .act = [](DirCodeScreen& screen) { return MergeSample(screen, "Insert"); },
             .expected = true,
             .afterFailedStatement = {true}},
    Scenario{.name = "MergedUpdate",
             .operation = "pbMergeSave",
             .arrange = [](DirCodeScreen&) {},
             .act = [](DirCodeScreen& screen) { return MergeSample(screen, "Update"); },
             .expected = true,
             .afterFailedStatement = {true}},
    Scenario{.name = "MergedDeletion",
             .operation = "pbMergeSave",
             .arrange = [](DirCodeScreen&) {},
             .act = [](DirCodeScreen& screen) { return MergeSample(screen, "Delete"); },
             .expected = true,
             .afterFailedStatement = {true, true}},
    Scenario{.name = "Fetch",
             .operation = "pbFetchDirForMerge",
             .arrange =
                 [](DirCodeScreen& screen) {
                   screen.host().database().Select("OLDDIRECTORYCODE<>", {{kUnit, 17, 5}});
                   screen.host().database().Select("ORDER BY DIRECTORYCODE", {{kUnit, 17, 12}});
                 },
             .act = [](DirCodeScreen& screen) -> Result {
               qorcred::ObjectRef table;
               return screen.controller().pbFetchDirForMerge(screen.host().connection(), kUnit,
                                                             table);
             },
             .expected = true,
             .afterFailedStatement = {true, true}},
};

// The operations whose failures the saving of an edit and the loading of a code do not see.
bool IsNested(std::string_view operation, std::string_view trappedIn) {
  return (operation == "pbSave" &&
          (trappedIn == "pbRetrieveDirCodes" || trappedIn == "pbRetrieveTenants")) ||
         (operation == "pbRetrieveDirCodes" && trappedIn == "pbRetrieveTenants");
}

class DirCodeFaultSweep : public ::testing::TestWithParam<Scenario> {};

TEST_P(DirCodeFaultSweep, EndsInTheOperation) {
  const Scenario& scenario = GetParam();
  std::size_t calls = 0;
  {
    DirCodeScreen screen;
    scenario.arrange(screen);
    screen.host().StartOver();
    EXPECT_EQ(scenario.act(screen), scenario.expected);
    EXPECT_TRUE(screen.host().services().trapped().empty());
    calls = screen.host().gate().calls();
  }
  ASSERT_GT(calls, 0U);

  for (std::size_t n = 1; n <= calls; ++n) {
    DirCodeScreen screen;
    RecordingHost& host = screen.host();
    scenario.arrange(screen);
    host.StartOver();
    const auto screens = host.screen().use_count();
    const auto connections = host.connection().use_count();
    host.gate().FailAt(n);

    const Result result = scenario.act(screen);

    const std::string failed = host.gate().failed();
    const ::testing::ScopedTrace trace(__FILE__, __LINE__,
                                       "call " + std::to_string(n) + " failed: " + failed);
    ASSERT_FALSE(failed.empty());
    ASSERT_EQ(host.services().trapped().size(), 1U);
    const auto& [trappedIn, number] = host.services().trapped().front();
    EXPECT_EQ(number, qorcred::ErrorNumber::kApplicationDefined);
    const bool nested = IsNested(scenario.operation, trappedIn);
    if (!nested) {
      EXPECT_EQ(trappedIn, scenario.operation);
    }
    const bool decided = nested || (scenario.afterLastCall && n == calls);
    EXPECT_EQ(result, scenario.expected ? Result(decided) : std::nullopt);
    if (failed != "gblnModifiedFromClass=") {
      EXPECT_EQ(host.controls().Variable("gblnModifiedFromClass"), Value(false));
    }
    EXPECT_EQ(host.database().LiveTables(), 0);
    EXPECT_EQ(host.services().LiveComponents(), 2);
    EXPECT_EQ(host.screen().use_count(), screens);
    EXPECT_EQ(host.connection().use_count(), connections);

    screen.ReleaseController();
    EXPECT_EQ(host.services().LiveComponents(), 0);
    EXPECT_EQ(host.screen().use_count(), 1);
  }
}

// The manager raises nothing when a statement fails: it answers as if there were no rows.
TEST_P(DirCodeFaultSweep, BearsAFailedStatement) {
  const Scenario& scenario = GetParam();
  for (std::size_t n = 1;; ++n) {
    DirCodeScreen screen;
    RecordingHost& host = screen.host();
    scenario.arrange(screen);
    host.StartOver();
    host.database().FailAt(n);

    Result result;
    const int raised = ErrorOf([&] { result = scenario.act(screen); });

    const std::string failed = host.database().failed();
    const std::vector<bool>& results = scenario.afterFailedStatement;
    if (failed.empty()) {
      EXPECT_EQ(raised, 0);
      EXPECT_EQ(result, scenario.expected);
      if (scenario.expected) {
        EXPECT_EQ(n - 1, results.size());
      }
      EXPECT_GT(n, 1U);
      break;
    }
    const ::testing::ScopedTrace trace(__FILE__, __LINE__, failed);
    EXPECT_EQ(raised, scenario.raisedByFailedStatement);
    // Without its capacity the unit takes nothing: there is no number to decode.
    const bool needsCapacity = failed.find("FROM UNITTYPES") != std::string::npos;
    EXPECT_EQ(host.services().trapped().size(), needsCapacity ? 1U : 0U);
    if (scenario.expected) {
      ASSERT_LE(n, results.size());
      EXPECT_EQ(result, Result(results[n - 1]));
    } else {
      EXPECT_EQ(result, std::nullopt);
    }
    EXPECT_EQ(host.database().LiveTables(), 0);
    EXPECT_EQ(host.services().LiveComponents(), 2);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, DirCodeFaultSweep, ::testing::ValuesIn(kScenarios),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(DirCodeAfterAFault, TheSameSaveSucceeds) {
  for (std::size_t n = 1;; ++n) {
    DirCodeScreen screen;
    EnterFull(screen);
    screen.host().StartOver();
    screen.host().gate().FailAt(n);
    (void)screen.SaveNew();
    if (screen.host().gate().failed().empty()) {
      EXPECT_GT(n, 20U);
      break;
    }
    screen.host().StartOver();
    EXPECT_TRUE(screen.SaveNew()) << n;
    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteInsert ").size(), 1U) << n;
    EXPECT_TRUE(screen.host().services().trapped().empty()) << n;
  }
}

}  // namespace
}  // namespace qortest
