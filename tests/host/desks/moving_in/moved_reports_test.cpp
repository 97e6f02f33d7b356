// Reports of buildings that were brought in: what the file's own tables say, put together here from
// the file of expected values alone.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "tests/host/desks/moving_in/made_tables.h"
#include "tests/host/desks/moving_in/moved_fixture.h"

namespace qorhost::test {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

class MovedReports : public MovedBuildings {};

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

TEST_F(MovedReports, TheCredentialReportSaysWhatTheFileSays) {
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

TEST_F(MovedReports, TheDirectoryCodeReportSaysWhatTheFileSays) {
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
    for (const qorcred::Value& cell : cells) row.push_back(qorcred::TextOrEmpty(cell));
  }
  EXPECT_EQ(rows.size(), 3U);
  EXPECT_THAT(rows, UnorderedElementsAreArray(wanted));
}

/// The grid refuses such a width, and with it the whole report.
TEST_F(MovedReports, AWidthBelowZeroDoesNotStopTheReport) {
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

class ReportedSamples : public MovedReports, public testing::WithParamInterface<const char*> {};

TEST_P(ReportedSamples, AreInTheCredentialReportAsInTheFile) {
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

TEST_P(ReportedSamples, AreInTheDirectoryCodeReportAsInTheFile) {
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
TEST_F(MovedReports, SecondsAreCutInTheReportUnderTheTitleOfANewStoreAlone) {
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

INSTANTIATE_TEST_SUITE_P(All, ReportedSamples,
                         testing::Values("building-2000.mdb", "building-2010.accdb",
                                         "building-large.accdb", "encoded-2000.mdb"),
                         [](const auto& sample) { return LettersOf(sample.param); });

TEST_F(MovedReports, TheUnitsHaveTheCountsOfTheFile) {
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

}  // namespace
}  // namespace qorhost::test
