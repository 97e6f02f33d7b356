// Every value of the samples against a second reader, which has nothing to do with the first.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tests/host/files/desktop_file/expected_values.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string output;
  std::array<char, 65536> part{};
  for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), pipe.get())) > 0;) {
    output.append(part.data(), count);
  }
  return output;
}

/// Types that both tell in the same way.
bool IsCompared(DesktopType type) {
  return type != DesktopType::kBinary && type != DesktopType::kOle && type != DesktopType::kGuid &&
         type != DesktopType::kDecimal;
}

class SecondReader : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
      GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
    }
    if (!fs::exists(fs::path(QORHOST_SECOND_READER) / "node_modules" / "mdb-reader")) {
      // Where every change is looked at, nothing is left out without being seen.
      ASSERT_EQ(std::getenv("QORHOST_NEEDS_SECOND_READER"), nullptr)
          << "there is no second reader: tools/second-reader installs it";
      GTEST_SKIP() << "there is no second reader: tools/second-reader installs it";
    }
  }

  [[nodiscard]] static DesktopFile First() {
    DesktopReading reading;
    reading.reader = QORHOST_DESKTOP_READER;
    reading.wanted = {"Units",         "UnitTypes",     "UnitSettings",          "Doors",
                      "Schedules",     "TenantGroup",   "CredentialBank",        "Tenants",
                      "TenantsBackup", "DirectoryCode", "TenantSelectionFields", "AccessEvents",
                      "Site Notes"};
    return ReadDesktopFile(SampleDatabase(GetParam()), reading);
  }
  [[nodiscard]] static json Second(const DesktopFile& file) {
    std::string command = "node '" QORHOST_SECOND_READER_SCRIPT "' '" QORHOST_SECOND_READER "' '" +
                          SampleDatabase(GetParam()).string() + "'";
    for (const DesktopTable& table : file.tables) command += " '" + table.name + "'";
    return json::parse(OutputOf(command));
  }
};

TEST_P(SecondReader, ReadsTheSameRows) {
  const DesktopFile file = First();
  const json second = Second(file);
  std::size_t cells = 0;
  for (const DesktopTable& table : file.tables) {
    const json& other = second.at(table.name);
    std::vector<json> ours;
    std::vector<json> theirs(other.at("rows").size(), json::array());
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
      ASSERT_EQ(other.at("columns").at(at), table.columns[at].name);
    }
    for (const std::vector<DesktopCell>& row : table.rows) {
      json& own = ours.emplace_back(json::array());
      for (std::size_t at = 0; at < row.size(); ++at) {
        if (!IsCompared(table.columns[at].type)) continue;
        own.push_back(AsExpected(row[at]));
        ++cells;
      }
    }
    for (std::size_t row = 0; row < theirs.size(); ++row) {
      for (std::size_t at = 0; at < table.columns.size(); ++at) {
        if (IsCompared(table.columns[at].type)) {
          theirs[row].push_back(other.at("rows").at(row).at(at));
        }
      }
    }
    // Rows that have grown stand elsewhere, and each finds them in its own order.
    std::sort(ours.begin(), ours.end());
    std::sort(theirs.begin(), theirs.end());
    ASSERT_EQ(ours.size(), theirs.size()) << table.name;
    for (std::size_t row = 0; row < ours.size(); ++row) {
      ASSERT_EQ(ours[row], theirs[row]) << table.name;
    }
  }
  EXPECT_GT(cells, 700U);
}
INSTANTIATE_TEST_SUITE_P(All, SecondReader,
                         testing::Values("building-2000.mdb", "building-2010.accdb",
                                         "building-large.accdb", "building-odd.mdb",
                                         "encoded-2000.mdb"),
                         [](const auto& sample) {
                           std::string name(sample.param);
                           std::erase_if(name, [](unsigned char letter) {
                             return std::isalnum(letter) == 0;
                           });
                           return name;
                         });

}  // namespace
}  // namespace qorhost::test
