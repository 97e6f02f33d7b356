// The doors of the unit and its schedules: named, added, deleted.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "host/desks/door_desk.h"
#include "host/desks/schedule_desk.h"
#include "host/desks/seen_row.h"
#include "host/desktop/screens/entry_page.h"
#include "host/desktop/screens/list_table_model.h"

namespace Ui {
class BuildingPage;
}

namespace qorhost {

/// Two lists, each with its own entry: what is entered at the one stays while the
/// other is worked on.
class BuildingPage final : public EntryPage {
  Q_OBJECT

 public:
  /// Raises what reading doors and schedules raises.
  explicit BuildingPage(Workplace& place);
  ~BuildingPage() override;

  [[nodiscard]] bool HasEntries() const override;
  void Refresh() override;

 protected:
  [[nodiscard]] std::span<const FieldWidget> Fields() const override { return fields_; }
  void ShowOvertaken() override;

 private:
  using Number = std::optional<std::int32_t>;

  void ConnectWidgets();
  [[nodiscard]] bool HasDoorEntry() const;
  [[nodiscard]] bool HasScheduleEntry() const;
  void ShowDoors(Number door);
  void ShowSchedules(Number schedule);
  void ShowSavedDoor(const ChangedDoor& saved);
  void ShowSavedSchedule(const ChangedSchedule& saved);
  void ShowDeletedSchedule();
  [[nodiscard]] std::int64_t OwnEntry(std::int64_t shown);
  [[nodiscard]] std::int64_t LastEntry();
  void SelectChosen();
  void ShowDoor();
  void ShowSchedule();
  void TakeDoor();
  void TakeSchedule();
  void RenameChosenDoor();
  void SaveSchedule();
  void DeleteChosenSchedule();

  std::unique_ptr<Ui::BuildingPage> ui_;
  ListTableModel doors_;
  ListTableModel schedules_;
  Number door_;       // that is chosen
  Number schedule_;   // none: a new one is entered
  QString doorName_;  // as the line showed it
  QString scheduleName_;
  std::optional<SeenRow> seenDoor_;  // of what is chosen, as it is shown
  std::optional<SeenRow> seenSchedule_;
  std::int64_t entryOfDoors_ = 0;  // of the unit's audit, when they were shown
  std::int64_t entryOfSchedules_ = 0;
  std::span<const FieldWidget> fields_;  // of the list that is worked on
  bool showing_ = false;                 // what changes in the lists is no choice
};

}  // namespace qorhost
