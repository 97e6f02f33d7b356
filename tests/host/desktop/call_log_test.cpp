// The call log: what it shows of each call, what it keeps, and that its traces can be replayed.
#include "host/desktop/calls/call_log.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "host/desktop/calls/call_line.h"
#include "tests/host/desktop/desktop_fixture.h"
#include "tests/trace/trace_replay.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(CallLines, AreTakenApart) {
  struct Row {
    const char* line;
    CallKind kind;
    std::size_t depth;
    const char* object;
    const char* member;
    const char* arguments;
    const char* outcome;
  };
  const Row rows[] = {
      {"new clsCredential@1", CallKind::kCall, 0, "clsCredential@1", "new", "", ""},
      {"  Release qorDBI.clsDBManager@2", CallKind::kCall, 1, "qorDBI.clsDBManager@2", "Release",
       "", ""},
      {"  txtPINStart@12.Text -> \"9001\"", CallKind::kCall, 1, "txtPINStart@12", "Text", "",
       "-> \"9001\""},
      {"cboType@3.ListIndex = -1", CallKind::kCall, 0, "cboType@3", "ListIndex", "= -1", ""},
      {"cboType@3.ItemData(0) = 7", CallKind::kCall, 0, "cboType@3", "ItemData", "(0) = 7", ""},
      {"  rows@9(0, 0) -> \"a -> b (c) = d\"", CallKind::kCall, 1, "rows@9", "", "0, 0",
       "-> \"a -> b (c) = d\""},
      {"  MsgBox(text: \"Go (on) -> ?\", style: 64) -> 1", CallKind::kCall, 1, "host", "MsgBox",
       "text: \"Go (on) -> ?\", style: 64", "-> 1"},
      {"qorDBI.clsDBManager@2.ExecuteSelect(conn: c@1, sql: \"SELECT 'it''s \"\"x\"\"'\") -> r@7",
       CallKind::kStatement, 0, "qorDBI.clsDBManager@2", "ExecuteSelect",
       "conn: c@1, sql: \"SELECT 'it''s \"\"x\"\"'\"", "-> r@7"},
      {"host \"SELECT 1\" -> 1 row", CallKind::kHostStatement, 0, "host", "", "\"SELECT 1\"",
       "-> 1 row"},
      {"c@1.pbSave(a: 1) ! 438 \"no\" out a: 2", CallKind::kCall, 0, "c@1", "pbSave", "a: 1",
       "! 438 \"no\" out a: 2"},
      {"-> True out lngRID: 745", CallKind::kOutcome, 0, "", "", "", "-> True out lngRID: 745"},
      {"", CallKind::kCall, 0, "host", "", "", ""}};
  for (const Row& row : rows) {
    const CallLine read = ReadCallLine(row.line);
    EXPECT_EQ(read.kind, row.kind) << row.line;
    EXPECT_EQ(read.depth, row.depth) << row.line;
    EXPECT_EQ(read.object, row.object) << row.line;
    EXPECT_EQ(read.member, row.member) << row.line;
    EXPECT_EQ(read.arguments, row.arguments) << row.line;
    EXPECT_EQ(read.outcome, row.outcome) << row.line;
  }
}

class CallLogs : public testing::Test {
 protected:
  void TakeLines(int count) {
    for (int line = 0; line < count; ++line) {
      log_.Take("c@1.Line(" + std::to_string(next_++) + ")");
    }
  }
  [[nodiscard]] std::string Shown(int row, int column) const {
    return log_.index(row, column).data().toString().toStdString();
  }

  int next_ = 0;
  CallLog log_{[] { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); }, 100};
};

TEST_F(CallLogs, LinesThatComeTogetherAreOneNotification) {
  int told = 0;
  QObject::connect(&log_, &QAbstractItemModel::rowsInserted, &log_, [&told] { ++told; });
  TakeLines(90);
  EXPECT_EQ(log_.rowCount(), 0);
  EXPECT_TRUE(ComesTrue([this] { return log_.rowCount() == 90; }));
  EXPECT_EQ(told, 1);
  EXPECT_EQ(Shown(7, CallLog::kTime), "14:05:09");
  EXPECT_EQ(Shown(7, CallLog::kObject), "c@1");
  EXPECT_EQ(Shown(7, CallLog::kMember), "Line");
  EXPECT_EQ(Shown(7, CallLog::kArguments), "7");
}

TEST_F(CallLogs, TheOldestLinesGoAndAreCounted) {
  TakeLines(100);
  log_.Flush();
  EXPECT_EQ(log_.gone(), 0U);
  TakeLines(1);
  log_.Flush();
  EXPECT_EQ(log_.kept(), 100U);
  EXPECT_EQ(log_.gone(), 1U);
  EXPECT_EQ(Shown(0, CallLog::kArguments), "1");
  EXPECT_EQ(Shown(99, CallLog::kArguments), "100");
}

TEST_F(CallLogs, AnOperationThatLetsNoEventsRunDoesNotFillTheMemory) {
  TakeLines(10000);
  EXPECT_LE(log_.kept(), 200U);
  log_.Flush();
  EXPECT_EQ(log_.kept(), 100U);
  EXPECT_EQ(log_.gone(), 9900U);
  EXPECT_EQ(Shown(99, CallLog::kArguments), "9999");
}

TEST_F(CallLogs, WhatComesDuringAPauseIsShownAfterwards) {
  TakeLines(10);
  log_.SetPaused(true);
  TakeLines(20);
  log_.Flush();
  EXPECT_EQ(log_.rowCount(), 10);
  log_.Narrow(QStringLiteral("line"), false);
  EXPECT_EQ(log_.rowCount(), 10);
  TakeLines(80);  // of the ten that are shown, all go
  log_.Flush();
  EXPECT_EQ(log_.rowCount(), 0);
  log_.SetPaused(false);
  EXPECT_EQ(log_.rowCount(), 100);
  EXPECT_EQ(Shown(0, CallLog::kArguments), "10");
}

TEST_F(CallLogs, AreNarrowedToATextAndToStatements) {
  TakeLines(20);
  log_.Take("m@2.ExecuteSelect(sql: \"SELECT 7\") -> r@3");
  log_.Narrow(QStringLiteral("LINE(1"), false);
  EXPECT_EQ(log_.rowCount(), 11);
  log_.Take("c@1.Line(111)");
  log_.Take("c@1.Other(2)");
  log_.Flush();
  EXPECT_EQ(log_.rowCount(), 12);
  log_.Narrow({}, true);
  ASSERT_EQ(log_.rowCount(), 1);
  EXPECT_EQ(Shown(0, CallLog::kMember), "ExecuteSelect");
  EXPECT_TRUE(log_.index(0, 0).data(Qt::ForegroundRole).isValid());
  log_.Narrow({}, false);
  EXPECT_EQ(log_.rowCount(), 23);
  EXPECT_FALSE(log_.index(0, 0).data(Qt::ForegroundRole).isValid());
}

class CallLogWindows : public DesktopTest {
 protected:
  void PressCtrlL() {
    window().activateWindow();
    (void)QTest::qWaitForWindowActive(&window());
    QTest::keyClick(&window(), Qt::Key_L, Qt::ControlModifier);
    Settle();
  }
  void SaveCard(const char* number) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", number);
    Type("txtFacilityCode", "7");
    Click("saveButton");
    ASSERT_EQ(Told(), std::string("Saved Standard 26-Bit Card-") + number + ".");
  }
  [[nodiscard]] CallLog& Log() {
    window().calls().log().Flush();
    return window().calls().log();
  }
  [[nodiscard]] std::vector<std::string> LinesIn(const std::string& name) const {
    std::ifstream file(File(name));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
      lines.push_back(line);
    }
    return lines;
  }
};

TEST_F(CallLogWindows, ASavedTraceIsTheSameWhenItIsReplayed) {
  OpenDemoAt(QStringLiteral("credentials"));
  PressCtrlL();
  SaveCard("9001");
  window().ShowScreen(QStringLiteral("dir_codes"));
  ClickEntry("cbodirectorycode", "0101");
  Type("txtExtn", "42");
  Click("saveButton");
  answers_->Type(QString::fromStdString(File("calls.txt").string()));
  Click("saveCalls");
  const std::vector<std::string> trace = LinesIn("calls.txt");
  ASSERT_GT(trace.size(), 1000U);
  EXPECT_EQ(Told(), "Saved a trace of " + std::to_string(trace.size()) + " lines.");
  EXPECT_THAT(trace, testing::Contains(StartsWith("clsCredential@1.pbSave(")));
  EXPECT_THAT(trace, testing::Contains(testing::MatchesRegex("clsDirCode@[0-9]+\\.pbSave\\(.*")));
  const std::vector<std::string> replayed = qortest::Replayed(trace);
  const auto [was, is] =
      std::mismatch(trace.begin(), trace.end(), replayed.begin(), replayed.end());
  EXPECT_TRUE(was == trace.end() && is == replayed.end())
      << "line " << was - trace.begin() + 1 << ": " << (was == trace.end() ? "the end" : *was)
      << "\nis " << (is == replayed.end() ? "the end" : *is);
}

TEST_F(CallLogWindows, NothingIsKeptWhileItIsNotShown) {
  OpenDemoAt(QStringLiteral("credentials"));
  SaveCard("9001");
  EXPECT_EQ(Log().kept(), 0U);
  PressCtrlL();
  EXPECT_GT(Log().kept(), 100U);  // the screen was opened again
  PressCtrlL();
  SaveCard("9002");
  EXPECT_EQ(Log().kept(), 0U);
  EXPECT_FALSE(trace_.empty());  // whoever has a trace of its own goes on getting it
}

TEST_F(CallLogWindows, AskBeforeTheyReopenAScreenWithAnEntry) {
  OpenDemoAt(QStringLiteral("credentials"));
  Type("txtPINStart", "9001");
  answers_->Click(QMessageBox::No);
  PressCtrlL();
  EXPECT_TRUE(window().calls().isHidden());
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
  answers_->Click(QMessageBox::Yes);
  PressCtrlL();
  EXPECT_FALSE(window().calls().isHidden());
  EXPECT_EQ(TextIn("txtPINStart"), "");
}

TEST_F(CallLogWindows, AreFilteredPausedCopiedAndStartedOver) {
  OpenDemoAt(QStringLiteral("credentials"));
  PressCtrlL();
  Type("filterCalls", "createobject(");
  ASSERT_GT(Log().rowCount(), 0);
  auto& calls = Find<QTableView>("calls");
  QTest::mouseClick(calls.viewport(), Qt::LeftButton, Qt::NoModifier,
                    calls.visualRect(Log().index(0, 1)).center());
  EXPECT_THAT(Find<QPlainTextEdit>("wholeCall").toPlainText().toStdString(),
              StartsWith("CreateObject("));
  QTest::keyClick(&calls, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), Log().Text(0) + "\n");
  Type("filterCalls", "");
  Click("statementsOnly");
  const int statements = Log().rowCount();
  EXPECT_GT(statements, 3);
  Click("statementsOnly");
  Click("pauseCalls");
  const int shown = Log().rowCount();
  SaveCard("9001");
  EXPECT_EQ(Log().rowCount(), shown);
  Click("pauseCalls");
  EXPECT_GT(Log().rowCount(), shown + 50);
  Click("startCallsOver");
  EXPECT_LT(Log().rowCount(), shown + 50);
  bool fresh = false;
  for (int row = 0; row < Log().rowCount(); ++row) {
    fresh = fresh || Log().Text(row) == "new clsCredential@1";
  }
  EXPECT_TRUE(fresh);
}

TEST_F(CallLogWindows, IsRememberedAndFollowsTheStoreThatIsOpened) {
  OpenDemoAt(QStringLiteral("credentials"));
  PressCtrlL();
  EXPECT_TRUE(window().close());
  MakeWindow();
  EXPECT_FALSE(window().calls().isHidden());
  window().OpenLastStore();
  EXPECT_GT(Log().kept(), 100U);
  EXPECT_TRUE(window().CloseStore());
  EXPECT_EQ(Log().kept(), 0U);
}

TEST_F(CallLogWindows, ATraceIsNeverWrittenOverTheStore) {
  OpenDemoAt(QStringLiteral("credentials"));
  PressCtrlL();
  ASSERT_GT(Log().kept(), 100U);
  answers_->Type(QString::fromStdString(File("building.db").string()));
  answers_->Click(QMessageBox::Yes);  // the dialog's own question
  answers_->Click(QMessageBox::Ok);
  Click("saveCalls");
  EXPECT_THAT(answers_->LastText(), HasSubstr("never replaced"));
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

}  // namespace
}  // namespace qorhost::test
