// Tenants in and out at the command line: a real building's spreadsheet, and what files and options
// may be wrong.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class TenantExchange : public ImportFixture {
 protected:
  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ifstream in(File(name), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  }
  [[nodiscard]] Outcome ImportTenants(const std::string& text,
                                      const std::vector<std::string>& options = {}) {
    return Import("tenants", text, options);
  }
};

TEST_F(TenantExchange, TellsWhatWasImportedAndWhatWasNot) {
  const Outcome outcome = ImportTenants("Last Name,End\nOne,2027-01-01\nTwo,soon\n", {"--dry-run"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("qorhost: line 3: End 'soon' is no date"));
  EXPECT_EQ(outcome.out,
            "Would import 1 line, 1 line refused, in unit 2, Linden Park. Nothing was written.\n");
}

TEST_F(TenantExchange, TheOrderOfDatesIsSaidForAllLinesAndNeverGuessed) {
  const std::string sheet =
      "Name,Start,End\nAda One,03/04/2027,2027-05-06\nBea Two,15.01.2027,\nCem Three,5 Feb 2027,\n";
  const Outcome unsaid = ImportTenants(sheet, {"-n"});
  EXPECT_EQ(unsaid.status, 1);
  EXPECT_EQ(unsaid.err,
            "qorhost: line 2: Start '03/04/2027' does not tell in which order day, month and year "
            "stand: --dates dmy, mdy or ymd says it for all lines\n"
            "qorhost: line 3: Start '15.01.2027' does not tell in which order day, month and year "
            "stand: --dates dmy, mdy or ymd says it for all lines\n");
  const Outcome monthFirst = ImportTenants(sheet, {"-n", "--dates", "mdy"});
  EXPECT_EQ(monthFirst.err,
            "qorhost: line 3: Start '15.01.2027' is no date in the order month, day, year: write "
            "it so, or as 2026-12-31\n");
  EXPECT_EQ(ImportTenants(sheet, {"--dates", "dmy"}).status, 0);
  EXPECT_EQ(Query("SELECT LastName, ACTIVESTARTTIME, ACTIVEENDTIME FROM Tenants WHERE LastName IN "
                  "('One','Two','Three') ORDER BY RID"),
            (nlohmann::json{{{"LastName", "One"},
                             {"ACTIVESTARTTIME", "2027-04-03T00:00:00"},
                             {"ACTIVEENDTIME", "2027-05-06T23:59:59"}},
                            {{"LastName", "Two"},
                             {"ACTIVESTARTTIME", "2027-01-15T00:00:00"},
                             {"ACTIVEENDTIME", nullptr}},
                            {{"LastName", "Three"},
                             {"ACTIVESTARTTIME", "2027-02-05T00:00:00"},
                             {"ACTIVEENDTIME", nullptr}}}));
  EXPECT_EQ(ImportTenants(sheet, {"--dates", "german"}).status, 2);
}

TEST_F(TenantExchange, TheOrderOfDatesGoesForDirectoryCodesToo) {
  const std::string codes =
      "Directory Code,Phone No.,Directory Start Date,Directory End Date\n"
      "901,1,01.02.2027 08:00,31.12.2027 23:59\n";
  EXPECT_THAT(Import("dircodes", codes).err, HasSubstr("--dates dmy, mdy or ymd"));
  EXPECT_EQ(Import("dircodes", codes, {"--dates", "dmy"}).status, 0);
  EXPECT_EQ(
      Query("SELECT STARTDATE, ENDDATE FROM DIRECTORYCODE WHERE DIRECTORYCODE=901"),
      (nlohmann::json{{{"STARTDATE", "2027-02-01T08:00:00"}, {"ENDDATE", "2027-12-31T23:59:59"}}}));
}

TEST_F(TenantExchange, QuotesOfDisplayNamesAreReplacedForDirectoryCodesToo) {
  const std::string codes = "Directory Code,Phone No.,Display Name\n902,1,Ann O'Brien\n";
  EXPECT_THAT(Import("dircodes", codes).err, HasSubstr("has an apostrophe"));
  EXPECT_EQ(Import("dircodes", codes, {"--replace-quotes"}).status, 0);
  EXPECT_EQ(Query("SELECT DISPLAYNAME FROM DIRECTORYCODE WHERE DIRECTORYCODE=902"),
            (nlohmann::json{{{"DISPLAYNAME", "Ann O’Brien"}}}));
}

TEST_F(TenantExchange, UnknownHeadingsAreToldWithALineThatIsUnderstood) {
  const std::string sheet =
      "Full name,Flat,Telephone,Card no.,Owner\nAda One,901,555-1,41001,yes\n";
  const Outcome unknown = ImportTenants(sheet);
  EXPECT_EQ(unknown.status, 2);
  const std::string proposal = "Full name=Name,Telephone=Phone No.,Card no.=Card Number,Owner=";
  EXPECT_THAT(unknown.err, HasSubstr("look this over and say it: --columns \"" + proposal + "\""));
  const Outcome said = ImportTenants(sheet, {"--columns", proposal, "--card-type", "card26"});
  EXPECT_EQ(said.status, 0) << said.err;
  EXPECT_THAT(
      ImportTenants(sheet, {"--columns", "Full name=Name,Owner=Resident,Flat=Apartmnt"}).err,
      HasSubstr("--columns \"Full name=Name,Owner=Resident,Flat=Apartment,"
                "Telephone=Phone No.,Card no.=Card Number\""));
}

TEST_F(TenantExchange, ALineWhosePhoneNumberWasInARefusedOneSaysSo) {
  const Outcome outcome = ImportTenants(
      "Name,Apartment,Phone,End\nAda One,901,555-1,soon\nBea Two,901,,\nCem Three,902,,\n", {"-n"});
  EXPECT_THAT(outcome.err,
              HasSubstr("line 3: Please enter a Phone No. to apply to the Directory Code. Line 2 "
                        "has that of 901, and is refused.\n"));
  EXPECT_THAT(outcome.err,
              HasSubstr("line 4: Please enter a Phone No. to apply to the Directory Code.\n"));
}

TEST_F(TenantExchange, LettersThatWereLostBeforeAreNoted) {
  const Outcome outcome = ImportTenants("Last Name,First Name\nY?ld?z,Ada\nOne,\n", {"-n"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(
      outcome.err,
      "qorhost: note on line 2: 'Y?ld?z Ada' has a question mark: a letter may have been lost "
      "when the file was written\n");
}

TEST_F(TenantExchange, JsonTellsWhatWasStoredAlready) {
  const Outcome outcome = ImportTenants(
      "Last Name,First Name,Initial\nHollis,Elena,G\nOne,,\n,,x\n", {"--skip-existing", "--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(nlohmann::json::parse(outcome.out),
            (nlohmann::json{{"unit", 2},
                            {"dry_run", false},
                            {"done", 1},
                            {"unchanged", 1},
                            {"refused", 1},
                            {"lines",
                             {{{"line", 4},
                               {"message",
                                "Last Name is empty: lists show tenants by it; <Unassigned> "
                                "stands for nobody"}}}}}));
}

TEST_F(TenantExchange, WhatIsExportedIsImportedAgain) {
  const std::string file = File("tenants.csv");
  const Outcome written = Run({"tenants", "export", "--unit", "2", "--to", file});
  EXPECT_EQ(written.out, "Wrote 130 lines to " + file +
                             ": the tenants in unit 2, Linden Park, and the cards and directory "
                             "codes that nobody has.\n");
  EXPECT_EQ(Run({"tenants", "export", "--unit", "2"}).out, Read("tenants.csv"));
  const Outcome again = Run({"tenants", "export", "--unit", "2", "--to", file});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("name another file with --to, or replace it with --force"));

  const Outcome tabs =
      Run({"tenants", "export", "--unit", "2", "--to", file, "--force", "--delimiter", "tab"});
  EXPECT_EQ(tabs.status, 0) << tabs.err;
  const Outcome in = Run({"--unit", "2", "tenants", "import", file, "--skip-existing"});
  EXPECT_EQ(in.status, 0) << in.err;
  EXPECT_EQ(in.out,
            "Imported 0 lines, 130 lines stored already, 0 lines refused, in unit 2, Linden "
            "Park.\n");
}

TEST_F(TenantExchange, ADryRunOfAnExportTellsWhatItWouldWriteAndWritesNothing) {
  const std::string file = File("tenants.csv");
  const std::vector<std::string> words{"--unit", "2", "tenants", "export", "-n"};
  const auto with = [&words](std::vector<std::string> more) {
    more.insert(more.begin(), words.begin(), words.end());
    return more;
  };
  const Outcome tried = Run(with({"--to", file}));
  EXPECT_EQ(tried.status, 0) << tried.err;
  EXPECT_EQ(tried.out, "Would write 130 lines to " + file +
                           ": the tenants in unit 2, Linden Park, and the cards and directory "
                           "codes that nobody has. Nothing was written.\n");
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_THAT(Run(words).out, StartsWith("Would write 130 lines to -: "));
  EXPECT_EQ(nlohmann::json::parse(Run(with({"--to", file, "--json"})).out),
            (nlohmann::json{{"unit", 2}, {"lines", 130}, {"file", file}, {"dry_run", true}}));

  std::ofstream(file) << "old";
  const Outcome refused = Run(with({"--to", file}));
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, "qorhost: '" + file +
                             "' exists already: name another file with --to, or replace it with "
                             "--force\n");
  EXPECT_EQ(Run(with({"--to", file, "--force"})).status, 0);
  EXPECT_EQ(Read("tenants.csv"), "old");
}

TEST_F(TenantExchange, RefusedLinesGoToAFileThatIsMendedAndImported) {
  const std::string rejects = File("mend.csv");
  const Outcome first =
      ImportTenants("Last Name;End\nOne;soon\nTwo;2027-01-01\n", {"--rejects", rejects});
  EXPECT_EQ(first.status, 1);
  EXPECT_EQ(first.out,
            "Imported 1 line, 1 line refused, in unit 2, Linden Park.\nThe refused line "
            "is in " +
                rejects + " with the reasons, to be mended and imported.\n");
  const std::string refused = Read("mend.csv");
  EXPECT_THAT(refused,
              StartsWith("\xEF\xBB\xBFLast Name;End;Reason\r\nOne;soon;End 'soon' is no "));

  const Outcome taken = ImportTenants("Last Name\nTwo\n", {"--rejects", rejects});
  EXPECT_EQ(taken.status, 1);
  EXPECT_THAT(taken.err, HasSubstr("already, so nothing was imported: name another one with "
                                   "--rejects, or replace it with --force"));
  EXPECT_EQ(Read("mend.csv"), refused);

  std::string mended = refused;
  mended.replace(mended.find("soon"), 4, "2027-02-02");
  const Outcome second = ImportTenants(mended, {"--rejects", rejects, "--force"});
  EXPECT_EQ(second.status, 0) << second.err;
  EXPECT_EQ(Read("mend.csv"), refused) << "without a refused line none is written";
}

TEST_F(TenantExchange, CredentialsAndCodesHaveTheSameForms) {
  const std::string rejects = File("mend.csv");
  const Outcome cards =
      Import("credentials", "sep=;\r\nKind;No.;Who\r\ncard26;41001;\r\ncard26;0;Andr\xE9\r\n",
             {"--encoding", "cp1252", "--columns",
              "Kind=Credential Type,#2=Card Number,Who=", "--rejects", rejects});
  EXPECT_EQ(cards.status, 1);
  EXPECT_THAT(cards.out, StartsWith("Imported 1 credential, 1 line refused"));
  EXPECT_EQ(Read("mend.csv"),
            "\xEF\xBB\xBFKind;No.;Who;Reason\r\ncard26;0;André;No. '0' must be a whole number "
            "from 1 to 65535, in digits alone\r\n");
  const Outcome codes =
      Import("dircodes", "Directory Code\tPhone\n250\t1\n", {"--columns", "Phone=Phone No."});
  EXPECT_EQ(codes.status, 0) << codes.err;
}

TEST_F(TenantExchange, OptionsThatCannotBeMeantAreRefused) {
  const std::string file = Write("Last Name\nOne\n");
  const auto refusal = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {"--unit", "2", "tenants", "import", file});
    const Outcome outcome = Run(options);
    EXPECT_EQ(outcome.status, 2) << outcome.out;
    return outcome.err;
  };
  EXPECT_THAT(refusal({"--delimiter", "|"}), HasSubstr("'|' is none of , ; tab auto"));
  EXPECT_THAT(refusal({"--encoding", "latin1"}), HasSubstr("'latin1' is none of utf-8 cp1252"));
  EXPECT_THAT(refusal({"--columns", "Last Name"}), HasSubstr("is no HEADING=COLUMN"));
  EXPECT_THAT(refusal({"--columns", "Surname=Last Name"}),
              HasSubstr("line 1: the file has no heading 'Surname'"));
  EXPECT_THAT(refusal({"--rejects", file}), HasSubstr("names the file that is imported"));
  EXPECT_THAT(refusal({"--rejects", File("building.db"), "--force"}),
              HasSubstr("names a file of the store"));
  EXPECT_THAT(Run({"--unit", "2", "tenants", "import", file, "--rejects", File("no/mend.csv")}).err,
              HasSubstr("; nothing was imported"));
  EXPECT_THAT(refusal({"--update", "--skip-existing"}), HasSubstr("--skip-existing"));
  EXPECT_EQ(Query("SELECT RID FROM Tenants WHERE LastName='One'").size(), 0U);
}

TEST_F(TenantExchange, ColumnsTellsWhatTheCellsHold) {
  const Outcome columns = Run({"tenants", "import", "--columns"});
  EXPECT_EQ(columns.status, 0) << columns.err;
  EXPECT_THAT(columns.out, HasSubstr("Apartment"));
  EXPECT_THAT(columns.out, HasSubstr("50 rows"));
  EXPECT_EQ(Rows({"tenants", "import", "--columns"}).size(), 50U);
}

/// A new building with one unit that can hold 400 apartments.
class Residents : public TenantExchange {
 protected:
  void SetUp() override {
    ASSERT_EQ(Run({"init"}).status, 0);
    ASSERT_EQ(Run({"units", "add", "Lindenhof", "--type", "Panel 4000", "--capacity", "4000",
                   "--code-digits", "4"})
                  .status,
              0);
  }
  [[nodiscard]] Outcome ImportSheet(const std::string& file,
                                    const std::vector<std::string>& options) {
    const std::string headings =
        "Full name=Name,Flat=Apartment,Telephone=Phone,Card no.=Card Number,"
        "2nd card=Card 2 Number,Move in=Start,Move out=End,Owner=Resident,Remarks=";
    std::vector<std::string> words{"--unit", "1",          "tenants", "import",
                                   file,     "--encoding", "cp1252",  "--card-type",
                                   "card26", "--facility", "7",       "--columns",
                                   headings, "--dates",    "mdy"};
    words.insert(words.end(), options.begin(), options.end());
    return Run(words);
  }
};

TEST_F(Residents, OfARealSpreadsheetAreTakenInAndTheRestIsMended) {
  const std::string sheet = QORHOST_SAMPLES "/residents.csv";
  const std::string rejects = File("mend.csv");
  const Outcome first = ImportSheet(sheet, {"--replace-quotes", "--rejects", rejects});
  EXPECT_EQ(first.status, 1);
  EXPECT_THAT(first.out, StartsWith("Imported 775 lines, 26 lines refused, in unit 1, Lindenhof."));
  EXPECT_EQ(std::count(first.err.begin(), first.err.end(), '\n'), 21);
  for (const char* told :
       {"line 53: Card no. '20021' is held by Novak Søren (line 23)\n",
        "line 74: Move out '31.12.2026' is no date in the order month, day, year: ",
        "line 93: Card no. '20.091' has separators between its digits: write 20091\n",
        "line 350: Card no. '70000' must be a whole number from 1 to 65535, in digits alone\n",
        "line 204: Flat '12B' is no number", "line 305: Full name is empty: ",
        "line 266: Telephone '+49 30 555-9999' is not what the directory code 711 dials by line",
        " 265: that is '+49 30 555-0711'\n", "line 407: Lefèvre Tara is in line 406 already",
        "line 456: column 10 has no heading, and 'asks for a parking place' stands in it",
        "... and 6 more refused lines\n"}) {
    EXPECT_THAT(first.err, HasSubstr(told));
  }
  EXPECT_EQ(Query("SELECT RID FROM Tenants").size(), 775U);
  EXPECT_EQ(Query("SELECT RID FROM Tenants WHERE LastName LIKE \"%'%\"").size(), 50U);
  EXPECT_EQ(Query("SELECT RID FROM DirectoryCode WHERE DISPLAYNAME LIKE \"%'%\"").size(), 0U);
  EXPECT_EQ(Query("SELECT RID FROM Tenants WHERE LastName LIKE '% ' OR FirstName LIKE '% '").size(),
            0U);

  // As somebody mends it in a spreadsheet.
  std::string mended = Read("mend.csv");
  const std::vector<std::pair<std::string, std::string>> corrections{
      {"206;'+49 30 555-0206;20021", "206;;29021"},
      {"31.12.2026;", "2026-12-31;"},
      {"2026-13-01;", "2026-12-31;"},
      {"20.091", "20091"},
      {"20,092", "20092"},
      {"20'093", "20093"},
      {"20\xC2\xA0"
       "094",
       "20094"},
      {"soon;", "2026-02-01;"},
      {"31/12/2026;", "2026-12-31;"},
      {"12B;", "601;"},
      {"711;'+49 30 555-9999", "711;"},
      {"\n;811;", "\nNobody Known;811;"},
      {"907;;20333", "907;;29333"},
      {"70000", "29000"},
      {"Tara Lefèvre;1101", "Tom Lefèvre;1101"},
      {"asks for a parking place;column", ";column"},
      {"2025-12-31;", "2027-12-31;"},
      {"lost;", ";"},
      {"20611;20041", "20611;"},
      {"Maximiliane-Alexandra Theodora Wilhelmina Konstanze von und zu Hohenstein-Oberkirchen",
       "Maxi Hohenstein"}};
  for (const auto& [wrong, right] : corrections) {
    const std::size_t at = mended.find(wrong);
    if (at != std::string::npos) {
      mended.replace(at, wrong.size(), right);
    } else {
      ADD_FAILURE() << wrong;
    }
  }
  const Outcome second = ImportSheet(Write(mended, "mended.csv"), {"--replace-quotes"});
  EXPECT_EQ(
      second.err,
      "qorhost: line 27: Full name 'Total' is no name: the line seems to add the others up\n");
  EXPECT_THAT(second.out, StartsWith("Imported 25 lines, 1 line refused"));
  EXPECT_EQ(Query("SELECT RID FROM Tenants").size(), 800U);
  EXPECT_EQ(Query("SELECT RID FROM DirectoryCode").size(), 400U);

  const Outcome again = ImportSheet(sheet, {"--replace-quotes", "--skip-existing", "--dry-run"});
  EXPECT_THAT(again.out, HasSubstr("lines stored already"));
}

}  // namespace
}  // namespace qorhost::test
