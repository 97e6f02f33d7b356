// The units of the store: added, their settings changed, deleted.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/desks/unit_desk.h"
#include "host/desktop/screens/entry_page.h"
#include "host/desktop/screens/list_table_model.h"

namespace Ui {
class UnitsPage;
}

namespace qorhost {

class UnitsPage final : public EntryPage {
  Q_OBJECT

 public:
  /// Raises what reading the units raises.
  explicit UnitsPage(Workplace& place);
  ~UnitsPage() override;

  void Refresh() override;

 protected:
  [[nodiscard]] std::span<const FieldWidget> Fields() const override;
  void ShowOvertaken() override;

 private:
  void ConnectWidgets();
  void ShowStored();
  void ShowAgain(std::optional<std::int32_t> unitKey);
  void ShowSaved(const std::vector<qorcred::Value>& unit);
  void ShowUnits(const std::vector<std::string>& types);
  void Forget(std::int32_t unitKey);
  void Remember(const std::vector<qorcred::Value>& unit);
  void SelectChosen();
  void TakeSelection();
  void ShowChosen();
  void ShowCapacityOf(const QString& type);
  [[nodiscard]] UnitEntry Entered() const;
  void Enter(const UnitEntry& entry);
  void Save(OtherUnits others);
  void Delete();

  std::unique_ptr<Ui::UnitsPage> ui_;
  ListTableModel list_;
  List units_;                                    // with a row for each
  std::optional<std::int32_t> chosen_;            // none: a new unit is entered
  UnitEntry shown_;                               // as the form showed it
  std::map<std::int32_t, std::int64_t> entries_;  // of the units' audit, when they were shown
  std::optional<SeenRow> seen_;                   // the chosen one
  bool showing_ = false;                          // what changes in the list is no choice
};

}  // namespace qorhost
