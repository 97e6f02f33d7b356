// The menu in which the window's look and language are chosen.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <functional>

#include "host/desktop/shell/appearance.h"

namespace qorhost {

/// Each look and language is an entry, with a tick at the one that holds.
class ViewMenu final : public QMenu {
  Q_OBJECT

 public:
  /// Told of what a person chooses.
  struct Choices {
    std::function<void(const Appearance& appearance)> look;
    std::function<void(const QString& language)> language;
  };

  /// `panel` shows and hides what stands first; `language` is the one that is spoken.
  ViewMenu(QAction& panel, const QString& language, Choices choices, QWidget* parent);

  /// Ticks the look that holds now.
  void Tick(const Appearance& appearance);

 private:
  QAction* AddChoice(QActionGroup& group, const QString& text, const std::function<void()>& choose);
  void AddThemes();
  void AddSizes();
  void AddLanguages(const QString& spoken);

  Choices choices_;
  Appearance appearance_;
  QActionGroup* themes_;
  QActionGroup* sizes_;
  QActionGroup* languages_;
};

}  // namespace qorhost
