// The window around the screens: stores, units, what is remembered, what goes wrong.
#include <gmock/gmock.h>

#include <QActionGroup>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QProgressBar>
#include <QTableWidget>
#include <fstream>
#include <set>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/shell/page_room.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class Windows : public DesktopTest {};

TEST_F(Windows, TheDemoBuildingOpensAtItsOverview) {
  Click("demoButton");
  ASSERT_NE(window().place(), nullptr);
  const auto bars = page().findChildren<QProgressBar*>();
  EXPECT_EQ(bars.size(), 3);
  EXPECT_THAT(bars.front()->text().toStdString(), HasSubstr("codes in use"));
  EXPECT_EQ(Find<QComboBox>("unitChooser").count(), 3);
}

TEST_F(Windows, WhatIsNoStoreIsToldAndTheProgramGoesOn) {
  std::ofstream(File("notes.db")) << "not a store at all, but longer than a page header would be";
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(File("notes.db")));
  EXPECT_EQ(answers_->seen().back().icon, QMessageBox::Critical);
  EXPECT_THAT(answers_->LastText(), HasSubstr("the file is not a store: choose another one"));
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(File("missing.db")));
  EXPECT_THAT(answers_->LastText(), HasSubstr("there is no database"));
  Click("demoButton");
  EXPECT_NE(window().place(), nullptr);
}

TEST_F(Windows, AStoreThatVanishesIsToldAndTheEntryStays) {
  OpenDemoAt(QStringLiteral("credentials"));
  Type("txtPINStart", "9001");
  std::filesystem::rename(File("building.db"), File("elsewhere.db"));
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(),
              HasSubstr("The store was moved or replaced meanwhile and has to be opened again."));
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
}

TEST_F(Windows, LayoutStoreUnitAndScreenAreRemembered) {
  OpenDemoAt(QStringLiteral("dir_codes"));
  window().resize(1111, 777);
  window().SetAppearance({Theme::kDark, 125});
  EXPECT_TRUE(window().close());
  MakeWindow();
  window().OpenLastStore();
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(window().place()->unitKey(), kUnit);
  EXPECT_EQ(page().objectName(), QStringLiteral("DirCodePage"));
  EXPECT_EQ(window().size(), QSize(1111, 777));
  EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 100);
  window().SetAppearance({});
}

TEST_F(Windows, EachStoreIsOpenedAtTheUnitThatWasItsLast) {
  OpenDemoAt(QStringLiteral("overview"));
  const std::int32_t other = Find<QComboBox>("unitChooser").itemData(2).toInt();
  ASSERT_NE(other, kUnit);
  ASSERT_TRUE(window().CreateStoreAt(File("another.db"), true));
  EXPECT_NE(window().place()->unitKey(), kUnit);  // it has none yet, so the first one
  window().ShowUnit(other);
  ASSERT_TRUE(window().OpenStore(File("building.db")));
  EXPECT_EQ(window().place()->unitKey(), kUnit);
  MakeWindow();
  ASSERT_TRUE(window().OpenStore(File(".") / "another.db"));
  EXPECT_EQ(window().place()->unitKey(), other);
  ASSERT_TRUE(window().OpenStore(File("building.db")));
  EXPECT_EQ(window().place()->unitKey(), kUnit);
}

TEST_F(Windows, TextOfTwiceTheSizeLeavesTheWindowOnTheScreen) {
  OpenDemoAt(QStringLiteral("import"));
  const QSize before = window().size();
  const QSize room = RoomOnScreen(window()).size();
  window().SetAppearance({Theme::kLight, 200});
  for (const ScreenEntry& screen : Screens()) {
    window().ShowScreen(QString::fromLatin1(screen.key));
    Settle();
    EXPECT_LE(window().minimumSizeHint().width(), room.width()) << screen.key;
    EXPECT_LE(window().minimumSizeHint().height(), room.height()) << screen.key;
    EXPECT_LE(window().width(), room.width()) << screen.key;
  }
  window().SetAppearance({});
  Settle();
  EXPECT_LE(window().width(), std::max(before.width(), room.width()));
}

TEST_F(Windows, ACapacityThatIsExceededIsAWarning) {
  OpenDemoAt(QStringLiteral("overview"));
  const QColor usual = page().findChildren<QProgressBar*>().at(1)->palette().color(
      QPalette::Active, QPalette::Highlight);
  (void)window().place()->session().sql().Change("UPDATE UNITTYPES SET TOTAL='MQ=='", std::nullopt);
  QTest::keyClick(&window(), Qt::Key_F5);
  const QProgressBar& bar = *page().findChildren<QProgressBar*>().at(1);
  EXPECT_THAT(bar.text().toStdString(), HasSubstr(" of 1 codes in use: "));
  EXPECT_THAT(bar.text().toStdString(), HasSubstr(" too many"));
  EXPECT_NE(bar.palette().color(QPalette::Active, QPalette::Highlight), usual);
}

TEST_F(Windows, DialogsBeginInTheFolderOfTheLastFile) {
  std::filesystem::create_directory(File("plans"));
  std::filesystem::create_directory(File("elsewhere"));
  ASSERT_TRUE(window().CreateStoreAt(File("plans") / "building.db", false));
  ASSERT_TRUE(window().CloseStore());
  answers_->Type(QString::fromStdString((File("plans") / "building.db").string()));
  ChooseInMenu("Open…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_TRUE(window().close());
  SetFolderOfFiles(QString::fromStdString(File("elsewhere").string()));
  MakeWindow();
  std::string begun;
  answers_->With([&begun](QDialog& dialog) {
    begun = FromQt(dynamic_cast<QFileDialog&>(dialog).directory().absolutePath());
    dialog.reject();
  });
  ChooseInMenu("Open…");
  EXPECT_EQ(begun, File("plans").string());
}

TEST_F(Windows, HelpAndVersionNeedNoScreen) {
  for (const char* asked : {"--help", "--version"}) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.remove(QStringLiteral("DISPLAY"));
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(QORDESK_PROGRAM), {QString::fromLatin1(asked)});
    constexpr int kLongest = 60000;  // milliseconds
    ASSERT_TRUE(program.waitForFinished(kLongest));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_THAT(program.readAllStandardOutput().toStdString(), HasSubstr("qordesk"));
  }
}

TEST_F(Windows, ClosingWithAnEntryAsks) {
  OpenDemoAt(QStringLiteral("credentials"));
  Type("txtPINStart", "9001");
  answers_->Click(QMessageBox::No);
  EXPECT_FALSE(window().close());
  EXPECT_TRUE(window().isVisible());
  answers_->Click(QMessageBox::Yes);
  EXPECT_TRUE(window().close());
}

TEST_F(Windows, AnotherUnitIsShownAfterAskingForTheEntry) {
  OpenDemoAt(QStringLiteral("credentials"));
  Type("txtPINStart", "9001");
  auto& units = Find<QComboBox>("unitChooser");
  answers_->Click(QMessageBox::No);
  QTest::keyClick(&units, Qt::Key_Up);
  EXPECT_EQ(window().place()->unitKey(), kUnit);
  EXPECT_EQ(units.currentData().toInt(), kUnit);
  answers_->Click(QMessageBox::Yes);
  QTest::keyClick(&units, Qt::Key_Up);
  EXPECT_EQ(window().place()->unitKey(), 1);
}

TEST_F(Windows, EveryScreenIsReachedByItsShortcut) {
  OpenDemoAt(QStringLiteral("overview"));
  std::set<std::string> seen;
  for (const ScreenEntry& screen : Screens()) {
    const QKeySequence keys(QString::fromLatin1(screen.shortcut));
    EXPECT_TRUE(seen.insert(screen.shortcut).second) << screen.shortcut;
    QTest::keySequence(&window(), keys);
    EXPECT_EQ(Find<QListWidget>("screenChooser").currentItem()->text(), TitleOf(screen));
    EXPECT_NE(window().page(), nullptr) << screen.key;
  }
}

TEST_F(Windows, TheMenusAreReachedByF10) {
  window().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  QTest::keyClick(&window(), Qt::Key_F10);
  QStringList titles;
  for (qsizetype menu = 0; menu < window().menuBar()->actions().size(); ++menu) {
    auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(open, nullptr);
    titles.append(open->title());
    QTest::keyClick(open, Qt::Key_Right);
  }
  EXPECT_EQ(titles, QStringList({QStringLiteral("Store"), QStringLiteral("Screens"),
                                 QStringLiteral("View")}));
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
}

TEST_F(Windows, TheViewMenuTicksWhatHolds) {
  Remembered(*settings_).SetLanguage(QStringLiteral("en"));
  MakeWindow();
  const auto ticked = [this] {
    QStringList texts;
    for (const QAction* action : window().findChildren<QAction*>()) {
      if (action->actionGroup() != nullptr && action->isChecked()) {
        texts.append(action->text());
      }
    }
    texts.sort();
    return texts.join(QStringLiteral(", ")).toStdString();
  };
  EXPECT_EQ(ticked(), "English, Light, Text at 100 %");
  ChooseInMenu("Dark");
  ChooseInMenu("Text at 150 %");
  EXPECT_EQ(ticked(), "Dark, English, Text at 150 %");
  window().SetAppearance({Theme::kLight, 125});
  ChooseInMenu("Deutsch");
  EXPECT_EQ(ticked(), "Deutsch, Light, Text at 125 %");
  MakeWindow();
  EXPECT_EQ(ticked(), "Deutsch, Light, Text at 100 %");  // a look is remembered by closing
  window().SetAppearance({});
}

}  // namespace
}  // namespace qorhost::test
