// What desks say, told in the program's language.
#include "host/desktop/words/desk_words.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/language.h"
#include "host/desktop/words/desk_sentences.h"
#include "host/desktop/words/list_word_table.h"
#include "host/desktop/words/list_words.h"
#include "host/desktop/words/work_sentences.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

/// The texts of a source, those that stand one behind the other as one, without its comments.
QStringList TextsIn(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  QString source = QString::fromUtf8(file.readAll());
  source.remove(QRegularExpression(QStringLiteral("(?<!:)//[^\n]*")));
  source.remove(QLatin1String("'\"'"));  // a character
  static const QRegularExpression kRun(QStringLiteral("(?:\"(?:[^\"\\\\]|\\\\.)*\"\\s*)+"));
  static const QRegularExpression kBetween(QStringLiteral("\"\\s*\""));
  QStringList texts;
  for (auto found = kRun.globalMatch(source); found.hasNext();) {
    QString text = found.next().captured().trimmed();
    text = text.mid(1, text.size() - 2);
    text.remove(kBetween);
    texts.append(text.replace(QLatin1String("\\\""), QLatin1String("\"")));
  }
  return texts;
}

/// The form of a text in which "{}" is anything and "{{" a brace.
QRegularExpression FormOf(QString text) {
  static const QRegularExpression kPlace(QStringLiteral("\\\\\\{[0-9]?\\\\\\}"));
  text.replace(QLatin1String("{{"), QLatin1String("\x01"));
  text.replace(QLatin1String("}}"), QLatin1String("\x02"));
  text = QRegularExpression::escape(text);
  text.replace(kPlace, QStringLiteral(".*"));
  text.replace(QLatin1String("\\\x01"), QLatin1String("\\{"));
  text.replace(QLatin1String("\\\x02"), QLatin1String("\\}"));
  return QRegularExpression(QRegularExpression::anchoredPattern(text));
}

/// All that the folders' sources can say.
class Sayings {
 public:
  explicit Sayings(const QStringList& folders) {
    static const QRegularExpression kWords(
        QStringLiteral("^[a-z]{5,} |[a-z]{2,}[^a-z{}]+[a-z]{2,}"));
    static const QRegularExpression kWord(QStringLiteral("[a-z]{4,}.*\\{"));
    for (const QString& folder : folders) {
      QDirIterator files(QStringLiteral(QORCRED_SOURCES "/") + folder,
                         {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                         QDirIterator::Subdirectories);
      while (files.hasNext()) {
        for (const QString& text : TextsIn(files.next())) {
          texts_.append(text.trimmed());
          if (kWords.match(text).hasMatch()) {  // else it is a piece of anything
            forms_.push_back(FormOf(text.trimmed()));
          } else if (kWord.match(text).hasMatch()) {
            shortForms_.push_back(FormOf(text.trimmed()));
          }
        }
      }
    }
  }

  [[nodiscard]] bool Has(const QString& sentence) const {
    static const QRegularExpression kPlace(QStringLiteral("%[1-9]"));
    return texts_.contains(QString(sentence).replace(kPlace, QStringLiteral("{}"))) ||
           std::any_of(forms_.begin(), forms_.end(), [&sentence](const QRegularExpression& form) {
             return form.match(sentence).hasMatch();
           });
  }

  /// Whether the words stand so, or are a text that begins or ends in a value, or the texts of
  /// which they are put together.
  [[nodiscard]] bool HasShort(const QString& words) const {
    static const QRegularExpression kPlaces(QStringLiteral("%[1-9]"));
    const QStringList pieces = words.split(kPlaces, Qt::SkipEmptyParts);
    return Has(words) ||
           std::any_of(
               shortForms_.begin(), shortForms_.end(),
               [&words](const QRegularExpression& form) { return form.match(words).hasMatch(); }) ||
           std::all_of(pieces.begin(), pieces.end(), [this](const QString& piece) {
             return piece.trimmed().isEmpty() || texts_.contains(piece.trimmed());
           });
  }

 private:
  QStringList texts_;
  std::vector<QRegularExpression> forms_;
  std::vector<QRegularExpression> shortForms_;
};

bool IsSaidBy(const Sayings& host, const QString& text) {
  const QStringList parts = text.split(QRegularExpression(QStringLiteral("(?<=\\.) ")));
  if (parts.size() > 1 && std::all_of(parts.begin(), parts.end(),
                                      [&host](const QString& part) { return host.Has(part); })) {
    return true;  // said one behind the other
  }
  // What was done stands before the engine's reason for its failure, and some end with a value.
  return host.Has(text) || host.Has(text.section(QLatin1String(": %"), 0, 0)) ||
         (text.endsWith(QLatin1String(" %1")) && host.Has(text.chopped(3)));
}

TEST(DeskWords, AreOfSentencesThatTheHostHas) {
  const Sayings host({QStringLiteral("host/desks"), QStringLiteral("host/files"),
                      QStringLiteral("host/unit"), QStringLiteral("host/store"),
                      QStringLiteral("host/desktop/printing")});
  for (const std::span<const DeskSentence> subject : kDeskSentences) {
    for (const DeskSentence& sentence : subject) {
      EXPECT_TRUE(IsSaidBy(host, QString::fromUtf8(sentence.text)))
          << sentence.text << ": nothing says this any more";
    }
  }
}

const Sayings& ShortSayings() {
  static const Sayings sayings({QStringLiteral("host/desks"), QStringLiteral("host/store"),
                                QStringLiteral("host/unit"), QStringLiteral("host/desktop")});
  return sayings;
}

TEST(DeskWords, NameUnitsOfWorkAsTheHostDoes) {
  for (const DeskSentence& sentence : kWorkSentences) {
    EXPECT_TRUE(ShortSayings().HasShort(QString::fromUtf8(sentence.text)))
        << sentence.text << ": no unit of work is called so any more";
  }
}

TEST(DeskWords, OfListsAreThoseThatTheHostHas) {
  const Sayings host({QStringLiteral("host/desks"), QStringLiteral("host/store")});
  for (const char* word : kListWords) {
    EXPECT_TRUE(host.HasShort(QString::fromUtf8(word))) << word << ": no list has it any more";
  }
}

TEST(DeskWords, StayAsTheyAreInEnglish) {
  EXPECT_EQ(FromQt(Told("there is no database 'a.db'")), "there is no database 'a.db'");
}

TEST(DeskWords, AreTranslatedWithWhatStandsInThem) {
  const Language german(QStringLiteral("de"));
  if (!german.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  struct Row {
    const char* said;
    const char* told;
  };
  const Row rows[] = {
      {"there is no database 'a.db'", "es gibt keinen Bestand „a.db“"},
      // What a value holds is no place of the sentence.
      {"there is no database '%1 {field} %2'", "es gibt keinen Bestand „%1 {field} %2“"},
      {"{field} '{value}' is below 0", "{field} „{value}“ ist kleiner als 0"},
      {"Delay '-1' is below 0", "Delay „-1“ ist kleiner als 0"},
      // A part that is a sentence itself.
      {"Cannot open the store 'a.db': disk I/O error (the disk is full: make room, then try again)",
       "Der Bestand „a.db“ kann nicht geöffnet werden: disk I/O error (der Datenträger ist voll: "
       "Platz schaffen und noch einmal versuchen)"},
      // Of a server, whose own words stay.
      {"The server tells of a changed row in other words than the store's own: nothing was stored; "
       "ask its administrator who has altered the store's triggers",
       "Der Server meldet eine geänderte Zeile mit anderen Worten als denen des Bestands: es wurde "
       "nichts gespeichert; seinen Administrator fragen, wer die Trigger des Bestands geändert "
       "hat"},
      {"The store 'postgresql://a/b': another program is writing to the store: nothing was "
       "changed; "
       "let it finish, then try again",
       "Der Bestand „postgresql://a/b“: ein anderes Programm schreibt in den Bestand: es wurde "
       "nichts geändert; es beenden lassen und noch einmal versuchen"},
      {"The statement failed: could not extend file \"base/1\" (the server's disk is full: its "
       "administrator has to make room)",
       "Die Anweisung ist fehlgeschlagen: could not extend file \"base/1\" (der Datenträger des "
       "Servers ist voll: sein Administrator muss Platz schaffen)"},
      {"cannot load the directory code: no such table",
       "Das Laden des Rufcodes ist nicht gelungen: no such table"},
      {"2 rows have the directory code '{value}': name a row instead (rid:1, rid:2)",
       "2 Zeilen haben den Rufcode „{value}“: stattdessen eine Zeile nennen (rid:1, rid:2)"},
      {"Ng Li loses Transmitter-301 (RID 17). Rae Zoë has two credentials and loses A-1. Go on?",
       "Ng Li verliert Transmitter-301 (RID 17). Rae Zoë hat zwei Ausweise und verliert A-1. "
       "Fortfahren?"},
      // Where a text begins like a shorter one, the longer one counts.
      {"cannot write 'a.csv': there is no folder 'b'",
       "„a.csv“ kann nicht geschrieben werden: es gibt keinen Ordner „b“"},
      // Units of work, in what is said of them, too.
      {"undo entry 7: edit directory code 0101",
       "Eintrag 7 rückgängig gemacht: Rufcode 0101 geändert"},
      {"entry 7 (issue Transmitter 5 to 9, by anna, 2026-01-31 14:05:09 UTC) cannot be undone: its "
       "capacity is not known then; nothing was changed",
       "Eintrag 7 (Transmitter 5 bis 9 ausgegeben, von anna, 2026-01-31 14:05:09 UTC) kann nicht "
       "rückgängig gemacht werden, weil dann gilt: ihre Kapazität ist nicht bekannt; es wurde "
       "nichts geändert"},
      // Names of fields.
      {"{field} '{value}': 'Card Number' takes a number, and 'x' is none",
       "{field} „{value}“: „Kartennummer“ nimmt eine Zahl, und „x“ ist keine"},
      {"You must enter a credential number.", "You must enter a credential number."},
      {"", ""}};
  for (const Row& row : rows) {
    EXPECT_EQ(FromQt(Told(row.said)), row.told);
  }
}

TEST(DeskWords, OfListsAreTranslatedWhereTheyAreWordsOfTheDesks) {
  const Language german(QStringLiteral("de"));
  if (!german.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  EXPECT_EQ(FromQt(ShownInList({"Kind", "kind"}, std::string("program tenant"))),
            "Mieter programmieren");
  EXPECT_EQ(FromQt(ShownInList({"Name", "name"}, std::string("program tenant"))), "program tenant");
  EXPECT_EQ(FromQt(ShownInList({"Active", "active"}, true)), "ja");
  EXPECT_EQ(FromQt(ShownInList({"Status", "status", FieldKind::kYesNoText}, std::string("Active"))),
            "Aktiv");
  EXPECT_EQ(FromQt(ShownInList({"Rows", "rows"}, std::string("Tenants: 1 changed; Doors: 4 new"))),
            "Tenants: 1 geändert; Doors: 4 neu");
  EXPECT_EQ(FromQt(ShownDifferences("phone, end date")), "Telefon, Tag des Endes");
  EXPECT_EQ(FromQt(ShownDifferences("never sent to the unit, taken from Rae, phone")),
            "nie an die Anlage gesendet, wird Rae genommen, phone");
}

/// Advice to whoever works on a server stands behind the server's own words, in any sentence.
TEST(DeskWords, AreThereForAllThatIsAdvisedAboutAServer) {
  const Language german(QStringLiteral("de"));
  if (!german.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  static const QRegularExpression kAdvice(QStringLiteral("^(the|there|another|it is) .*: "));
  int said = 0;
  for (const char* source : {"postgres/engine_error", "store_error"}) {
    const QString file = QStringLiteral(QORCRED_SOURCES "/host/store/%1.cpp");
    for (const QString& text : TextsIn(file.arg(QLatin1String(source)))) {
      if (kAdvice.match(text).hasMatch()) {
        EXPECT_NE(FromQt(Told(FromQt(text))), FromQt(text));
        ++said;
      }
    }
  }
  EXPECT_GT(said, 15);
}

/// Whatever the rules of a building that is brought in say stands in a table of the window.
TEST(DeskWords, AreThereForAllThatIsSaidOfABuildingThatIsBroughtIn) {
  const Language german(QStringLiteral("de"));
  if (!german.isTranslated()) {
    GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
  }
  static const QRegularExpression kSentence(QStringLiteral("^('?\\{\\}|[a-z0-9, ]+ [a-z]+ )"));
  static const QRegularExpression kPlace(QStringLiteral("\\{\\}"));
  int said = 0;
  for (const char* source :
       {"cell_conversion", "staged_table", "identity_rules", "rule_work", "unit_rules",
        "unit_part_rules", "code_rules", "tenant_rules", "field_rules", "known_tables"}) {
    const QString file = QStringLiteral(QORCRED_SOURCES "/host/desks/moving_in/%1.cpp");
    for (const QString& text : TextsIn(file.arg(QLatin1String(source)))) {
      if (!kSentence.match(text).hasMatch() || text.count(QLatin1Char(' ')) < 2) {
        continue;
      }
      const std::string sentence = FromQt(QString(text).replace(kPlace, QStringLiteral("3 doors")));
      EXPECT_NE(FromQt(Told(sentence)), sentence);
      ++said;
    }
  }
  EXPECT_GT(said, 90);
}

class DesksInGerman : public DesktopTest {
 protected:
  void SetUp() override {
    if (!german_.isTranslated()) {
      GTEST_SKIP() << "there is no lrelease (qt6-l10n-tools)";
    }
    MakeWindow();  // again: what was made before is English
  }

  Language german_{QStringLiteral("de")};
};

TEST_F(DesksInGerman, AnInputThatADeskDoesNotTakeIsTold) {
  OpenDemoAt(QStringLiteral("credentials"));
  Type("txtPINStart", "1.5");
  Click("saveButton");
  EXPECT_EQ(Marked(), "txtPINStart: Nummer „1.5“ ist keine ganze Zahl: nur mit Ziffern schreiben");
}

TEST_F(DesksInGerman, AStoreThatIsNotThereIsTold) {
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(File("missing.db")));
  EXPECT_THAT(answers_->LastText(), HasSubstr("es gibt keinen Bestand"));
}

}  // namespace
}  // namespace qorhost::test
