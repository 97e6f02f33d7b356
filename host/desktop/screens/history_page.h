// What was done in the unit, by whom, what it made of the rows, and the way back.
#pragma once

#include <memory>

#include "host/desktop/screens/list_table_model.h"
#include "host/desktop/screens/screen_page.h"

namespace Ui {
class HistoryPage;
}

namespace qorhost {

class HistoryPage final : public ScreenPage {
  Q_OBJECT

 public:
  explicit HistoryPage(Workplace& place);
  ~HistoryPage() override;

  void Refresh() override;

 private:
  void ShowEntries();
  void ShowRows();
  void Undo();
  /// The number of the entry that is chosen; "" without one.
  [[nodiscard]] std::string Chosen() const;

  std::unique_ptr<Ui::HistoryPage> ui_;
  ListTableModel entries_;
  ListTableModel rows_;
};

}  // namespace qorhost
