// What the program remembers of the last time: where everything was.
#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <cstdint>

#include "host/desktop/shell/appearance.h"

namespace qorhost {

/// Each is read from the settings, which must outlive it, and written to them at once.
class Remembered {
 public:
  explicit Remembered(QSettings& settings) : settings_(settings) {}

  /// A key of kLanguages; "" when nobody has chosen one.
  [[nodiscard]] QString language() const;
  void SetLanguage(const QString& key);

  [[nodiscard]] Appearance appearance() const;
  void SetAppearance(const Appearance& appearance);

  /// As a window saves its geometry and its state.
  [[nodiscard]] QByteArray geometry() const;
  [[nodiscard]] QByteArray places() const;
  void SetLayout(const QByteArray& geometry, const QByteArray& places);

  /// The path of the last store; "" when it was closed.
  [[nodiscard]] QString store() const;
  void SetStore(const QString& path);
  /// The name of the last store on a server; "" before the first.
  [[nodiscard]] QString server() const;
  void SetServer(const QString& name);
  /// Where files were chosen; "" before the first one.
  [[nodiscard]] QString folder() const;
  void SetFolder(const QString& path);
  /// That was shown of a store, by its name, the last time; 0 for one that was not open lately.
  [[nodiscard]] std::int32_t unit(const QString& store) const;
  [[nodiscard]] QString screen() const;
  void SetPlace(const QString& store, std::int32_t unit, const QString& screen);

 private:
  QSettings& settings_;
};

}  // namespace qorhost
