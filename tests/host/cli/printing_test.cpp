// Lists as pages, spreadsheets and files; who has access; what needs attention and its steps.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using PrintedWords = std::vector<std::string>;

const std::vector<PrintedWords> kPrintedLists{
    {"credentials", "list"}, {"dircodes", "list"},     {"tenants", "list"}, {"units", "list"},
    {"doors", "list"},       {"schedules", "list"},    {"steps", "list"},   {"history", "list"},
    {"find", "tanaka"},      {"access", "list"},       {"overview"},        {"attention", "list"},
    {"report", "dircodes"},  {"report", "credentials"}};

PrintedWords Joined(PrintedWords words, const PrintedWords& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

/// The session's day is 2026-01-31.
class Printing : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ifstream file(File(name));
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }
  void Sql(const std::string& statement) {
    const Outcome outcome = Run({"sql", "--write", statement});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
};

TEST_F(Printing, EveryListIsAPageUnderItsTitle) {
  for (const PrintedWords& list : kPrintedLists) {
    SCOPED_TRACE(list.front());
    const Outcome page = Run(Joined(list, {"--format", "html"}));
    EXPECT_EQ(page.status, 0) << page.err;
    EXPECT_THAT(page.out, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page.out, Not(HasSubstr("<h1></h1>")));
    EXPECT_THAT(page.out, HasSubstr("<dd>2026-01-31</dd>"));
    EXPECT_THAT(page.out, testing::EndsWith("</html>\n"));
  }
}

TEST_F(Printing, EveryListIsASpreadsheet) {
  for (const PrintedWords& list : kPrintedLists) {
    SCOPED_TRACE(list.front());
    const Outcome lines = Run(Joined(list, {"--format", "csv"}));
    EXPECT_EQ(lines.status, 0) << lines.err;
    EXPECT_THAT(lines.out, HasSubstr("\r\n"));
    EXPECT_THAT(lines.out, Not(HasSubstr(" rows")));
  }
  EXPECT_EQ(Run({"doors", "list", "--unit", "2", "--columns", "door,name", "--limit", "1",
                 "--format", "csv"})
                .out,
            "Door,Name\r\n1,Front Entrance Door\r\n");
}

TEST_F(Printing, APageTellsItsUnitItsRowsAndWhatWasAskedFor) {
  EXPECT_THAT(Run({"tenants", "list", "--unit", "2", "--where", "schedule3 = Management", "--sort",
                   "-name", "--format", "html"})
                  .out,
              AllOf(HasSubstr("<dd>2, Linden Park</dd>"),
                    HasSubstr(" rows where schedule3 = Management, by -name</caption>"),
                    HasSubstr("<th scope=\"col\" class=\"n\">RID</th>")));
  EXPECT_THAT(Run({"report", "credentials", "--unit", "2", "--where", "Card Number = 301",
                   "--format", "html"})
                  .out,
              HasSubstr("1 row where Card Number = 301</caption>"));
}

TEST_F(Printing, AFileIsWrittenInTheFormatOfItsEnding) {
  const auto written = [this](const std::string& name) {
    const Outcome told = Run({"doors", "list", "--unit", "2", "--to", File(name)});
    EXPECT_EQ(told.status, 0) << told.err;
    EXPECT_EQ(told.out, "Wrote 4 rows to " + File(name) + ".\n");
    return Read(name);
  };
  EXPECT_THAT(written("doors.html"), StartsWith("<!DOCTYPE html>"));
  EXPECT_THAT(written("doors.HTM"), StartsWith("<!DOCTYPE html>"));
  EXPECT_THAT(written("doors.csv"), StartsWith("Unit,Door,Name"));
  EXPECT_EQ(json::parse(written("doors.json")).size(), 4U);
  EXPECT_THAT(written("doors.txt"), StartsWith("Unit  Door  Name"));
  const Outcome unknown = Run({"doors", "list", "--to", File("doors.ods")});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.err, HasSubstr("say what to write with --format"));
  const Outcome pdf = Run({"doors", "list", "--to", File("doors.PDF")});
  EXPECT_EQ(pdf.status, 2);
  EXPECT_THAT(pdf.err, HasSubstr("write a page with a name that ends in .html, and save it as a "
                                 "PDF from a browser's print dialogue (docs/printing.md)"));
  EXPECT_EQ(Run({"doors", "list", "--to", File("doors.pdf"), "--format", "html"}).status, 0);
}

TEST_F(Printing, WhatIsThereIsReplacedWithForceOnlyAndTheStoreNever) {
  std::ofstream(File("doors.html")) << "mine";
  const PrintedWords list{"doors", "list", "--to", File("doors.html")};
  const Outcome refused = Run(list);
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_THAT(refused.err, HasSubstr("replace it with --force"));
  EXPECT_EQ(Read("doors.html"), "mine");
  EXPECT_EQ(Run(Joined(list, {"--force"})).status, 0);
  EXPECT_THAT(Read("doors.html"), StartsWith("<!DOCTYPE"));
  for (const char* name : {"building.db", "building.db-wal"}) {
    EXPECT_EQ(Run({"doors", "list", "--format", "html", "--force", "--to", File(name)}).status, 1);
  }
  EXPECT_EQ(Run({"doors", "list", "--format", "html", "--force"}).status, 2);
  EXPECT_EQ(Run({"doors", "list", "--to", File("no/doors.html")}).status, 3);
  EXPECT_EQ(
      Run({"--trace-file", File("same.html"), "doors", "list", "--to", File("same.html")}).status,
      2);
}

TEST_F(Printing, AFormatIsSaidOnce) {
  EXPECT_EQ(Run({"doors", "list", "--json", "--format", "html"}).status, 2);
  EXPECT_EQ(Run({"doors", "list", "--format", "sql"}).status, 2);
  EXPECT_EQ(Run({"report", "credentials", "--format", "sql", "--to", File("x.sql")}).status, 2);
  EXPECT_EQ(Run({"doors", "list", "--format", "json"}).out, Run({"doors", "list", "--json"}).out);
}

TEST_F(Printing, ProgramsAreToldWhatWasWrittenWhere) {
  const Outcome told = Run({"doors", "list", "--unit", "2", "--json", "--to", File("doors.json")});
  EXPECT_EQ(told.status, 0) << told.err;
  EXPECT_EQ(json::parse(told.out), (json{{"rows", 4}, {"file", File("doors.json")}}));
  EXPECT_EQ(json::parse(Read("doors.json")).size(), 4U);
}

TEST_F(Printing, OnATerminalAPageSteersNothing) {
  Sql("UPDATE DOORS SET DOORNAME='a\x1B[2J<b>' WHERE UNITKEY=2 AND DOORID=1");
  outputIsTerminal_ = true;
  const std::string page = Run({"doors", "list", "--unit", "2", "--format", "html"}).out;
  EXPECT_THAT(page, AllOf(Not(HasSubstr("\x1B")), HasSubstr("a\\x1B[2J&lt;b&gt;")));
}

TEST_F(Printing, AccessTellsWhoMayGoInWhereOnADay) {
  const json all = Rows({"access", "list", "--unit", "2"});
  ASSERT_THAT(all, SizeIs(300));
  const json garage = Rows({"access", "list", "--unit", "2", "--where", "door contains car park",
                            "--where", "access = yes", "--where", "schedule = Full Access"});
  EXPECT_THAT(garage, Not(IsEmpty()));
  for (const json& row : garage) {
    EXPECT_EQ(row["door"], "Underground Car Park");
  }
  Sql("UPDATE Tenants SET ACTIVETENANT=True, ACTIVEENDTIME='2026-02-28 23:59:59' WHERE RID=62");
  const auto onDay = [this](const std::string& day) {
    return Rows({"access", "list", "--unit", "2", "--on", day, "--where", "rid = 62", "--where",
                 "access = yes"})
        .size();
  };
  EXPECT_EQ(onDay("2026-02-28"), onDay("2026-01-31"));
  EXPECT_EQ(onDay("2026-03-01"), 0U);
  EXPECT_THAT(Run({"access", "list", "--on", "2026-03-01", "--format", "html"}).out,
              HasSubstr("<h1>Access on 2026-03-01</h1>"));
  EXPECT_THAT(Run({"access", "list", "--on", "soon"}).err, StartsWith("qorhost: --on 'soon'"));
}

TEST_F(Printing, AStepIsAskedAboutTriedAndKeptInTheHistory) {
  Sql("UPDATE Tenants SET ACTIVETENANT=True, ACTIVEENDTIME='2026-01-30 23:59:59' WHERE RID=62");
  const PrintedWords step{"attention", "deactivate", "--unit", "2"};
  const Outcome tried = Run(Joined(step, {"-n"}));
  EXPECT_THAT(tried.out, HasSubstr("Would have deactivated 1 tenant in unit 2, Linden Park,"));
  const Outcome unasked = Run(step);
  EXPECT_EQ(unasked.status, 1);
  EXPECT_EQ(unasked.out, "");
  EXPECT_THAT(unasked.err, AllOf(HasSubstr("O'Brien Paula H (RID 62). Go on?"),
                                 HasSubstr("nothing was changed")));
  EXPECT_EQ(Run(Joined(step, {"--no"})).status, 1);
  const Outcome done = Run(Joined(step, {"--yes"}));
  EXPECT_EQ(done.status, 0) << done.err;
  EXPECT_THAT(done.out, HasSubstr("Deactivated 1 tenant in unit 2, Linden Park."));
  EXPECT_THAT(Rows({"attention", "list", "--unit", "2", "--where", "reason = expired"}), IsEmpty());
  EXPECT_THAT(Rows({"history", "list"}).back()["what"], HasSubstr("edit tenant O'Brien"));
  EXPECT_EQ(Run({"history", "undo", "3"}).status, 0);
  EXPECT_THAT(Rows({"attention", "list", "--unit", "2", "--where", "reason = expired"}), SizeIs(1));
}

TEST_F(Printing, AStepWithoutAnybodySaysSo) {
  EXPECT_EQ(Run({"attention", "end", "--unit", "2"}).out,
            "Nobody in unit 2, Linden Park meets the conditions: nothing was changed.\n");
  EXPECT_THAT(Run({"attention", "delete", "--unit", "2", "--where", "rid = 1"}).out,
              StartsWith("No credential in unit 2, Linden Park"));
}

TEST_F(Printing, FreeCardsAreDeletedWithConsent) {
  const PrintedWords step{"attention", "delete",  "--unit",
                          "2",         "--where", "name begins with Trans"};
  EXPECT_EQ(Run(step).status, 1);
  EXPECT_EQ(Run(Joined(step, {"--no"})).status, 1);
  EXPECT_THAT(Run(Joined(step, {"-n"})).out, HasSubstr("This was a trial, nothing was changed."));
  const PrintedWords free{"attention", "list", "--unit", "2", "--where", "name begins with Trans"};
  const std::size_t count = Rows(free).size();
  ASSERT_GT(count, 0U);
  EXPECT_EQ(Run(Joined(step, {"--yes"})).out,
            "Deleted " + std::to_string(count) + " credentials in unit 2, Linden Park.\n");
  EXPECT_THAT(Rows(free), IsEmpty());
}

TEST_F(Printing, TheOverviewIsAPageWithCharts) {
  const std::string page = Run({"overview", "--format", "html"}).out;
  EXPECT_THAT(page, AllOf(HasSubstr("<svg role=\"img\""), HasSubstr("498 of 500 (99 %)"),
                          HasSubstr("<dt>Units</dt><dd>all</dd>")));
  EXPECT_THAT(Run({"overview", "--unit", "3", "--format", "html"}).out,
              AllOf(HasSubstr("<dd>3, Mill Street Lofts</dd>"), Not(HasSubstr("498 of 500"))));
  EXPECT_THAT(Rows({"overview"}), SizeIs(3));
  EXPECT_EQ(Run({"overview", "--within", "-1"}).status, 2);
  EXPECT_EQ(Run({"overview", "--within", "36501"}).status, 2);
  EXPECT_EQ(Run({"overview", "--within", "36500"}).status, 0);
}

}  // namespace
}  // namespace qorhost::test
