// Both report screens, worked with mouse and keys.
#include <gmock/gmock.h>

#include <QBuffer>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPdfWriter>
#include <QTableView>
#include <QtPrintSupport/QPrinter>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "host/desks/credential_report.h"
#include "host/desks/desk_error.h"
#include "host/desks/dir_code_report.h"
#include "host/desktop/binding/date_field.h"
#include "host/desktop/printing/paper.h"
#include "host/desktop/printing/table_printer.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ReportScreens : public DesktopTest {
 protected:
  [[nodiscard]] QAbstractItemModel& Rows() { return *Find<QTableView>("rows").model(); }
  [[nodiscard]] std::string CellOf(int row, int column) {
    return Rows().index(row, column).data().toString().toStdString();
  }
  [[nodiscard]] int ColumnOf(const char* title) {
    for (int column = 0; column < Rows().columnCount(); ++column) {
      if (Rows().headerData(column, Qt::Horizontal).toString() == QString::fromUtf8(title)) {
        return column;
      }
    }
    throw std::logic_error(std::string("there is no column ") + title);
  }
  void ClickRow(int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    auto& view = Find<QTableView>("rows");
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys,
                      view.visualRect(view.model()->index(row, 1)).center());
    Settle();
  }
  void SortBy(int column) {
    auto& header = *Find<QTableView>("rows").horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                      {header.sectionViewportPosition(column) + 10, header.height() / 2});
    Settle();
  }
  [[nodiscard]] std::string Totals() { return Find<QLabel>("totals").text().toStdString(); }
  [[nodiscard]] std::string BytesOf(const std::string& name) const {
    std::ifstream file(File(name), std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
  }
};

/// The calls of a report's operation. The window has shown the report before: the operation is
/// handed what came of that, and its rows have the name under which they were first seen.
std::vector<std::string> ReportIn(const std::vector<std::string>& trace, const char* operation) {
  std::vector<std::string> lines = CallsOf(operation, trace);
  if (!lines.empty()) {
    lines.erase(lines.begin());
  }
  for (std::string& line : lines) {
    if (const std::size_t at = line.find("arrXDBTx"); at != std::string::npos) {
      line.replace(at, std::string_view("arrXDBTx").size(), "rows");
    }
  }
  return lines;
}

class CredentialReports : public ReportScreens {
 protected:
  CredentialReports() { OpenDemoAt(QStringLiteral("credential_report")); }

  /// The printers' dialog is told to print into a file, which every system can.
  void PrintTo(const char* name) {
    answers_->With([this, name](QDialog& dialog) {
      auto* printers = dialog.findChild<QComboBox*>(QStringLiteral("printers"));
      printers->setCurrentIndex(printers->count() - 1);
      dialog.findChild<QLineEdit*>(QStringLiteral("filename"))
          ->setText(QString::fromStdString(File(name).string()));
      // Behind this look: what the dialog asks then is seen by the next one.
      QTimer::singleShot(0, &dialog, [&dialog] {
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
      });
    });
  }
};

TEST_F(CredentialReports, ShowEveryCredentialAtFirst) {
  EXPECT_EQ(Totals(), "148 rows: 83 Corvin 30-Bit Card, 40 Standard 26-Bit Card, 25 Transmitter");
  EXPECT_EQ(CellOf(0, ColumnOf("Assigned To")), "Hollis Elena G");
  EXPECT_FALSE(Find<QLineEdit>("txtFrom_0").isVisible());
}

TEST_F(CredentialReports, AreNarrowedByConditionsThatHoldTogether) {
  Choose("cboField_0", "Card Number");
  EXPECT_TRUE(Find<QLineEdit>("txtFrom_0").isVisible());
  EXPECT_FALSE(Find<QLineEdit>("txtTo_0").isVisible());
  Choose("cboFilter_0", "between");
  EXPECT_TRUE(Find<QLineEdit>("txtTo_0").isVisible());
  Type("txtFrom_0", "1001");
  Type("txtTo_0", "1010");
  Choose("cboField_1", "Tenant Name");
  Choose("cboFilter_1", "begins with");
  Type("txtFrom_1", "O'");
  answers_->Click(QMessageBox::Ok);
  Click("runButton");  // the quote ends the text in the statement
  EXPECT_THAT(answers_->LastText(), HasSubstr("write a quote in one twice"));
  Type("txtFrom_1", "O''Brien");
  QTest::keyClick(&Find<QLineEdit>("txtFrom_1"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(Totals(), "1 row: 1 Corvin 30-Bit Card");
  EXPECT_EQ(CellOf(0, ColumnOf("Card Number")), "1002");
  Click("clear_1");
  EXPECT_FALSE(Find<QLineEdit>("txtFrom_1").isVisible());
  Click("runButton");
  EXPECT_EQ(Totals(), "10 rows: 10 Corvin 30-Bit Card");
}

TEST_F(CredentialReports, ATypeIsChosenFromTheList) {
  Choose("cboField_4", "Credential Type");
  Choose("cboType_4", "Transmitter");
  Click("runButton");
  EXPECT_EQ(Totals(), "25 rows: 25 Transmitter");
}

TEST_F(CredentialReports, AValueThatTheFieldDoesNotTakeIsToldAtItsWidget) {
  struct Row {
    const char* first;
    const char* second;
    const char* told;
  };
  Choose("cboField_2", "Card Number");
  Choose("cboFilter_2", "between");
  const Row rows[] = {{"", "", "needs two values"},
                      {"5", "", "needs two values"},
                      {"5", "x", "'Card Number' takes a number, and 'x' is none"},
                      {"5", "4", "must not be above the second"},
                      {"1.5", "4", "takes a whole number"}};
  for (const Row& row : rows) {
    Type("txtFrom_2", row.first);
    Type("txtTo_2", row.second);
    Click("runButton");
    EXPECT_THAT(Marked(), StartsWith("txtFrom_2: Condition 3 'Card Number between"));
    EXPECT_THAT(Marked(), HasSubstr(row.told));
  }
  EXPECT_TRUE(answers_->seen().empty());
  EXPECT_EQ(Rows().rowCount(), 148);  // what was shown stays
}

TEST_F(CredentialReports, AreSortedByNumbersAsNumbers) {
  const int number = ColumnOf("Card Number");
  SortBy(number);
  EXPECT_EQ(CellOf(0, number), "301");
  SortBy(number);
  EXPECT_EQ(CellOf(0, number), "20040");
}

TEST_F(CredentialReports, ChosenRowsAreDeletedAfterAQuestion) {
  Choose("cboField_0", "Card Number");
  Choose("cboFilter_0", "between");
  Type("txtFrom_0", "316");
  Type("txtTo_0", "325");
  Click("runButton");
  const int before = Rows().rowCount();
  ASSERT_EQ(before, 10);
  EXPECT_EQ(CellOf(0, ColumnOf("Assigned To")), "Unassigned");
  EXPECT_FALSE(Find<QPushButton>("deleteButton").isEnabled());
  ClickRow(0);
  ClickRow(1, Qt::ControlModifier);
  answers_->Click(QMessageBox::No);
  Click("deleteButton");
  EXPECT_EQ(answers_->LastText(), "Delete the 2 chosen credentials?");
  EXPECT_EQ(Rows().rowCount(), before);
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_EQ(Told(), "Deleted 2 of 2 credentials.");
  EXPECT_EQ(Rows().rowCount(), before - 2);
}

TEST_F(CredentialReports, AHeldCredentialIsNotDeleted) {
  ClickRow(0);
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::Ok);
  Click("deleteButton");
  EXPECT_EQ(Rows().rowCount(), 148);
}

TEST_F(CredentialReports, AreWrittenAsCsvInTheOrderThatIsShown) {
  SortBy(ColumnOf("Card Number"));
  answers_->Type(QString::fromStdString(File("report.csv").string()));
  Click("csvButton");
  EXPECT_EQ(Told(), "Wrote 148 rows to " + File("report.csv").string() + ".");
  const std::string csv = BytesOf("report.csv");
  EXPECT_THAT(csv, StartsWith("Credential Type,Card Number,Facility Code,ID Code,Sequence Number,"
                              "Button Number,Assigned To,RID\r\nTransmitter,301,7,0,0,1,Hollis "
                              "Elena G,609\r\n"));
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 149);
}

TEST_F(CredentialReports, AreWrittenAsPdf) {
  answers_->Type(QString::fromStdString(File("report.pdf").string()));
  Click("pdfButton");
  EXPECT_EQ(Told(), "Wrote 148 rows to " + File("report.pdf").string() + ".");
  const std::string pdf = BytesOf("report.pdf");
  EXPECT_THAT(pdf, StartsWith("%PDF-"));
  EXPECT_THAT(pdf, HasSubstr("%%EOF"));
}

TEST_F(CredentialReports, ArePrintedByThePrintersDialog) {
  PrintTo("printed.pdf");
  Click("printButton");
  EXPECT_EQ(Told(), "Printed 148 rows.");
  const std::string pdf = BytesOf("printed.pdf");
  EXPECT_THAT(pdf, StartsWith("%PDF-"));
  EXPECT_THAT(pdf, HasSubstr("%%EOF"));
}

TEST_F(CredentialReports, AreNeverPrintedOverTheStore) {
  PrintTo("building.db");
  answers_->Click(QMessageBox::Yes);  // the dialog's own question
  answers_->Click(QMessageBox::Ok);
  Click("printButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("never replaced"));
  Click("runButton");
  EXPECT_EQ(Rows().rowCount(), 148);
}

TEST_F(CredentialReports, AreNeverWrittenOverTheStore) {
  answers_->Type(QString::fromStdString(File("building.db").string()));
  answers_->Click(QMessageBox::Yes);  // the dialog's own question
  answers_->Click(QMessageBox::Ok);
  Click("csvButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("never replaced"));
  Click("runButton");
  EXPECT_EQ(Rows().rowCount(), 148);
}

TEST_F(CredentialReports, MakeTheCallsThatTheyMakeWithoutAWindow) {
  Choose("cboField_0", "Card Number");
  Choose("cboFilter_0", "less than");
  Type("txtFrom_0", "1005");
  trace_.clear();
  Click("runButton");
  const std::vector<std::string> shown = ReportIn(trace_, "pbGenSql");
  ASSERT_GT(shown.size(), 20U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  CredentialReport report(*session, kUnit, {"Card Number < 1005"});
  ASSERT_TRUE(report.Run().done());
  EXPECT_EQ(shown, ReportIn(headless, "pbGenSql"));
}

class DirCodeReports : public ReportScreens {
 protected:
  DirCodeReports() { OpenDemoAt(QStringLiteral("dir_code_report")); }
};

TEST_F(DirCodeReports, ShowTheGridsTextsInPlaceOfStoredValues) {
  ASSERT_GT(Rows().rowCount(), 3);
  const int schedule = ColumnOf("CF Schedule");
  bool named = false;
  for (int row = 0; row < Rows().rowCount(); ++row) {
    named = named || CellOf(row, schedule) == "Early Shift";
  }
  EXPECT_TRUE(named);
  EXPECT_FALSE(Find<QPushButton>("deleteButton").isVisible());
}

TEST_F(DirCodeReports, ShowTheControlsThatAFieldTakes) {
  Choose("cboField_0", "Directory Start Date");
  EXPECT_TRUE(Find<DateField>("dtpDateFrom_0").isVisible());
  EXPECT_FALSE(Find<QLineEdit>("txtFrom_0").isVisible());
  Choose("cboField_0", "Directory Status");
  EXPECT_FALSE(Find<DateField>("dtpDateFrom_0").isVisible());
  EXPECT_TRUE(Find<QCheckBox>("chkBoolean_0").isVisible());
  Click("runButton");
  EXPECT_EQ(Rows().rowCount(), 0);  // "No"; all are active
  EXPECT_FALSE(Find<QPushButton>("csvButton").isEnabled());
  Click("chkBoolean_0");
  Click("runButton");
  EXPECT_GT(Rows().rowCount(), 3);
}

TEST_F(DirCodeReports, ADateThatIsNotChosenIsToldAtItsWidget) {
  Choose("cboField_0", "Directory Start Date");
  auto& date = Find<DateField>("dtpDateFrom_0");
  QTest::mouseClick(&date.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  Click("runButton");
  EXPECT_THAT(Marked(), StartsWith("dtpDateFrom_0: Condition 1"));
  Choose("cboFilter_0", "between");
  auto& second = Find<DateField>("dtpDateTo_0");
  if (!second.check().isChecked()) {
    QTest::mouseClick(&second.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  }
  Click("runButton");
  EXPECT_THAT(Marked(), HasSubstr("'Directory Start Date between and 20"));
}

TEST_F(DirCodeReports, SortDatesByTheirDays) {
  SqlSession& sql = window().place()->session().sql();
  const std::pair<const char*, const char*> ends[] = {{"101", "#2027-02-01 23:59:59#"},
                                                      {"102", "#2026-10-09 23:59:59#"},
                                                      {"103", "#2026-09-30 23:59:59#"}};
  for (const auto& [code, end] : ends) {
    (void)sql.Change(std::string("UPDATE DIRECTORYCODE SET ENDDATE=") + end +
                         " WHERE UNITKEY=2 AND DIRECTORYCODE=" + code,
                     dialect::StatementKind::kUpdate);
  }
  Click("runButton");
  const auto order = [this] {
    std::vector<std::string> codes;
    for (int row = 0; row < Rows().rowCount(); ++row) {
      const std::string code = CellOf(row, ColumnOf("Directory Code"));
      if (code == "0101" || code == "0102" || code == "0103") {
        codes.push_back(code);
      }
    }
    return codes;
  };
  SortBy(ColumnOf("Directory End Date"));
  EXPECT_THAT(order(), testing::ElementsAre("0103", "0102", "0101"));
  SortBy(ColumnOf("Directory End Date"));
  EXPECT_THAT(order(), testing::ElementsAre("0101", "0102", "0103"));
}

TEST_F(DirCodeReports, MakeTheCallsThatTheyMakeWithoutAWindow) {
  Choose("cboField_0", "Display Name");
  Choose("cboFilter_0", "begins with");
  Type("txtFrom_0", "Apartment 10");
  trace_.clear();
  Click("runButton");
  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  DirCodeReport report(*session, kUnit);
  ASSERT_TRUE(report.Compose().done());  // as the window has shown all rows before
  ASSERT_TRUE(report.Run().done());
  report.Narrow({"Display Name begins with Apartment 10"});
  ASSERT_TRUE(report.Compose().done());
  ASSERT_TRUE(report.Run().done());
  for (const char* operation : {"pbGenSql", "pvDirCodeReportResult"}) {
    const std::vector<std::string> shown = ReportIn(trace_, operation);
    ASSERT_GT(shown.size(), 10U) << operation;
    EXPECT_EQ(shown, ReportIn(headless, operation));
  }
}

/// A table of that many rows, with a column that no page is wide enough for.
Table LongTable(int count) {
  Table table;
  table.columns = {{"Number", "number"}, {"Text", "text"}};
  for (int row = 0; row < count; ++row) {
    table.rows.push_back({std::int32_t{row}, std::string(300, 'W')});
  }
  return table;
}

int PagesIn(const QString& file) {
  QFile read(file);
  EXPECT_TRUE(read.open(QIODevice::ReadOnly));
  return static_cast<int>(read.readAll().count("/Type /Page\n"));
}

TEST(TablePrinters, BreakATableIntoPages) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("table.pdf"));
  int told = 0;
  {
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    PrintTable(printer, QStringLiteral("Table"), LongTable(500),
               [&told](std::int64_t done, std::int64_t total) {
                 EXPECT_EQ(total, 500);
                 told = static_cast<int>(done);
                 return true;
               });
  }
  EXPECT_EQ(told, 500);
  EXPECT_GT(PagesIn(file), 5);
  EXPECT_LT(PagesIn(file), 20);
}

TEST(Papers, SayWhatPrintingNeedsWhereItIsNotThere) {
  const QTemporaryDir folder;
  const std::string library = folder.filePath(QStringLiteral("libmissing.so")).toStdString();
  try {
    (void)MakePaper(library);
    FAIL() << "made";
  } catch (const FailureError& error) {
    EXPECT_THAT(error.what(), StartsWith("Printing needs '" + library + "' and Qt's library"));
  }
}

TEST(TablePrinters, EndWhenTheyAreCancelled) {
  QBuffer bytes;
  ASSERT_TRUE(bytes.open(QIODevice::WriteOnly));
  QPdfWriter writer(&bytes);
  EXPECT_THROW(PrintTable(writer, {}, LongTable(10),
                          [](std::int64_t done, std::int64_t) { return done < 5; }),
               CancelledError);
}

TEST(TablePrinters, SayWhenTheDeviceTakesNothing) {
  const QTemporaryDir folder;
  QPdfWriter writer(folder.filePath(QStringLiteral("missing/table.pdf")));
  EXPECT_THROW(PrintTable(writer, {}, LongTable(1), {}), FailureError);
}

}  // namespace
}  // namespace qorhost::test
