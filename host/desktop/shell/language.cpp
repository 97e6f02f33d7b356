#include "host/desktop/shell/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QtGlobal>

#ifdef QORDESK_TRANSLATED
/// Stands outside of all namespaces, as its macro asks for.
static void TakeTranslations() {
  Q_INIT_RESOURCE(translations);
}
#else
static void TakeTranslations() {}
#endif

namespace qorhost {

Language::Language(const QString& key) {
  const QLocale locale = key.isEmpty() ? QLocale::system() : QLocale(key);
  if (locale.language() == QLocale::English) {
    return;
  }
  TakeTranslations();
  const QString language = locale.name().section(QLatin1Char('_'), 0, 0);
  if (own_.load(QStringLiteral(":/translations/qordesk_%1.qm").arg(language))) {
    QCoreApplication::installTranslator(&own_);
    // Buttons of boxes and the dialogs for files.
    if (ofQt_.load(QStringLiteral("qtbase_%1").arg(language),
                   QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
      QCoreApplication::installTranslator(&ofQt_);
    }
  }
}

Language::~Language() {
  QCoreApplication::removeTranslator(&own_);
  QCoreApplication::removeTranslator(&ofQt_);
}

}  // namespace qorhost
