#include "host/desktop/shell/remembered.h"

namespace qorhost {

namespace {

namespace setting {
const QString kGeometry = QStringLiteral("window/geometry");
const QString kPlaces = QStringLiteral("window/places");
const QString kLanguage = QStringLiteral("look/language");
const QString kTheme = QStringLiteral("look/theme");
const QString kText = QStringLiteral("look/text");
const QString kStore = QStringLiteral("last/store");
const QString kFolder = QStringLiteral("last/folder");
const QString kServer = QStringLiteral("last/server");
const QString kUnits = QStringLiteral("last/units");  // "2 /home/rae/building.db", latest first
const QString kScreen = QStringLiteral("last/screen");
}  // namespace setting

constexpr int kMostStores = 50;

QString StoreIn(const QString& unitOfStore) {
  return unitOfStore.section(QLatin1Char(' '), 1);
}

}  // namespace

QString Remembered::language() const {
  return settings_.value(setting::kLanguage).toString();
}

void Remembered::SetLanguage(const QString& key) {
  settings_.setValue(setting::kLanguage, key);
}

Appearance Remembered::appearance() const {
  const int theme = settings_.value(setting::kTheme, 0).toInt();
  return {theme == static_cast<int>(Theme::kDark) ? Theme::kDark : Theme::kLight,
          settings_.value(setting::kText, kUsualTextPercent).toInt()};
}

void Remembered::SetAppearance(const Appearance& appearance) {
  settings_.setValue(setting::kTheme, static_cast<int>(appearance.theme));
  settings_.setValue(setting::kText, appearance.textPercent);
}

QByteArray Remembered::geometry() const {
  return settings_.value(setting::kGeometry).toByteArray();
}

QByteArray Remembered::places() const {
  return settings_.value(setting::kPlaces).toByteArray();
}

void Remembered::SetLayout(const QByteArray& geometry, const QByteArray& places) {
  settings_.setValue(setting::kGeometry, geometry);
  settings_.setValue(setting::kPlaces, places);
}

QString Remembered::store() const {
  return settings_.value(setting::kStore).toString();
}

void Remembered::SetStore(const QString& path) {
  if (path.isEmpty()) {
    settings_.remove(setting::kStore);
  } else {
    settings_.setValue(setting::kStore, path);
  }
}

QString Remembered::server() const {
  return settings_.value(setting::kServer).toString();
}

void Remembered::SetServer(const QString& name) {
  settings_.setValue(setting::kServer, name);
}

QString Remembered::folder() const {
  return settings_.value(setting::kFolder).toString();
}

void Remembered::SetFolder(const QString& path) {
  settings_.setValue(setting::kFolder, path);
}

std::int32_t Remembered::unit(const QString& store) const {
  for (const QString& known : settings_.value(setting::kUnits).toStringList()) {
    if (StoreIn(known) == store) {
      return known.section(QLatin1Char(' '), 0, 0).toInt();
    }
  }
  return 0;
}

QString Remembered::screen() const {
  return settings_.value(setting::kScreen).toString();
}

void Remembered::SetPlace(const QString& store, std::int32_t unit, const QString& screen) {
  QStringList known = settings_.value(setting::kUnits).toStringList();
  known.removeIf([&store](const QString& one) { return StoreIn(one) == store; });
  known.prepend(QStringLiteral("%1 %2").arg(unit).arg(store));
  settings_.setValue(setting::kUnits, known.mid(0, kMostStores));
  if (!screen.isEmpty()) {
    settings_.setValue(setting::kScreen, screen);
  }
}

}  // namespace qorhost
