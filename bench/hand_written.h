// The floors: the same rows read and written by hand with SQLite's own functions, as a program
// would that does nothing else. All of them end the program when a call fails.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "bench/bench_store.h"

struct sqlite3;

namespace qorbench::by_hand {

/// Each save in one transaction. Returns the identity of the last row.
/// (a) one statement text for each row through sqlite3_exec.
std::int64_t IssueWithTexts(sqlite3* database, std::span<const RangeSave> saves);
/// (b) one prepared statement for all rows.
std::int64_t IssuePrepared(sqlite3* database, std::span<const RangeSave> saves);

/// Gives each of the credentials with the identities 1 to `rows` another number, `times` times,
/// each in a transaction of its own: whether the number is free, whether the row is as it was read,
/// and the change. Each time the numbers are `rows` higher.
void Renumber(sqlite3* database, std::int32_t unit, std::int32_t rows, std::int32_t times);

/// The statements that a save with tenants runs for each number: the credential, the next link
/// code, the tenant, the counter read and written, the tenant's id, the backup row and the
/// programming step. Returns the ids of the new tenants, each followed by a comma.
std::string IssueTenantsWithTexts(sqlite3* database, std::span<const RangeSave> saves);
std::string IssueTenantsPrepared(sqlite3* database, std::span<const RangeSave> saves);

/// Shuts the unit's tenants with Full Access at door 3 out there, in one transaction: reads who
/// they are, changes 500 at once, and queues each one's step in the place of one that waits.
void EditTenants(sqlite3* database, std::int32_t unit);

/// One row of the list query.
struct ListedCredential {
  std::int32_t unit;
  std::int32_t rid;
  std::int32_t type;
  std::int32_t number;
  std::int32_t facilityCode;
  std::int32_t idCode;
  std::int32_t sequenceNumber;
  std::int32_t buttonNumber;
  std::string lastModified;
  std::int32_t doorCode;
};

/// Steps the query that fills the list of credentials into a vector.
[[nodiscard]] std::vector<ListedCredential> ListCredentials(sqlite3* database, std::int32_t unit);

/// One row of the list query of directory codes.
struct ListedCode {
  std::int32_t rid;
  std::string shown;                     ///< the code with zeros in front
  std::array<std::int32_t, 10> numbers;  ///< the other numbers and flags, in the query's order
  std::array<std::string, 8> texts;      ///< the texts and dates
};

/// Steps the query that fills the list of directory codes into a vector.
[[nodiscard]] std::vector<ListedCode> ListCodes(sqlite3* database, std::int32_t unit, int digits);

/// One row of the report of directory codes, as it is stored.
struct ReportedCode {
  double code;
  std::array<std::int32_t, 9> numbers;  ///< the other numbers and flags, in the query's order
  std::array<std::string, 7> texts;     ///< the texts and dates
};

/// Steps the report's query for the unit's active codes whose names begin with "Name" into a
/// vector: the same columns and conditions. The names' own collation gives the same order without
/// the report's texts in capitals.
[[nodiscard]] std::vector<ReportedCode> ReportCodes(sqlite3* database, std::int32_t unit);

/// One row of the report of credentials.
struct ReportedCredential {
  std::string type;
  std::string holder;
  /// The other numbers, in the query's order; those that only transmitters have are 0 for cards.
  std::array<std::int32_t, 8> numbers;
};

/// Steps the report's query for the unit's credentials of one facility, assigned and not, into a
/// vector.
[[nodiscard]] std::vector<ReportedCredential> ReportCredentials(sqlite3* database,
                                                                std::int32_t unit,
                                                                std::int32_t facility);

}  // namespace qorbench::by_hand
