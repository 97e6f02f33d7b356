// What the window shows while no store is open.
#pragma once

#include <QPushButton>
#include <QWidget>

namespace qorhost {

class StartPage final : public QWidget {
  Q_OBJECT

 public:
  explicit StartPage(QWidget* parent = nullptr);

  [[nodiscard]] QPushButton& demoButton() { return *demo_; }
  [[nodiscard]] QPushButton& openButton() { return *open_; }
  [[nodiscard]] QPushButton& serverButton() { return *server_; }
  [[nodiscard]] QPushButton& newButton() { return *new_; }
  [[nodiscard]] QPushButton& existingButton() { return *existing_; }

 private:
  QPushButton* demo_;
  QPushButton* open_;
  QPushButton* server_;
  QPushButton* new_;
  QPushButton* existing_;
};

}  // namespace qorhost
