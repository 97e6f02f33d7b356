#include <cstdlib>
#include <string_view>
#include <vector>

#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "needs_server.h"
#include "quoted_names.h"
#include "test_server.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {

namespace {

using postgres::test::TestServer;
using postgres::test::WithQuotedNames;

const auto* const kNeedsServer = postgres::test::NeedServer();

/// The whole program runs on plain tables, or on ones that lie in several places.
postgres::Spread SpreadOfRun() {
  const char* const asked = std::getenv("QORHOST_TEST_SPREAD");
  return asked != nullptr && std::string_view(asked) == "partitions" ? postgres::Spread::kPartitions
                                                                     : postgres::Spread::kNone;
}
// What a new store holds, kept beside it: a store that was used becomes a new one by it in a
// fraction of the time in which a database is made.
constexpr const char* kKeepWhatIsNew = R"sql(
CREATE SCHEMA initial;
DO $$
DECLARE
  name text;
BEGIN
  FOR name IN SELECT tablename FROM pg_tables WHERE schemaname = 'qorhost' LOOP
    EXECUTE format('CREATE TABLE initial.%I AS TABLE qorhost.%I', name, name);
  END LOOP;
  CREATE TABLE initial.indexes AS
    SELECT indexname AS name FROM pg_indexes WHERE schemaname = 'qorhost';
  CREATE TABLE initial.sequences AS
    SELECT sequencename AS name, last_value AS latest FROM pg_sequences
    WHERE schemaname = 'qorhost';
END $$;
)sql";
constexpr const char* kMakeNewAgain = R"sql(
BEGIN;
SET LOCAL session_replication_role = replica;
DROP FUNCTION IF EXISTS qorhost.refuse() CASCADE;
DO $$
DECLARE
  name text;
  latest int8;
  holds boolean;
BEGIN
  FOR name IN SELECT tablename FROM pg_tables WHERE schemaname = 'qorhost' LOOP
    IF to_regclass(format('initial.%I', name)) IS NULL THEN  -- a test's own
      EXECUTE format('DROP TABLE qorhost.%I CASCADE', name);
      CONTINUE;
    END IF;
    EXECUTE format('DELETE FROM qorhost.%I', name);
    EXECUTE format('SELECT EXISTS (SELECT FROM initial.%I)', name) INTO holds;
    IF holds THEN
      EXECUTE format('INSERT INTO qorhost.%I SELECT * FROM initial.%I', name, name);
    END IF;
  END LOOP;
  -- Those of partitions go with the index that they belong to.
  FOR name IN SELECT relname FROM pg_class WHERE relnamespace = 'qorhost'::regnamespace AND
                relkind IN ('i', 'I') AND NOT relispartition
              EXCEPT SELECT i.name FROM initial.indexes i LOOP
    EXECUTE format('DROP INDEX qorhost.%I', name);
  END LOOP;
  FOR name, latest IN SELECT s.name, s.latest FROM initial.sequences s LOOP
    PERFORM setval(format('qorhost.%I', name)::regclass, coalesce(latest, 1), latest IS NOT NULL);
  END LOOP;
END $$;
COMMIT;
)sql";

/// A database of its own, like one that was made once.
std::string NewDatabase() {
  static const std::string made = [] {
    postgres::OpenServerStore(TestServer::Shared().Create("made"), OpenMode::kCreate,
                              {.spread = SpreadOfRun()})
        .RunAll(kKeepWhatIsNew);
    return std::string("made");
  }();
  static int count = 0;
  return TestServer::Shared().Create("store" + std::to_string(++count), made);
}

/// One that nobody has open any more, made new again, or a new one.
std::string FreeDatabase() {
  static std::vector<std::string> all;
  for (const std::string& name : all) {
    postgres::Connection connection(name);
    if (connection.Run("SELECT count(*) FROM pg_stat_activity WHERE datname = current_database()")
            .Number(0, 0) == 1) {
      connection.RunAll(kMakeNewAgain);
      return name;
    }
  }
  return all.emplace_back(NewDatabase());
}

std::unique_ptr<Store> OpenNamed(const std::string& name, OpenMode mode) {
  return std::make_unique<postgres::Store>(postgres::OpenServerStore(name, mode), Patience(),
                                           mode == OpenMode::kReadOnly);
}

class Database final : public StorePlace {
 public:
  [[nodiscard]] std::unique_ptr<Store> Open(OpenMode mode) const override {
    return OpenNamed(name_, mode);
  }

 private:
  std::string name_ = NewDatabase();
};

postgres::Connection& ConnectionOf(Store& store) {
  return dynamic_cast<postgres::Store&>(store).connection();
}

}  // namespace

std::unique_ptr<Store> FreshStore() {
  return OpenNamed(FreeDatabase(), OpenMode::kReadWrite);
}

std::unique_ptr<StorePlace> NewPlace() {
  return std::make_unique<Database>();
}

std::string OriginStored(const std::string& signedWith) {
  return signedWith + " as tester";
}

bool KeepsRowsOfNoUnit() {
  return false;
}

bool FollowsLinksToOtherUnits() {
  return false;
}

bool GivesIdentitiesWithoutGaps() {
  return false;
}

bool ReadsBytesThatAreNoText() {
  return false;
}

std::int64_t RowsEverChanged(Store& store) {
  // A connection tells the server's counters now and then.
  ConnectionOf(store).RunAll("SELECT pg_stat_force_next_flush()");
  return ConnectionOf(store)
      .Run("SELECT coalesce(sum(n_tup_ins + n_tup_upd + n_tup_del), 0) FROM pg_stat_user_tables")
      .Number(0, 0);
}

void RunRaw(Store& store, const std::string& sql) {
  ConnectionOf(store).RunAll(WithQuotedNames(sql));
}

std::string TextOfRaw(Store& store, const std::string& sql) {
  const postgres::Result result = ConnectionOf(store).Run(WithQuotedNames(sql));
  return result.rows() == 0 ? "no row" : std::string(result.Text(0, 0));
}

std::int64_t NumberOfRaw(Store& store, const std::string& sql) {
  return ConnectionOf(store).Run(WithQuotedNames(sql)).Number(0, 0);
}

std::vector<std::string> RowsOfRaw(Store& store, const std::string& sql) {
  const postgres::Result result = ConnectionOf(store).Run(WithQuotedNames(sql));
  std::vector<std::string> rows;
  for (int row = 0; row < result.rows(); ++row) {
    std::string& text = rows.emplace_back();
    for (int column = 0; column < result.columns(); ++column) {
      text += column == 0 ? "" : ",";
      text += result.IsNull(row, column) ? "-" : result.Text(row, column);
    }
  }
  return rows;
}

void RefuseRows(Store& store, const std::string& table, const std::string& condition) {
  RunRaw(store,
         "CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
         "'BEGIN RAISE EXCEPTION $$no$$; END'; CREATE TRIGGER refuse BEFORE INSERT ON " +
             table + " FOR EACH ROW WHEN (" + condition + ") EXECUTE FUNCTION refuse()");
}

std::string DumpOf(Store& store) {
  std::string dump;
  postgres::Connection& connection = ConnectionOf(store);
  const auto add = [&](const std::string& sql) {
    const postgres::Result result = connection.Run(sql);
    for (int row = 0; row < result.rows(); ++row) {
      dump += std::string(result.Text(row, 0)) + '\n';
    }
  };
  add("SELECT table_schema || '.' || table_name || '.' || column_name || ' ' || data_type FROM "
      "information_schema.columns WHERE table_schema IN ('qorhost', 'desktop', 'public') ORDER BY "
      "table_schema, table_name, ordinal_position");
  add("SELECT p.oid::regprocedure || md5(prosrc) FROM pg_proc p WHERE pronamespace IN "
      "('qorhost'::regnamespace, 'desktop'::regnamespace, 'public'::regnamespace) ORDER BY 1");
  const postgres::Result tables = connection.Run(
      "SELECT quote_ident(tablename) FROM pg_tables WHERE schemaname='qorhost' ORDER BY 1");
  for (int row = 0; row < tables.rows(); ++row) {
    const std::string table(tables.Text(row, 0));
    dump += table + ":\n";
    add("SELECT row_to_json(t)::text FROM qorhost." + table + " t ORDER BY 1");
  }
  return dump;
}

}  // namespace qorhost::test
