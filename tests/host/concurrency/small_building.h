// A store file with one small unit, cheap to make anew for every step of a test.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/sqlite/database.h"

namespace qorhost::test {

inline constexpr std::int32_t kUnit = 1;
inline constexpr int kCodesInUse = 7;
/// A capacity that leaves room for whatever a test adds.
inline constexpr int kRoomy = 40;

/// Makes the store: unit 1 with the cards 101 to 104 in the rows 1 to 4, the directory codes 101 to
/// 103 in the rows 1 to 3, which the unit knows, and three tenants: Adam holds the card 101 and the
/// directory code 101, Berg nothing, Cole the card 102.
void MakeBuilding(const std::filesystem::path& file, int capacity);

/// Every row of every table as a text, without the dates of changes and random marks: equal for two
/// stores in which the same was done.
[[nodiscard]] std::vector<std::string> ContentOf(sqlite::Database& database);

/// The statements that put its rows into an empty store, in words that all engines know.
[[nodiscard]] std::string RowsOfBuilding(int capacity);

/// What a SELECT of texts finds is wrong.
struct Wrong {
  std::string_view what;
  std::string_view select;
};
/// What must never be in a store, in words that all engines know, the versions of units being in
/// the table UnitVersions.
[[nodiscard]] std::span<const Wrong> AllThatIsWrong();

/// What must never be in a store, whoever worked on it at once: numbers and codes that are there
/// twice, more codes than the unit takes, tenants who hold what is not there, a credential with two
/// holders, changed codes without a step, steps without a change, a broken chain of the audit.
[[nodiscard]] std::vector<std::string> WrongIn(sqlite::Database& database, int capacity);

}  // namespace qorhost::test
