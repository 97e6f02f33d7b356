#include "bench/server_hand_written.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <array>
#include <cstdlib>
#include <functional>

#include "bench/check.h"
#include "bench/save_screen.h"

namespace qorbench::by_hand {

namespace {

constexpr const char* kStamp = "2026-01-31 12:00:00";
constexpr std::size_t kBatch = 512;
constexpr std::size_t kHashLength = 64;
constexpr std::int64_t kAnyFactor = 982451653;  // versions of equal entries are told apart by it

/// Runs a prepared statement for each row in pipeline mode and hands over what each returns.
template <std::size_t kValues>
void Pipeline(PGconn* connection, const char* statement, std::size_t rows,
              const std::function<void(std::size_t, std::array<std::string, kValues>&)>& fill,
              const std::function<void(std::size_t, std::int64_t)>& take) {
  Check(PQenterPipelineMode(connection) != 0, "a pipeline");
  std::size_t read = 0;
  const auto readOne = [&] {
    PGresult* const result = PQgetResult(connection);
    const ExecStatusType status = PQresultStatus(result);
    Check(status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK, PQerrorMessage(connection));
    if (status == PGRES_TUPLES_OK) {
      take(read, std::strtoll(PQgetvalue(result, 0, 0), nullptr, 10));
    }
    PQclear(result);
    Check(PQgetResult(connection) == nullptr, "one result");
    ++read;
  };
  std::array<std::string, kValues> values;
  std::array<const char*, kValues> pointers{};
  for (std::size_t row = 0; row < rows; ++row) {
    fill(row, values);
    for (std::size_t value = 0; value < kValues; ++value) {
      pointers.at(value) = values.at(value).c_str();
    }
    Check(PQsendQueryPrepared(connection, statement, static_cast<int>(kValues), pointers.data(),
                              nullptr, nullptr, 0) != 0,
          PQerrorMessage(connection));
    if ((row + 1) % kBatch == 0) {
      Check(PQsendFlushRequest(connection) != 0 && PQflush(connection) == 0, "a flush");
      while (read + kBatch < row + 1) {
        readOne();
      }
    }
  }
  Check(PQpipelineSync(connection) != 0, "an end");
  while (read < rows) {
    readOne();
  }
  PGresult* const end = PQgetResult(connection);
  Check(PQresultStatus(end) == PGRES_PIPELINE_SYNC, "the end");
  PQclear(end);
  Check(PQexitPipelineMode(connection) != 0, "no pipeline");
}

void IssueTenants(HandConnection& connection, const std::vector<std::int64_t>& credentials) {
  const std::int64_t code = connection.Number(
      R"(SELECT greatest(coalesce((SELECT "NextLinkCode" FROM "UnitCounters" WHERE "UnitKey"=1), )"
      R"(0), coalesce((SELECT max("LINKCODE") FROM "Tenants" WHERE "UnitKey"=1), 0) + 1))");
  connection.Prepare(
      "tenant",
      R"(INSERT INTO "Tenants" ("UnitKey", "LastName", "CREDENTIALID1", "DOORSCHEDULE1", )"
      R"("DOORSCHEDULE2", "DOORSCHEDULE3", "DOORSCHEDULE4", "ACTIVESTARTTIME", "ACTIVEENDTIME", )"
      R"("LASTMODIFIEDDATE", "GROUPID", "LINKCODE", "ACTIVETENANT") VALUES ($1::int4, $2::text, )"
      R"($3::int4, 1, 1, 0, 0, '2026-01-01 08:00:00', '2026-12-31 23:59:59', $4::text, 1, )"
      R"($5::int4, -1) RETURNING "RID")");
  std::vector<std::int64_t> tenants(credentials.size());
  Pipeline<5>(
      connection.handle(), "tenant", credentials.size(),
      [&](std::size_t row, std::array<std::string, 5>& values) {
        values = {"1", fmt::format("No Name{}{}", kCardType, row + 1),
                  std::to_string(credentials[row]), kStamp,
                  std::to_string(code + static_cast<std::int64_t>(row))};
      },
      [&](std::size_t row, std::int64_t rid) { tenants[row] = rid; });
  connection.Run(fmt::format(R"(INSERT INTO "UnitCounters" ("UnitKey", "NextLinkCode") VALUES )"
                             R"((1, {0}) ON CONFLICT ("UnitKey") DO UPDATE SET "NextLinkCode"={0})",
                             code + static_cast<std::int64_t>(credentials.size())));
  connection.Prepare("backup",
                     R"(INSERT INTO "TenantsBackup" ("UnitKey", "TenantID") VALUES (1, $1::int4))");
  connection.Prepare(
      "step",
      R"(INSERT INTO "ProgramSteps" ("UnitKey", "Kind", "SubjectRID", "QueuedAt", "Sent") VALUES )"
      R"((1, 'program tenant', $1::int4, $2::text, 0))");
  Pipeline<1>(
      connection.handle(), "backup", tenants.size(),
      [&](std::size_t row, std::array<std::string, 1>& values) {
        values = {std::to_string(tenants[row])};
      },
      [](std::size_t, std::int64_t) {});
  Pipeline<2>(
      connection.handle(), "step", tenants.size(),
      [&](std::size_t row, std::array<std::string, 2>& values) {
        values = {std::to_string(tenants[row]), kStamp};
      },
      [](std::size_t, std::int64_t) {});
}

}  // namespace

void IssueOnServer(HandConnection& connection, bool withTenants) {
  connection.Prepare(
      "credential",
      R"(INSERT INTO "CredentialBank" ("UnitKey", "CredentialType", "PINNo", "FacilityCode", )"
      R"("IDCode", "SequenceNumber", "ButtonNumber", "LASTMODIFIEDDATE") VALUES ($1::int4, )"
      R"($2::int4, $3::int4, $4::int4, 0, 0, 1, $5::text) RETURNING "RID")");
  connection.Run("BEGIN");
  std::vector<std::int64_t> rids(static_cast<std::size_t>(kServerRange));
  Pipeline<5>(
      connection.handle(), "credential", rids.size(),
      [](std::size_t row, std::array<std::string, 5>& values) {
        values = {"1", std::to_string(kCardType), std::to_string(row + 1),
                  std::to_string(kFacilityCode), kStamp};
      },
      [&rids](std::size_t row, std::int64_t rid) { rids[row] = rid; });
  if (withTenants) {
    IssueTenants(connection, rids);
  }
  connection.Run("COMMIT");
}

ServerRenumbering::ServerRenumbering(const std::string& name) : connection_(name) {
  // With the lock come the hash of the entry that the next one follows, and the number by which it
  // is known after a lost connection whether the operation was stored.
  connection_.Prepare(
      "lock", R"(SELECT "Entry", pg_current_xact_id(), (SELECT "Hash" FROM "AuditEntries" E WHERE )"
              R"(E."HomeUnit"=$1::int4 AND E."RID"=V."Entry") FROM "UnitVersions" V )"
              R"(WHERE "UnitKey"=$1::int4 FOR UPDATE)");
  connection_.Prepare("find",
                      R"(SELECT "PINNo" FROM "CredentialBank" WHERE "UnitKey"=$1::int4 AND )"
                      R"("CredentialType"=$2::int4 AND "PINNo"=$3::int4 AND "RID"<>$4::int4)");
  // The row as it was goes into the entry.
  connection_.Prepare("read", R"(SELECT "PINNo", "LASTMODIFIEDDATE" FROM "CredentialBank" WHERE )"
                              R"("RID"=$1::int4)");
  connection_.Prepare(
      "change", R"(UPDATE "CredentialBank" SET "PINNo"=$1::int4, "LASTMODIFIEDDATE"=$4::text )"
                R"(WHERE "UnitKey"=$2::int4 AND "RID"=$3::int4)");
  connection_.Prepare(
      "entry",
      R"(INSERT INTO "AuditEntries" ("HomeUnit", "RID", "At", "Who", "Origin", "UnitKey", )"
      R"("Previous", "What", "Rows", "Hash") VALUES ($1::int4, nextval('"AuditNumbers"'), )"
      R"('2026-01-31 12:00:00', 'anna', 'bench', $1::int4, nullif($2::int8, 0), 'renumber', )"
      R"($3::text, $4::text) RETURNING "RID")");
  connection_.Prepare("version", R"(UPDATE "UnitVersions" SET "Entry"=$2::int8, "Mark"=$3::int8 )"
                                 R"(WHERE "UnitKey"=$1::int4)");
}

void ServerRenumbering::Renumber(std::int32_t unit, std::int64_t rid, std::int64_t number) {
  const std::string key = std::to_string(unit);
  const std::string row = std::to_string(rid);
  connection_.Run("BEGIN");
  const std::int64_t previous = connection_.Step("lock", key);
  Check(connection_.Step("find", key, std::to_string(kCardType), std::to_string(number), row) == 0,
        "the number is free");
  const std::int64_t before = connection_.Step("read", row);
  Check(before != 0, "the row is there");
  connection_.Step("change", std::to_string(number), key, row, kStamp);
  const std::int64_t entry = connection_.Step(
      "entry", key, std::to_string(previous),
      fmt::format(R"({{"table":"CredentialBank","updated":{},"before":{{"PINNo":{},)"
                  R"("LASTMODIFIEDDATE":"{}"}},"after":{{"PINNo":{},"LASTMODIFIEDDATE":"{}"}}}})",
                  rid, before, kStamp, number, kStamp),
      std::string(kHashLength, 'a'));
  connection_.Step("version", key, std::to_string(entry), std::to_string(entry * kAnyFactor));
  connection_.Run("COMMIT");
}

std::size_t StepQuery(HandConnection& connection, const std::string& sql,
                      const std::vector<std::optional<std::string>>& values) {
  std::vector<const char*> pointers;
  for (const std::optional<std::string>& value : values) {
    pointers.push_back(value ? value->c_str() : nullptr);
  }
  PGconn* const handle = connection.handle();
  Check(PQsendQueryParams(handle, sql.c_str(), static_cast<int>(pointers.size()), nullptr,
                          pointers.data(), nullptr, nullptr, 0) != 0,
        PQerrorMessage(handle));
  PQsetSingleRowMode(handle);
  std::vector<std::vector<std::string>> rows;
  for (PGresult* result = PQgetResult(handle); result != nullptr; result = PQgetResult(handle)) {
    const ExecStatusType status = PQresultStatus(result);
    Check(status == PGRES_SINGLE_TUPLE || status == PGRES_TUPLES_OK, PQerrorMessage(handle));
    if (status == PGRES_SINGLE_TUPLE) {
      std::vector<std::string>& row = rows.emplace_back();
      row.reserve(static_cast<std::size_t>(PQnfields(result)));
      for (int column = 0; column < PQnfields(result); ++column) {
        row.emplace_back(PQgetvalue(result, 0, column),
                         static_cast<std::size_t>(PQgetlength(result, 0, column)));
      }
    }
    PQclear(result);
  }
  return rows.size();
}

}  // namespace qorbench::by_hand
