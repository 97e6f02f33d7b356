#include "host/store/postgres/audit_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/store/audit_chain.h"
#include "host/store/audit_chain_check.h"
#include "host/store/audit_rows.h"
#include "host/store/postgres/put_back.h"
#include "host/store/postgres/session.h"

namespace qorhost::postgres {

namespace {

// With whose rows the entries of the whole store lie.
constexpr std::int32_t kNoUnit = 0;
// Between where an entry comes from and the login by which the server knows who stored it.
constexpr std::string_view kLogin = " as ";
// What the server gives to an entry, while the right to write is held.
constexpr const char* kNumberAndLogin = R"(SELECT nextval('"AuditNumbers"'), session_user)";

/// A row of "RID", "At", "Who", "Origin", "UnitKey", "What".
WorkEntry EntryIn(const Result& read, int row) {
  WorkEntry entry;
  entry.entry = read.Number(row, 0);
  entry.at = read.Text(row, 1);
  entry.who = read.Text(row, 2);
  entry.origin = read.Text(row, 3);
  if (!read.IsNull(row, 4)) {
    entry.unitKey = static_cast<std::int32_t>(read.Number(row, 4));
  }
  entry.what = read.Text(row, 5);
  return entry;
}

std::vector<WorkEntry> EntriesIn(const Result& read) {
  std::vector<WorkEntry> entries;
  for (int row = 0; row < read.rows(); ++row) {
    entries.push_back(EntryIn(read, row));
  }
  return entries;
}

SentValues Values(std::int64_t number) {
  SentValues values;
  values.AddNumber(number);
  return values;
}

void AddOrNull(SentValues& values, std::optional<std::int64_t> number) {
  if (number) {
    values.AddNumber(*number);
  } else {
    values.AddNull();
  }
}

}  // namespace

std::vector<WorkEntry> AuditLog::After(std::int64_t entry, std::optional<std::int32_t> unitKey) {
  SentValues values;
  values.AddNumber(entry);
  if (unitKey) {
    values.AddNumber(*unitKey);
  }
  return EntriesIn(session_.Own(
      fmt::format(
          R"(SELECT "RID", "At", "Who", "Origin", "UnitKey", "What" FROM "AuditEntries" WHERE "RID">$1::int8 {} ORDER BY "RID")",
          unitKey
              ? R"(AND "HomeUnit" IN ($2::int4, 0) AND ("UnitKey"=$2::int4 OR "UnitKey" IS NULL))"
              : ""),
      values));
}

std::optional<WorkEntry> AuditLog::Find(std::int64_t entry) {
  std::vector<WorkEntry> found = EntriesIn(session_.Own(
      R"(SELECT "RID", "At", "Who", "Origin", "UnitKey", "What" FROM "AuditEntries" WHERE "RID"=$1::int8)",
      Values(entry)));
  return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
}

std::vector<RowChange> AuditLog::RowsOf(std::int64_t entry) {
  const Result read = session_.Own(
      R"(SELECT "Rows", 0 AS "Piece" FROM "AuditEntries" WHERE "RID"=$1::int8 UNION ALL SELECT "Rows", "Piece" FROM "AuditRows" WHERE "Entry"=$1::int8 ORDER BY "Piece")",
      Values(entry));
  std::vector<RowChange> changes;
  for (int row = 0; row < read.rows(); ++row) {
    std::vector<RowChange> piece = RowsInPiece(read.Text(row, 0));
    std::move(piece.begin(), piece.end(), std::back_inserter(changes));
  }
  return changes;
}

std::vector<ChainHead> AuditLog::Heads() {
  const Result read = session_.Own(
      R"(SELECT V."UnitKey", V."Entry", A."Hash" FROM "UnitVersions" V JOIN "AuditEntries" A ON A."RID" = V."Entry" ORDER BY V."UnitKey")");
  std::vector<ChainHead> heads;
  for (int row = 0; row < read.rows(); ++row) {
    heads.push_back({static_cast<std::int32_t>(read.Number(row, 0)), read.Number(row, 1),
                     std::string(read.Text(row, 2))});
  }
  return heads;
}

std::vector<ChainFault> AuditLog::Check() {
  std::vector<ChainFault> faults;
  AuditChainCheck check(false);
  ReadEntry read;
  const auto end = [&] {
    if (read.entry.entry == 0) {
      return;  // before the first
    }
    check.Take(read);
    if (const std::optional<ChainFault> fault = FaultIn(read)) {
      faults.push_back(*fault);
    }
  };
  // One statement for all: each entry comes with each of its further pieces, or once with none.
  (void)session_.Own(
      R"(SELECT E."RID", E."At", E."Who", E."Origin", E."UnitKey", E."What", E."Previous", E."Rows", E."Hash", P."Rows" FROM "AuditEntries" E LEFT JOIN "AuditRows" P ON P."Entry" = E."RID" ORDER BY E."RID", P."Piece")",
      {}, [&](const Result& row) {
        if (row.Number(0, 0) != read.entry.entry) {
          end();
          read = {};
          read.entry = EntryIn(row, 0);
          if (!row.IsNull(0, 6)) {
            read.previous = row.Number(0, 6);
          }
          read.rows.emplace_back(row.Text(0, 7));
          read.hash = row.Text(0, 8);
        }
        if (!row.IsNull(0, 9)) {
          read.rows.emplace_back(row.Text(0, 9));
        }
      });
  end();
  const Result versions = session_.Own(
      R"(SELECT "UnitKey", "Entry" FROM "UnitVersions" WHERE "Entry">0 ORDER BY "Entry", "UnitKey")");
  for (int row = 0; row < versions.rows(); ++row) {
    if (const std::optional<ChainFault> fault = check.FaultOfVersion(
            static_cast<std::int32_t>(versions.Number(row, 0)), versions.Number(row, 1))) {
      faults.push_back(*fault);
    }
  }
  return faults;
}

std::string AuditLog::HashOf(std::int64_t entry) {
  const Result read =
      session_.Own(R"(SELECT "Hash" FROM "AuditEntries" WHERE "RID"=$1::int8)", Values(entry));
  return read.rows() == 0 ? std::string() : std::string(read.Text(0, 0));
}

/// Of an entry that a unit's next one follows: one of the unit or else of the whole store.
std::string AuditLog::HashOfPrevious(std::int64_t entry, std::int32_t unitKey) {
  for (const std::int32_t home : {unitKey, kNoUnit}) {
    SentValues values = Values(entry);
    values.AddNumber(home);
    const Result read = session_.Own(
        R"(SELECT "Hash" FROM "AuditEntries" WHERE "RID"=$1::int8 AND "HomeUnit"=$2::int4)",
        values);
    if (read.rows() > 0) {
      return std::string(read.Text(0, 0));
    }
  }
  return {};
}

std::vector<std::string> AuditLog::HashesBehind(const WorkEntry& entry, std::int64_t previous,
                                                const Known& known) {
  if (entry.unitKey) {
    if (previous == 0) {
      return {};
    }
    return {known.hashOfPrevious.empty() ? HashOfPrevious(previous, *entry.unitKey)
                                         : known.hashOfPrevious};
  }
  const Result read = session_.Own(
      R"(SELECT "Hash" FROM "AuditEntries" WHERE "RID" IN (SELECT "Entry" FROM "UnitVersions") OR "RID" = (SELECT max("RID") FROM "AuditEntries" WHERE "HomeUnit"=0 AND "UnitKey" IS NULL) ORDER BY "RID")");
  std::vector<std::string> hashes;
  for (int row = 0; row < read.rows(); ++row) {
    hashes.emplace_back(read.Text(row, 0));
  }
  return hashes;
}

AuditLog::Added AuditLog::Append(WorkEntry entry, std::int64_t previous, const Known& known,
                                 const std::vector<RowChange>& changes) {
  const std::vector<std::string> rows = RowsInPieces(changes);
  if (known.number != 0) {
    entry.entry = known.number;
    entry.origin.append(kLogin).append(known.login);
  } else {
    const Result given = session_.Own(kNumberAndLogin);
    entry.entry = given.Number(0, 0);
    entry.origin.append(kLogin).append(given.Text(0, 1));
  }
  SentValues values;
  values.AddNumber(entry.entry);
  values.AddText(entry.at);
  values.AddText(entry.who);
  values.AddText(entry.origin);
  AddOrNull(values, entry.unitKey);
  AddOrNull(values, entry.unitKey && previous != 0 ? std::optional(previous) : std::nullopt);
  values.AddText(entry.what);
  values.AddText(rows.front());
  const std::string hash = qorhost::HashOf(entry, HashesBehind(entry, previous, known), rows);
  values.AddText(hash);
  session_.OwnLater(
      R"(INSERT INTO "AuditEntries" ("HomeUnit", "RID", "At", "Who", "Origin", "UnitKey", "Previous", "What", "Rows", "Hash") VALUES (coalesce($5::int4, 0), $1::int8, $2::text, $3::text, $4::text, $5::int4, $6::int8, $7::text, $8::text, $9::text))",
      values);
  for (std::size_t piece = 1; piece < rows.size(); ++piece) {
    SentValues further;
    further.AddNumber(entry.entry);
    further.AddNumber(static_cast<std::int64_t>(piece));
    further.AddText(rows[piece]);
    further.AddNumber(entry.unitKey.value_or(kNoUnit));
    session_.OwnLater(
        R"(INSERT INTO "AuditRows" ("HomeUnit", "Entry", "Piece", "Rows") VALUES ($4::int4, $1::int8, $2::int4, $3::text))",
        further);
  }
  return {entry.entry, hash};
}

std::optional<std::int64_t> AuditLog::PutBack(const RowChange& change) {
  return session_.Writing([&] { return PutRowBack(session_, change); });
}

}  // namespace qorhost::postgres
