// The window without eyes or a mouse: what everything is called, letters with Alt, Tab.
#include <gmock/gmock.h>

#include <QAbstractSpinBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <set>

#include "host/desktop/screens/changes_dialog.h"
#include "host/desktop/screens/lease_end_dialog.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::IsSupersetOf;

/// What a person works in, not the parts that those are made of.
bool IsEditor(const QWidget& widget) {
  return widget.focusPolicy() != Qt::NoFocus && !widget.objectName().isEmpty() &&
         !widget.objectName().startsWith(QLatin1String("qt_")) &&
         (widget.inherits("QLineEdit") || widget.inherits("QPlainTextEdit") ||
          widget.inherits("QComboBox") || widget.inherits("QAbstractButton") ||
          widget.inherits("QAbstractSpinBox") || widget.inherits("QAbstractItemView") ||
          widget.inherits("qorhost::DateField"));
}

std::vector<const QWidget*> EditorsOn(const QWidget& on) {
  std::vector<const QWidget*> editors;
  for (const QWidget* widget : on.findChildren<QWidget*>()) {
    if (IsEditor(*widget)) {
      editors.push_back(widget);
    }
  }
  return editors;
}

/// Shown or not, as they are when something is chosen elsewhere. Returns the objects' names.
std::set<std::string> ExpectNames(const QWidget& on, const std::string& where) {
  std::set<std::string> looked;
  for (const QWidget* editor : EditorsOn(on)) {
    EXPECT_FALSE(CalledAs(*editor).isEmpty())
        << where << ": " << editor->objectName().toStdString();
    looked.insert(editor->objectName().toStdString());
  }
  return looked;
}

class Accessibility : public DesktopTest {
 protected:
  Accessibility() { OpenDemoAt(QStringLiteral("overview")); }

  /// Where Tab leads from the list of screens on, until it comes round. In a date it goes from part
  /// to part.
  std::set<const QWidget*> ReachedByTab() {
    constexpr int kMostKeys = 500;
    auto& first = Find<QListWidget>("screenChooser");
    first.setFocus();
    std::set<const QWidget*> reached;
    int keys = 0;
    do {
      reached.insert(window().focusWidget());
      QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
      ++keys;
    } while (window().focusWidget() != &first && keys < kMostKeys);
    EXPECT_LT(keys, kMostKeys) << "Tab does not come round";
    return reached;
  }
  void ExpectAllReached(const std::string& where) {
    const std::set<const QWidget*> reached = ReachedByTab();
    for (const QWidget* editor : EditorsOn(window())) {
      if (!editor->isVisible() || !editor->isEnabled() ||
          (editor->focusPolicy() & Qt::TabFocus) == 0) {
        continue;
      }
      EXPECT_TRUE(std::any_of(
          reached.begin(), reached.end(),
          [editor](const QWidget* one) { return one == editor || editor->isAncestorOf(one); }))
          << where << ": " << editor->objectName().toStdString();
    }
  }
};

TEST_F(Accessibility, EveryEditorOfAScreenHasAName) {
  std::set<std::string> looked;
  for (const ScreenEntry& screen : Screens()) {
    window().ShowScreen(QString::fromLatin1(screen.key));
    looked.merge(ExpectNames(page(), screen.key));
  }
  EXPECT_THAT(looked, IsSupersetOf({"txtFrom_0", "txtTo_4", "dtpDateFrom_2", "cboType_1"}));
}

TEST_F(Accessibility, WhatStandsAroundTheScreensHasNames) {
  window().calls().show();
  Settle();
  EXPECT_THAT(ExpectNames(window(), "window"),
              IsSupersetOf({"unitChooser", "screenChooser", "calls", "filterCalls", "wholeCall"}));
}

TEST_F(Accessibility, EveryEditorOfADialogHasAName) {
  Table changes;
  changes.columns = {{"Tenant", "tenant"}};
  const ChangesDialog asking(nullptr, QStringLiteral("1 tenant will be changed."), changes,
                             QStringLiteral("&Change"));
  EXPECT_THAT(ExpectNames(asking, "changes"), IsSupersetOf({"changes", "goButton"}));
  const LeaseEndDialog ending(nullptr, QStringLiteral("The lease of Rae Zoë ends."),
                              qorcred::FromCivil({2026, 1, 31, 0, 0, 0}));
  EXPECT_THAT(ExpectNames(ending, "end of a lease"),
              IsSupersetOf({"lastDay", "freesCards", "goButton"}));
}

TEST_F(Accessibility, NoTwoMnemonicsOfAScreenAreTheSame) {
  for (const ScreenEntry& screen : Screens()) {
    window().ShowScreen(QString::fromLatin1(screen.key));
    std::set<std::string> seen;
    for (const QWidget* widget : page().findChildren<QWidget*>()) {
      const QKeySequence key = QKeySequence::mnemonic(widget->property("text").toString());
      if (!widget->inherits("QLineEdit") && !key.isEmpty()) {
        EXPECT_TRUE(seen.insert(key.toString().toStdString()).second)
            << screen.key << " has " << key.toString().toStdString()
            << " twice: " << widget->objectName().toStdString();
      }
    }
  }
}

TEST_F(Accessibility, TabReachesEveryEditorOfEveryScreen) {
  window().activateWindow();
  for (const ScreenEntry& screen : Screens()) {
    window().ShowScreen(QString::fromLatin1(screen.key));
    Settle();
    ExpectAllReached(screen.key);
  }
  window().ShowScreen(QStringLiteral("credential_report"));
  Choose("cboField_0", "Card Number");
  Choose("cboFilter_0", "between");
  Choose("cboField_1", "Credential Type");
  ASSERT_TRUE(Find<QLineEdit>("txtTo_0").isVisible());
  ExpectAllReached("credential report with conditions");
  window().ShowScreen(QStringLiteral("dir_code_report"));
  Choose("cboField_0", "Directory Start Date");
  Choose("cboFilter_0", "between");
  Choose("cboField_4", "Directory Status");
  ASSERT_TRUE(Find<QWidget>("dtpDateTo_0").isVisible());
  ExpectAllReached("directory-code report with conditions");
}

TEST_F(Accessibility, TabGoesThroughACodeInTheOrderInWhichItIsRead) {
  window().ShowScreen(QStringLiteral("dir_codes"));
  const QStringList order{QStringLiteral("txtdirectorycode"), QStringLiteral("chkShowDirCode"),
                          QStringLiteral("txtDisplayName"),   QStringLiteral("chkShowDisplayName"),
                          QStringLiteral("txtPhoneNo"),       QStringLiteral("txtExtn"),
                          QStringLiteral("pvnTimeDelay"),     QStringLiteral("chkDND")};
  window().activateWindow();
  Find<QLineEdit>("txtdirectorycode").setFocus();
  for (const QString& name : order) {
    EXPECT_EQ(window().focusWidget()->objectName(), name);
    QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
  }
}

}  // namespace
}  // namespace qorhost::test
