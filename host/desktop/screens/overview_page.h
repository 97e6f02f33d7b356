// The whole store at a glance: each unit's codes against its capacity, the steps that wait, and
// what ends soon.
#pragma once

#include <memory>

#include "host/desktop/screens/screen_page.h"

namespace Ui {
class OverviewPage;
}

namespace qorhost {

class OverviewPage final : public ScreenPage {
  Q_OBJECT

 public:
  explicit OverviewPage(Workplace& place);
  ~OverviewPage() override;

  void Refresh() override;

 private:
  void ShowStored();
  void ShowUnits();
  void ShowExpiring();

  std::unique_ptr<Ui::OverviewPage> ui_;
};

}  // namespace qorhost
