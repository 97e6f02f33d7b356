// Programming steps that wait, are handed over and marked as sent.
#include "host/desks/step_desk.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <ctime>
#include <nlohmann/json.hpp>
#include <sstream>

#include "host/desks/local_time.h"
#include "host/files/file_error.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using qorcred::TextOrEmpty;
using testing::ElementsAre;
using testing::IsEmpty;

/// The time zone of the process, for as long as it lives.
class TimeZone {
 public:
  explicit TimeZone(const char* zone) {
    if (const char* former = std::getenv("TZ")) {
      former_ = former;
    }
    Set(zone);
  }
  ~TimeZone() { Set(former_ ? former_->c_str() : nullptr); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  static void Set(const char* zone) {
    if (zone == nullptr) {
      unsetenv("TZ");
    } else {
      setenv("TZ", zone, 1);
    }
    tzset();
  }
  std::optional<std::string> former_;
};

TEST(LocalTime, HasTheOffsetOfItsDay) {
  const TimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  const auto at = [](int month) {
    return WithOffset(qorcred::FromCivil({2026, month, 15, 9, 30, 1}));
  };
  EXPECT_EQ(at(1), "2026-01-15T09:30:01+01:00");
  EXPECT_EQ(at(7), "2026-07-15T09:30:01+02:00");
  EXPECT_EQ(WithOffset(qorcred::Null{}), "");
}

TEST(LocalTime, MayBeBehindUtcByPartsOfAnHour) {
  const TimeZone zone("NST3:30");
  EXPECT_EQ(WithOffset(qorcred::FromCivil({2026, 1, 15, 9, 30, 1})), "2026-01-15T09:30:01-03:30");
}

class StepDeskTest : public DeskFixture {
 protected:
  static constexpr std::int32_t kCodeRow = 11;  // of the directory code 101

  void SetUp() override {
    DeskFixture::SetUp();
    Run("DELETE FROM ProgramSteps");
  }

  std::int32_t Queue(std::string_view kind, std::int32_t row, std::string_view code = {},
                     std::int32_t unit = kUnit) {
    session().sql().steps().Queue(unit, kind, row, code);
    return session().sql().steps().List(unit).back().rid;
  }
  [[nodiscard]] std::vector<std::int32_t> Waiting() {
    std::vector<std::int32_t> rids;
    for (const auto& row : WaitingStepList(session(), std::nullopt).rows) {
      rids.push_back(qorcred::ToLong(row[0]));
    }
    return rids;
  }
  [[nodiscard]] SentSteps Send(const std::optional<std::string>& upTo = std::nullopt) {
    return MarkSent(session(), kUnit, {{}, upTo}, Trial::kNo);
  }
  /// State and number at the unit of the directory code 101.
  [[nodiscard]] std::string AtUnit() {
    return Cell("SELECT MODIFIED FROM DirectoryCode WHERE RID=11") + " " +
           Cell("SELECT OLDDIRECTORYCODE FROM DirectoryCode WHERE RID=11");
  }
  [[nodiscard]] std::vector<nlohmann::json> Lines() {
    std::stringstream text;
    StepFile(session(), {kUnit, "Linden Park"}).Write(text);
    std::vector<nlohmann::json> lines;
    for (std::string line; std::getline(text, line);) {
      lines.push_back(nlohmann::json::parse(line));
    }
    return lines;
  }
};

TEST_F(StepDeskTest, ListsWhatWaitsInItsOrderWithTimesAndSubjects) {
  const TimeZone zone("UTC0");
  const std::int32_t first = Queue(step::kProgramTenant, 62);
  const std::int32_t second = Queue(step::kChangeDirectoryCode, kCodeRow, "99");
  const std::int32_t third = Queue(step::kDeleteDirectoryCode, 999, "88");
  const List table = WaitingStepList(session(), kUnit);
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_THAT(Waiting(), ElementsAre(first, second, third));
  EXPECT_EQ(TextOrEmpty(ForPeople(table).rows[0][2]), "2026-01-31T14:05:09+00:00");
  EXPECT_EQ(TextOrEmpty(table.rows[0][5]),
            Cell("SELECT FirstName & ' ' & LastName FROM Tenants WHERE RID=62"));
  EXPECT_EQ(TextOrEmpty(table.rows[1][5]), "99 to 101");
  EXPECT_EQ(TextOrEmpty(table.rows[2][5]), "88");
  EXPECT_THAT(WaitingStepList(session(), 1).rows, IsEmpty());
}

TEST_F(StepDeskTest, StepsThatWaitNoMoreAreAFaultOrLeftOut) {
  const std::int32_t sent = Queue(step::kProgramTenant, 62);
  (void)Send();
  const std::int32_t waits = Queue(step::kProgramTenant, 63);
  StepChoice choice{{std::to_string(sent), std::to_string(waits)}};
  EXPECT_EQ(FieldAtFault([&] { (void)MarkSent(session(), kUnit, choice, Trial::kNo); }),
            step_input::kStep);
  EXPECT_THAT(Waiting(), ElementsAre(waits));
  choice.unknown = UnknownSteps::kLeftOut;
  EXPECT_THAT(MarkSent(session(), kUnit, choice, Trial::kNo).marked, ElementsAre(waits));
  const std::int32_t later = Queue(step::kProgramTenant, 64);
  EXPECT_THAT(MarkSent(session(), kUnit, choice, Trial::kNo).marked, IsEmpty());
  EXPECT_THAT(Waiting(), ElementsAre(later));
}

TEST_F(StepDeskTest, TheFileHasWhatTheUnitHasToKnow) {
  const std::int32_t first = Queue(step::kProgramTenant, 62);
  Queue(step::kProgramDirectoryCode, kCodeRow);
  Queue(step::kProgramTenant, 9999);
  const std::int32_t last = Queue(step::kDeleteDirectoryCode, 999, "88");
  const std::vector<nlohmann::json> lines = Lines();
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines[0]["unit"], kUnit);
  EXPECT_EQ(lines[0]["version"], 1);
  EXPECT_EQ(lines[1]["step"], first);
  EXPECT_EQ(lines[1]["kind"], "program tenant");
  EXPECT_EQ(lines[1]["last_name"], Cell("SELECT LastName FROM Tenants WHERE RID=62"));
  EXPECT_EQ(lines[1]["schedule_1"], 1);
  EXPECT_EQ(std::to_string(lines[1]["credential_1_number"].get<int>()),
            Cell("SELECT PINNo FROM CredentialBank WHERE RID=" +
                 Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62")));
  EXPECT_EQ(lines[1]["credential_1_type"], "Corvin 30-Bit Card");
  EXPECT_FALSE(lines[1].contains("credential_2_type"));
  EXPECT_EQ(lines[2]["directory_code"], 101);
  EXPECT_EQ(lines[2]["phone"], "555-0100");
  EXPECT_EQ(lines[3]["gone"], true);
  EXPECT_EQ(lines[4]["code_at_unit"], "88");
  EXPECT_EQ(lines[5]["steps"], 4);
  EXPECT_EQ(lines[5]["last_step"], last);
}

TEST_F(StepDeskTest, AFileWithoutStepsSaysSo) {
  const std::vector<nlohmann::json> lines = Lines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[1]["steps"], 0);
  EXPECT_TRUE(lines[1]["last_step"].is_null());
}

TEST_F(StepDeskTest, AFileIsNotReplacedUnlessToldTo) {
  const TemporaryFolder folder;
  const auto file = folder.File("steps.txt");
  Queue(step::kProgramTenant, 62);
  const StepFile steps(session(), {kUnit, "Linden Park"});
  steps.WriteTo(file, Standing::kStays, folder.File("building.db"));
  EXPECT_THROW(steps.WriteTo(file, Standing::kStays, folder.File("building.db")), FileError);
  steps.WriteTo(file, Standing::kReplaced, folder.File("building.db"));
  EXPECT_THROW(steps.WriteTo(file, Standing::kReplaced, file), FileError) << "it is the store";
}

TEST_F(StepDeskTest, WhatWasHandedOverIsSentAndItsCodesAreInTheUnit) {
  Run("UPDATE DirectoryCode SET MODIFIED=1, OLDDIRECTORYCODE=NULL WHERE RID=11");
  Queue(step::kProgramTenant, 62);
  Queue(step::kProgramDirectoryCode, kCodeRow);
  const SentSteps sent = Send();
  EXPECT_EQ(sent.steps, 2U);
  EXPECT_EQ(sent.codes, 1U);
  EXPECT_EQ(AtUnit(), "0 101");
  EXPECT_THAT(Waiting(), IsEmpty());
  EXPECT_EQ(session().sql().audit().After(0, kUnit).back().what, "steps done");
}

TEST_F(StepDeskTest, StepsBehindTheLastOneAndThoseOfOtherUnitsWaitOn) {
  Run("UPDATE DirectoryCode SET MODIFIED=1, OLDDIRECTORYCODE=NULL WHERE RID=11");
  const std::int32_t first = Queue(step::kProgramTenant, 62);
  const std::int32_t second = Queue(step::kProgramDirectoryCode, kCodeRow);
  const std::int32_t other = Queue(step::kProgramTenant, 1, {}, 1);
  const SentSteps sent = Send(std::to_string(first));
  EXPECT_EQ(sent.steps, 1U);
  EXPECT_EQ(sent.codes, 0U);
  EXPECT_EQ(AtUnit(), "1 ");
  EXPECT_THAT(Waiting(), ElementsAre(second, other));
}

TEST_F(StepDeskTest, ACodeWhoseRenumberingWasSentKeepsItsLaterChange) {
  Run("UPDATE DirectoryCode SET MODIFIED=2, OLDDIRECTORYCODE=99 WHERE RID=11");
  const std::int32_t renumbered = Queue(step::kChangeDirectoryCode, kCodeRow, "99");
  Queue(step::kProgramDirectoryCode, kCodeRow);
  EXPECT_EQ(Send(std::to_string(renumbered)).codes, 0U);
  EXPECT_EQ(AtUnit(), "2 101");
}

TEST_F(StepDeskTest, ACodeWhoseRenumberingWaitsStillIsKnownByItsFormerNumber) {
  Run("UPDATE DirectoryCode SET MODIFIED=2, OLDDIRECTORYCODE=99 WHERE RID=11");
  const std::int32_t programmed = Queue(step::kProgramDirectoryCode, kCodeRow);
  Queue(step::kChangeDirectoryCode, kCodeRow, "99");
  EXPECT_EQ(Send(std::to_string(programmed)).codes, 0U);
  EXPECT_EQ(AtUnit(), "2 99");
}

TEST_F(StepDeskTest, ADeletedCodeStaysDeleted) {
  Run("UPDATE DirectoryCode SET MODIFIED=3, OLDDIRECTORYCODE=99 WHERE RID=11");
  Queue(step::kProgramDirectoryCode, kCodeRow);
  const SentSteps sent = Send();
  EXPECT_EQ(sent.steps, 1U);
  EXPECT_EQ(sent.codes, 0U);
  EXPECT_EQ(AtUnit(), "3 99");
}

TEST_F(StepDeskTest, ALastStepThatDoesNotWaitIsAFault) {
  const std::int32_t other = Queue(step::kProgramTenant, 1, {}, 1);
  const std::int32_t own = Queue(step::kProgramTenant, 62);
  for (const std::string& given :
       {std::to_string(other), std::to_string(own + 1), std::string("all"), std::string()}) {
    EXPECT_EQ(FieldAtFault([&] { (void)Send(given); }), step_input::kUpTo) << given;
  }
  EXPECT_THAT(Waiting(), ElementsAre(other, own));
}

TEST_F(StepDeskTest, ATrialSendsNothing) {
  Queue(step::kProgramTenant, 62);
  EXPECT_EQ(MarkSent(session(), kUnit, {}, Trial::kYes).steps, 1U);
  EXPECT_EQ(Waiting().size(), 1U);
}

TEST_F(StepDeskTest, NothingToSendIsDone) {
  EXPECT_EQ(Send().steps, 0U);
}

}  // namespace
}  // namespace qorhost::test
