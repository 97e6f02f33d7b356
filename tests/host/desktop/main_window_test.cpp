// The window around the screens: stores, units, what is remembered, what goes wrong.
#include <gmock/gmock.h>

#include <QActionGroup>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QTableWidget>
#include <fstream>
#include <set>

#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

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
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(File("missing.db")));
  Click("demoButton");
  EXPECT_NE(window().place(), nullptr);
}

TEST_F(Windows, AStoreThatVanishesIsToldAndTheEntryStays) {
  OpenDemoAt(QStringLiteral("credentials"));
  Type("txtPINStart", "9001");
  std::filesystem::rename(File("building.db"), File("elsewhere.db"));
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), testing::Not(IsEmpty()));
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
