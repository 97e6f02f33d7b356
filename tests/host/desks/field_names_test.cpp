// The one table of fields by all their names.
#include "host/desks/field_names.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sstream>

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Cell(std::string_view name) {
  return name.empty() ? std::string() : fmt::format("`{}`", name);
}

TEST(FieldNames, StandInTheDocument) {
  const std::ifstream file(QORHOST_DOCS "/json.md");
  std::ostringstream document;
  document << file.rdbuf();
  for (const NamedThing* thing : {&CredentialNames(), &DirCodeNames(), &TenantNames()}) {
    std::string table;
    for (const FieldNames& field : thing->fields) {
      table += fmt::format("| {} | {} | {} | {} |\n", Cell(field.key), field.title, field.heading,
                           Cell(field.column));
    }
    EXPECT_THAT(document.str(), HasSubstr(table)) << thing->name;
  }
}

TEST(FieldNames, NoNameStandsForTwoFields) {
  for (const NamedThing* thing : {&CredentialNames(), &DirCodeNames(), &TenantNames()}) {
    std::set<std::string> known;
    for (const FieldNames& field : thing->fields) {
      EXPECT_TRUE(known.insert(std::string(field.key)).second) << field.key;
      for (const std::string& other : OtherNames(*thing, field.key)) {
        EXPECT_TRUE(known.insert(other).second) << other;
      }
    }
  }
}

TEST(FieldNames, EachLeadsToTheOthers) {
  EXPECT_THAT(OtherNames(DirCodeNames(), "Phone No."), ElementsAre("phone"));
  EXPECT_THAT(OtherNames(DirCodeNames(), "forward_phone"),
              ElementsAre("Forward phone", "CF Phone No."));
  EXPECT_THAT(OtherNames(CredentialNames(), "assigned to"), ElementsAre("tenant"));
  EXPECT_THAT(OtherNames(CredentialNames(), "colour"), IsEmpty());
}

TEST(FieldNames, AColumnGoesByItsFieldAndAnyOtherByItself) {
  EXPECT_EQ(NameOfColumn("DIRECTORYCODE", "PHONENUMBER", NamedFor::kPeople), "Phone");
  EXPECT_EQ(NameOfColumn("DirectoryCode", "PHONENUMBER", NamedFor::kPrograms), "phone");
  EXPECT_EQ(NameOfColumn("Tenants", "DIRECTORYCODE", NamedFor::kPrograms), "code");
  EXPECT_EQ(NameOfColumn("Tenants", "LINKCODE", NamedFor::kPeople), "LINKCODE");
  EXPECT_EQ(NameOfColumn("Doors", "DOORNAME", NamedFor::kPeople), "DOORNAME");
}

}  // namespace
}  // namespace qorhost::test
