// A new store from another application's file, in the window.
#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QHelpEvent>
#include <QTableView>
#include <QToolTip>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/language.h"
#include "host/desktop/shell/moving_dialog.h"
#include "tests/host/desktop/desktop_fixture.h"
#include "tests/host/files/desktop_file/refused_files.h"
#include "tests/host/store/store_names.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class BringingIn : public DesktopTest {
 protected:
  void SetUp() override {
    if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
      GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
    }
  }
  static QString Sample(const char* name) {
    return QStringLiteral(QORHOST_DESKTOP_SAMPLES "/") + QString::fromLatin1(name);
  }
  template <typename Widget>
  static Widget& In(QDialog& dialog, const char* name) {
    auto* found = dialog.findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr) {
      throw std::logic_error(std::string("there is no widget ") + name);
    }
    return *found;
  }
  /// As a person reads it: a row of cells, with a stroke between them.
  static std::vector<std::string> CellsIn(QDialog& dialog) {
    const QAbstractItemModel& model = *In<QTableView>(dialog, "movedCells").model();
    std::vector<std::string> rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column) {
        cells.append(model.index(row, column).data().toString());
      }
      rows.push_back(cells.join(QStringLiteral(" | ")).toStdString());
    }
    return rows;
  }
  /// What is told when the mouse rests on a cell.
  static QString TipAt(QDialog& dialog, int row, int column) {
    auto& view = In<QTableView>(dialog, "movedCells");
    const QPoint place = view.visualRect(view.model()->index(row, column)).center();
    QHelpEvent rests(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view.viewport(), &rests);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  }
  static void ExpectTheLongestReasonToBeTold(QDialog& dialog) {
    auto& view = In<QTableView>(dialog, "movedCells");
    const int reason = view.model()->columnCount() - 1;
    int row = 0;
    QString longest;
    for (int at = 0; at < view.model()->rowCount(); ++at) {
      const QString text = view.model()->index(at, reason).data().toString();
      if (text.size() > longest.size()) {
        longest = text;
        row = at;
      }
    }
    QCoreApplication::processEvents();  // else the rows are not laid out yet
    view.scrollTo(view.model()->index(row, reason));
    EXPECT_EQ(TipAt(dialog, row, reason).toStdString(), longest.toStdString())
        << "what is cut is told";
    view.scrollToTop();
  }
  static void Press(QDialog& dialog, const char* button) {
    QTest::mouseClick(&In<QPushButton>(dialog, button), Qt::LeftButton);
  }
};

TEST_F(BringingIn, ABuildingBecomesAStoreThatIsOpen) {
  answers_->Type(Sample("building-2000.mdb"));
  answers_->With([](QDialog& dialog) {
    EXPECT_THAT(In<QLabel>(dialog, "movedSummary").text().toStdString(),
                HasSubstr("4 units, 120 tenants, 235 credentials, 50 directory codes to bring in; "
                          "0 rows refused, 3 cells adjusted"));
    // Three cells adjusted, two kept, two tables and three columns left.
    EXPECT_EQ(In<QTableView>(dialog, "movedCells").model()->rowCount(), 3 + 2 + 2 + 3);
    EXPECT_THAT(CellsIn(dialog),
                testing::Contains(testing::StartsWith(
                    "adjusted | TenantSelectionFields | 18 | DisplaySeq | 3 | 20 | a field that")))
        << "with what is stored instead";
    EXPECT_FALSE(In<QComboBox>(dialog, "movedCodePage").isVisible());
    EXPECT_FALSE(In<QCheckBox>(dialog, "skipBadRows").isVisible());
    Press(dialog, "goButton");
  });
  answers_->Type(QString::fromStdString(File("moved.db").string()));
  std::vector<std::string> faults;
  answers_->With([&](QDialog& dialog) {
    const QAbstractItemModel& model = *dialog.findChild<QTableView*>()->model();
    for (int row = 0; row < model.rowCount(); ++row) {
      faults.push_back(model.index(row, 1).data().toString().toStdString());
    }
    dialog.reject();
  });
  ChooseInMenu("New from existing building…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_THAT(faults,
              testing::AllOf(testing::SizeIs(2),
                             testing::Each(HasSubstr("has the door 4, which is not there"))))
      << "what was wrong in the file already";
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants"), "120");
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "4");
}

TEST_F(BringingIn, WhatIsChosenStaysUntilThereIsAStore) {
  std::ofstream(File("taken.db")) << "mine";
  answers_->Type(Sample("building-2000.mdb"));
  const auto summaryOf = [](QDialog& dialog) {
    return In<QLabel>(dialog, "movedSummary").text().toStdString();
  };
  answers_->With([](QDialog& dialog) {
    auto& units = In<QComboBox>(dialog, "movedUnits");
    units.setCurrentIndex(units.findData(7));
    Q_EMIT units.activated(units.currentIndex());
    Press(dialog, "goButton");
  });
  answers_->With([](QDialog& place) { place.reject(); });
  answers_->With([&](QDialog& dialog) {
    EXPECT_THAT(summaryOf(dialog), HasSubstr("1 units")) << "it is there again";
    Press(dialog, "goButton");
  });
  answers_->Type(QString::fromStdString(File("taken.db").string()));
  answers_->Click(QMessageBox::Ok);
  answers_->With([&](QDialog& dialog) {
    EXPECT_THAT(summaryOf(dialog), HasSubstr("1 units")) << "where no store can be, too";
    Press(dialog, "goButton");
  });
  answers_->Type(QString::fromStdString(File("seven.db").string()));
  ChooseInMenu("New from existing building…");
  EXPECT_THAT(answers_->LastText(), HasSubstr("No store can be made at"));
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cell("SELECT UnitKey FROM Units"), "7");
}

TEST_F(BringingIn, OneUnitAloneComesWhenItIsChosen) {
  answers_->Type(Sample("building-2000.mdb"));
  answers_->With([](QDialog& dialog) {
    auto& units = In<QComboBox>(dialog, "movedUnits");
    EXPECT_EQ(units.count(), 5);
    units.setCurrentIndex(units.findData(7));
    Q_EMIT units.activated(units.currentIndex());
    EXPECT_THAT(In<QLabel>(dialog, "movedSummary").text().toStdString(), HasSubstr("1 units"));
    Press(dialog, "goButton");
  });
  answers_->Type(QString::fromStdString(File("seven.db").string()));
  Click("existingButton");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cell("SELECT Count(*) FROM CredentialBank"), "68");
  EXPECT_EQ(Cell("SELECT UnitKey FROM Units"), "7");
}

TEST_F(BringingIn, RefusedRowsAreShownSavedAndLeftOutWhenThatIsSaid) {
  answers_->Type(Sample("building-odd.mdb"));
  const QString report = QString::fromStdString(File("odd.csv").string());
  answers_->With([](QDialog& dialog) {
    EXPECT_FALSE(In<QPushButton>(dialog, "goButton").isEnabled());
    const std::vector<std::string> cells = CellsIn(dialog);
    ASSERT_GT(cells.size(), 52U);
    EXPECT_EQ(In<QCheckBox>(dialog, "skipBadRows").text().toStdString(),
              "&Leave out the refused rows (52)");
    EXPECT_TRUE(std::is_partitioned(cells.begin(), cells.end(), [](const std::string& row) {
      return row.starts_with("refused | ");
    })) << "those that the choice is about stand first";
    EXPECT_THAT(cells.front(), testing::StartsWith("refused | Units | 8 | UnitKey | 2 | "));
    ExpectTheLongestReasonToBeTold(dialog);
    // As docs/moving-in.md shows it: with a palette of 256 colours.
    EXPECT_TRUE(QDir().mkpath(QStringLiteral(QORDESK_PICTURES)));
    EXPECT_TRUE(dialog.grab()
                    .toImage()
                    .convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither)
                    .save(QStringLiteral(QORDESK_PICTURES "/moving-in.png"), "PNG", 0));
    // Behind this look: the next one sees the dialog that comes up.
    QTimer::singleShot(0, &dialog, [&dialog] { Press(dialog, "saveMovingReport"); });
  });
  answers_->Type(report);
  answers_->With([](QDialog& dialog) {
    auto& skips = In<QCheckBox>(dialog, "skipBadRows");
    QTest::mouseClick(&skips, Qt::LeftButton, Qt::NoModifier, {8, skips.height() / 2});
    EXPECT_TRUE(In<QPushButton>(dialog, "goButton").isEnabled());
    Press(dialog, "goButton");
  });
  answers_->Type(QString::fromStdString(File("odd.db").string()));
  answers_->With([](QDialog& dialog) { dialog.reject(); });  // with what is wrong in the file
  ChooseInMenu("New from existing building…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants"), "24");
  std::ifstream in(File("odd.csv"));
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  EXPECT_THAT(text, HasSubstr("duplicate-key"));
}

TEST_F(BringingIn, WhyARowIsOddIsToldInTheLanguageOfTheProgram) {
  const Language german(QStringLiteral("de"));
  if (!german.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  MovingOrder order;
  order.file = FromQt(Sample("building-odd.mdb"));
  order.reading.reader = QORHOST_DESKTOP_READER;
  const MovingPlan plan = PlanMoving(order);
  MovingDialog dialog(&window(), order, plan, [](const MovingOrder&) { return std::nullopt; }, {});
  dialog.show();
  EXPECT_EQ(In<QCheckBox>(dialog, "skipBadRows").text().toStdString(),
            "Die abgelehnten Zeilen &weglassen (52)");
  const QAbstractItemModel& model = *In<QTableView>(dialog, "movedCells").model();
  QStringList titles;
  for (int column = 0; column < model.columnCount(); ++column) {
    titles.append(model.headerData(column, Qt::Horizontal).toString());
  }
  EXPECT_EQ(titles.join(QLatin1Char(' ')).toStdString(),
            "Ergebnis Tabelle Zeile Spalte Wert Stattdessen Grund");
  std::set<std::string> reasons;
  for (const SettledCell& cell : plan.settled().named()) reasons.insert(cell.reason);
  const std::vector<std::string> cells = CellsIn(dialog);
  EXPECT_THAT(cells, testing::Contains("abgelehnt | CredentialBank | 12 | PINNo | 70000 |  | "
                                       "Ausweise haben Nummern von 1 bis 65535"));
  EXPECT_THAT(cells, testing::Contains(testing::StartsWith(
                         "angepasst | TenantGroup | 4 | IsGroupZero | Ja | Nein | ")));
  EXPECT_THAT(cells, testing::Contains(testing::StartsWith(
                         "angepasst | Tenants | 3 | CREDENTIALID1 | 9999 | Null (leer) | ")));
  for (int row = 0; row < model.rowCount(); ++row) {
    const std::string reason =
        model.index(row, model.columnCount() - 1).data().toString().toStdString();
    EXPECT_FALSE(reasons.contains(reason)) << reason << " stays English";
  }
}

TEST_F(BringingIn, ABuildingBecomesAStoreOnAServer) {
  if (!WhyNoServer().empty()) {
    GTEST_SKIP() << WhyNoServer();
  }
  const std::string name = NewServerName();
  answers_->Type(Sample("encoded-2000.mdb"));
  answers_->With([](QDialog& dialog) { Press(dialog, "goOnServerButton"); });
  answers_->Type(QString::fromStdString(name));
  answers_->With([](QDialog& dialog) { dialog.reject(); });  // with what is wrong in the file
  ChooseInMenu("New from existing building…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(window().place()->file(), name);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants"), "8");
}

TEST_F(BringingIn, AFileThatIsOpenElsewhereIsToldOf) {
  std::filesystem::copy_file(FromQt(Sample("encoded-2000.mdb")), File("building.mdb"));
  const auto told = [&] {
    std::string text;
    answers_->Type(QString::fromStdString(File("building.mdb").string()));
    answers_->With([&](QDialog& dialog) {
      text = In<QLabel>(dialog, "movedSummary").text().toStdString();
      dialog.reject();
    });
    ChooseInMenu("New from existing building…");
    return text;
  };
  EXPECT_THAT(told(), testing::Not(HasSubstr("open elsewhere")));
  std::ofstream(File("building.ldb")) << "a seat";
  EXPECT_THAT(told(), HasSubstr("seems to be open elsewhere, for building.ldb stands beside it"));
}

TEST_F(BringingIn, AReportTakesNeitherThePlaceOfTheFileNorOfAnOpenStore) {
  std::filesystem::copy_file(FromQt(Sample("encoded-2000.mdb")), File("building.mdb"));
  ASSERT_TRUE(window().CreateStoreAt(File("open.db"), true));
  for (const char* place : {"building.mdb", "open.db"}) {
    const auto size = std::filesystem::file_size(File(place));
    answers_->Type(QString::fromStdString(File("building.mdb").string()));
    answers_->With([](QDialog& dialog) {
      QTimer::singleShot(0, &dialog, [&dialog] { Press(dialog, "saveMovingReport"); });
    });
    answers_->Type(QString::fromStdString(File(place).string()));
    answers_->Click(QMessageBox::Yes);  // the dialog asks whether it is to be replaced
    answers_->Click(QMessageBox::Ok);
    answers_->With([](QDialog& dialog) { dialog.reject(); });
    ChooseInMenu("New from existing building…");
    EXPECT_THAT(answers_->LastText(), HasSubstr("The report is not saved.")) << place;
    EXPECT_EQ(std::filesystem::file_size(File(place)), size) << place;
  }
}

/// There is no sample of the oldest format: what would be read of one.
TEST_F(BringingIn, TheCodePageOfTheOldestFormatMayBeChosen) {
  DesktopTable units;
  units.name = "Units";
  units.columns = {{"UnitKey", DesktopType::kLong, false, 4}};
  units.rows = {{std::int64_t{1}}};
  units.count = 1;
  const DesktopFile file{{units}, DesktopCodePage{1252, false}};
  std::vector<unsigned> asked;
  MovingDialog dialog(&window(), {}, MovingPlan(file, "old.mdb", std::nullopt),
                      [&](const MovingOrder& order) {
                        asked.push_back(order.reading.codePage);
                        return MovingPlan(file, "old.mdb", order.unit);
                      },
                      {});
  dialog.show();
  auto& pages = In<QComboBox>(dialog, "movedCodePage");
  EXPECT_TRUE(pages.isVisible());
  EXPECT_EQ(pages.currentText().toStdString(), "1252, as the file says");
  for (const char* page : {"1250", "1252, as the file says"}) {
    pages.setCurrentIndex(pages.findText(QString::fromLatin1(page)));
    Q_EMIT pages.activated(pages.currentIndex());
  }
  EXPECT_THAT(asked, testing::ElementsAre(1250U, 0U));
  MovingDialog guessed(&window(), {},
                       MovingPlan({{units}, DesktopCodePage{1252, true}}, "old.mdb", std::nullopt),
                       [](const MovingOrder&) { return std::nullopt; }, {});
  EXPECT_EQ(In<QComboBox>(guessed, "movedCodePage").currentText().toStdString(),
            "1252, for the file says none that is known");
}

TEST_F(BringingIn, AFileThatHoldsNoBuildingIsToldAndNothingIsMade) {
  for (const RefusedFile& refused :
       MakeRefusedFiles(QORHOST_DESKTOP_SAMPLES, File("none").parent_path())) {
    answers_->Type(ToQt(refused.file.string()));
    answers_->Click(QMessageBox::Ok);
    ChooseInMenu("New from existing building…");
    EXPECT_THAT(answers_->LastText(), HasSubstr("cannot be brought in"));
    EXPECT_EQ(window().place(), nullptr);
  }
}

}  // namespace
}  // namespace qorhost::test
