#include "host/desktop/shell/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QtGlobal>
#include <algorithm>
#include <array>

#ifdef QORDESK_TRANSLATED
/// Stands outside of all namespaces, as its macro asks for.
static void TakeTranslations() {
  Q_INIT_RESOURCE(translations);
}
#else
static void TakeTranslations() {}
#endif

namespace qorhost {

namespace {

/// What boxes and dialogs of Qt say on their buttons: Qt's own translations are a package of their
/// own, which a machine may lack, and a question in German is not answered with "Cancel".
[[maybe_unused]] constexpr std::array kButtonsOfQt = {
    QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),      QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes"),    QT_TRANSLATE_NOOP("QPlatformTheme", "&No"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),   QT_TRANSLATE_NOOP("QPlatformTheme", "Save"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Discard"), QT_TRANSLATE_NOOP("QPlatformTheme", "Open"),
};

}  // namespace

QString LanguageFor(const QString& key) {
  const QString wanted =
      (key.isEmpty() ? QLocale::system() : QLocale(key)).name().section(QLatin1Char('_'), 0, 0);
  const auto known = std::find_if(
      kLanguages.begin(), kLanguages.end(),
      [&wanted](const LanguageName& language) { return wanted == QLatin1String(language.key); });
  return QString::fromLatin1(known == kLanguages.end() ? kLanguages.front().key : known->key);
}

Language::Language(const QString& key) {
  const QString language = LanguageFor(key);
  if (language == QLatin1String(kLanguages.front().key)) {
    return;
  }
  TakeTranslations();
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
