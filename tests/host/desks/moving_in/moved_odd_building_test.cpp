// The building of odd rows, brought in without those that are refused: every cell of every other
// row as it was written, but for those that are listed here.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "tests/host/desks/moving_in/moved_fixture.h"

namespace qorhost::test {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

constexpr std::size_t kNumberCell = 1;  // of a row of the report of credentials
constexpr std::size_t kHolderCell = 6;

/// The rows that are refused, counted from 1 in the order of the file.
const std::map<std::string_view, std::set<std::size_t>> kRefusedRows{
    {"Units", {8, 9}},
    {"UNITTYPES", {10, 11}},
    {"UnitSettings", {7, 8}},
    {"DOORS", {4, 5, 6}},
    {"Schedules", {10, 11, 12}},
    {"TenantGroup", {6}},
    {"CredentialBank",
     {6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 17, 18, 19, 20, 21, 22, 23, 24, 27, 28}},
    {"DirectoryCode", {4, 6, 7, 8, 9, 11, 13, 17, 18}},
    {"Tenants", {11, 12, 14}},
    {"TenantsBackup", {2, 3, 4}},
    {"TenantSelectionFields", {2, 3, 4, 5}}};

/// The cells that are stored with another value than the file's: by table, row and column.
const std::map<std::tuple<std::string_view, std::size_t, std::string_view>, json> kInstead{
    {{"UNITTYPES", 3, "TOTAL"}, "NTAw"},
    {{"UNITTYPES", 4, "TOTAL"}, "MjAwMA=="},
    {{"UnitSettings", 5, "RECORDDEACTIVATION"}, 0},
    {{"Schedules", 13, "RID"}, 10},
    {{"TenantGroup", 4, "IsGroupZero"}, false},
    {{"CredentialBank", 25, "DOORCODE"}, 3},
    {{"CredentialBank", 26, "DOORCODE"}, 1},
    {{"CredentialBank", 29, "DOORCODE"}, nullptr},
    {{"CredentialBank", 37, "LASTMODIFIEDDATE"}, "2024-03-05 14:31:00"},
    {{"DirectoryCode", 19, "TIMEDELAY"}, 7},
    {{"DirectoryCode", 21, "CFSCHEDULEID"}, nullptr},
    {{"DirectoryCode", 24, "MODIFIED"}, 2},
    {{"Tenants", 3, "CREDENTIALID1"}, nullptr},
    {{"Tenants", 4, "CREDENTIALID2"}, nullptr},
    {{"Tenants", 5, "CREDENTIALID1"}, nullptr},
    {{"Tenants", 6, "CREDENTIALID2"}, nullptr},
    {{"Tenants", 8, "DIRECTORYCODE"}, nullptr},
    {{"Tenants", 9, "GROUPID"}, 1},
    {{"Tenants", 10, "DOORSCHEDULE2"}, 0},
    {{"Tenants", 13, "TenantID"}, 13},
    {{"Tenants", 22, "LastName"}, "Nul\uFFFDinside"},
    {{"Tenants", 22, "NameAtUnit"}, "Nul\uFFFDinside"},
    {{"Tenants", 24, "LastName"}, "Lone \uFFFD half"}};

class MovedOddBuilding : public MovedBuildings {
 protected:
  /// The columns that the file has and a store too, in the words of the file.
  [[nodiscard]] static std::vector<std::string> ColumnsOf(const KnownTable& known,
                                                          const ordered_json& table) {
    std::vector<std::string> columns;
    for (const auto& [own, type] : table.at("columns").items()) {
      if (dialect::FindColumn(LayoutOf(known), own) != nullptr) columns.push_back(own);
    }
    return columns;
  }

  /// What is to be stored of a cell; of a number in a column of texts the number.
  [[nodiscard]] static json Wanted(const KnownTable& known, std::size_t row,
                                   const std::string& column, const json& cell) {
    const auto instead = kInstead.find({known.name, row, column});
    if (instead != kInstead.end()) return instead->second;
    const auto type = dialect::FindColumn(LayoutOf(known), column)->type;
    const bool isNumber =
        type == dialect::ColumnType::kLong || type == dialect::ColumnType::kDouble;
    if (!isNumber || !cell.is_string()) return cell;
    const json number = json::parse(cell.get<std::string>(), nullptr, false);
    return number.is_number() ? number : cell;  // in one column a date may stand as a text
  }

  /// The rows that are to be stored, each by the file's names of its columns.
  [[nodiscard]] static std::vector<json> WantedRows(std::string_view name) {
    const KnownTable& known = *FindKnownTable(name);
    const ordered_json expected = ExpectedOf("building-odd.mdb");
    const ordered_json& table = TableIn(expected, name);
    EXPECT_EQ(table.at("sample").size(), table.at("rows").get<std::size_t>()) << "all are told";
    std::vector<json> rows;
    std::size_t number = 0;
    for (const ordered_json& row : table.at("sample")) {
      ++number;
      if (kRefusedRows.at(known.name).contains(number)) continue;
      json& cells = rows.emplace_back(json::object());
      for (const std::string& column : ColumnsOf(known, table)) {
        cells[column] = Wanted(known, number, column, json(row.at(column)));
      }
    }
    return rows;
  }

  [[nodiscard]] std::vector<json> StoredRows(std::string_view name) {
    const KnownTable& known = *FindKnownTable(name);
    const ordered_json expected = ExpectedOf("building-odd.mdb");
    const std::vector<std::string> columns = ColumnsOf(known, TableIn(expected, name));
    std::vector<json> rows;
    for (const json& cells :
         Rows(fmt::format("SELECT {} FROM {}", fmt::join(columns, ", "), known.name))) {
      json& row = rows.emplace_back(json::object());
      for (std::size_t at = 0; at < columns.size(); ++at) row[columns[at]] = cells[at];
    }
    return rows;
  }
};

TEST_F(MovedOddBuilding, HasEveryCellThatIsNotListedAsItWasWritten) {
  Bring("building-odd.mdb");
  std::size_t cells = 0;
  for (const KnownTable& known : KnownTables()) {
    const std::vector<json> wanted = WantedRows(known.name);
    EXPECT_THAT(StoredRows(known.name), UnorderedElementsAreArray(wanted)) << known.name;
    for (const json& row : wanted) cells += row.size();
  }
  EXPECT_GT(cells, 1000U);
}

/// "Good Row 1 (501)", once for each who holds the card.
TEST_F(MovedOddBuilding, HasItsCardsAndTheirHoldersInTheReport) {
  Bring("building-odd.mdb");
  const std::vector<json> tenants = WantedRows("Tenants");
  const auto holdersOf = [&](const json& card) {
    std::vector<std::string> names;
    for (const json& tenant : tenants) {
      if (tenant.at("CREDENTIALID1") != card && tenant.at("CREDENTIALID2") != card) continue;
      names.push_back(tenant.at("LastName").get<std::string>() + ' ' +
                      tenant.at("FirstName").get<std::string>());
    }
    return names.empty() ? std::vector<std::string>{"Unassigned"} : names;
  };
  for (const UnitName& unit : session_->Units()) {
    std::vector<std::string> wanted;
    for (const json& card : WantedRows("CredentialBank")) {
      if (card.at("UnitKey") != unit.key) continue;
      for (const std::string& name : holdersOf(card.at("RID"))) {
        wanted.push_back(fmt::format("{} ({})", name, card.at("PINNo").get<int>()));
      }
    }
    CredentialReport report(*session_, unit.key, {});
    ASSERT_TRUE(report.Run().done());
    std::vector<std::string> shown;
    for (const auto& cells : report.Visible().rows) {
      shown.push_back(fmt::format("{} ({})", qorcred::TextOrEmpty(cells.at(kHolderCell)),
                                  qorcred::TextOrEmpty(cells.at(kNumberCell))));
    }
    EXPECT_THAT(shown, UnorderedElementsAreArray(wanted)) << unit.key;
  }
}

TEST_F(MovedOddBuilding, HasItsCodesInTheReport) {
  Bring("building-odd.mdb");
  for (const UnitName& unit : session_->Units()) {
    std::vector<std::string> wanted;
    for (const json& code : WantedRows("DirectoryCode")) {
      if (code.at("UNITKEY") == unit.key && code.at("DIRECTORYCODE") >= 0) {
        wanted.push_back(code.at("DIRECTORYCODE").dump());
      }
    }
    DirCodeReport report(*session_, unit.key);
    ASSERT_TRUE(report.Compose().done());
    ASSERT_TRUE(report.Run().done());
    const Table table = report.Visible();
    ASSERT_EQ(table.columns.size(), 1U) << "the other fields of the report are refused";
    EXPECT_EQ(table.columns.front().title, "Code");
    std::vector<std::string> shown;
    for (const auto& cells : table.rows) shown.push_back(qorcred::TextOrEmpty(cells.front()));
    EXPECT_THAT(shown, UnorderedElementsAreArray(wanted)) << unit.key;
  }
}

TEST_F(MovedOddBuilding, OfAnOddOneTheCheckTellsWhatTheFileAlreadyHad) {
  Bring("building-odd.mdb");
  EXPECT_THAT(
      Faults(),
      ElementsAre("1: Standard 26-Bit Card-525 (RID 25) has the door 3, which is not there",
                  "1: credentials of the type 9, which no screen knows: 1, the first RID 16",
                  "1: Standard 26-Bit Card-501 (RID 1) is held by Good Row 1 (RID 1) and "
                  "by Second Holder Row 7 (RID 7)",
                  "1: the period of tenant Backwards Row 17 (RID 17) ends before it begins",
                  "3: 13 codes are in use, and the unit takes 10", "4: its capacity is not known",
                  "5: its capacity is not known"));
  EXPECT_THAT(Rows("SELECT MODIFIED FROM Tenants WHERE RID=16"),
              ElementsAre(json::array({"2024-05-06 10:11:12"})));
  EXPECT_THAT(Rows("SELECT ACTIVESTARTTIME, ACTIVEENDTIME FROM Tenants WHERE RID=18"),
              ElementsAre(json::array({"1752-09-14 00:00:00", "9999-12-31 00:00:00"})));
  EXPECT_THAT(Rows("SELECT RID FROM Schedules WHERE ScheduleID=4"), ElementsAre(json::array({10})));
  EXPECT_THAT(Rows("SELECT COUNT(*) FROM Tenants"), ElementsAre(json::array({24})));
}

}  // namespace
}  // namespace qorhost::test
