// The programming steps that wait for the unit: looked through, written to a file, marked as sent.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/desktop/screens/list_table_model.h"
#include "host/desktop/screens/screen_page.h"

namespace Ui {
class StepsPage;
}

namespace qorhost {

class StepsPage final : public ScreenPage {
  Q_OBJECT

 public:
  explicit StepsPage(Workplace& place);
  ~StepsPage() override;

  void Refresh() override;

 private:
  void ShowSteps();
  void Export();
  void MarkSent();
  [[nodiscard]] std::vector<std::string> Chosen() const;
  [[nodiscard]] std::vector<std::string> Shown() const;

  std::unique_ptr<Ui::StepsPage> ui_;
  ListTableModel steps_;
  std::vector<std::string> written_;  // the steps of the last file that are not marked yet
};

}  // namespace qorhost
