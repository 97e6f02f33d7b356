// The screen that creates a tenant for every credential of a range, and gives them access.
#pragma once

#include <memory>
#include <optional>

#include "host/desks/credential_desk.h"
#include "host/desktop/screens/entry_page.h"

namespace Ui {
class TenantCreatingPage;
}

namespace qorhost {

class TenantCreatingPage final : public EntryPage {
  Q_OBJECT

 public:
  /// Raises what the desk raises when it cannot be opened.
  explicit TenantCreatingPage(Workplace& place);
  ~TenantCreatingPage() override;

  void Refresh() override;

 protected:
  [[nodiscard]] std::span<const FieldWidget> Fields() const override;
  void ShowChanges() override { binding_->Flush(); }

 private:
  void OpenDesk();
  void Save();
  void ShowOvertaken() override;

  std::unique_ptr<Ui::TenantCreatingPage> ui_;
  std::unique_ptr<CredentialDesk> desk_;
  std::optional<ScreenBinding> binding_;
};

}  // namespace qorhost
