// The description of the operations: complete against the member tables, and printed as
// docs/host-operations.md. QORCRED_UPDATE_GOLDEN=1 writes the page anew.
#include "contract/contract.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/text.h"
#include "tests/contract/described_members.h"
#include "tests/contract/described_surface.h"
#include "tests/contract/operations_page.h"
#include "tests/contract/statement_surface.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;
using qorcred::Member;
using ::testing::UnorderedElementsAre;
using ::testing::UnorderedElementsAreArray;

std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Small(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(), qorcred::LowerAscii);
  return small;
}

/// The words between backticks.
std::vector<std::string> Quoted(std::string_view line) {
  std::vector<std::string> words;
  for (;;) {
    const std::size_t open = line.find('`');
    const std::size_t close = line.find('`', open + 1);
    if (open == std::string_view::npos || close == std::string_view::npos) return words;
    words.emplace_back(line.substr(open + 1, close - open - 1));
    line.remove_prefix(close + 1);
  }
}

TEST(Contract, IsThePageOfTheOperations) {
  const std::string path = std::string(QORCRED_DOCS_DIR) + "/host-operations.md";
  if (std::getenv("QORCRED_UPDATE_GOLDEN") != nullptr) {
    ASSERT_EQ(std::getenv("CI"), nullptr) << "goldens are not written in CI";
    std::ofstream(path, std::ios::binary) << OperationsPage();
  }
  EXPECT_EQ(FileText(path), OperationsPage());
}

TEST(Contract, DescribesEveryMemberAndNoOther) {
  for (const contract::Class& of : DescribedClasses()) {
    std::vector<std::string> members{std::string(contract::kCreation)};
    for (const Member& member : MembersOf(of.name)) members.emplace_back(member.name);
    std::vector<std::string> described;
    for (const contract::Property& property : of.properties) {
      described.emplace_back(property.name);
    }
    for (const contract::Operation& operation : of.operations) {
      described.emplace_back(operation.name);
    }
    EXPECT_THAT(described, UnorderedElementsAreArray(members)) << of.name;
  }
}

TEST(Contract, DescribesEveryArgumentInItsPlace) {
  for (const contract::Class& of : DescribedClasses()) {
    for (const contract::Operation& operation : of.operations) {
      const Member* member = qorcred::FindMember(MembersOf(of.name), operation.name);
      if (member == nullptr) continue;
      ASSERT_EQ(operation.arguments.size(), member->parameters.size()) << operation.name;
      for (std::size_t at = 0; at < member->parameters.size(); ++at) {
        EXPECT_EQ(operation.arguments[at].name, member->parameters[at].name) << operation.name;
        EXPECT_FALSE(operation.arguments[at].meaning.empty()) << operation.name;
        const bool goesOut = operation.arguments[at].direction != contract::Direction::kIn;
        EXPECT_TRUE(member->parameters[at].byRef || !goesOut)
            << operation.name << ": " << operation.arguments[at].name;
      }
    }
  }
}

TEST(Contract, TellsTheResultOfEveryOperationThatHasOne) {
  for (const contract::Class& of : DescribedClasses()) {
    for (const contract::Operation& operation : of.operations) {
      EXPECT_FALSE(operation.purpose.empty()) << of.name << "." << operation.name;
      const Member* member = qorcred::FindMember(MembersOf(of.name), operation.name);
      const bool hasResult = member != nullptr && member->type != qorcred::ValueType::kEmpty;
      EXPECT_EQ(!operation.result.empty(), hasResult) << of.name << "." << operation.name;
    }
  }
}

/// The columns of schema.md, "Table.Column", in small letters: the names in the first cell of the
/// rows below a heading that names a table. "`A1` to `A4`" stands for four.
std::set<std::string> ColumnsOfTheSchemaPage(const std::string& page) {
  std::set<std::string> columns;
  std::istringstream lines(page);
  std::string table;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("#")) table = line.starts_with("### `") ? Quoted(line).front() : "";
    if (table.empty() || !line.starts_with("| `")) continue;
    std::vector<std::string> names = Quoted(line.substr(0, line.find(" | ")));
    if (names.size() == 2 && line.find("` to `") != std::string::npos) {
      const std::string stem = names.front().substr(0, names.front().size() - 1);
      names = {stem + "1", stem + "2", stem + "3", stem + "4"};
    }
    for (const std::string& name : names) columns.insert(Small(table + "." + name));
  }
  return columns;
}

TEST(Contract, HasTheColumnsOfTheSchemaPage) {
  std::set<std::string> described;
  for (const contract::Class& of : DescribedClasses()) {
    for (const contract::Operation& operation : of.operations) {
      for (const contract::Table& table : operation.tables) {
        for (const std::string_view list : {table.read, table.written}) {
          for (const std::string& column : Items(list)) {
            described.insert(Small(std::string(table.name) + "." + column));
          }
        }
      }
    }
  }
  EXPECT_EQ(ColumnsOfTheSchemaPage(FileText(std::string(QORCRED_DOCS_DIR) + "/schema.md")),
            described);
}

TEST(DescribedSurfaceTest, HasALineForEachWayInWhichAPartIsUsed) {
  const contract::Operation operation{
      .name = "pbAny",
      .purpose = "Shows all forms.",
      .arguments = {{"lngIn", "goes in"}, {"lngOut", "goes out", contract::Direction::kOut}},
      .creates = {"a.B"},
      .screen = {{"gstrTag", {"get put"}},
                 {"cboOne, cboTwo", {"Clear()", "ItemData(index) get put"}},
                 {"arrayOf", {"(index) get"}}},
      .others = {{"a.B", {"Run(conn V, key B, 1)"}}, {"result table", {"(row, column) put"}}},
      .tables = {{"Units", "UnitKey", "UnitName", true}},
  };
  EXPECT_THAT(DescribedSurface(operation),
              UnorderedElementsAre("created a.b", "screen gstrtag get", "screen gstrtag put",
                                   "screen cboone.clear()", "screen cboone.itemdata(-) get",
                                   "screen cboone.itemdata(-) put", "screen cbotwo.clear()",
                                   "screen cbotwo.itemdata(-) get", "screen cbotwo.itemdata(-) put",
                                   "screen arrayof(-) get", "a.b run(vb-)", "result table (--) put",
                                   "table units.unitkey read", "table units.unitname written",
                                   "table units loses", "argument lngout"));
}

TEST(IsMessageTest, TakesAnythingInThePlacesOfWords) {
  EXPECT_TRUE(IsMessage("No more.", "No more."));
  EXPECT_TRUE(IsMessage("At most 5 of 7", "At most {some} of {all}"));
  EXPECT_TRUE(IsMessage("Code ?", "Code {code}?"));
  EXPECT_TRUE(IsMessage("Code 5? 6?", "Code {code}?"));
  EXPECT_FALSE(IsMessage("No more", "No more."));
  EXPECT_FALSE(IsMessage("At most 5 of", "At most {some} of {all}"));
  EXPECT_FALSE(IsMessage("At least 5 of 7", "At most {some} of {all}"));
  EXPECT_FALSE(IsMessage("Code 5? No", "Code {code}?"));
}

TEST(ColumnsNamedInTest, TellsWhatIsReadFromWhatIsWritten) {
  EXPECT_THAT(
      ColumnsNamedIn("UPDATE DOORS SET DoorName='A' WHERE UnitKey=3 AND DoorId IN (Select RID from "
                     "Tenants T where T.LastName = DOORNAME)"),
      UnorderedElementsAre(NamedColumn{"DOORS", "DOORNAME", ColumnUse::kWritten},
                           NamedColumn{"DOORS", "UNITKEY"}, NamedColumn{"DOORS", "DOORID"},
                           NamedColumn{"Tenants", "RID"}, NamedColumn{"Tenants", "LastName"},
                           NamedColumn{"DOORS", "DOORNAME"}));
  EXPECT_THAT(ColumnsNamedIn("DELETE FROM DOORS WHERE UnitKey=3"),
              UnorderedElementsAre(NamedColumn{"DOORS", "", ColumnUse::kWritten},
                                   NamedColumn{"DOORS", "UNITKEY"}));
  EXPECT_THAT(
      ColumnsNamedIn("SELECT UnitName FROM Units ORDER BY UnitKey"),
      UnorderedElementsAre(NamedColumn{"Units", "UnitName"}, NamedColumn{"Units", "UnitKey"}));
}

}  // namespace
}  // namespace qortest
