#include "bench/server_store.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <array>
#include <cstdlib>
#include <limits>
#include <vector>

#include "bench/check.h"
#include "bench/save_screen.h"
#include "frame/capacity.h"
#include "host/components/store_host.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "tests/host/store/postgres/test_server.h"

namespace qorbench {

namespace {

using qorhost::postgres::test::TestServer;

struct ClearResult {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using OwnedResult = std::unique_ptr<PGresult, ClearResult>;

OwnedResult Checked(PGconn* connection, PGresult* result) {
  const ExecStatusType status = PQresultStatus(result);
  Check(status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK, PQerrorMessage(connection));
  return OwnedResult(result);
}

std::int64_t NumberIn(const PGresult* result) {
  return PQntuples(result) == 0 ? 0 : std::strtoll(PQgetvalue(result, 0, 0), nullptr, 10);
}

void MakeUnits(const std::string& name) {
  HandConnection connection(name);
  connection.Run("SET search_path = qorhost");
  connection.Run(
      fmt::format(R"(INSERT INTO "UNITTYPES" ("DESCRIPTION", "TOTAL") VALUES ('Largest', '{0}');)"
                  R"(INSERT INTO "Units" ("UnitKey", "UnitName") SELECT n, 'Unit ' || n FROM )"
                  R"(generate_series(1, {1}) n;)"
                  R"(INSERT INTO "UnitSettings" ("UnitKey", "UNITTYPE") SELECT n, 'Largest' FROM )"
                  R"(generate_series(1, {1}) n;)"
                  R"(INSERT INTO "TenantGroup" ("UnitKey", "IsGroupZero") SELECT n, -1 FROM )"
                  R"(generate_series(1, {1}) n)",
                  qorcred::CapacityText(std::numeric_limits<std::int16_t>::max()), kServerUnits));
}

/// A database of its own, like one that was made once.
std::string NewDatabase() {
  static const std::string made = [] {
    const std::string name = TestServer::Shared().Create("made");
    (void)qorhost::postgres::OpenServerStore(name, qorhost::OpenMode::kCreate);
    MakeUnits(name);
    return std::string("made");
  }();
  static int count = 0;
  return TestServer::Shared().Create("bench" + std::to_string(++count), made);
}

}  // namespace

bool HasServer() {
  return TestServer::Missing().empty();
}

ServerStore::ServerStore() : name_(NewDatabase()) {}

std::shared_ptr<qorhost::StoreConnection> ServerStore::Open() const {
  return std::make_shared<qorhost::StoreConnection>(
      std::make_unique<qorhost::postgres::Store>(
          qorhost::postgres::OpenServerStore(name_, qorhost::OpenMode::kReadWrite),
          qorhost::Patience(), false),
      qorhost::SystemClock());
}

void HandConnection::Finish::operator()(pg_conn* handle) const noexcept {
  PQfinish(handle);
}

HandConnection::HandConnection(const std::string& name) : handle_(PQconnectdb(name.c_str())) {
  Check(PQstatus(handle()) == CONNECTION_OK, PQerrorMessage(handle()));
  // What the store's triggers tell is for its own sessions.
  PQsetNoticeReceiver(
      handle(), [](void*, const PGresult*) {}, nullptr);
  Run("SET client_min_messages = error; SET search_path = qorhost");
}

void HandConnection::Run(const std::string& sql) {
  (void)Checked(handle(), PQexec(handle(), sql.c_str()));
}

std::int64_t HandConnection::Number(const std::string& sql) {
  return NumberIn(Checked(handle(), PQexec(handle(), sql.c_str())).get());
}

void HandConnection::DropTriggers() {
  Run(R"(DO $$ DECLARE t record; BEGIN FOR t IN SELECT c.relname, g.tgname FROM pg_trigger g )"
      R"(JOIN pg_class c ON c.oid = g.tgrelid WHERE g.tgname LIKE 'Tell%' LOOP )"
      R"(EXECUTE format('DROP TRIGGER %I ON %I', t.tgname, t.relname); END LOOP; END $$)");
}

void HandConnection::Prepare(const char* statement, const std::string& sql) {
  (void)Checked(handle(), PQprepare(handle(), statement, sql.c_str(), 0, nullptr));
}

std::int64_t HandConnection::Step(const char* statement, const std::string& first,
                                  const std::string& second, const std::string& third,
                                  const std::string& fourth) {
  const std::array<const char*, 4> values{first.c_str(), second.c_str(), third.c_str(),
                                          fourth.c_str()};
  const int count = fourth.empty() ? (third.empty() ? (second.empty() ? 1 : 2) : 3) : 4;
  return NumberIn(Checked(handle(), PQexecPrepared(handle(), statement, count, values.data(),
                                                   nullptr, nullptr, 0))
                      .get());
}

void CheckServerRange(const std::string& name, bool withTenants) {
  HandConnection connection(name);
  const auto count = [&](const std::string& rows) {
    Check(connection.Number("SELECT count(*) FROM " + rows) == kServerRange,
          fmt::format("{} rows of {}", kServerRange, rows));
  };
  count(fmt::format(R"("CredentialBank" WHERE "UnitKey"=1 AND "CredentialType"={} AND )"
                    R"("FacilityCode"={} AND "PINNo" BETWEEN 1 AND {} AND "ButtonNumber"=1 AND )"
                    R"("LASTMODIFIEDDATE" LIKE '____-__-__ __:__:__')",
                    kCardType, kFacilityCode, kServerRange));
  if (withTenants) {
    count(fmt::format(R"("Tenants" t JOIN "CredentialBank" c ON c."RID"=t."CREDENTIALID1" AND )"
                      R"(t."LINKCODE"=c."PINNo" AND t."LastName"='No Name{}' || c."PINNo" AND )"
                      R"(t."ACTIVETENANT"=-1 AND t."GROUPID"=1)",
                      kCardType));
    count(R"("Tenants" t JOIN "TenantsBackup" b ON b."TenantID"=t."RID" AND b."UnitKey"=1)");
    count(R"("Tenants" t JOIN "ProgramSteps" s ON s."SubjectRID"=t."RID" AND s."Sent"=0)");
    Check(connection.Number(R"(SELECT "NextLinkCode" FROM "UnitCounters" WHERE "UnitKey"=1)") ==
              kServerRange + 1,
          "the counter is behind the last code");
  }
}

}  // namespace qorbench
