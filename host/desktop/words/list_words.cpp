#include "host/desktop/screens/list_titles.h"

#include <QCoreApplication>

namespace qorhost {

namespace {

// For the translation alone: they are looked up by their text.
[[maybe_unused]] constexpr const char* kTitles[] = {
    QT_TRANSLATE_NOOP("Lists", "Step"),          QT_TRANSLATE_NOOP("Lists", "Unit"),
    QT_TRANSLATE_NOOP("Lists", "Queued"),        QT_TRANSLATE_NOOP("Lists", "Kind"),
    QT_TRANSLATE_NOOP("Lists", "Row"),           QT_TRANSLATE_NOOP("Lists", "Subject"),
    QT_TRANSLATE_NOOP("Lists", "Entry"),         QT_TRANSLATE_NOOP("Lists", "Time"),
    QT_TRANSLATE_NOOP("Lists", "Who"),           QT_TRANSLATE_NOOP("Lists", "What"),
    QT_TRANSLATE_NOOP("Lists", "Rows"),          QT_TRANSLATE_NOOP("Lists", "Table"),
    QT_TRANSLATE_NOOP("Lists", "RID"),           QT_TRANSLATE_NOOP("Lists", "Last RID"),
    QT_TRANSLATE_NOOP("Lists", "Change"),        QT_TRANSLATE_NOOP("Lists", "Field"),
    QT_TRANSLATE_NOOP("Lists", "Before"),        QT_TRANSLATE_NOOP("Lists", "After"),
    QT_TRANSLATE_NOOP("Lists", "Name"),          QT_TRANSLATE_NOOP("Lists", "End"),
    QT_TRANSLATE_NOOP("Lists", "Directory code")};

}  // namespace

QString ShownTitle(const std::string& title) {
  return QCoreApplication::translate("Lists", title.c_str());
}

}  // namespace qorhost
