// That an operation meets one place of a store whose rows lie in several: the tables are
// partitioned by the unit's key on a plain server, which plans every statement of the tour, of the
// desks and of the reports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "host/desks/session.h"
#include "host/desks/store_overview.h"
#include "host/store/demo.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/tour/tour_stage.h"
#include "needs_server.h"
#include "statement_places.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::PlacedTables;
using postgres::test::PlannedStatement;
using postgres::test::PlannedStatements;
using postgres::test::TestServer;

const auto* const kNeedsServer = postgres::test::NeedServer();

/// A statement that meets more than one place, by a part of its text.
struct Exception {
  std::string_view part;
  std::string_view reason;
};

// All that operations on one unit and reports of one run.
constexpr Exception kExceptions[] = {
    {R"(SELECT "Units"."UnitKey", "Units"."UnitName" FROM "Units" ORDER BY)",
     "which units there are, so that one can be meant"},
    {R"("HomeUnit" IN ($2::int4, 0))", "a unit's entries and those of the whole store: two places"},
    {R"(FROM "AuditEntries" WHERE "RID"=$1::int8)", "an entry of the history by its number"},
    {R"(FROM "Tenants" WHERE (("Tenants"."UnitKey" <> desktop.whole($1::float8)) AND )",
     "the look over a unit before an undo: whose the rows are that links name and it does not "
     "have"},
};

/// A command about the whole store, and why no unit can be meant.
struct WholeCommand {
  std::string_view line;
  std::string_view reason;
};

constexpr WholeCommand kWholeCommands[] = {
    {"units", "the overview of the units"},
    {"overview", "every unit at a glance"},
    {"find Tanaka", "looks in all units"},
    {"attention list --all-units", "a report on all units"},
    {"steps list --all-units", "the whole queue"},
    {"check", "looks over all rows"},
    {"export --desktop-csv FOLDER/building", "the tables of all units"},
    {"history check", "reads the whole history"},
    {"history list", "the history of all units"},
    {"sql 'SELECT Count(*) FROM Tenants'", "a statement that names no unit"},
    {"units delete 3", "raises the versions of all units"},
    {"units add Annex --type 'Entry Panel 500'", "raises the versions of all units"},
};

class ServerPlans : public RunFixture {
 protected:
  void SetUp() override {
    static int count = 0;
    const std::string database = "plans" + std::to_string(++count);
    server_ = TestServer::Shared().Create(database);
    {
      postgres::Store store(postgres::OpenServerStore(server_, OpenMode::kCreate,
                                                      {.spread = postgres::Spread::kPartitions}),
                            Patience(), false);
      const auto session = store.StartSession(Noon);
      CreateDemoData(*session);
    }
    TestServer::Shared().LogPlans(database);
    unitOfEnvironment_ = "2";
    read_ = TestServer::Shared().Log().size();
  }

  static qorcred::Date Noon() { return qorcred::FromCivil({2026, 1, 31, 12, 0, 0}); }

  /// What was planned since the last call.
  std::vector<PlannedStatement> Planned() {
    const std::string log = TestServer::Shared().Log();
    const std::vector<PlannedStatement> planned =
        PlannedStatements(std::string_view(log).substr(read_));
    read_ = log.size();
    return planned;
  }

  /// Words between blanks; those between apostrophes are one.
  [[nodiscard]] std::vector<std::string> WordsOf(std::string_view line) {
    std::vector<std::string> words{"--db", server_, "--yes"};
    const std::string text(line);
    const std::regex word("'([^']*)'|(\\S+)");
    for (auto at = std::sregex_iterator(text.begin(), text.end(), word);
         at != std::sregex_iterator(); ++at) {
      const std::string one = (*at)[1].matched ? (*at)[1].str() : (*at)[2].str();
      words.push_back(one.starts_with("FOLDER/")   ? File(one.substr(7))
                      : one == "ENTRY"             ? Found("history list --subject Yard", "entry")
                      : one.starts_with("rid:ROW") ? "rid:" + Found(kFreeCard, "RID")
                                                   : one);
    }
    return words;
  }

  static constexpr std::string_view kFreeCard =
      "sql 'SELECT RID FROM CredentialBank WHERE UnitKey=2 AND PINNo=9106'";

  /// The number in the first row that a command prints; its plans do not count.
  [[nodiscard]] std::string Found(std::string_view line, const char* column) {
    const nlohmann::json rows = Rows(WordsOf(line));
    (void)Planned();
    return std::to_string(static_cast<int>(rows.at(0).at(column).get<double>()));
  }

  void RunLine(std::string_view line) {
    const Outcome outcome = Run(WordsOf(line));
    EXPECT_EQ(outcome.status, 0) << line << "\n" << outcome.err;
  }

  /// Every statement since the last call met one place at most, or is an exception.
  void ExpectOnePlace(std::string_view doing) {
    std::size_t ofUnits = 0;
    for (const PlannedStatement& statement : Planned()) {
      ofUnits += statement.places.empty() ? 0 : 1;
      EXPECT_FALSE(statement.addsWithoutUnit) << doing << "\n" << statement.sql;
      if (statement.places.size() > 1 && !IsException(statement.sql)) {
        ADD_FAILURE() << doing << " meets " << statement.places.size() << " places by\n"
                      << statement.sql;
      }
    }
    EXPECT_GT(ofUnits, 0U) << doing << ": nothing was planned";
  }

  [[nodiscard]] bool IsException(const std::string& sql) {
    for (const Exception& exception : kExceptions) {
      if (sql.find(exception.part) != std::string::npos) {
        met_.insert(exception.part);
        return true;
      }
    }
    return false;
  }

  std::string server_;
  std::size_t read_ = 0;  // of the server's log
  std::set<std::string_view> met_;
};

TEST_F(ServerPlans, OfTheTourMeetOnePlace) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  const Environment environment;
  Console console{in, out, err, environment};
  TourGuide guide(console);
  Surroundings surroundings;
  surroundings.clock = Noon;
  surroundings.messageBox = [&guide](std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) {
    return guide.ShowMessage(text, style, title);
  };
  DeskSession session(
      std::make_unique<postgres::Store>(postgres::OpenServerStore(server_, OpenMode::kReadWrite),
                                        Patience(), false),
      std::move(surroundings));
  const TourStage stage{guide, session};
  TourCredentials(stage);
  ExpectOnePlace("the tour's credentials");
  TourDirCodes(stage);
  ExpectOnePlace("the tour's directory codes");
  TourReports(stage);
  ExpectOnePlace("the tour's reports");
  EXPECT_EQ(guide.surprises(), 0) << err.str();
}

TEST_F(ServerPlans, OfOperationsAndReportsMeetOnePlace) {
  std::ofstream(File("cards.csv")) << "Credential Type,Card Number,Facility Code\ncard26,600,7\n";
  std::ofstream(File("codes.csv")) << "Directory Code,Phone No.\n877,555-0177\n";
  std::ofstream(File("people.csv")) << "Last Name,First Name\nTanaka,Yui\n";
  for (const char* line : {
           "credentials list",
           "credentials add --type card26 --start 9100 --end 9110 --facility 7",
           "credentials add --type card26 --start 9200 --end 9203 --facility 7 --with-tenants",
           "tenants add --last Byrne --first Ana",
           "credentials edit 9100 --door 1",
           "credentials edit 9100 9101 --door 2",
           "credentials assign 9100 'Byrne Ana'",
           "credentials assign 9100 9101 'Byrne Ana'",
           "credentials assign 9100 --release",
           "credentials renumber 9100 9119",
           "credentials replace 9101 9102",
           "credentials delete 9103",
           "credentials delete 9104 9105",
           "credentials import FOLDER/cards.csv",
           "dircodes list",
           "dircodes show 101",
           "dircodes add 888 --phone 1",
           "dircodes add 889 --phone 2",
           "dircodes edit 101 --phone 555-9999",
           "dircodes edit 101 102 --phone 555-9998",
           "dircodes export --to FOLDER/unit.txt",
           "dircodes renumber 101 181",
           "dircodes delete 888",
           "dircodes delete 889 102",
           "dircodes sync --from FOLDER/unit.txt",
           "tenants list",
           "tenants list --where 'name contains a'",
           "tenants show 'Byrne Ana'",
           "tenants edit 'Byrne Ana' --last Burns",
           "tenants end 'Burns Ana' --on 2026-06-30",
           "tenants delete 'Burns Ana'",
           "tenants import FOLDER/people.csv",
           "tenants export --to FOLDER/tenants.csv",
           "access list",
           "attention list",
           "attention deactivate --where 'name contains a'",
           "attention end",
           "attention delete --where 'name = Transmitter-320'",
           "dircodes import FOLDER/codes.csv",
           "tenants edit --where 'name contains Tanaka' --initial Q",
           "report credentials",
           "report credentials --where 'Assigned To = Unassigned'",
           "report credentials --delete rid:ROW",
           "report dircodes",
           "doors list",
           "doors edit 4 --name Yard",
           "schedules list",
           "schedules add Cleaners",
           "schedules edit Cleaners --name Gardeners",
           "schedules delete Gardeners",
           "units edit 2 --name 'Linden Park East'",
           "export --desktop-csv FOLDER/unit-2 --unit 2",
           "steps list --unit 2",
           "steps export FOLDER/steps.txt",
           "steps done",
           "history list --unit 2",
           "history show ENTRY",
           "history undo ENTRY",
       }) {
    RunLine(line);
    ExpectOnePlace(line);
  }
  for (const Exception& exception : kExceptions) {
    EXPECT_TRUE(met_.contains(exception.part)) << "no statement has " << exception.part;
  }
}

TEST_F(ServerPlans, OfTheWholeStoreMeetManyPlaces) {
  for (const WholeCommand& command : kWholeCommands) {
    RunLine(command.line);
    std::size_t most = 0;
    for (const PlannedStatement& statement : Planned()) {
      most = std::max(most, statement.places.size());
    }
    EXPECT_GT(most, 1U) << command.line << " needs no exception: " << command.reason;
  }
}

TEST_F(ServerPlans, OfTheWorstKindAreNoticed) {
  // What the other tests would miss if the log, the plans or the names of partitions were read
  // wrongly.
  postgres::Connection connection(server_);
  connection.RunAll("SET search_path = qorhost");
  (void)connection.Run(R"(SELECT * FROM "Tenants" WHERE "RID" = 7)");
  (void)connection.Run(R"(SELECT * FROM "Tenants" WHERE "UnitKey" = 2)");
  (void)connection.Run(R"(INSERT INTO "AuditRows" ("Entry", "Piece", "Rows") VALUES (1, 1, ''))");
  const std::vector<PlannedStatement> planned = Planned();
  ASSERT_EQ(planned.size(), 3U);
  EXPECT_EQ(planned[0].places.size(), static_cast<std::size_t>(postgres::kPartitions));
  EXPECT_EQ(planned[1].places.size(), 1U);
  EXPECT_TRUE(planned[2].addsWithoutUnit);
}

}  // namespace
}  // namespace qorhost::test
