// The tenants of the unit: searched, added, edited one or many at once, their leases ended,
// deleted.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "host/desks/tenant_desk.h"
#include "host/desktop/screens/entry_page.h"
#include "host/desktop/screens/list_table_model.h"
#include "host/desktop/screens/tenant_form.h"

namespace Ui {
class TenantsPage;
}

namespace qorhost {

class TenantsPage final : public EntryPage {
  Q_OBJECT

 public:
  /// Raises what the desk raises when it cannot be opened.
  explicit TenantsPage(Workplace& place);
  ~TenantsPage() override;

  void Refresh() override;

 protected:
  [[nodiscard]] std::span<const FieldWidget> Fields() const override;

 private:
  using Rids = std::vector<std::int32_t>;
  using Change = std::function<ChangedTenants(Trial trial)>;

  void ConnectWidgets();
  void OpenDesk();
  void ShowList();
  void ShowCount();
  void SelectChosen();
  [[nodiscard]] Rids Selected() const;
  void TakeSelection();
  void Choose(const Rids& rids);
  void ShowChosen();
  void StartNew();
  [[nodiscard]] Rids StillThere(const Rids& rids) const;
  void ShowAgain(const Rids& rids);
  void ShowSaved(const Rids& rids);
  void ShowStored(const Rids& rids);
  void ShowOvertaken() override;
  void ShowWithEntry();
  [[nodiscard]] bool AreSeen();
  void Save();
  void Add();
  void Edit();
  void EndLeases();
  void Delete();
  [[nodiscard]] bool RunChange(const QString& what, const Change& change, Trial trial,
                               ChangedTenants& changed);
  void MakeChange(const QString& what, const QString& question, const QString& go,
                  const Change& change);
  void TellChanged(const ChangedTenants& changed);

  std::unique_ptr<Ui::TenantsPage> ui_;
  TenantForm form_;
  ListTableModel list_;
  std::unique_ptr<TenantDesk> desk_;
  Rids chosen_;                        // also those that the search hides
  std::optional<UnitVersion> unread_;  // that a change made behind which nothing was read
  bool showing_ = false;               // what changes in the list is no choice
};

}  // namespace qorhost
