// The program in German, walked through: whatever it shows on its screens is German, but for what
// stays as it is, of which there is a list.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSet>
#include <QTableView>

#include "host/desktop/binding/date_field.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/import_page.h"
#include "host/desktop/screens/merge_page.h"
#include "host/desktop/shell/language.h"
#include "tests/host/desktop/cut_texts.h"
#include "tests/host/desktop/desktop_fixture.h"
#include "tests/host/desktop/translation_file.h"

namespace qorhost::test {
namespace {

/// A text that stays English, and why.
struct StaysAsItIs {
  const char* form;
  const char* reason;
};

constexpr StaysAsItIs kStays[] = {
    {"Entry Panel [0-9]+", "a type of units that the store has"},
    {"<Add New>|<None>|<Unassigned>|Unassigned", "an entry that controllers make and look for"},
    {"Full Access|No Access", "a schedule that every unit has under this name"},
    {"Tenants|CredentialBank|DirectoryCode|DOORS|Schedules|TenantGroup|Units|UnitSettings|"
     "UNITTYPES",
     "a table of the store"},
    {"Front Entrance Door|Service Corridor Level Two", "a name that the store keeps, of a door"},
    {"([A-Za-z]+: [0-9]+ (neu|geändert|gelöscht)(; )?)+",
     "tables of the store and what became of "
     "their rows"},
    {"You must .*|Cannot .*|This .*", "what a controller says"},
};

/// Parts of a text that stay as they are, and why.
constexpr StaysAsItIs kPartsThatStay[] = {
    {"Corvin 30-Bit Card|Standard 26-Bit Card|Transmitter",
     "a type of credentials: controllers find it by this name"},
    {"„[^“]*“", "a value as it was entered"},
    {"(UPDATE|DELETE FROM) [A-Za-z]+ .*", "a statement"},
    {"^Facility Code ", "a heading of the person's own file"},
};

/// Widgets that show what others have written.
struct WidgetOfOthers {
  const char* name;
  const char* reason;
};

constexpr WidgetOfOthers kOfOthers[] = {
    {"standsFor", "headings as a file has them"},
    {"column", "headings of the person's own file"},
    {"preview", "cells and headings of the person's own file"},
    {"proposal", "headings as a file has them"},
    {"unitChooser", "names of units"},
    {"fileName", "the name of a file"},
    {"cboActivate", "names of doors"},
    {"cboType_0", "types of credentials as controllers list them"},
};

/// Of one letter is an initial.
QStringList WordsIn(const QString& text) {
  static const QRegularExpression kNoLetters(QStringLiteral("[^A-Za-zÄÖÜäöüß]+"));
  QStringList words =
      QString(text).remove(QLatin1Char('&')).toLower().split(kNoLetters, Qt::SkipEmptyParts);
  words.removeIf([](const QString& word) { return word.size() == 1; });
  return words;
}

/// Words of the program's English texts that are none of its German ones.
const QSet<QString>& EnglishWords() {
  static const QSet<QString> words = [] {
    QSet<QString> english;
    QSet<QString> german;
    for (const Translated& one : ReadTranslation(QStringLiteral(QORDESK_TRANSLATION))) {
      for (const QString& word : WordsIn(one.source)) {
        english.insert(word);
      }
      static const QRegularExpression kPlace(QStringLiteral("\\{[a-z ]+\\}"));
      for (const QString& word : WordsIn(QString(one.text).remove(kPlace))) {
        german.insert(word);
      }
    }
    return english.subtract(german);
  }();
  return words;
}

bool IsLeft(const QString& text) {
  for (const StaysAsItIs& one : kStays) {
    const QString form = QRegularExpression::anchoredPattern(QString::fromUtf8(one.form));
    if (QRegularExpression(form, QRegularExpression::DotMatchesEverythingOption)
            .match(text)
            .hasMatch()) {
      return true;
    }
  }
  return false;
}

QString WithoutWhatStays(QString text) {
  for (const StaysAsItIs& part : kPartsThatStay) {
    text.remove(QRegularExpression(QString::fromUtf8(part.form)));
  }
  return text;
}

/// At each size of its texts, in percent.
class GermanWalk : public DesktopTest, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    if (!german_.isTranslated()) {
      GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
    }
    ASSERT_GT(EnglishWords().size(), 300);
    MakeWindow();  // again: what was made before is English
    window().SetAppearance({Theme::kLight, GetParam()});
    LayOut();
    ExpectNothingCut(window(), "start");
    OpenDemoAt(QStringLiteral("overview"));
  }

  void Look(const QString& text, const std::string& where) {
    ++looked_;
    if (IsLeft(text)) {
      return;
    }
    for (const QString& word : WordsIn(WithoutWhatStays(text))) {
      EXPECT_FALSE(EnglishWords().contains(word))
          << where << ": " << text.toStdString() << " (" << word.toStdString() << ")";
    }
  }
  void LookAt(const QWidget& root, const std::string& where);
  void LookAt(const QAbstractItemView& view, const std::string& where);
  void LookAt(const std::string& where) { LookAt(window(), where); }
  void TearDown() override { window().SetAppearance({}); }
  void ClickRow(const char* table, int row, Qt::KeyboardModifier key = Qt::NoModifier) {
    auto& view = Find<QTableView>(table);
    int column = 0;
    while (view.isColumnHidden(column)) {
      ++column;
    }
    QTest::mouseClick(view.viewport(), Qt::LeftButton, key,
                      view.visualRect(view.model()->index(row, column)).center());
    Settle();
  }

  Language german_{QStringLiteral("de")};
  int looked_ = 0;
};

void GermanWalk::LookAt(const QAbstractItemView& view, const std::string& where) {
  constexpr int kMostRows = 200;
  const QAbstractItemModel& model = *view.model();
  for (int column = 0; column < model.columnCount(); ++column) {
    const auto* table = qobject_cast<const QTableView*>(&view);
    if (table != nullptr && table->isColumnHidden(column)) {
      continue;
    }
    if (table != nullptr) {
      Look(model.headerData(column, Qt::Horizontal).toString(), where);
    }
    for (int row = 0; row < std::min(model.rowCount(), kMostRows); ++row) {
      Look(model.index(row, column).data().toString(), where);
    }
  }
}

void GermanWalk::LookAt(const QWidget& root, const std::string& where) {
  ExpectNothingCut(root, where);
  for (const QWidget* widget : root.findChildren<QWidget*>()) {
    const bool isOfOthers = std::any_of(
        std::begin(kOfOthers), std::end(kOfOthers),
        [widget](const auto& one) { return widget->objectName() == QLatin1String(one.name); });
    const bool isOfQt = widget->objectName().startsWith(QLatin1String("qt_"));
    if (!widget->isVisible() || isOfOthers || isOfQt ||
        qobject_cast<const QHeaderView*>(widget) != nullptr) {
      continue;
    }
    const std::string at = where + ", " + widget->objectName().toStdString();
    Look(widget->toolTip(), at);
    Look(widget->accessibleName(), at);
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
      Look(label->text(), at);
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
      Look(button->text(), at);
    } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
      Look(group->title(), at);
    } else if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
      Look(line->placeholderText(), at);
    } else if (const auto* bar = qobject_cast<const QProgressBar*>(widget)) {
      Look(bar->format(), at);
    } else if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
      for (int entry = 0; entry < combo->count(); ++entry) {
        Look(combo->itemText(entry), at);
      }
    } else if (const auto* view = qobject_cast<const QAbstractItemView*>(widget)) {
      if (view->model() != nullptr) {
        LookAt(*view, at);
      }
    }
  }
}

TEST_P(GermanWalk, EveryScreenAsItOpens) {
  GiveACard("9021");  // so that steps and history have rows
  for (const ScreenEntry& screen : Screens()) {
    window().ShowScreen(QString::fromLatin1(screen.key));
    Settle();
    LookAt(screen.key);
    ExpectNoScrollingSideways(screen.key);
  }
  constexpr int kManyTexts = 1000;
  EXPECT_GT(looked_, kManyTexts);
}

TEST_P(GermanWalk, StepsAndEntriesOfTheHistory) {
  GiveACard("9021");
  window().ShowScreen(QStringLiteral("steps"));
  EXPECT_EQ(Find<QTableView>("steps").model()->index(0, 3).data().toString(),
            QStringLiteral("Mieter programmieren"));
  window().ShowScreen(QStringLiteral("history"));
  const QAbstractItemModel& entries = *Find<QTableView>("entries").model();
  EXPECT_EQ(entries.index(1, 4).data().toString(),
            QStringLiteral("Standard 26-Bit Card 9021 ausgegeben"));
  EXPECT_EQ(entries.index(1, 5).data().toString(), QStringLiteral("CredentialBank: 1 neu"));
  for (int row = 0; row < entries.rowCount(); ++row) {
    ClickRow("entries", row);
    LookAt("history, entry " + std::to_string(row));
  }
}

TEST_P(GermanWalk, TenantsAndWhatAChangeWouldDo) {
  window().ShowScreen(QStringLiteral("tenants"));
  ClickRow("tenants", 0);
  LookAt("a tenant");
  ClickRow("tenants", 1, Qt::ControlModifier);
  Click("active");
  answers_->With([this](QDialog& dialog) {
    LookAt(dialog, "changes");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Click("saveButton");
  LookAt("several tenants");
}

TEST_P(GermanWalk, ReportsWithConditions) {
  for (const char* report : {"credential_report", "dir_code_report"}) {
    window().ShowScreen(QString::fromLatin1(report));
    auto& field = Find<QComboBox>("cboField_0");
    for (int entry = 0; entry < field.count(); ++entry) {
      Choose("cboField_0", field.itemText(entry).toUtf8().constData());
      LookAt(std::string(report) + ", field " + std::to_string(entry));
      const auto& filter = Find<QComboBox>("cboFilter_0");
      for (int kind = 0; kind < filter.count(); ++kind) {
        Choose("cboFilter_0", filter.itemText(kind).toUtf8().constData());
        LayOut();
        ExpectNothingCut(page(), report);
      }
    }
  }
  Choose("cboField_0", "Letzter Tag");
  Choose("cboFilter_0", "zwischen");
  QTest::mouseClick(&Find<DateField>("dtpDateFrom_0").check(), Qt::LeftButton, Qt::NoModifier,
                    {8, 8});
  Click("runButton");
  EXPECT_THAT(Marked(), testing::HasSubstr("„Letzter Tag zwischen und 20"));
  LookAt("report with a condition that is wrong");
}

TEST_P(GermanWalk, AMergeAndItsDifferences) {
  const std::filesystem::path unit = WriteChangedUnit();
  window().ShowScreen(QStringLiteral("merge"));
  dynamic_cast<MergePage&>(page()).Open(unit);
  const int rows = Find<QTableView>("differences").model()->rowCount();
  ASSERT_GE(rows, 3);
  for (int row = 0; row < rows; ++row) {
    ClickRow("differences", row);
    LookAt("merge, difference " + std::to_string(row));
  }
}

TEST_P(GermanWalk, AStoreThatIsChecked) {
  SpoilCards();
  answers_->With([this](QDialog& dialog) {
    LookAt(dialog, "faults");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  ChooseInMenu("Bestand prüfen…");
  window().ShowScreen(QStringLiteral("building"));
  const int rows = Find<QTableView>("schedules").model()->rowCount();
  for (int row = 0; row < rows; ++row) {
    ClickRow("schedules", row);
    LookAt("schedule " + std::to_string(row));
  }
}

TEST_P(GermanWalk, AnImportThatIsChecked) {
  const std::filesystem::path residents = WriteResidents();
  window().ShowScreen(QStringLiteral("import"));
  dynamic_cast<ImportPage&>(page()).Open(residents);
  Click("checkButton");
  LookAt("import with an unknown heading");
  Choose("standsFor", "Name");
  Click("checkButton");
  LookAt("import, checked");
}

TEST_P(GermanWalk, DialogsOfTheStoreAndOfALease) {
  answers_->With([this](QDialog& dialog) {
    LookAt(dialog, "server");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  ChooseInMenu("Server öffnen…");
  window().ShowScreen(QStringLiteral("tenants"));
  ClickRow("tenants", 0);
  answers_->With([this](QDialog& dialog) {
    LookAt(dialog, "end of a lease");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Click("endButton");
}

INSTANTIATE_TEST_SUITE_P(Text, GermanWalk, testing::Values(100, 150));

}  // namespace
}  // namespace qorhost::test
