// A new store from another application's file, in the window.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QDir>
#include <QTableView>
#include <fstream>
#include <iterator>

#include "host/desktop/binding/qt_text.h"
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
    EXPECT_FALSE(In<QComboBox>(dialog, "movedCodePage").isVisible());
    EXPECT_FALSE(In<QCheckBox>(dialog, "skipBadRows").isVisible());
    Press(dialog, "goButton");
  });
  answers_->Type(QString::fromStdString(File("moved.db").string()));
  ChooseInMenu("New from existing building…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants"), "120");
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "4");
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
    EXPECT_GT(In<QTableView>(dialog, "movedCells").model()->rowCount(), 52);
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
  ChooseInMenu("New from existing building…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants"), "24");
  std::ifstream in(File("odd.csv"));
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  EXPECT_THAT(text, HasSubstr("duplicate-key"));
}

TEST_F(BringingIn, ABuildingBecomesAStoreOnAServer) {
  if (!WhyNoServer().empty()) {
    GTEST_SKIP() << WhyNoServer();
  }
  const std::string name = NewServerName();
  answers_->Type(Sample("encoded-2000.mdb"));
  answers_->With([](QDialog& dialog) { Press(dialog, "goOnServerButton"); });
  answers_->Type(QString::fromStdString(name));
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
  const DesktopFile file{{units}, 1252};
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
