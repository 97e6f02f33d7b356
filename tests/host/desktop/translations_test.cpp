// The program in German: every text is translated, nothing is lost on the way, and the screens hold
// it.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <set>

#include "host/desktop/shell/language.h"
#include "tests/host/desktop/desktop_fixture.h"
#include "tests/host/desktop/translation_file.h"

namespace qorhost::test {
namespace {

/// "%1", "{field}", each as often as it is there.
QStringList PlacesIn(const QString& text) {
  static const QRegularExpression kPlace(QStringLiteral("%[0-9n]|\\{[a-z]+\\}"));
  QStringList places;
  auto found = kPlace.globalMatch(text);
  while (found.hasNext()) {
    places.append(found.next().captured());
  }
  places.sort();
  return places;
}

TEST(Translations, LoseNoPlaceNoKeyAndNoEnd) {
  const std::vector<Translated> all = ReadTranslation(QStringLiteral(QORDESK_TRANSLATION));
  ASSERT_GT(all.size(), 400U);
  for (const Translated& one : all) {
    const std::string which = one.context.toStdString() + ": " + one.source.toStdString();
    EXPECT_FALSE(one.unfinished) << which;
    EXPECT_FALSE(one.text.isEmpty()) << which;
    EXPECT_EQ(PlacesIn(one.source), PlacesIn(one.text)) << which;
    EXPECT_EQ(QKeySequence::mnemonic(one.source).isEmpty(),
              QKeySequence::mnemonic(one.text).isEmpty())
        << which;
    for (const char* end : {".", ":", "…", "?", "\n"}) {
      EXPECT_EQ(one.source.endsWith(QString::fromUtf8(end)),
                one.text.endsWith(QString::fromUtf8(end)))
          << which;
    }
  }
}

TEST(Translations, HaveEveryTextOfTheProgram) {
  const QString tool = QStringLiteral(QORDESK_LUPDATE);
  if (tool.isEmpty()) {
    GTEST_SKIP() << "there is no lupdate (qt6-l10n-tools)";
  }
  const QTemporaryDir folder;
  const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
  ASSERT_TRUE(QFile::copy(QStringLiteral(QORDESK_TRANSLATION), fresh));
  QProcess collect;
  collect.setWorkingDirectory(QStringLiteral(QORCRED_SOURCES));
  collect.start(tool, {QStringLiteral("-I"), QStringLiteral("."), QStringLiteral("-locations"),
                       QStringLiteral("none"), QStringLiteral("-no-obsolete"),
                       QStringLiteral("host/desktop"), QStringLiteral("-ts"), fresh});
  constexpr int kLongest = 60000;  // milliseconds
  ASSERT_TRUE(collect.waitForFinished(kLongest));
  ASSERT_EQ(collect.exitCode(), 0) << collect.readAllStandardError().toStdString();
  const std::vector<Translated> all = ReadTranslation(fresh);
  for (const Translated& one : all) {
    EXPECT_FALSE(one.unfinished) << one.context.toStdString() << ": " << one.source.toStdString()
                                 << ": tools/translate collects it";
  }
  EXPECT_EQ(all.size(), ReadTranslation(QStringLiteral(QORDESK_TRANSLATION)).size());
}

// A box asks in German on a machine without Qt's own translations, too.
TEST(Translations, NameTheButtonsOfBoxesWithoutThoseOfQt) {
  if (const Language german(QStringLiteral("de")); !german.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  QTranslator own;
  ASSERT_TRUE(own.load(QStringLiteral(":/translations/qordesk_de.qm")));
  for (const auto& [english, german] :
       {std::pair("OK", "OK"), std::pair("Cancel", "Abbrechen"), std::pair("&Yes", "&Ja"),
        std::pair("&No", "&Nein"), std::pair("Close", "Schließen")}) {
    EXPECT_EQ(own.translate("QPlatformTheme", english), QString::fromUtf8(german));
  }
}

class InGerman : public DesktopTest {
 protected:
  InGerman() {
    MakeWindow();  // again: what was made before is English
  }

  Language german_{QStringLiteral("de")};
};

TEST_F(InGerman, EveryScreenHoldsItsTextsAndHasItsKeysOnce) {
  if (!german_.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  MakeWindow();
  OpenDemoAt(QStringLiteral("overview"));
  for (const ScreenEntry& screen : Screens()) {
    window().ShowScreen(QString::fromLatin1(screen.key));
    Settle();
    const QDir folder(QStringLiteral(QORDESK_PICTURES));
    ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
    EXPECT_TRUE(window().grab().save(
        folder.filePath(QStringLiteral("%1-german.png").arg(QString::fromLatin1(screen.key))),
        "PNG", 0));
    std::set<std::string> keys;
    for (const QWidget* widget : page().findChildren<QWidget*>()) {
      const QString text = widget->property("text").toString();
      const QKeySequence key = QKeySequence::mnemonic(text);
      if (!widget->inherits("QLineEdit") && !key.isEmpty()) {
        EXPECT_TRUE(keys.insert(key.toString().toStdString()).second)
            << screen.key << " has " << key.toString().toStdString()
            << " twice: " << text.toStdString();
      }
      const auto* label = qobject_cast<const QLabel*>(widget);
      if (label != nullptr && label->isVisible() && !label->wordWrap()) {
        EXPECT_GE(label->width(), label->sizeHint().width())
            << screen.key << ": " << label->text().toStdString();
      }
    }
  }
  window().ShowScreen(QStringLiteral("steps"));
  EXPECT_EQ(Find<QPushButton>("markButton").text(), QStringLiteral("Als &gesendet markieren"));
}

class LanguageMenu : public DesktopTest {
 protected:
  [[nodiscard]] QString FirstMenu() {
    return window().menuBar()->actions().front()->text().remove(QLatin1Char('&'));
  }
};

TEST_F(LanguageMenu, ChoosesTheLanguageOfTheNextStart) {
  const std::pair<const char*, const char*> languages[] = {{"Deutsch", "Bestand"},
                                                           {"English", "Store"}};
  for (const auto& [choice, menu] : languages) {
    const QString before = FirstMenu();
    ChooseInMenu(choice);
    EXPECT_FALSE(Told().empty());
    EXPECT_EQ(FirstMenu(), before);
    const Language next(Remembered(*settings_).language());
    MakeWindow();
    EXPECT_EQ(FirstMenu(), next.isTranslated() ? QString::fromUtf8(menu) : QStringLiteral("Store"));
  }
}

TEST_F(InGerman, AControllersWordsStayAsTheyAre) {
  OpenDemoAt(QStringLiteral("credentials"));
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), testing::StartsWith("You must"));
}

}  // namespace
}  // namespace qorhost::test
