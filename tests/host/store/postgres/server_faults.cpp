#include "server_faults.h"

#include <fmt/format.h>

#include <exception>

#include "host/store/postgres/placement.h"

namespace qorhost::postgres::test {

namespace {

// The counter is a sequence: what is undone stays counted.
constexpr std::string_view kMeeting = R"sql(
CREATE SCHEMA fault;
CREATE SEQUENCE fault.met;
CREATE TABLE fault.planned (nth int8, state text);
CREATE FUNCTION fault.meet() RETURNS trigger LANGUAGE plpgsql AS $$
DECLARE
  planned record;
BEGIN
  SELECT * INTO planned FROM fault.planned;
  IF NOT FOUND OR nextval('fault.met') <> planned.nth THEN
    RETURN NULL;
  END IF;
  IF planned.state = '57P01' THEN
    PERFORM pg_terminate_backend(pg_backend_pid()), pg_sleep(60);
  ELSIF planned.state = '57014' THEN
    PERFORM pg_cancel_backend(pg_backend_pid()), pg_sleep(60);
  END IF;
  RAISE EXCEPTION USING ERRCODE = planned.state, MESSAGE = 'the server''s own words';
END $$;
CREATE CONSTRAINT TRIGGER "MeetAtCommit" AFTER INSERT ON qorhost."AuditEntries"
  DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION fault.meet();
)sql";

}  // namespace

ServerFaults::ServerFaults(Connection& beside) : beside_(beside) {
  std::string text(kMeeting);
  for (const PlacedTable& table : PlacedTables()) {
    text +=
        fmt::format(R"(CREATE TRIGGER "Meet" BEFORE INSERT OR UPDATE OR DELETE ON qorhost."{}" )"
                    "FOR EACH STATEMENT EXECUTE FUNCTION fault.meet();\n",
                    table.name);
  }
  beside_.RunAll(text);
}

ServerFaults::~ServerFaults() {
  try {
    beside_.RunAll("DROP SCHEMA fault CASCADE");
  } catch (const std::exception&) {
    // The server goes, and the store with it.
  }
}

void ServerFaults::Plan(int nth, const ServerFault& fault) {
  beside_.RunAll(
      fmt::format("DELETE FROM fault.planned; SELECT setval('fault.met', 1, false); "
                  "INSERT INTO fault.planned SELECT {0}, '{1}' WHERE {0} > 0",
                  nth, fault.state));
}

int ServerFaults::met() {
  return static_cast<int>(
      beside_.Run("SELECT CASE WHEN is_called THEN last_value ELSE 0 END FROM fault.met")
          .Number(0, 0));
}

std::vector<std::string> EveryRowOf(Connection& connection) {
  std::vector<std::string> rows;
  for (const PlacedTable& table : PlacedTables()) {
    const Result found = connection.Run(fmt::format(
        R"(SELECT '{0} ' || to_jsonb(t)::text FROM qorhost."{0}" t ORDER BY 1)", table.name));
    for (int row = 0; row < found.rows(); ++row) {
      rows.emplace_back(found.Text(row, 0));
    }
  }
  return rows;
}

}  // namespace qorhost::postgres::test
