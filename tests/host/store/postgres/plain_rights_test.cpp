// The rights on a store, given and kept by users to whom a server does not allow everything.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "host/store/postgres/connection.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::Connection;
using postgres::test::TestServer;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Logins and roles have the number of the test behind their names, for a server has them for all
/// of its databases.
class PlainRights : public RunFixture {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static int count = 0;
    nth_ = std::to_string(++count);
    database_ = "plainrights" + nth_;
    server_ = TestServer::Shared().Create(database_);
    Server(
        "CREATE ROLE anna# LOGIN; CREATE ROLE bea# LOGIN; CREATE ROLE olga# LOGIN;"
        "CREATE ROLE nemo# LOGIN");
  }

  [[nodiscard]] std::string Numbered(std::string text) const {
    for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#')) {
      text.replace(at, 1, nth_);
    }
    return text;
  }
  /// What the server's administrator does.
  void Server(const std::string& sql) const { Connection(server_).RunAll(Numbered(sql)); }
  void MakeRoles() const {
    Server(
        "CREATE ROLE desk# NOLOGIN; CREATE ROLE office# NOLOGIN; GRANT desk# TO olga#;"
        "GRANT office# TO anna#, bea#");
  }
  void GiveDatabaseToAnna() const { Server("ALTER DATABASE plainrights# OWNER TO anna#"); }

  [[nodiscard]] std::string As(const std::string& login) const {
    std::string name = server_;
    return name.replace(name.find("tester"), 6, login + nth_);
  }
  [[nodiscard]] Outcome Does(const std::string& login, std::vector<std::string> words) {
    words.insert(words.begin(), {"--db", As(login), "--yes"});
    for (std::string& word : words) {
      word = Numbered(word);
    }
    return Run(std::move(words));
  }
  [[nodiscard]] Outcome Makes(const std::string& login, std::vector<std::string> words = {}) {
    words.insert(words.begin(), {"init", "--demo"});
    words.insert(words.end(), {"--operators", "desk#", "--administrators", "office#"});
    return Does(login, std::move(words));
  }

  void ExpectAllWork(const char* lastName) {
    for (const char* login : {"anna", "bea", "olga"}) {
      const Outcome done =
          Does(login, {"tenants", "add", "--unit", "1", "--last", lastName + std::string(login)});
      EXPECT_EQ(done.status, 0) << login << done.err;
      EXPECT_EQ(Does(login, {"history", "check"}).status, 0) << login;
    }
    EXPECT_THROW(Connection(As("olga")).RunAll(R"(DELETE FROM qorhost."AuditEntries")"),
                 std::exception);
  }
  /// Everything in the store is one role's.
  [[nodiscard]] std::string Owners() const {
    const auto owners = Connection(server_).Run(
        "SELECT string_agg(DISTINCT pg_get_userbyid(o), ', ') FROM ("
        "SELECT relowner FROM pg_class WHERE relnamespace = 'qorhost'::regnamespace UNION "
        "SELECT proowner FROM pg_proc WHERE pronamespace = 'desktop'::regnamespace UNION "
        "SELECT nspowner FROM pg_namespace WHERE nspname IN ('qorhost', 'desktop')) x(o)");
    return std::string(owners.Text(0, 0));
  }
  [[nodiscard]] int Schemas() const {
    return static_cast<int>(
        Connection(server_)
            .Run("SELECT count(*) FROM pg_namespace WHERE nspname ~ '^(qorhost|desktop)'")
            .Number(0, 0));
  }

  std::string nth_;
  std::string database_;
  std::string server_;
};

TEST_F(PlainRights, AreGivenByAnOwnerOfTheDatabaseWhoMayMakeRoles) {
  Server("ALTER ROLE anna# CREATEROLE");
  GiveDatabaseToAnna();
  const Outcome made = Makes("anna");
  ASSERT_EQ(made.status, 0) << made.err;
  Server("GRANT office# TO bea#; GRANT desk# TO olga#");
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, AreGivenByAnOwnerOfTheDatabaseToRolesThatAreHis) {
  MakeRoles();
  GiveDatabaseToAnna();
  const Outcome made = Makes("anna");
  ASSERT_EQ(made.status, 0) << made.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, ThatAreMissingAreNamedAllAtOnceAndNoStoreIsMade) {
  GiveDatabaseToAnna();
  const Outcome refused = Makes("anna");
  EXPECT_EQ(refused.status, 3);
  const std::string statements = Numbered(
      "CREATE ROLE \"desk#\" NOLOGIN; CREATE ROLE \"office#\" NOLOGIN; "
      "GRANT \"office#\" TO \"anna#\"");
  EXPECT_THAT(refused.err, AllOf(HasSubstr("nothing was changed"), HasSubstr(statements)));
  EXPECT_THAT(refused.err + refused.out, Not(HasSubstr("Created")));
  EXPECT_EQ(Schemas(), 0);
  Server(statements + "; GRANT office# TO bea#; GRANT desk# TO olga#");
  const Outcome made = Makes("anna");
  ASSERT_EQ(made.status, 0) << made.err;
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, NeedAMemberOfTheAdministratorsRole) {
  Server("CREATE ROLE desk# NOLOGIN; CREATE ROLE office# NOLOGIN");
  GiveDatabaseToAnna();
  const Outcome refused = Makes("anna");
  EXPECT_EQ(refused.status, 3);
  EXPECT_THAT(refused.err, HasSubstr(Numbered("for GRANT \"office#\" TO \"anna#\"\n")));
  EXPECT_EQ(Schemas(), 0);
}

TEST_F(PlainRights, NeedTheDatabaseOwnersWordForWhoMayOnlyMakeSchemas) {
  MakeRoles();
  Server("GRANT CREATE ON DATABASE plainrights# TO anna#");
  const Outcome refused = Makes("anna");
  EXPECT_EQ(refused.status, 3);
  const std::string statement =
      Numbered("GRANT CREATE ON DATABASE \"plainrights#\" TO \"office#\"");
  EXPECT_THAT(refused.err, HasSubstr("for " + statement + "\n"));
  EXPECT_EQ(Schemas(), 0);
  Server(statement);
  const Outcome made = Makes("anna");
  ASSERT_EQ(made.status, 0) << made.err;
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, ThatCannotBeGivenLeaveTheStoreThatStands) {
  GiveDatabaseToAnna();
  ASSERT_EQ(Does("anna", {"init", "--demo"}).status, 0);
  ASSERT_EQ(Does("anna", {"tenants", "add", "--unit", "1", "--last", "Quintus"}).status, 0);
  for (const Outcome& refused :
       {Makes("anna", {"--force"}), Does("anna", {"init", "--rights-only", "--operators", "desk#"}),
        Does("anna", {"init", "--rights-only", "--administrators", "office#"})}) {
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("CREATE ROLE"));
  }
  EXPECT_THAT(Does("anna", {"tenants", "list", "--unit", "1"}).out, HasSubstr("Quintus"));
  EXPECT_EQ(Owners(), Numbered("anna#"));
  EXPECT_EQ(Schemas(), 2);
  MakeRoles();
  const Outcome later = Does(
      "anna", {"init", "--rights-only", "--operators", "desk#", "--administrators", "office#"});
  ASSERT_EQ(later.status, 0) << later.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Sextus");
}

TEST_F(PlainRights, StandOnAStoreThatAMemberOfItsOwnerMakesAnew) {
  MakeRoles();
  GiveDatabaseToAnna();
  ASSERT_EQ(Makes("anna").status, 0);
  for (const char* login : {"bea", "anna"}) {
    const Outcome anew = Does(login, {"init", "--force", "--demo"});
    ASSERT_EQ(anew.status, 0) << anew.err;
    EXPECT_EQ(Owners(), Numbered("office#"));
    EXPECT_EQ(Schemas(), 2);
    ExpectAllWork("Quintus");
  }
  const Outcome named = Makes("bea", {"--force"});
  ASSERT_EQ(named.status, 0) << named.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Sextus");
}

TEST_F(PlainRights, StandBehindARestoreByAMemberOfTheOwner) {
  MakeRoles();
  GiveDatabaseToAnna();
  ASSERT_EQ(Run({"--db", File("old.db"), "--yes", "init", "--demo"}).status, 0);
  ASSERT_EQ(Does("anna", {"init", "--operators", "desk#", "--administrators", "office#"}).status,
            0);
  const Outcome restored = Does("bea", {"restore", File("old.db")});
  ASSERT_EQ(restored.status, 0) << restored.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, AreGivenLaterOnAStoreThatAMemberHasPutBack) {
  MakeRoles();
  Server("GRANT CREATE ON DATABASE plainrights# TO office#");
  ASSERT_EQ(Run({"--db", File("old.db"), "--yes", "init", "--demo"}).status, 0);
  const Outcome restored = Does("bea", {"restore", File("old.db")});
  ASSERT_EQ(restored.status, 0) << restored.err;
  const Outcome given =
      Does("bea", {"init", "--rights-only", "--operators", "desk#", "--administrators", "office#"});
  ASSERT_EQ(given.status, 0) << given.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, AreTheOwnersToGive) {
  MakeRoles();
  GiveDatabaseToAnna();
  ASSERT_EQ(Makes("anna").status, 0);
  for (const Outcome& refused : {Does("olga", {"init", "--force"}),
                                 Does("olga", {"init", "--rights-only", "--operators", "desk#"})}) {
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr(Numbered("for GRANT \"office#\" TO \"olga#\"")));
  }
  EXPECT_EQ(Does("bea", {"init", "--rights-only", "--operators", "office#"}).status, 3);
  const Outcome given = Does("bea", {"init", "--rights-only", "--operators", "desk#"});
  EXPECT_EQ(given.status, 0) << given.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  ExpectAllWork("Quintus");
}

TEST_F(PlainRights, OfAPersonAreThatPersonsToGive) {
  MakeRoles();
  GiveDatabaseToAnna();
  ASSERT_EQ(Does("anna", {"init", "--operators", "desk#"}).status, 0);
  EXPECT_THAT(Does("olga", {"init", "--force"}).err, HasSubstr(Numbered("ask 'anna#'")));
}

TEST_F(PlainRights, ThatAUserHasNotAreNamedWhenHeOpensTheStore) {
  MakeRoles();
  GiveDatabaseToAnna();
  ASSERT_EQ(Does("anna", {"init", "--demo"}).status, 0);
  EXPECT_THAT(Does("nemo", {"units"}).err, AllOf(HasSubstr("permission denied for schema qorhost"),
                                                 HasSubstr(Numbered("belongs to 'anna#'")),
                                                 HasSubstr("init --rights-only --operators ROLE")));
  ASSERT_EQ(Does("anna", {"init", "--rights-only", "--operators", "desk#"}).status, 0);
  const Outcome refused = Does("nemo", {"units"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_THAT(refused.err, HasSubstr(Numbered("for GRANT \"desk#\" TO \"nemo#\"")));
}

TEST_F(PlainRights, ThatALoginHasByTakingTheRoleAloneAreEnough) {
  MakeRoles();
  GiveDatabaseToAnna();
  ASSERT_EQ(Makes("anna").status, 0);
  Server(
      "CREATE ROLE ina# LOGIN NOINHERIT IN ROLE desk#; "
      "CREATE ROLE ida# LOGIN NOINHERIT IN ROLE desk#, office#; "
      "CREATE ROLE ivo# LOGIN IN ROLE desk#, office#");
  for (const char* login : {"ina", "ida", "ivo"}) {
    const Outcome done =
        Does(login, {"tenants", "add", "--unit", "1", "--last", "Quintus" + std::string(login)});
    EXPECT_EQ(done.status, 0) << login << done.err;
    EXPECT_EQ(Does(login, {"history", "check"}).status, 0) << login;
    EXPECT_THAT(Does(login, {"history", "list", "--columns", "from"}).out,
                HasSubstr(" as " + std::string(login) + nth_))
        << "an entry says the login, not the role";
  }
  EXPECT_EQ(Does("ina", {"init", "--force"}).status, 3);
  const Outcome anew = Does("ida", {"init", "--force", "--demo"});
  ASSERT_EQ(anew.status, 0) << anew.err;
  EXPECT_EQ(Owners(), Numbered("office#"));
  // A member of both is an owner, whether he has the rights or takes them.
  for (const char* login : {"ida", "ivo"}) {
    const Outcome given = Does(login, {"init", "--rights-only", "--operators", "desk#"});
    EXPECT_EQ(given.status, 0) << login << given.err;
  }
  ExpectAllWork("Sextus");
}

TEST_F(PlainRights, OfALoginThatDoesNotInheritThemAreToldWithTheStatementThatMendsIt) {
  MakeRoles();
  GiveDatabaseToAnna();
  Server("ALTER ROLE anna# NOINHERIT");
  const std::string statement = Numbered("ALTER ROLE \"anna#\" INHERIT");
  const Outcome refused = Makes("anna");
  EXPECT_EQ(refused.status, 3);
  EXPECT_THAT(refused.err, HasSubstr("for " + statement + "\n"));
  EXPECT_EQ(Schemas(), 0);
  Server(statement);
  ASSERT_EQ(Makes("anna").status, 0);
  // One who can open the store for another reason is no owner, either.
  Server("ALTER ROLE anna# NOINHERIT");
  Server("GRANT USAGE ON SCHEMA qorhost, desktop TO anna#");
  Server("GRANT SELECT ON ALL TABLES IN SCHEMA qorhost TO anna#");
  const Outcome notHis = Does("anna", {"init", "--force"});
  EXPECT_EQ(notHis.status, 3);
  EXPECT_THAT(notHis.err, AllOf(HasSubstr("without the rights of one"), HasSubstr(statement)));
}

TEST_F(PlainRights, AreLookedAtByATrial) {
  GiveDatabaseToAnna();
  const Outcome missing = Makes("anna", {"-n"});
  EXPECT_EQ(missing.status, 3);
  EXPECT_THAT(missing.err, HasSubstr(Numbered("CREATE ROLE \"desk#\" NOLOGIN")));
  MakeRoles();
  const Outcome tried = Makes("anna", {"-n"});
  EXPECT_EQ(tried.status, 0) << tried.err;
  EXPECT_THAT(tried.out,
              HasSubstr(Numbered(", and grant the rights on it to 'desk#' and 'office#'. This was "
                                 "a trial, nothing was changed.")));
  const Outcome one = Does("anna", {"init", "-n", "--operators", "desk#"});
  EXPECT_THAT(one.out, HasSubstr(Numbered("the rights on it to 'desk#'. This")));
  EXPECT_EQ(Schemas(), 0);
  const Outcome mayNot = Does("nemo", {"init", "-n"});
  EXPECT_EQ(mayNot.status, 3);
  EXPECT_THAT(mayNot.err, HasSubstr("GRANT CREATE ON DATABASE"));
  ASSERT_EQ(Makes("anna").status, 0);
  const Outcome notHis = Does("olga", {"init", "--force", "-n"});
  EXPECT_EQ(notHis.status, 3);
  EXPECT_THAT(notHis.err, HasSubstr("this is its owner's to do"));
  EXPECT_EQ(Does("bea", {"init", "--force", "-n"}).status, 0);
  EXPECT_EQ(Owners(), Numbered("office#"));
}

}  // namespace
}  // namespace qorhost::test
