// The directory-code screen: adds, edits, renumbers and deletes codes, and shows their tenants.
#pragma once

#include <memory>
#include <optional>

#include "host/desks/dir_code_desk.h"
#include "host/desktop/screens/entry_page.h"

namespace Ui {
class DirCodePage;
}

namespace qorhost {

class DirCodePage final : public EntryPage {
  Q_OBJECT

 public:
  /// Raises what the desk raises when it cannot be opened.
  explicit DirCodePage(Workplace& place);
  ~DirCodePage() override;

  void Refresh() override;

 protected:
  [[nodiscard]] std::span<const FieldWidget> Fields() const override;
  void ShowChanges() override { binding_->Flush(); }

 private:
  void OpenDesk();
  void ConnectWidgets();
  void ShowMode();
  void StartNew();
  void ShowOpened();
  void ChooseCode(std::int32_t index);
  void ShowRow(std::int32_t rid);
  void Save();
  void SaveNew();
  void SaveEdited();
  void Renumber();
  void Delete();
  void ShowOvertaken() override;
  bool RunOnCode(const QString& title, const std::function<Outcome()>& operation);
  [[nodiscard]] bool isNew();

  std::unique_ptr<Ui::DirCodePage> ui_;
  std::unique_ptr<DirCodeDesk> desk_;
  std::optional<ScreenBinding> binding_;
};

}  // namespace qorhost
