// What the unit has otherwise than the store, accepted difference by difference.
#pragma once

#include <filesystem>
#include <memory>

#include "host/desks/unit_merge.h"
#include "host/desktop/screens/entry_page.h"
#include "host/desktop/screens/list_table_model.h"
#include "host/desktop/screens/merge_table_model.h"

namespace Ui {
class MergePage;
}

namespace qorhost {

class MergePage final : public EntryPage {
  Q_OBJECT

 public:
  explicit MergePage(Workplace& place);
  ~MergePage() override;

  void Refresh() override;
  /// Reads a unit's file and compares; what is wrong with it is told.
  void Open(const std::filesystem::path& file);

 private:
  void ConnectWidgets();
  void ChooseFile();
  void CompareAgain();
  void Compare();
  void ShowNothing();
  void ShowDifferences();
  void ShowBadLines();
  void ShowSides();
  void ShowState();
  void ToggleChosen();
  [[nodiscard]] QString HintForNone() const;
  [[nodiscard]] bool MayDelete(const std::vector<std::size_t>& steps);
  void Merge();
  void TellDone(const MergeReport& report);

  std::unique_ptr<Ui::MergePage> ui_;
  UnitReading reading_;
  std::unique_ptr<UnitMerge> merge_;  // null without a file that can be merged
  MergeTableModel differences_;
  ListTableModel sides_;
};

}  // namespace qorhost
