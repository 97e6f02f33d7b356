// Buildings that were brought in: every row in the store, reports as the file's own tables have it.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "frame/convert.h"
#include "host/desks/credential_report.h"
#include "host/desks/desk_error.h"
#include "host/desks/dir_code_report.h"
#include "host/desks/session.h"
#include "host/desks/store_check.h"
#include "tests/host/desks/moving_in/moving_fixture.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;
using qorcred::Value;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

Clock AtNoon() {
  return [] { return qorcred::FromCivil({2026, 2, 3, 12, 0, 0}); };
}

/// A value of the store as the expected values write it.
json AsJson(const Value& value) {
  if (value.Is(qorcred::ValueType::kNull)) return nullptr;
  if (const auto* flag = value.As<bool>()) return *flag;
  if (const auto* date = value.As<qorcred::Date>()) return ExpectedDate(date->serial);
  if (const auto* number = value.As<double>()) return *number;
  if (const auto* number = value.As<std::int32_t>()) return *number;
  if (const auto* number = value.As<std::int16_t>()) return *number;
  return qorcred::TextOrEmpty(value);
}

/// A table of expected values under whatever letter case.
const ordered_json& TableIn(const ordered_json& expected, std::string_view name) {
  for (const auto& [own, table] : expected.at("tables").items()) {
    if (FindKnownTable(own) == FindKnownTable(name)) return table;
  }
  throw std::out_of_range(std::string(name));
}

class MovedBuildings : public MovingFixture {
 protected:
  void Bring(std::string_view name, std::optional<std::int32_t> unit = std::nullopt) {
    Bring(PlanOf(name, unit), name);
  }

  void Bring(MovingPlan plan, std::string_view name) {
    plan_.emplace(std::move(plan));
    std::unique_ptr<Store> store = FreshStore();
    BringIn(*store->StartSession(AtNoon()), *plan_, name);
    Surroundings surroundings;
    surroundings.clock = AtNoon();
    session_ = std::make_unique<DeskSession>(std::move(store), surroundings);
  }

  [[nodiscard]] std::vector<json> Rows(const std::string& statement) {
    const QueryResult result = session_->sql().Select(statement);
    std::vector<json> rows;
    for (const ResultRow row : result.rows()) {
      json cells = json::array();
      for (std::size_t column = 0; column < result.columns.size(); ++column) {
        cells.push_back(AsJson(row[static_cast<std::int32_t>(column)]));
      }
      rows.push_back(std::move(cells));
    }
    return rows;
  }

  void ExpectEveryRow(std::string_view name);

  /// The cells that were stored with another value than the file's.
  [[nodiscard]] bool WasAdjusted(std::string_view table, std::string_view column) const {
    return std::any_of(plan_->settled().named().begin(), plan_->settled().named().end(),
                       [&](const SettledCell& cell) {
                         return cell.settlement == Settlement::kAdjusted && cell.table == table &&
                                cell.column == column;
                       });
  }

  [[nodiscard]] std::vector<std::string> Faults() {
    std::vector<std::string> faults;
    for (const auto& row : WholeCheck(*session_, session_->Units()).rows) {
      faults.push_back(qorcred::TextOrEmpty(row[0]) + ": " + qorcred::TextOrEmpty(row[1]));
    }
    return faults;
  }

  std::optional<MovingPlan> plan_;
  std::unique_ptr<DeskSession> session_;
};

/// Against the file of expected values: rows, Nulls and sums of each column, and the rows that are
/// told there in full.
void MovedBuildings::ExpectEveryRow(std::string_view name) {
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

class MovedSamples : public MovedBuildings, public testing::WithParamInterface<const char*> {};

TEST_P(MovedSamples, HaveEveryRowAsItWasWritten) {
  Bring(GetParam());
  ExpectEveryRow(GetParam());
}

TEST_F(MovedBuildings, ALargeOneHasEveryRowAsItWasWritten) {
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
                         [](const auto& sample) {
                           std::string name(sample.param);
                           std::erase_if(name, [](unsigned char letter) {
                             return std::isalnum(letter) == 0;
                           });
                           return name;
                         });

// ---- Reports, against the file of expected values alone
// ---------------------------------------------

/// A cell as a report shows it.
std::string Shown(const json& cell) {
  if (cell.is_null()) return "";
  if (cell.is_string()) return cell.get<std::string>();
  if (cell.is_number_float()) return std::to_string(cell.get<std::int64_t>());
  return cell.dump();
}

/// The same, with the words of the directory-code report for Yes and No, and its dates, which have
/// no seconds in a full minute.
std::string ShownInReport(const std::string& column, const json& cell) {
  if (cell.is_boolean()) return cell.get<bool>() ? "yes" : "no";
  std::string shown = Shown(cell);
  constexpr std::string_view kFullMinute = ":00";
  if (column.ends_with("DATE") && shown.ends_with(kFullMinute)) {
    shown.resize(shown.size() - kFullMinute.size());
  }
  return shown;
}

/// "Müller Jürgen Ö"
std::string NameOf(const json& tenant) {
  std::string name;
  for (const char* part : {"LASTNAME", "FIRSTNAME", "MIDDLEINITIAL"}) {
    const std::string text = Shown(tenant.at(part));
    if (!text.empty()) name += (name.empty() ? "" : " ") + text;
  }
  return name;
}

TEST_F(MovedBuildings, TheCredentialReportSaysWhatTheFileSays) {
  Bring("encoded-2000.mdb");
  const ordered_json expected = ExpectedOf("encoded-2000.mdb");
  std::map<json, std::string> holders;
  for (const ordered_json& tenant : TableIn(expected, "Tenants").at("sample")) {
    for (const char* place : {"CREDENTIALID1", "CREDENTIALID2"}) {
      if (!tenant.at(place).is_null()) holders[json(tenant.at(place))] = NameOf(json(tenant));
    }
  }
  const std::map<int, std::string> types{
      {0, "Corvin 30-Bit Card"}, {1, "Standard 26-Bit Card"}, {2, "Transmitter"}};
  std::vector<std::vector<std::string>> wanted;
  for (const ordered_json& row : TableIn(expected, "CredentialBank").at("sample")) {
    const int type = row.at("CREDENTIALTYPE");
    const auto ofTransmitter = [&](const char* column) {
      return type == 2 ? Shown(json(row.at(column))) : std::string();
    };
    const auto holder = holders.find(json(row.at("RID")));
    wanted.push_back({types.at(type), Shown(json(row.at("PINNO"))),
                      Shown(json(row.at("FACILITYCODE"))), ofTransmitter("IDCODE"),
                      ofTransmitter("SEQUENCENUMBER"), ofTransmitter("BUTTONNUMBER"),
                      holder == holders.end() ? "Unassigned" : holder->second});
  }
  CredentialReport report(*session_, 1, {});
  ASSERT_TRUE(report.Run().done());
  const Table table = report.Visible();
  std::vector<std::vector<std::string>> rows;
  for (const auto& cells : table.rows) {
    std::vector<std::string>& row = rows.emplace_back();
    for (std::size_t at = 0; at < wanted.front().size(); ++at) {
      row.push_back(qorcred::TextOrEmpty(cells.at(at)));
    }
  }
  EXPECT_EQ(rows.size(), 14U);
  EXPECT_THAT(rows, UnorderedElementsAreArray(wanted));
}

TEST_F(MovedBuildings, TheDirectoryCodeReportSaysWhatTheFileSays) {
  Bring("encoded-2000.mdb");
  const ordered_json expected = ExpectedOf("encoded-2000.mdb");
  // The fields that are displayed, in their order; captions are the file's own.
  std::map<int, std::string> shown;
  for (const ordered_json& field : TableIn(expected, "TenantSelectionFields").at("sample")) {
    const std::string name = field.at("FieldName");
    if (name.starts_with("DirectoryCode.") && field.at("Display") == 1) {
      shown[field.at("DisplaySeq")] = name.substr(name.find('.') + 1);
    }
  }
  std::vector<std::vector<std::string>> wanted;
  for (const ordered_json& code : TableIn(expected, "DirectoryCode").at("sample")) {
    if (code.at("DIRECTORYCODE") < 0) continue;  // in no list
    std::vector<std::string>& row = wanted.emplace_back();
    for (const auto& [place, field] : shown) {
      std::string name = field;
      for (char& letter : name) letter = static_cast<char>(std::toupper(letter));
      row.push_back(ShownInReport(name, json(code.at(name))));
    }
  }
  DirCodeReport report(*session_, 1);
  ASSERT_TRUE(report.Compose().done());
  ASSERT_TRUE(report.Run().done());
  const Table table = report.Visible();
  std::vector<std::string> captions;
  for (const TableColumn& column : table.columns) captions.push_back(column.title);
  std::vector<std::string> wantedCaptions;
  for (const auto& [place, field] : shown) wantedCaptions.push_back(field);
  EXPECT_EQ(captions, wantedCaptions);
  std::vector<std::vector<std::string>> rows;
  for (const auto& cells : table.rows) {
    std::vector<std::string>& row = rows.emplace_back();
    for (const Value& cell : cells) row.push_back(qorcred::TextOrEmpty(cell));
  }
  EXPECT_EQ(rows.size(), 3U);
  EXPECT_THAT(rows, UnorderedElementsAreArray(wanted));
}

/// A table with the columns alone that it cannot be without.
DesktopTable BareTable(std::string name, std::vector<std::string> columns,
                       std::vector<DesktopCell> row) {
  return TableOf(std::move(name), std::move(columns), {std::move(row)});
}

/// A store has its own values for some columns that a row is made without.
TEST_F(MovedBuildings, WhatAFileLacksIsEmptyInTheStore) {
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
    if (missing.means != "it is empty in every row") continue;
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

/// The grid refuses such a width, and with it the whole report.
TEST_F(MovedBuildings, AWidthBelowZeroDoesNotStopTheReport) {
  DesktopTable units;
  units.name = "Units";
  units.columns = {{"UnitKey", DesktopType::kLong, false, 4}};
  units.rows = {{std::int64_t{1}}};
  units.count = 1;
  DesktopTable settings;
  settings.name = "UnitSettings";
  settings.columns = {{"UnitKey", DesktopType::kLong, false, 4},
                      {"MaxDigitsDirectoryCode", DesktopType::kLong, false, 4}};
  settings.rows = {{std::int64_t{1}, std::int64_t{4}}};
  settings.count = 1;
  DesktopTable fields;
  fields.name = "TenantSelectionFields";
  for (const char* column : {"RID", "FieldName", "FieldNameDisplay", "DisplayWidth", "GridType",
                             "Display", "DisplaySeq"}) {
    fields.columns.push_back({column, DesktopType::kLong, false, 4});
  }
  fields.rows = {{std::int64_t{51}, DesktopText{"DirectoryCode.DirectoryCode", true},
                  DesktopText{"Our code", true}, std::int64_t{-1}, std::int64_t{0}, std::int64_t{1},
                  std::int64_t{1}}};
  fields.count = 1;
  Bring(MovingPlan({{units, settings, fields}}, "some.mdb", std::nullopt), "some.mdb");
  DirCodeReport report(*session_, 1);
  ASSERT_TRUE(report.Compose().done());
  ASSERT_TRUE(report.Run().done());
  ASSERT_EQ(report.Visible().columns.size(), 1U);
  EXPECT_EQ(report.Visible().columns.front().title, "Our code");
}

/// A row of a report; a cell that the file of expected values does not tell is nothing.
using WantedRow = std::vector<std::optional<std::string>>;

bool HasRow(const Table& table, const WantedRow& wanted) {
  return std::any_of(table.rows.begin(), table.rows.end(), [&](const auto& cells) {
    for (std::size_t at = 0; at < wanted.size(); ++at) {
      if (wanted[at] && *wanted[at] != qorcred::TextOrEmpty(cells.at(at))) return false;
    }
    return true;
  });
}

TEST_P(MovedSamples, AreInTheCredentialReportAsInTheFile) {
  Bring(GetParam());
  const ordered_json expected = ExpectedOf(GetParam());
  const std::map<int, std::string> types{
      {0, "Corvin 30-Bit Card"}, {1, "Standard 26-Bit Card"}, {2, "Transmitter"}};
  std::size_t rows = 0;
  for (const UnitName& unit : session_->Units()) {
    CredentialReport report(*session_, unit.key, {});
    ASSERT_TRUE(report.Run().done());
    const Table table = report.Visible();
    rows += table.rows.size();
    for (const ordered_json& row : TableIn(expected, "CredentialBank").at("sample")) {
      if (row.at("UNITKEY") != unit.key) continue;
      const int type = row.at("CREDENTIALTYPE");
      const auto ofTransmitter = [&](const char* column) {
        return type == 2 ? Shown(json(row.at(column))) : std::string();
      };
      WantedRow wanted{types.at(type),
                       Shown(json(row.at("PINNO"))),
                       Shown(json(row.at("FACILITYCODE"))),
                       ofTransmitter("IDCODE"),
                       ofTransmitter("SEQUENCENUMBER"),
                       ofTransmitter("BUTTONNUMBER"),
                       std::nullopt};
      for (const ordered_json& tenant : TableIn(expected, "Tenants").at("sample")) {
        const bool holds = tenant.at("CREDENTIALID1") == row.at("RID") ||
                           tenant.at("CREDENTIALID2") == row.at("RID");
        if (holds) wanted.back() = NameOf(json(tenant));
      }
      EXPECT_TRUE(HasRow(table, wanted)) << row;
    }
  }
  EXPECT_EQ(rows, TableIn(expected, "CredentialBank").at("rows").get<std::size_t>());
}

TEST_P(MovedSamples, AreInTheDirectoryCodeReportAsInTheFile) {
  Bring(GetParam());
  const ordered_json expected = ExpectedOf(GetParam());
  std::size_t rows = 0;
  std::set<std::string> compared;
  for (const UnitName& unit : session_->Units()) {
    DirCodeReport report(*session_, unit.key);
    ASSERT_TRUE(report.Compose().done());
    ASSERT_TRUE(report.Run().done());
    const Table table = report.Visible();
    rows += table.rows.size();
    for (const ordered_json& code : TableIn(expected, "DirectoryCode").at("sample")) {
      if (code.at("UNITKEY") != unit.key || code.at("DIRECTORYCODE") < 0) continue;
      WantedRow wanted;
      for (const TableColumn& column : table.columns) {
        std::string name = column.title;
        for (char& letter : name) letter = static_cast<char>(std::toupper(letter));
        const bool isTold = code.contains(name);
        wanted.push_back(isTold ? std::optional(ShownInReport(name, json(code.at(name))))
                                : std::nullopt);
        if (isTold) compared.insert(name);
      }
      EXPECT_TRUE(HasRow(table, wanted)) << code;
    }
  }
  EXPECT_THAT(compared, testing::IsSupersetOf({"DIRECTORYCODE", "PHONENUMBER", "ISDNDCHECKED",
                                               "DNDSCHEDULEID", "ACTIVE", "STARTDATE", "ENDDATE"}));
  const std::int64_t none = qorcred::ToLong(
      session_->sql().Scalar("SELECT COUNT(*) FROM DirectoryCode WHERE DIRECTORYCODE<0"));
  EXPECT_EQ(rows + static_cast<std::size_t>(none),
            TableIn(expected, "DirectoryCode").at("rows").get<std::size_t>());
}

/// The title of a new store has the report write dates to the minute; the file's own title leaves
/// them as they are.
TEST_F(MovedBuildings, SecondsAreCutInTheReportUnderTheTitleOfANewStoreAlone) {
  const std::int64_t one = 1;
  const DesktopDate start{46064 + (8 * 3600 + 42) / 86400.0};
  const std::vector<std::pair<std::string, std::string>> wanted{
      {"StartDate", "2026-02-11 08:00:42"}, {"Directory Start Date", "2026-02-11 08:00"}};
  for (const auto& [title, shown] : wanted) {
    Bring(MovingPlan({{TableOf("Units", {"UnitKey"}, {{one}}),
                       TableOf("UnitSettings", {"UnitKey", "MaxDigitsDirectoryCode"},
                               {{one, std::int64_t{4}}}),
                       TableOf("DirectoryCode", {"RID", "UNITKEY", "DIRECTORYCODE", "STARTDATE"},
                               {{one, one, std::int64_t{50}, start}}),
                       TableOf("TenantSelectionFields",
                               {"RID", "FieldName", "FieldNameDisplay", "DisplayWidth", "GridType",
                                "Display", "DisplaySeq"},
                               {{std::int64_t{63}, DesktopText{"DirectoryCode.StartDate", true},
                                 DesktopText{title, true}, std::int64_t{1500}, std::int64_t{0}, one,
                                 one}})}},
                     "some.mdb", std::nullopt),
          "some.mdb");
    DirCodeReport report(*session_, 1);
    ASSERT_TRUE(report.Compose().done());
    ASSERT_TRUE(report.Run().done());
    const Table table = report.Visible();
    ASSERT_EQ(table.rows.size(), 1U) << title;
    EXPECT_EQ(qorcred::TextOrEmpty(table.rows.front().front()), shown) << title;
    EXPECT_THAT(Rows("SELECT STARTDATE FROM DirectoryCode"),
                ElementsAre(json::array({"2026-02-11 08:00:42"})));
  }
}

TEST_F(MovedBuildings, TheUnitsHaveTheCountsOfTheFile) {
  Bring("building-2000.mdb");
  const ordered_json expected = ExpectedOf("building-2000.mdb");
  std::int64_t credentials = 0;
  for (const UnitName& unit : session_->Units()) {
    CredentialReport report(*session_, unit.key, {});
    ASSERT_TRUE(report.Run().done());
    credentials += static_cast<std::int64_t>(report.Visible().rows.size());
  }
  EXPECT_EQ(credentials, TableIn(expected, "CredentialBank").at("rows").get<std::int64_t>());
  EXPECT_EQ(session_->Units().size(), 4U);
}

// ---- The odd one, and what is not brought in
// ---------------------------------------------------------

TEST_F(MovedBuildings, OfAnOddOneTheCheckTellsWhatTheFileAlreadyHad) {
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

TEST_F(MovedBuildings, OneUnitAloneComesWithAllThatBelongsToIt) {
  Bring("building-2000.mdb", 7);
  EXPECT_THAT(Rows("SELECT UnitKey FROM Units"), ElementsAre(json::array({7})));
  EXPECT_THAT(Rows("SELECT COUNT(*) FROM Tenants WHERE UnitKey<>7"), ElementsAre(json::array({0})));
  EXPECT_THAT(Rows("SELECT COUNT(*) FROM CredentialBank"), ElementsAre(json::array({68})));
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(MovedBuildings, WhatIsStoppedLeavesNothing) {
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

TEST_F(MovedBuildings, AStoreThatHasUnitsTakesNoOthers) {
  const MovingPlan plan = PlanOf("encoded-2000.mdb");
  const std::unique_ptr<Store> store = FreshStore();
  const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
  BringIn(*session, plan, "one.mdb");
  EXPECT_THROW(BringIn(*session, plan, "two.mdb"), RefusedError);
  EXPECT_EQ(session->Select("SELECT RID FROM CredentialBank").rowCount, 14U);
}

TEST_F(MovedBuildings, NewRowsComeBehindThoseThatWereBroughtIn) {
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

}  // namespace
}  // namespace qorhost::test
