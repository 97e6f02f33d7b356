#include "host/desktop/words/shown_word.h"

#include <QCoreApplication>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/list_word_table.h"

namespace qorhost {

QString ShownWord(const QString& word) {
  return word.isEmpty() ? word : QCoreApplication::translate("Lists", word.toUtf8().constData());
}

QString ShownTitle(const std::string& title) {
  return ShownWord(ToQt(title));
}

}  // namespace qorhost
