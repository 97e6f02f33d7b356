// An operator's day with the command line, on a file and on a server: what it prints is the same,
// and so are the exports, byte for byte, and the hashes of the history.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/store/postgres/connection.h"
#include "needs_server.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"
#include "tests/host/files/desktop_file/refused_files.h"

namespace qorhost::test {
namespace {

using postgres::test::TestServer;
using testing::HasSubstr;
using testing::IsEmpty;

using Words = std::vector<std::string>;

const auto* const kNeedsServer = postgres::test::NeedServer();

class ServerCommands : public RunFixture {
 protected:
  void SetUp() override {
    static int count = 0;
    server_ = TestServer::Shared().Create("commands" + std::to_string(++count));
  }

  [[nodiscard]] Outcome On(const std::string& store, Words words) {
    words.insert(words.begin(), {"--db", store, "--yes"});
    return Run(std::move(words));
  }

  /// The command does the same on both.
  void Same(const Words& words) {
    SCOPED_TRACE(testing::PrintToString(words));
    ExpectSame(On(server_, words), On(File("building.db"), words));
  }

  static void ExpectSame(const Outcome& there, const Outcome& here) {
    EXPECT_EQ(there.status, here.status);
    EXPECT_EQ(there.out, here.out);
    EXPECT_EQ(there.err, here.err);
    EXPECT_LT(here.status, 2) << here.err;  // done, or done in part
  }

  /// The check finds the same in both; in a file it looks at the file, too.
  void SameCheck() {
    Outcome here = On(File("building.db"), {"check"});
    constexpr std::string_view kFile = "the file, ";
    if (const std::size_t at = here.out.find(kFile); at != std::string::npos) {
      here.out.erase(at, kFile.size());
    }
    ExpectSame(On(server_, {"check"}), here);
  }

  /// The command writes the same file on both; the file's name is put behind its words.
  void SameFile(Words words) {
    words.push_back(File("here.csv"));
    EXPECT_EQ(On(File("building.db"), words).status, 0);
    words.back() = File("there.csv");
    EXPECT_EQ(On(server_, words).status, 0);
    EXPECT_EQ(Content("there.csv"), Content("here.csv")) << testing::PrintToString(words);
    EXPECT_THAT(Content("here.csv"), testing::Not(IsEmpty()));
    std::filesystem::remove(File("here.csv"));
    std::filesystem::remove(File("there.csv"));
  }

  /// The command writes the same files into a folder on both; its name is put behind its words.
  void SameFolder(Words words) {
    words.push_back(File("here"));
    EXPECT_EQ(On(File("building.db"), words).status, 0);
    words.back() = File("there");
    EXPECT_EQ(On(server_, words).status, 0);
    std::size_t files = 0;
    for (const auto& file : std::filesystem::directory_iterator(File("here"))) {
      const std::string name = file.path().filename().string();
      EXPECT_EQ(Content("there/" + name), Content("here/" + name)) << name;
      ++files;
    }
    EXPECT_GT(files, 10U);
    std::filesystem::remove_all(File("here"));
    std::filesystem::remove_all(File("there"));
  }

  [[nodiscard]] std::string Content(const std::string& name) const {
    std::ifstream stream(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::string server_;
};

TEST_F(ServerCommands, DoAndPrintTheSameOnTheDemoBuilding) {
  ASSERT_EQ(On(File("building.db"), {"init", "--demo"}).status, 0);
  const Outcome made = On(server_, {"init", "--demo"});
  ASSERT_EQ(made.status, 0) << made.err;
  for (const char* unit : {"1", "2", "3"}) {
    for (const char* kind : {"credentials", "dircodes", "tenants", "doors", "schedules"}) {
      Same({kind, "list", "--unit", unit});
      Same({kind, "list", "--unit", unit, "--json"});
    }
    Same({"report", "credentials", "--unit", unit});
    Same({"report", "dircodes", "--unit", unit});
    Same({"access", "list", "--unit", unit});
    Same({"attention", "list", "--unit", unit});
  }
  Same({"units"});
  Same({"overview"});
  Same({"find", "\xC3\xA4"});
  Same({"sql", "SELECT LastName, Count(*) FROM Tenants GROUP BY LastName"});
  Same({"tenants", "add", "--unit", "2", "--last", "Gro\xC3\x9F", "--first", "\xC3\x84nne"});
  Same({"tenants", "edit", "--unit", "2", "--where", "last_name = GRO\xC3\x9F", "--initial", "Q"});
  Same({"tenants", "list", "--unit", "2", "--where", "name contains \xC3\xA4NNE"});
  Same({"steps", "list"});
  Same({"history", "list", "--columns", "entry,what,rows"});
  Same({"history", "undo", "3"});
  Same({"tenants", "list", "--unit", "2"});
  // Its heads are others: an entry says by which login it was stored.
  for (const std::string& store : {File("building.db"), server_}) {
    EXPECT_EQ(On(store, {"history", "check"}).status, 0);
  }
  SameCheck();
  SameFile({"tenants", "export", "--unit", "2", "--to"});
  SameFile({"dircodes", "export", "--unit", "1", "--to"});
  SameFile({"report", "credentials", "--unit", "1", "--to"});
  SameFile({"steps", "export", "--unit", "2"});
  SameFile({"units", "list", "--format", "html", "--to"});
  SameFolder({"export", "--desktop-csv"});
}

TEST_F(ServerCommands, ImportASpreadsheetOfResidents) {
  const std::string samples = QORHOST_SAMPLES;
  for (const std::string& store : {File("building.db"), server_}) {
    ASSERT_EQ(On(store, {"init"}).status, 0);
  }
  Same({"units", "add", "Lindenhof", "--type", "Panel 4000", "--capacity", "4000", "--code-digits",
        "4"});
  Same({"tenants", "import", samples + "/residents_mended.csv", "--card-type", "card26",
        "--facility", "7", "--replace-quotes", "--columns",
        "Full name=Name,Flat=Apartment,Telephone=Phone,Card no.=Card Number,2nd card=Card 2 "
        "Number,Move in=Start,Move out=End,Owner=,Remarks="});
  // Refused lines have used up identities on the server: what follows shows none.
  Same({"tenants", "list", "--columns", "name,code,card1,card2,start,end"});
  Same({"report", "credentials", "--columns", "Card Number,Assigned To"});
  Same({"report", "dircodes"});
  Same({"tenants", "list", "--where", "name contains \xC3\x96ZT\xC3\x9CRK", "--columns",
        "name,code"});
  // Not the entries' numbers: what was only tried leaves one out on a server.
  Same({"history", "list", "--columns", "what,rows"});
  Same({"units"});
  SameCheck();
  SameFile({"dircodes", "export", "--to"});
}

// Every sample of another application's file; identities are those of the file on both.
TEST_F(ServerCommands, BringTheSameBuildingsIn) {
  if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
    GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
  }
  const std::string samples = QORHOST_DESKTOP_SAMPLES;
  for (const char* name :
       {"building-2000.mdb", "building-2010.accdb", "building-odd.mdb", "encoded-2000.mdb"}) {
    SCOPED_TRACE(name);
    const Words words{"init", "--from", samples + "/" + name, "--skip-bad-rows", "--force"};
    const Outcome here = On(File("building.db"), words);
    const Outcome there = On(server_, words);
    EXPECT_EQ(there.status, here.status) << there.err;
    const auto behindTheStore = [](const Outcome& outcome) {
      return outcome.out.substr(outcome.out.find(" from "));
    };
    EXPECT_EQ(behindTheStore(there), behindTheStore(here));
    SameCheck();
    Same({"units", "list", "--settings"});
    Same({"history", "list", "--columns", "entry,what,rows"});
    Same({"history", "show", "1", "--json"});
    SameFolder({"export", "--desktop-csv"});
    for (const auto& unit : Rows({"--db", server_, "units"})) {
      const std::string key = unit.at("unit").dump();
      Same({"report", "credentials", "--unit", key});
      Same({"report", "dircodes", "--unit", key});
      SameFile({"tenants", "export", "--unit", key, "--to"});
    }
  }
}

TEST_F(ServerCommands, CopyABuildingInAsInitDoes) {
  if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
    GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
  }
  const std::string sample = std::string(QORHOST_DESKTOP_SAMPLES) + "/building-2000.mdb";
  ASSERT_EQ(On(File("building.db"), {"init", "--from", sample}).status, 0);
  const Words copy{"copy", "--from", sample, "--to", server_};
  const Outcome copied = On(File("other.db"), copy);
  ASSERT_EQ(copied.status, 0) << copied.err;
  EXPECT_THAT(copied.out, HasSubstr("4 units, 120 tenants, 235 credentials, 50 directory codes"));
  SameCheck();
  Same({"units", "list", "--settings"});
  Same({"history", "show", "1", "--json"});
  SameFolder({"export", "--desktop-csv"});
  const Outcome again = On(File("other.db"), copy);
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("--to, or replace it with --force"));
  EXPECT_FALSE(std::filesystem::exists(File("other.db")));
}

TEST_F(ServerCommands, MakeNoStoreOfAFileThatIsTurnedAway) {
  if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
    GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
  }
  const std::string empty = TestServer::Shared().Create("refusals");
  std::vector<RefusedFile> files = MakeRefusedFiles(QORHOST_DESKTOP_SAMPLES, folder());
  files.push_back({std::filesystem::path(QORHOST_DESKTOP_SAMPLES) / "building-odd.mdb", "52 rows"});
  for (const RefusedFile& refused : files) {
    const Outcome outcome = On(empty, {"init", "--from", refused.file.string()});
    EXPECT_EQ(outcome.status, 1) << refused.file;
    EXPECT_THAT(outcome.err, HasSubstr(refused.says));
    EXPECT_NE(On(empty, {"units"}).status, 0) << refused.file;
  }
}

TEST_F(ServerCommands, BackUpAndRestore) {
  ASSERT_EQ(On(server_, {"init", "--demo"}).status, 0);
  const Outcome backup = On(server_, {"backup", File("copy.db")});
  EXPECT_EQ(backup.status, 0) << backup.err;
  const Outcome tenants = On(server_, {"tenants", "list", "--unit", "2"});
  EXPECT_EQ(On(File("copy.db"), {"tenants", "list", "--unit", "2"}).out, tenants.out);
  EXPECT_EQ(On(File("copy.db"), {"history", "check"}).status, 0);
  EXPECT_THAT(On(server_, {"restore", File("copy.db")}).err, HasSubstr("init --force"));
  const std::string empty = TestServer::Shared().Create("restored");
  const Outcome restored = On(empty, {"restore", File("copy.db")});
  EXPECT_EQ(restored.status, 0) << restored.err;
  EXPECT_EQ(On(empty, {"tenants", "list", "--unit", "2"}).out, tenants.out);
  EXPECT_EQ(On(empty, {"history", "check"}).status, 0);
}

TEST_F(ServerCommands, AStoreIsMadeAnewAfterAQuestion) {
  ASSERT_EQ(On(server_, {"init", "--demo"}).status, 0);
  EXPECT_THAT(On(server_, {"init"}).err, HasSubstr("replace it with --force"));
  const Outcome asked = Run({"--db", server_, "init", "--force"});
  EXPECT_EQ(asked.status, 1);
  EXPECT_THAT(asked.err, HasSubstr("on which others may be working"));
  EXPECT_EQ(Rows({"--db", server_, "units"}).size(), 3U);
  EXPECT_EQ(On(server_, {"init", "--force", "-n"}).status, 0);
  EXPECT_EQ(Rows({"--db", server_, "units"}).size(), 3U);
  EXPECT_EQ(On(server_, {"init", "--force"}).status, 0);
  EXPECT_EQ(Rows({"--db", server_, "units"}).size(), 0U);
}

TEST_F(ServerCommands, CopyUnitsFromAFile) {
  ASSERT_EQ(On(File("building.db"), {"init", "--demo"}).status, 0);
  ASSERT_EQ(On(server_, {"init"}).status, 0);
  const Outcome tried = On(File("building.db"), {"copy", "--to", server_, "--unit", "2", "-n"});
  EXPECT_THAT(tried.out, HasSubstr("Would copy")) << tried.err;
  const Outcome unit = On(File("building.db"), {"copy", "--to", server_, "--unit", "2"});
  EXPECT_EQ(unit.status, 0) << unit.err;
  EXPECT_THAT(unit.out, HasSubstr("1 unit, "));
  EXPECT_THAT(unit.out, HasSubstr("Both were compared."));
  Same({"tenants", "list", "--unit", "2", "--columns", "name,code,card1,card2,start,end"});
  Same({"report", "credentials", "--unit", "2", "--columns", "Card Number,Assigned To"});
  const Outcome again = On(File("building.db"), {"copy", "--to", server_});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("has a unit 2 already"));
  EXPECT_EQ(On(server_, {"check"}).status, On(File("building.db"), {"check"}).status);
}

TEST_F(ServerCommands, TellLinksThatLeaveTheirUnit) {
  for (const std::string& store : {File("building.db"), server_}) {
    ASSERT_EQ(On(store, {"init", "--demo"}).status, 0);
  }
  const auto card =
      Rows({"--db", server_, "sql", "SELECT Min(RID) AS card FROM CredentialBank WHERE UnitKey=1"});
  const auto tenant =
      Rows({"--db", server_, "sql", "SELECT Min(RID) AS tenant FROM Tenants WHERE UnitKey=2"});
  Same({"sql", "--write",
        "UPDATE Tenants SET CREDENTIALID2=" + card[0]["card"].dump() +
            " WHERE RID=" + tenant[0]["tenant"].dump()});
  SameCheck();
  EXPECT_THAT(On(server_, {"check"}).out, HasSubstr("which is unit 1's"));
}

TEST_F(ServerCommands, SpreadAStoreWhereTheServerHasFunctionsForIt) {
  postgres::Connection(server_).RunAll(
      "CREATE FUNCTION create_distributed_table(regclass, text, colocate_with text DEFAULT '') "
      "RETURNS void LANGUAGE sql AS ''; "
      "CREATE FUNCTION create_reference_table(regclass) RETURNS void LANGUAGE sql AS ''");
  EXPECT_EQ(On(server_, {"init", "--distributed", "-n"}).status, 0);
  EXPECT_NE(On(server_, {"units"}).status, 0) << "a trial has made a store";
  EXPECT_EQ(On(server_, {"init", "--distributed", "--demo"}).status, 0);
  ASSERT_EQ(On(File("building.db"), {"init", "--demo"}).status, 0);
  Same({"units"});
  Same({"report", "credentials", "--unit", "2"});
}

TEST_F(ServerCommands, SpreadNoStoreWhereThatCannotBe) {
  for (const Words& words :
       {Words{"init", "--distributed"}, Words{"init", "--distributed", "-n"}}) {
    const Outcome onServer = On(server_, words);
    EXPECT_NE(onServer.status, 0);
    EXPECT_THAT(onServer.err, HasSubstr("no functions create_distributed_table"));
    const Outcome inFile = On(File("building.db"), words);
    EXPECT_NE(inFile.status, 0);
    EXPECT_THAT(inFile.err, HasSubstr("names no server"));
  }
  EXPECT_FALSE(std::filesystem::exists(File("building.db")));
  EXPECT_EQ(On(server_, {"init"}).status, 0) << "nothing was made before";
}

TEST_F(ServerCommands, SayThatADatabaseHasNoStore) {
  const Outcome units = On(server_, {"units"});
  EXPECT_NE(units.status, 0);
  EXPECT_THAT(units.err, HasSubstr("create it first"));
  EXPECT_EQ(On(server_, {"init", "-n"}).status, 0);
  EXPECT_NE(On(server_, {"units"}).status, 0) << "a trial has made a store";
}

}  // namespace
}  // namespace qorhost::test
