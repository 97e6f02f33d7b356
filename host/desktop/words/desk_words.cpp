#include "host/desktop/words/desk_words.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <vector>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/desk_sentences.h"
#include "host/desktop/words/shown_word.h"
#include "host/desktop/words/work_sentences.h"

namespace qorhost {

namespace {

/// A sentence that is looked for, with its places in the order in which they stand: "%1",
/// "{field}".
struct Known {
  const DeskSentence* sentence;
  QStringList places;
  QRegularExpression form;
};

Known LookedFor(const DeskSentence& sentence) {
  static const QRegularExpression kPlace(QStringLiteral("%[1-9]|\\{[a-z ]+\\}"));
  const QString text = QString::fromUtf8(sentence.text);
  Known known{&sentence, {}, {}};
  QString form;
  qsizetype from = 0;
  for (auto found = kPlace.globalMatch(text); found.hasNext();) {
    const QRegularExpressionMatch place = found.next();
    form += QRegularExpression::escape(text.mid(from, place.capturedStart() - from)) +
            QStringLiteral("(.*?)");
    known.places.append(place.captured());
    from = place.capturedEnd();
  }
  form += QRegularExpression::escape(text.mid(from));
  known.form.setPattern(QRegularExpression::anchoredPattern(form));
  known.form.setPatternOptions(QRegularExpression::DotMatchesEverythingOption);
  return known;
}

const std::vector<Known>& Sentences() {
  static const std::vector<Known> sentences = [] {
    std::vector<Known> all;
    for (const std::span<const DeskSentence> subject : kDeskSentences) {
      for (const DeskSentence& sentence : subject) {
        all.push_back(LookedFor(sentence));
      }
    }
    for (const DeskSentence& sentence : kWorkSentences) {
      all.push_back(LookedFor(sentence));
    }
    return all;
  }();
  return sentences;
}

QString Translated(const DeskSentence& sentence) {
  return QCoreApplication::translate("Desks", sentence.text);
}

/// Whether the program speaks another language than the desks.
bool IsTranslated() {
  const DeskSentence& any = kDeskSentences.front().front();
  return Translated(any) != QString::fromUtf8(any.text);
}

QString InLanguage(const QString& sentence);

/// What stands in a sentence: another one, or a word of the lists.
QString PartInLanguage(const QString& part) {
  const QString told = InLanguage(part);
  return told == part ? ShownWord(part) : told;
}

/// The translation with what stood in the sentence, put in from left to right: what a value holds
/// is never taken for a place.
QString Filled(const Known& known, const QRegularExpressionMatch& found) {
  const QString translation = Translated(*known.sentence);
  QString filled;
  for (qsizetype at = 0; at < translation.size();) {
    qsizetype length = 0;
    for (qsizetype place = 0; place < known.places.size() && length == 0; ++place) {
      const QString& name = known.places[place];
      if (QStringView(translation).mid(at).startsWith(name)) {
        const QString given = found.captured(static_cast<int>(place) + 1);
        const bool isTold = QString::fromLatin1(known.sentence->told).contains(name.back());
        filled += isTold ? PartInLanguage(given) : given;
        length = name.size();
      }
    }
    if (length == 0) {
      filled += translation[at];
      length = 1;
    }
    at += length;
  }
  return filled;
}

QString InLanguage(const QString& sentence) {
  for (const Known& known : Sentences()) {
    const QRegularExpressionMatch found = known.form.match(sentence);
    if (found.hasMatch()) {
      return Filled(known, found);
    }
  }
  return sentence;
}

}  // namespace

QString Told(std::string_view sentence) {
  const QString text = ToQt(sentence);
  return IsTranslated() ? InLanguage(text) : text;
}

}  // namespace qorhost
