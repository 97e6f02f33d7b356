// The credential screen: issues credentials, one or a range, and edits, assigns, renumbers and
// deletes one.
#pragma once

#include <memory>
#include <optional>

#include "host/desks/credential_desk.h"
#include "host/desktop/screens/entry_page.h"

namespace Ui {
class CredentialPage;
}

namespace qorhost {

class CredentialPage final : public EntryPage {
  Q_OBJECT

 public:
  /// Raises what the desk raises when it cannot be opened.
  explicit CredentialPage(Workplace& place);
  ~CredentialPage() override;

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
  void ChooseCredential(std::int32_t index);
  void ShowRow(std::int32_t rid);
  void Save();
  void SaveNew();
  void SaveEdited();
  void ShowOvertaken() override;
  void ShowWithEntry();
  void Renumber();
  void Delete();
  [[nodiscard]] bool ConsentsToLosses();
  [[nodiscard]] bool isNew() const;

  std::unique_ptr<Ui::CredentialPage> ui_;
  std::unique_ptr<CredentialDesk> desk_;
  std::optional<ScreenBinding> binding_;
};

}  // namespace qorhost
