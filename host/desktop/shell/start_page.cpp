#include "host/desktop/shell/start_page.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

#include "host/desktop/screens/heading.h"

namespace qorhost {

namespace {

/// A text of some lines whose height is found once for each width. A label asks the letters for it
/// whenever it is laid out, which took as long as all the rest of the page.
class Note final : public QLabel {
 public:
  explicit Note(const QString& text) : QLabel(text) { setWordWrap(true); }

  [[nodiscard]] QSize minimumSizeHint() const override {
    constexpr int kLetters = 30;
    return {fontMetrics().averageCharWidth() * kLetters, fontMetrics().height()};
  }
  [[nodiscard]] QSize sizeHint() const override {
    constexpr int kLetters = 60;
    return {fontMetrics().averageCharWidth() * kLetters, fontMetrics().height()};
  }
  [[nodiscard]] int heightForWidth(int width) const override {
    if (width != width_) {
      width_ = width;
      height_ = QLabel::heightForWidth(width);
    }
    return height_;
  }

 protected:
  void changeEvent(QEvent* event) override {
    width_ = -1;
    QLabel::changeEvent(event);
  }

 private:
  mutable int width_ = -1;
  mutable int height_ = 0;
};

/// A button with a line under it that says what it is good for.
QPushButton* AddChoice(QVBoxLayout& column, const QString& name, const QString& text,
                       const QString& what) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAccessibleDescription(what);
  auto* label = new Note(what);
  column.addWidget(button);
  column.addWidget(label);
  column.addSpacing(label->fontMetrics().height());
  return button;
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  auto* column = new QVBoxLayout;
  row->addStretch(1);
  row->addLayout(column, 2);
  row->addStretch(1);
  column->addStretch();
  auto* welcome = new Heading(tr("No store is open."));
  column->addWidget(welcome);
  column->addSpacing(welcome->fontMetrics().height());
  demo_ = AddChoice(*column, QStringLiteral("demoButton"), tr("Try the &demo building"),
                    tr("Three units with tenants, credentials and directory codes, in memory: "
                       "nothing of it is kept."));
  open_ = AddChoice(*column, QStringLiteral("openButton"), tr("&Open a store…"),
                    tr("The file of a building that was set up before."));
  server_ = AddChoice(*column, QStringLiteral("serverButton"), tr("Open a store on a &server…"),
                      tr("A building that several seats work on, on a database server."));
  new_ = AddChoice(*column, QStringLiteral("newButton"), tr("Make a &new store…"),
                   tr("An empty file for a building, or one with the demo building in it."));
  existing_ =
      AddChoice(*column, QStringLiteral("existingButton"), tr("New from an &existing building…"),
                tr("A store of what another application keeps in a desktop database file."));
  column->addStretch();
}

}  // namespace qorhost
