// A session without a console: what it hands in, what a record collects, what is traced.
#include "host/desks/session.h"

#include <gmock/gmock.h>

#include "frame/data_services.h"
#include "frame/siblings.h"
#include "host/desks/desk_error.h"
#include "host/desks/message_rules.h"
#include "host/desks/operation_record.h"
#include "host/store/step_queue.h"
#include "host/store/tenant_register.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::MessageButton;
using qorcred::MessageStyle;
using testing::ElementsAre;
using testing::IsEmpty;

class Session : public DeskFixture {
 protected:
  void FailStatement() {
    qorcred::DatabaseError error;
    const qorcred::DatabaseManager manager(
        session().host().CreateComponent(qorcred::component::kDatabaseManager));
    (void)manager.ExecuteSelect(session().connection(), "SELECT nope FROM Tenants", error);
  }
};

TEST_F(Session, HandsMessagesToWhoeverShowsThemAndTheirAnswersBack) {
  OperationRecord record(session());
  EXPECT_EQ(session().host().ShowMessage("Sure?", MessageStyle::kQuestion, "T"),
            MessageButton::kNo);
  yes_ = true;
  EXPECT_EQ(session().host().ShowMessage("Sure?", MessageStyle::kQuestion, "T"),
            MessageButton::kYes);
  EXPECT_THAT(shown_, ElementsAre("Sure?", "Sure?"));
  const Outcome outcome = record.End(true);
  ASSERT_EQ(outcome.messages.size(), 2U);
  EXPECT_EQ(outcome.messages[0].answer, MessageButton::kNo);
  EXPECT_EQ(outcome.messages[1].answer, MessageButton::kYes);
}

TEST_F(Session, AnswersUnseenWhenNobodyIsToBeAsked) {
  {
    const UnseenMessages unseen(session(), true);
    EXPECT_EQ(session().host().ShowMessage("Sure?", MessageStyle::kQuestion, "T"),
              MessageButton::kYes);
    EXPECT_EQ(session().host().ShowMessage("Taken.", MessageStyle::kNotice, "T"),
              MessageButton::kOk);
  }
  {
    const UnseenMessages unseen(session(), false);
    EXPECT_EQ(session().host().ShowMessage("Sure?", MessageStyle::kQuestion, "T"),
              MessageButton::kNo);
  }
  EXPECT_THAT(shown_, IsEmpty());
  (void)session().host().ShowMessage("Seen again.", MessageStyle::kNotice, "T");
  EXPECT_THAT(shown_, ElementsAre("Seen again."));
}

TEST_F(Session, AnOperationIsDoneOnlyWithoutRefusalAndFailure) {
  EXPECT_EQ(OperationRecord(session()).End(true).ending, Ending::kDone);
  EXPECT_EQ(OperationRecord(session()).End(false).ending, Ending::kRefused);

  OperationRecord refused(session());
  (void)session().host().ShowMessage("Too many.", MessageStyle::kNotice, "T");
  EXPECT_EQ(refused.End(true).ending, Ending::kRefused)
      << "an assignment over the capacity reports success and shows a message";

  OperationRecord asked(session());
  (void)session().host().ShowMessage("Sure?", MessageStyle::kQuestion, "T");
  EXPECT_EQ(asked.End(true).ending, Ending::kDone);

  OperationRecord failed(session());
  FailStatement();
  const Outcome outcome = failed.End(true);
  EXPECT_EQ(outcome.ending, Ending::kFailed)
      << "a deletion reports success whatever its statement did";
  EXPECT_TRUE(outcome.returned);
  EXPECT_EQ(outcome.failures.size(), 1U);
}

TEST_F(Session, AFailureIsToldOnceAndWithoutWhatCameOfIt) {
  OperationRecord record(session());
  session().attendance().NoteTrapped("pbOpen failed");
  session().attendance().NoteFailure("no server");
  session().attendance().NoteTrapped("pbSave failed");
  session().attendance().NoteFailure("no server");
  session().attendance().NoteFailure("the disk is full");
  EXPECT_EQ(record.failures().size(), 5U);
  EXPECT_THAT(record.End(true).failures,
              ElementsAre("pbOpen failed", "no server", "the disk is full"));
}

TEST_F(Session, ARecordCollectsNothingOfAnother) {
  OperationRecord outer(session());
  {
    OperationRecord inner(session());
    FailStatement();
    EXPECT_EQ(inner.failures().size(), 1U);
    EXPECT_THROW(inner.RequireNoFailure("look"), FailureError);
  }
  EXPECT_THAT(outer.failures(), IsEmpty());
  outer.RequireNoFailure("look");
  FailStatement();
  EXPECT_EQ(outer.failures().size(), 1U);
}

TEST_F(Session, AFailureIsForgivenWhenTheOperationWentOnBehindIt) {
  OperationRecord last(session());
  FailStatement();
  last.ForgiveFirstFailure(false);
  EXPECT_EQ(last.failures().size(), 1U) << "it was the end";
  last.ForgiveFirstFailure(true);
  EXPECT_THAT(last.failures(), IsEmpty());
}

TEST_F(Session, TracesWhatControllersAskAndWhatADeskRunsItself) {
  (void)session().Units();
  EXPECT_THAT(calls_, IsEmpty()) << "nobody asked for a trace";
  Open(true);
  calls_.clear();
  (void)session().host().ShowMessage("Taken.", MessageStyle::kNotice, "T");
  (void)session().ownHost().ShowMessage("Seen.", MessageStyle::kNotice, "T");
  (void)session().Units();
  EXPECT_THAT(shown_, ElementsAre("Taken.", "Seen."));
  EXPECT_THAT(calls_,
              ElementsAre("MsgBox(text: \"Taken.\", style: 64, title: \"T\") -> 1",
                          "host \"SELECT UnitKey, UnitName FROM Units ORDER BY UnitKey\" -> 3 "
                          "rows"));
}

TEST_F(Session, ListsTheUnits) {
  const std::vector<UnitName> units = session().Units();
  ASSERT_EQ(units.size(), 3U);
  EXPECT_EQ(units[0].key, 1);
  EXPECT_EQ(units[0].name, "Harbour Court");
}

TEST_F(Session, StepsOfManyRowsAreQueuedInTheirOrder) {
  StepQueue& steps = session().sql().steps();
  Run("DELETE FROM ProgramSteps");
  const std::vector<std::int32_t> rids{70, 71, 72, 62, 64};
  steps.QueueAll(kUnit, step::kProgramTenant, rids);
  std::vector<std::int32_t> queued;
  for (const ProgramStep& step : steps.List(kUnit)) {
    EXPECT_EQ(step.kind, step::kProgramTenant);
    EXPECT_FALSE(step.sent);
    queued.push_back(step.subjectRid);
  }
  EXPECT_EQ(queued, rids);
  steps.QueueAll(kUnit, step::kProgramTenant, {});
  EXPECT_EQ(steps.List(kUnit).size(), rids.size());
}

TEST_F(Session, StepsOfManyRowsTakeThePlaceOfThoseThatWait) {
  StepQueue& steps = session().sql().steps();
  Run("DELETE FROM ProgramSteps");
  for (const std::int32_t rid : {71, 63, 70}) {
    steps.Queue(kUnit, step::kProgramTenant, rid);
  }
  steps.Queue(kUnit, step::kProgramDirectoryCode,
              71);  // of another row, which has that number, too
  steps.Queue(1, step::kProgramTenant, 71);
  Run("UPDATE ProgramSteps SET Sent=True WHERE SubjectRID=70");
  steps.QueueAllOnce(kUnit, step::kProgramTenant, {72, 62, 71, 70});
  std::vector<std::int32_t> waiting;
  for (const ProgramStep& one : steps.List(kUnit)) {
    if (!one.sent && one.kind == step::kProgramTenant) {
      waiting.push_back(one.subjectRid);
    }
  }
  EXPECT_EQ(waiting, (std::vector<std::int32_t>{63, 62, 70, 71, 72}));
  EXPECT_EQ(steps.List(kUnit).size(), 7U);  // with the code's, and the one that was sent
  EXPECT_EQ(steps.List(1).size(), 1U);
}

TEST_F(Session, EveryTenantGetsOneBackupRow) {
  Run("DELETE FROM TenantsBackup");
  const std::vector<std::int32_t> rids{62, 63, 70};
  session().sql().tenants().BackUp(kUnit, rids);
  const QueryResult rows =
      session().sql().Select("SELECT UnitKey, TenantID FROM TenantsBackup ORDER BY RID");
  ASSERT_EQ(rows.rowCount, 3U);
  std::vector<std::int32_t> ids;
  for (const ResultRow row : rows.rows()) {
    EXPECT_EQ(qorcred::ToLong(row[0]), kUnit);
    ids.push_back(qorcred::ToLong(row[1]));
  }
  EXPECT_EQ(ids, rids);
}

// What going back takes is kept in one block; beyond it in a file.
TEST_F(Session, AWorkInPartsGoesBackFromALittleAndFromMuch) {
  constexpr int kMany = 4000;  // rows on more than a hundred pages
  SqlSession& sql = session().sql();
  WorkOrder order{{kUnit}, "many", {}};
  order.inParts = true;
  WorkGuard work(sql.work(), order);
  for (int row = 0; row < kMany; ++row) {
    (void)sql.Change("INSERT INTO Tenants (UnitKey, LastName, NameAtUnit) VALUES (2, '" +
                         std::string(50, 'x') + "', '" + std::string(50, 'y') + "')",
                     dialect::StatementKind::kInsert);
  }
  const auto changed = [this] { return CountOf("SELECT RID FROM Tenants WHERE FirstName='Z'"); };
  for (const std::string& where : {std::string(" WHERE RID=62"), std::string()}) {
    Undoable part(sql.savepoint());
    (void)sql.Change("UPDATE Tenants SET FirstName='Z'" + where, dialect::StatementKind::kUpdate);
    EXPECT_GT(changed(), 0U);
    part.Undo();
    EXPECT_EQ(changed(), 0U);
  }
  EXPECT_TRUE(work.Commit());
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE UnitKey=2"), 75U + kMany);
}

TEST_F(Session, BeginsAnotherTraceAndEndsIt) {
  Open(true);
  (void)session().Units();
  ASSERT_EQ(calls_.size(), 1U);
  std::vector<std::string> other;
  session().TraceTo([&other](std::string_view line) { other.emplace_back(line); });
  FailStatement();
  (void)session().Units();
  ASSERT_GE(other.size(), 3U);
  EXPECT_EQ(other.front(),
            "CreateObject(progId: \"qorDBI.clsDBManager\") -> qorDBI.clsDBManager@1");
  EXPECT_EQ(calls_.size(), 1U);
  other.clear();
  session().TraceTo({});
  (void)session().Units();
  FailStatement();
  EXPECT_THAT(other, IsEmpty());
}

}  // namespace
}  // namespace qorhost::test
