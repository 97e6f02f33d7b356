#include "host/desktop/shell/view_menu.h"

#include <utility>

#include "host/desktop/shell/language.h"

namespace qorhost {

ViewMenu::ViewMenu(QAction& panel, const QString& language, Choices choices, QWidget* parent)
    : QMenu(tr("View"), parent),
      choices_(std::move(choices)),
      themes_(new QActionGroup(this)),
      sizes_(new QActionGroup(this)),
      languages_(new QActionGroup(this)) {
  addAction(&panel);
  addSeparator();
  AddThemes();
  addSeparator();
  AddSizes();
  addSeparator();
  AddLanguages(language);
}

QAction* ViewMenu::AddChoice(QActionGroup& group, const QString& text,
                             const std::function<void()>& choose) {
  QAction* action = addAction(text, this, choose);
  action->setCheckable(true);
  group.addAction(action);
  return action;
}

void ViewMenu::AddThemes() {
  const std::pair<QString, Theme> themes[] = {{tr("Light"), Theme::kLight},
                                              {tr("Dark"), Theme::kDark}};
  for (const auto& [text, theme] : themes) {
    AddChoice(*themes_, text, [this, theme = theme] {
      choices_.look({theme, appearance_.textPercent});
    })->setData(static_cast<int>(theme));
  }
}

void ViewMenu::AddSizes() {
  for (const int percent : {100, 125, 150, 200}) {
    AddChoice(*sizes_, tr("Text at %1 %").arg(percent), [this, percent] {
      choices_.look({appearance_.theme, percent});
    })->setData(percent);
  }
}

void ViewMenu::AddLanguages(const QString& spoken) {
  for (const LanguageName& language : kLanguages) {
    const QString key = QString::fromLatin1(language.key);
    AddChoice(*languages_, QString::fromUtf8(language.name), [this, key] {
      choices_.language(key);
    })->setChecked(key == spoken);
  }
}

void ViewMenu::Tick(const Appearance& appearance) {
  appearance_ = appearance;
  for (QAction* theme : themes_->actions()) {
    theme->setChecked(theme->data().toInt() == static_cast<int>(appearance.theme));
  }
  for (QAction* size : sizes_->actions()) {
    size->setChecked(size->data().toInt() == appearance.textPercent);
  }
}

}  // namespace qorhost
