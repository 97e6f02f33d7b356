// Every operation with every one of its calls failing: nothing escapes, the result is what it was
// by then, no transaction stays open and nothing is kept.
#include <array>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::MessageButton;
using qorcred::Null;
using qorcred::Value;

/// One use of the controller. `act` gives the operation's result, nothing for one without.
struct Scenario {
  std::string_view name;
  std::string_view operation;
  ScreenKind kind = ScreenKind::kCredential;
  std::function<void(CredentialScreen&)> arrange;
  std::function<std::optional<bool>(CredentialScreen&)> act;
  /// The result when no call fails.
  std::optional<bool> expected = std::nullopt;
  /// The results when the first, the second, ... statement fails; none without a result.
  std::vector<bool> afterFailedStatement = {};
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
  return out << scenario.name;
}

std::optional<bool> Save(CredentialScreen& screen) {
  std::int32_t rid = 0;
  return screen.SaveNew(&rid);
}

std::optional<bool> SaveWithTenants(CredentialScreen& screen) {
  std::int32_t rid = 0;
  return screen.SaveNewWithTenants(&rid);
}

std::optional<bool> SaveEdited(CredentialScreen& screen) {
  return screen.SaveEdited();
}

void StoredHeldByTenant(CredentialScreen& screen) {
  screen.ShowStored(1, 1);
  screen.host().database().Select("SELECT TENANTID FROM TENANTS", {{56}});
  screen.host().database().Number("SELECT TenantID FROM Tenants", 56);
  screen.host().script().questionAnswer = MessageButton::kYes;
}

const std::array kScenarios{
    Scenario{.name = "Schedules",
             .operation = "pbRetrieveSchedules",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.host().database().Select("from Schedules", {{5, "Day"}, {9, "Night"}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);
               return std::nullopt;
             }},
    Scenario{.name = "Tenants",
             .operation = "pbRetrieveTenants",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.host().database().Select("FROM Tenants", {{55, "Doe", "Jane", Null{}}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit);
               return std::nullopt;
             }},
    Scenario{.name = "SettingsOfADayCount",
             .operation = "pbRetrieveSettingsFromUnit",
             .kind = ScreenKind::kTenantCreating,
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.host().database().Select("FROM UnitSettings", {{true, 2, Null{}, 30}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);
               return std::nullopt;
             }},
    Scenario{
        .name = "SettingsOnALeapDay",
        .operation = "pbRetrieveSettingsFromUnit",
        .kind = ScreenKind::kTenantCreating,
        .arrange =
            [](CredentialScreen& screen) {
              screen.host().script().now = qorcred::FromCivil({2028, 2, 29, 10, 0, 0});
              screen.host().database().Select("FROM UnitSettings", {{true, 0, Null{}, Null{}}});
            },
        .act = [](CredentialScreen& screen) -> std::optional<bool> {
          screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);
          return std::nullopt;
        }},
    Scenario{.name = "CredentialList",
             .operation = "pbRetrieveCredentials",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.host().database().Select("FROM CREDENTIALBANK",
                                                   {{kUnit, 17, 0, 1, 2, 0, 0, 1, "", 0},
                                                    {kUnit, 18, 2, 1, 2, 0, 0, 1, "", 0}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, -1, 18);
               return std::nullopt;
             }},
    Scenario{.name = "LoadedTransmitter",
             .operation = "pbRetrieveCredentials",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.ShowStored(1, 0);
                   screen.host().database().Select("FROM CREDENTIALBANK",
                                                   {{kUnit, 17, 2, 1, 2, 0, 0, 4, "", 0}});
                   screen.host().database().Select("FROM TENANTS", {{56, "Roe", "", ""}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, 17);
               return std::nullopt;
             }},
    Scenario{.name = "LoadedCard",
             .operation = "pbRetrieveCredentials",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.ShowStored(2, 0);
                   screen.host().database().Select("FROM CREDENTIALBANK",
                                                   {{kUnit, 18, 1, 1, 2, 0, 0, 1, "", 2}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, 18);
               return std::nullopt;
             }},
    Scenario{.name = "TransmitterLayout",
             .operation = "pbTransmitterCtls",
             .arrange = [](CredentialScreen&) {},
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbTransmitterCtls(true);
               return std::nullopt;
             }},
    Scenario{.name = "CardLayout",
             .operation = "pbTransmitterCtls",
             .arrange = [](CredentialScreen&) {},
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbTransmitterCtls(false);
               return std::nullopt;
             }},
    Scenario{.name = "Doors",
             .operation = "pbRetrieveDoorDetails",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.host().database().Select(
                       "from DOORS", {{kUnit, "A"}, {kUnit, "B"}, {kUnit, "C"}, {kUnit, "D"}});
                 },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               screen.controller().pbRetrieveDoorDetails(screen.host().connection(), kUnit);
               return std::nullopt;
             }},
    Scenario{
        .name = "DeletionOfAnUnassigned",
        .operation = "pbDelete",
        .arrange = [](CredentialScreen& screen) { screen.ShowStored(1, 0); },
        .act = [](CredentialScreen& screen) -> std::optional<bool> { return screen.Delete(17); },
        .expected = true,
        .afterFailedStatement = {true, true}},
    Scenario{
        .name = "DeletionOfAnAssigned",
        .operation = "pbDelete",
        .arrange = StoredHeldByTenant,
        .act = [](CredentialScreen& screen) -> std::optional<bool> { return screen.Delete(17); },
        .expected = true,
        .afterFailedStatement = {true, true, true, true, true}},
    Scenario{.name = "Renumbering",
             .operation = "pbUpdatePinNo",
             .arrange = [](CredentialScreen& screen) { screen.ShowStored(1, 0); },
             .act = [](CredentialScreen& screen) -> std::optional<bool> {
               return screen.Renumber(4242);
             },
             .expected = true,
             .afterFailedStatement = {true, false}},
    Scenario{
        .name = "RenumberingToZero",
        .operation = "pbUpdatePinNo",
        .arrange = [](CredentialScreen& screen) { screen.ShowStored(1, 0); },
        .act = [](CredentialScreen& screen) -> std::optional<bool> { return screen.Renumber(0); },
        .expected = false},
    Scenario{.name = "EditIntoTheSecondSlot",
             .operation = "pbSave",
             .arrange =
                 [](CredentialScreen& screen) {
                   StoredHeldByTenant(screen);
                   screen.host().database().Number("SET CREDENTIALID1 = 17", 0);
                 },
             .act = SaveEdited,
             .expected = true,
             .afterFailedStatement = {true, true, true, true, false, true, true}},
    Scenario{.name = "EditInAFullUnit",
             .operation = "pbSave",
             .arrange =
                 [](CredentialScreen& screen) {
                   StoredHeldByTenant(screen);
                   screen.CountCodes("500", "0", "0");
                 },
             .act = SaveEdited,
             .expected = true,
             .afterFailedStatement = {true, true, true, true, false}},
    Scenario{.name = "SingleCard",
             .operation = "pbSave",
             .arrange = [](CredentialScreen& screen) { screen.EnterSingle(kCard26, "10"); },
             .act = Save,
             .expected = true,
             .afterFailedStatement = {true, false, false}},
    Scenario{.name = "DuplicateCard",
             .operation = "pbSave",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.EnterSingle(kCard26, "10");
                   screen.host().database().Select("and PINNo = 10", {{kUnit, 10}});
                 },
             .act = Save,
             .expected = false,
             .afterFailedStatement = {true}},
    Scenario{.name = "RangeOfTransmitters",
             .operation = "pbSave",
             .arrange = [](CredentialScreen& screen) { screen.EnterRange(kTransmitter, "1", "3"); },
             .act = Save,
             .expected = true,
             .afterFailedStatement = {true, false, false, false, false}},
    Scenario{.name = "RefusedNumber",
             .operation = "pbSave",
             .arrange = [](CredentialScreen& screen) { screen.EnterSingle(kCard26, ""); },
             .act = Save,
             .expected = false},
    Scenario{.name = "RangeBeyondTheCapacity",
             .operation = "pbSave",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.EnterRange(kCard26, "1", "5");
                   screen.CountCodes("498", "0", "0");
                 },
             .act = Save,
             .expected = false,
             .afterFailedStatement = {false, false}},
    Scenario{.name = "RangeWithTenants",
             .operation = "pbSave",
             .kind = ScreenKind::kTenantCreating,
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.EnterRange(kCard30, "1", "2");
                   screen.EnterTenantDefaults();
                 },
             .act = SaveWithTenants,
             .expected = true,
             .afterFailedStatement = {true, false, true, false, false, false, false}},
    Scenario{.name = "SecondRowNotInserted",
             .operation = "pbSave",
             .arrange =
                 [](CredentialScreen& screen) {
                   screen.EnterRange(kCard26, "1", "3");
                   screen.host().database().Number("INSERT INTO CREDENTIALBANK", 101);
                   screen.host().database().Number("INSERT INTO CREDENTIALBANK", 0);
                 },
             .act = Save,
             .expected = false,
             .afterFailedStatement = {false, false, false, false}},
};

class FaultSweep : public ::testing::TestWithParam<Scenario> {};

TEST_P(FaultSweep, EndsInTheOperation) {
  const Scenario& scenario = GetParam();
  std::size_t failures = 0;
  for (std::size_t n = 1;; ++n) {
    CredentialScreen screen(scenario.kind);
    RecordingHost& host = screen.host();
    scenario.arrange(screen);
    host.controls().SetVariable("gstrNewTenantIDs", "9,");
    host.StartOver();
    const auto screens = host.screen().use_count();
    const auto connections = host.connection().use_count();
    host.gate().FailAt(n);

    const std::optional<bool> result = scenario.act(screen);

    const std::string failed = host.gate().failed();
    if (failed.empty()) {
      EXPECT_EQ(result, scenario.expected);
      EXPECT_TRUE(host.services().trapped().empty());
      EXPECT_EQ(host.gate().calls(), n - 1);
      break;
    }
    ++failures;
    const ::testing::ScopedTrace trace(__FILE__, __LINE__,
                                       "call " + std::to_string(n) + " failed: " + failed);
    // The result is set just before the transaction is committed.
    const bool decided = failed == "CommitTrans";
    EXPECT_EQ(result, scenario.expected ? std::optional<bool>(decided) : std::nullopt);
    ASSERT_EQ(host.services().trapped().size(), 1U);
    const auto& [trappedIn, number] = host.services().trapped().front();
    EXPECT_EQ(number, qorcred::ErrorNumber::kApplicationDefined);
    // Loading a credential switches the layout by the operation that hosts call, too.
    if (trappedIn != "pbTransmitterCtls" || scenario.operation != "pbRetrieveCredentials") {
      EXPECT_EQ(trappedIn, scenario.operation);
    }
    if (failed != "RollbackTrans") {
      EXPECT_EQ(host.transactions().open(), 0);
    }
    EXPECT_EQ(host.transactions().committed(), 0);
    if (failed == "BeginTrans" || host.transactions().begun() > 0) {
      // Where the clean-up alone puts the variable, there is no second try.
      const bool keepsOld =
          failed == "gstrNewTenantIDs=" && scenario.kind != ScreenKind::kTenantCreating;
      EXPECT_EQ(host.controls().Variable("gstrNewTenantIDs"), Value(keepsOld ? "9," : ""));
    } else {
      EXPECT_EQ(host.controls().Variable("gstrNewTenantIDs"), Value("9,"));
    }
    if (failed != "gblnModifiedFromClass=") {
      EXPECT_EQ(host.controls().Variable("gblnModifiedFromClass"), Value(false));
    }
    EXPECT_EQ(host.database().LiveTables(), 0);
    EXPECT_EQ(host.services().LiveComponents(), 3);
    EXPECT_EQ(host.screen().use_count(), screens);
    EXPECT_EQ(host.connection().use_count(), connections);

    screen.ReleaseController();
    EXPECT_EQ(host.services().LiveComponents(), 0);
    EXPECT_EQ(host.screen().use_count(), 1);
  }
  EXPECT_GT(failures, 0U);
}

// The manager raises nothing when a statement fails: it answers as if there were no rows. So a
// duplicate is not found and a deletion counts as done, but without its capacity the unit takes
// nothing.
TEST_P(FaultSweep, BearsAFailedStatement) {
  const Scenario& scenario = GetParam();
  for (std::size_t n = 1;; ++n) {
    CredentialScreen screen(scenario.kind);
    RecordingHost& host = screen.host();
    scenario.arrange(screen);
    host.controls().SetVariable("gstrNewTenantIDs", "9,");
    host.StartOver();
    host.database().FailAt(n);

    const std::optional<bool> result = scenario.act(screen);

    const std::string failed = host.database().failed();
    const std::vector<bool>& results = scenario.afterFailedStatement;
    if (failed.empty()) {
      EXPECT_EQ(result, scenario.expected);
      if (scenario.expected) {
        EXPECT_EQ(n - 1, results.size());
      }
      break;
    }
    const ::testing::ScopedTrace trace(__FILE__, __LINE__, failed);
    if (scenario.expected) {
      ASSERT_LE(n, results.size());
      EXPECT_EQ(result, std::optional<bool>(results[n - 1]));
    } else {
      EXPECT_EQ(result, std::nullopt);
    }
    if (failed.starts_with("INSERT")) {
      EXPECT_EQ(host.transactions().committed(), 0);
      EXPECT_EQ(host.transactions().rolledBack(), 1);
      EXPECT_EQ(host.controls().Variable("gstrNewTenantIDs"), Value(""));
    }
    EXPECT_EQ(host.transactions().open(), 0);
    EXPECT_EQ(host.database().LiveTables(), 0);
    EXPECT_EQ(host.services().LiveComponents(), 3);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, FaultSweep, ::testing::ValuesIn(kScenarios),
                         [](const auto& one) { return std::string(one.param.name); });

// What failed once can be tried again on the same controller.
TEST(AfterAFault, TheSameSaveSucceeds) {
  for (std::size_t n = 1;; ++n) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterRange(kTransmitter, "1", "2");
    screen.EnterTenantDefaults();
    screen.host().StartOver();
    screen.host().gate().FailAt(n);
    (void)screen.SaveNewWithTenants();
    if (screen.host().gate().failed().empty()) {
      EXPECT_GT(n, 20U);
      break;
    }
    screen.host().StartOver();

    EXPECT_TRUE(screen.SaveNewWithTenants()) << n;

    EXPECT_EQ(screen.host().transactions().open(), 0) << n;
    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteInsert ").size(), 4U) << n;
    EXPECT_TRUE(screen.host().services().trapped().empty()) << n;
  }
}

// What a host's own code throws is trapped as well, under the number that stands for it.
TEST(AfterAFault, OfTheHostsOwnKindTheOperationStillEnds) {
  struct Case {
    std::exception_ptr failure;
    qorcred::ErrorNumber number;
  };
  const std::array cases{
      Case{std::make_exception_ptr(std::bad_alloc()), qorcred::ErrorNumber::kOutOfMemory},
      Case{std::make_exception_ptr(std::runtime_error("odd")), qorcred::ErrorNumber::kInternal},
      Case{std::make_exception_ptr(42), qorcred::ErrorNumber::kInternal}};
  for (const Case& one : cases) {
    CredentialScreen screen;
    screen.EnterSingle(kCard26, "10");
    screen.host().StartOver();
    screen.host().gate().FailOn("ExecuteInsert");
    screen.host().gate().Raise(one.failure);

    EXPECT_FALSE(screen.SaveNew());

    ASSERT_EQ(screen.host().services().trapped().size(), 1U);
    EXPECT_EQ(screen.host().services().trapped().front().second, one.number);
    EXPECT_EQ(screen.host().transactions().rolledBack(), 1);
  }
}

// A failure during creation leaves a controller that can be used and destroyed, if not for much.
TEST(AfterAFault, DuringCreationTheControllerIsThere) {
  for (std::size_t n = 1;; ++n) {
    RecordingHost host;
    host.gate().FailAt(n);
    auto controller = std::make_unique<UnderTest<qorcred::clsCredential>>(host.host());
    const bool failed = !host.gate().failed().empty();
    EXPECT_EQ(host.services().trapped().size(), failed ? 1U : 0U);
    host.gate().Reset();
    controller->set_gmobjCredentialScreen(host.screen());

    controller->pbTransmitterCtls(true);
    controller->pbRetrieveTenants(host.connection(), kUnit);

    controller.reset();
    EXPECT_EQ(host.services().LiveComponents(), 0) << n;
    EXPECT_EQ(host.screen().use_count(), 1) << n;
    if (!failed) {
      EXPECT_EQ(n, 6U);
      break;
    }
  }
}

}  // namespace
}  // namespace qortest
