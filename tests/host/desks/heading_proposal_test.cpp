// What the headings of a spreadsheet may stand for.
#include "host/desks/heading_proposal.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/desks/credential_import.h"
#include "host/desks/dir_code_import.h"
#include "host/desks/tenant_file.h"

namespace qorhost {
namespace {

std::string Like(std::string_view heading, std::span<const ImportColumn> columns) {
  const auto column = ColumnLike(heading, columns, {});
  return column ? std::string(columns[*column].heading) : std::string();
}

TEST(HeadingProposal, NamesTheColumnThatAHeadingIsLike) {
  for (const auto& [heading, column] : std::vector<std::pair<std::string, std::string>>{
           {"Full name", "Name"},
           {"Surname", "Last Name"},
           {"Lastname of tenant", ""},
           {"Last name of tenant", "Last Name"},
           {"Fist Name", "First Name"},
           {"Vorname", "First Name"},
           {"Tenant", "Name"},
           {"Apt.", "Apartment"},
           {"Flat no.", "Apartment"},
           {"Telephone", "Phone No."},
           {"TEL.", "Phone No."},
           {"T\xC3\xA9l\xC3\xA9phone", "Phone No."},
           {"Card no.", "Card Number"},
           {"Badge", "Card Number"},
           {"Facility", "Facility Code"},
           {"2nd card", "Card 2 Number"},
           {"second card no", "Card 2 Number"},
           {"Move in", "Start"},
           {"Valid until", "End"},
           {"Shedules", "Schedules"},
           {"Ext.", "Phone No. Extension"},
           {"House number", ""},
           {"Owner", ""},
           {"Remarks", ""},
           {"", ""},
           {"\xFF\xFE", ""},
       }) {
    EXPECT_EQ(Like(heading, TenantFileColumns()), column) << heading;
  }
  EXPECT_EQ(Like("Tenant name", CredentialImportColumns()), "Assigned To");
  EXPECT_EQ(Like("Name", DirCodeImportColumns()), "Display Name");
}

std::vector<std::pair<std::string, std::string>> ProposedFor(const std::string& text,
                                                             const ImportForm& form = {}) {
  std::vector<std::pair<std::string, std::string>> proposed;
  try {
    (void)ImportFile(text, TenantFileColumns(), form);
    ADD_FAILURE() << "the headings are known";
  } catch (const UnknownHeadings& headings) {
    for (const HeadingMeant& one : ProposedMeanings(headings, TenantFileColumns())) {
      proposed.emplace_back(one.heading, one.column);
    }
  }
  return proposed;
}

TEST(HeadingProposal, GivesEveryColumnOnceAndLeavesTheOthersOut) {
  using Proposed = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(ProposedFor("Full name,Telephone,Mobile,Phone No. 2,Remarks\n"),
            (Proposed{{"Full name", "Name"},
                      {"Telephone", "Phone No."},
                      {"Mobile", ""},
                      {"Phone No. 2", ""},
                      {"Remarks", ""}}));
  EXPECT_EQ(ProposedFor("Name,Full name,Flat,Move in\n"),
            (Proposed{{"Full name", ""}, {"Move in", "Start"}}))
      << "the file has a column Name";
}

TEST(HeadingProposal, NamesAHeadingByItsPlaceWhereItsTextWouldBeTakenApart) {
  using Proposed = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(
      ProposedFor("\"Name, full\",Note,note ,\"\"\"Tel\"\"\",$x,a\tb\n"),
      (Proposed{
          {"#1", "Name"}, {"#2", ""}, {"#3", ""}, {"#4", "Phone No."}, {"#5", ""}, {"#6", ""}}));
}

TEST(HeadingProposal, LooksAtWhatSomebodyHasSaidInstead) {
  ImportForm form;
  form.meant = {{"Who", "Nmae"}, {"Where", "Apartment"}};
  using Proposed = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(ProposedFor("Who,Where\n", form), (Proposed{{"Who", "Name"}}));
}

TEST(HeadingProposal, OfASheetIsForWhatIsNotKnownAndNotTaken) {
  ImportSheet sheet("Full name,Forename,Badge no,Colour,Phone No.\nRae,Zo,1,red,5\n", {});
  const auto told = [&sheet] {
    std::string text;
    for (const SheetProposal& one : ProposalsFor(sheet, TenantFileColumns())) {
      text += std::to_string(one.place) + " " + one.column + "; ";
    }
    return text;
  };
  EXPECT_EQ(told(), "0 Name; 1 First Name; 2 Card Number; 3 ; ");
  sheet.SetMeaning(1, "");
  EXPECT_EQ(told(), "0 Name; 2 Card Number; 3 ; ");
  sheet.SetMeaning(3, "Name");
  EXPECT_EQ(told(), "0 ; 2 Card Number; ") << "the name is taken";
}

TEST(HeadingProposal, OfASheetIsNothingWhereNoHeadingIsKnown) {
  const ImportSheet sheet("Colour,Shape\nred,round\n", {});
  EXPECT_TRUE(ProposalsFor(sheet, TenantFileColumns()).empty());
}

}  // namespace
}  // namespace qorhost
