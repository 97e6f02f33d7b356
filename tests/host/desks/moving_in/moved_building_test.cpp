// Buildings that were brought in: every row in the store, and nothing else.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>

#include "frame/runtime_error.h"
#include "host/desks/desk_error.h"
#include "tests/host/desks/moving_in/made_tables.h"
#include "tests/host/desks/moving_in/moved_fixture.h"

namespace qorhost::test {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::IsEmpty;

class WholeBuildings : public MovedBuildings {
 protected:
  void ExpectEveryRow(std::string_view name);

  /// The cells that were stored with another value than the file's.
  [[nodiscard]] bool WasAdjusted(std::string_view table, std::string_view column) const {
    return std::any_of(plan_->settled().named().begin(), plan_->settled().named().end(),
                       [&](const SettledCell& cell) {
                         return cell.settlement == Settlement::kAdjusted && cell.table == table &&
                                cell.column == column;
                       });
  }
};

/// Against the file of expected values: rows, Nulls and sums of each column, and the rows that are
/// told there in full.
void WholeBuildings::ExpectEveryRow(std::string_view name) {
  const ordered_json expected = ExpectedOf(name);
  for (const KnownTable& known : KnownTables()) {
    const ordered_json& table = TableIn(expected, known.name);
    std::vector<std::string> names;  // of the file, in the order that is selected
    std::string columns;
    for (const auto& [own, type] : table.at("columns").items()) {
      const dialect::Column* column = dialect::FindColumn(LayoutOf(known), own);
      if (column == nullptr || WasAdjusted(known.name, column->name)) continue;
      names.push_back(own);
      columns += (columns.empty() ? "" : ", ") + own;
    }
    const std::vector<json> rows =
        Rows("SELECT " + columns + " FROM " + std::string(known.name) + " ORDER BY RID");
    ASSERT_EQ(rows.size(), table.at("rows").get<std::size_t>()) << known.name;
    for (std::size_t at = 0; at < names.size(); ++at) {
      std::size_t nulls = 0;
      double sum = 0;
      for (const json& row : rows) {
        if (row[at].is_null()) ++nulls;
        if (row[at].is_number()) sum += row[at].get<double>();
        if (row[at] == true) ++sum;
      }
      EXPECT_EQ(nulls, table.at("nulls").at(names[at]).get<std::size_t>()) << names[at];
      if (table.at("sums").contains(names[at])) {
        EXPECT_EQ(sum, table.at("sums").at(names[at]).get<double>()) << names[at];
      }
    }
    const std::set<json> stored(rows.begin(), rows.end());
    for (const ordered_json& sample : table.at("sample")) {
      json wanted = json::array();
      for (const std::string& own : names) wanted.push_back(json(sample.at(own)));
      EXPECT_TRUE(stored.contains(wanted)) << known.name << wanted;
    }
  }
}

class MovedSamples : public WholeBuildings, public testing::WithParamInterface<const char*> {};

TEST_P(MovedSamples, HaveEveryRowAsItWasWritten) {
  Bring(GetParam());
  ExpectEveryRow(GetParam());
}

TEST_F(WholeBuildings, ALargeOneHasEveryRowAsItWasWritten) {
  Bring("building-large.accdb");
  EXPECT_EQ(plan_->refusedRows(), 0U);
  ExpectEveryRow("building-large.accdb");
}

TEST_P(MovedSamples, AreInOrder) {
  Bring(GetParam());
  // Cards in the files open doors that their units do not have, and come as they are.
  EXPECT_THAT(Faults(), testing::Each(testing::AllOf(testing::HasSubstr(" has the door "),
                                                     testing::EndsWith(", which is not there"))));
}

TEST_P(MovedSamples, AreStoredAsOneEntryOfTheHistory) {
  Bring(GetParam());
  const std::vector<WorkEntry> entries = session_->sql().audit().After(0, std::nullopt);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries.front().what, std::string("init from ") + GetParam());
}
INSTANTIATE_TEST_SUITE_P(All, MovedSamples,
                         testing::Values("building-2000.mdb", "building-2010.accdb",
                                         "encoded-2000.mdb"),
                         [](const auto& sample) { return LettersOf(sample.param); });

/// A table with the columns alone that it cannot be without.
DesktopTable BareTable(std::string name, std::vector<std::string> columns,
                       std::vector<DesktopCell> row) {
  return TableOf(std::move(name), std::move(columns), {std::move(row)});
}

/// A store has its own values for some columns that a row is made without.
TEST_F(WholeBuildings, WhatAFileLacksIsEmptyInTheStore) {
  const std::int64_t one = 1;
  const DesktopText name{"Novak", true};
  Bring(MovingPlan(
            {{BareTable("Units", {"UnitKey"}, {one}), BareTable("UnitSettings", {"UnitKey"}, {one}),
              BareTable("Schedules", {"UnitKey", "ScheduleID"}, {one, std::int64_t{3}}),
              BareTable("DirectoryCode", {"RID", "UNITKEY", "DIRECTORYCODE"}, {one, one, one}),
              BareTable("Tenants", {"RID", "UnitKey", "LastName"}, {one, one, name})}},
            "some.mdb", std::nullopt),
        "some.mdb");
  std::size_t compared = 0;
  for (const MissingThing& missing : plan_->missing()) {
    if (missing.means != "empty in every row") continue;
    EXPECT_THAT(Rows(fmt::format("SELECT {} FROM {}", missing.column, missing.table)),
                ElementsAre(json::array({nullptr})))
        << missing.table << "." << missing.column;
    ++compared;
  }
  EXPECT_GT(compared, 40U);
  EXPECT_THAT(Rows("SELECT IGNOREFACILITYCODE FROM UnitSettings"),
              ElementsAre(json::array({false})));
  EXPECT_THAT(Rows("SELECT RID, TenantID, ACTIVETENANT FROM Tenants"),
              ElementsAre(json::array({1, 1, false})));
}

// ---- What is not brought in
// -----------------------------------------------------------------------------------

TEST_F(WholeBuildings, OneUnitAloneComesWithAllThatBelongsToIt) {
  Bring("building-2000.mdb", 7);
  EXPECT_THAT(Rows("SELECT UnitKey FROM Units"), ElementsAre(json::array({7})));
  EXPECT_THAT(Rows("SELECT COUNT(*) FROM Tenants WHERE UnitKey<>7"), ElementsAre(json::array({0})));
  EXPECT_THAT(Rows("SELECT COUNT(*) FROM CredentialBank"), ElementsAre(json::array({68})));
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(WholeBuildings, WhatIsStoppedLeavesNothing) {
  const MovingPlan plan = PlanOf("building-2000.mdb");
  const std::unique_ptr<Store> store = FreshStore();
  const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
  const auto stopAt = [](std::int64_t place) {
    return [place](std::int64_t done, std::int64_t) { return done < place; };
  };
  EXPECT_THROW(BringIn(*session, plan, "building.mdb", stopAt(300)), CancelledError);
  EXPECT_EQ(session->Select("SELECT RID FROM Units").rowCount, 0U);
  EXPECT_EQ(session->Select("SELECT RID FROM TenantSelectionFields").rowCount, 17U);
  EXPECT_FALSE(session->inTransaction());
  BringIn(*session, plan, "building.mdb", stopAt(497));
  EXPECT_EQ(session->Select("SELECT RID FROM Units").rowCount, 4U);
}

TEST_F(WholeBuildings, AStoreThatHasUnitsTakesNoOthers) {
  const MovingPlan plan = PlanOf("encoded-2000.mdb");
  const std::unique_ptr<Store> store = FreshStore();
  const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
  BringIn(*session, plan, "one.mdb");
  EXPECT_THROW(BringIn(*session, plan, "two.mdb"), RefusedError);
  EXPECT_EQ(session->Select("SELECT RID FROM CredentialBank").rowCount, 14U);
}

TEST_F(WholeBuildings, NewRowsComeBehindThoseThatWereBroughtIn) {
  Bring("encoded-2000.mdb");
  SqlSession& session = session_->sql();
  EXPECT_EQ(session.tenants().NextLinkCode(1), 9);
  EXPECT_EQ(
      session
          .Change("INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo) VALUES (1, 1, 9)",
                  std::nullopt)
          .newRow,
      16);
}

TEST_F(WholeBuildings, IdentitiesAndLinkCodesComeToBothEndsOf32Bits) {
  const std::int64_t one = 1;
  const std::int64_t last = 2147483647;
  const std::int64_t first = -2147483648;
  const DesktopText name{"Novak", true};
  Bring(MovingPlan({{TableOf("Units", {"UnitKey"}, {{one}, {last}, {first}}),
                     TableOf("CredentialBank", {"RID", "UnitKey", "CredentialType", "PINNo"},
                             {{one, one, one, one}, {last, last, one, std::int64_t{65535}}}),
                     TableOf("Tenants", {"RID", "UnitKey", "LastName", "LINKCODE"},
                             {{one, one, name, last}, {last, one, name, first}})}},
                   "some.mdb", std::nullopt),
        "some.mdb");
  EXPECT_THAT(Rows("SELECT UnitKey FROM Units ORDER BY UnitKey"),
              ElementsAre(json::array({first}), json::array({1}), json::array({last})));
  EXPECT_THAT(Rows("SELECT RID, UnitKey FROM CredentialBank ORDER BY RID"),
              ElementsAre(json::array({1, 1}), json::array({last, last})));
  EXPECT_THAT(Rows("SELECT RID, TenantID, LINKCODE FROM Tenants ORDER BY RID"),
              ElementsAre(json::array({1, 1, last}), json::array({last, last, first})));
  std::vector<std::string> told;
  for (const SettledCell& cell : plan_->settled().named()) {
    if (cell.kind == "id-range" || cell.kind == "link-range") {
      told.push_back(fmt::format("{} {} {} [{}]", cell.table, cell.column, cell.value, cell.kind));
    }
  }
  EXPECT_THAT(told, ElementsAre("CredentialBank RID 2147483647 [id-range]",
                                "Tenants LINKCODE 2147483647 [link-range]",
                                "Tenants RID 2147483647 [id-range]"));
  EXPECT_THROW((void)session_->sql().tenants().NextLinkCode(1), qorcred::RuntimeError);
  EXPECT_ANY_THROW((void)session_->sql().Change(
      "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo) VALUES (1, 1, 9)", std::nullopt))
      << "as they are told";
}

}  // namespace
}  // namespace qorhost::test
