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
const QString kUnit = QStringLiteral("last/unit");
const QString kScreen = QStringLiteral("last/screen");
}  // namespace setting

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

std::int32_t Remembered::unit() const {
  return settings_.value(setting::kUnit).toInt();
}

QString Remembered::screen() const {
  return settings_.value(setting::kScreen).toString();
}

void Remembered::SetPlace(std::int32_t unit, const QString& screen) {
  settings_.setValue(setting::kUnit, unit);
  if (!screen.isEmpty()) {
    settings_.setValue(setting::kScreen, screen);
  }
}

}  // namespace qorhost
