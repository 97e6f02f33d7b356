// The fields of tenants on their screen.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "host/desks/tenant_entry.h"
#include "host/desks/tenant_groups.h"
#include "host/desks/tenant_rows.h"

namespace Ui {
class TenantsPage;
}

namespace qorhost {

/// Shows what tenants have in common, and knows what a person has changed of it: only that is
/// entered. The widgets must outlive it.
class TenantForm {
 public:
  /// `onEdit` is told of every widget that a person changes.
  TenantForm(Ui::TenantsPage& ui, std::function<void(QWidget& widget)> onEdit);

  /// What the lists and the lines offer: the unit's schedules, groups and codes, and the cards that
  /// nobody holds.
  void Offer(const TenantLinks& links, const std::vector<TenantGroup>& groups,
             const std::vector<TenantRow>& holders);
  /// Shows tenants, or nobody: a new one. What a person has changed stays as it was entered.
  void Show(const std::vector<TenantRow>& tenants, const TenantLinks& links, qorcred::Date today);
  /// Nothing is changed any more; for Show().
  void Forget() { changed_.clear(); }
  /// What a person has changed.
  [[nodiscard]] TenantEntry Entry() const;

 private:
  struct TextField {
    QLineEdit* line;
    std::string TenantRow::*shown;
    std::optional<std::string> TenantEntry::*entered;
  };

  [[nodiscard]] std::vector<TextField> TextFields() const;
  [[nodiscard]] std::vector<QComboBox*> Schedules() const;
  void Connect();
  void ConnectDates();
  void Note(QWidget& widget);
  [[nodiscard]] bool IsChanged(const QWidget* widget) const { return changed_.contains(widget); }
  void ShowNames(const std::vector<TenantRow>& tenants);
  void ShowPeriod(const std::vector<TenantRow>& tenants, qorcred::Date today);
  void ShowAccess(const std::vector<TenantRow>& tenants, const TenantLinks& links);
  void ShowHeld(const std::vector<TenantRow>& tenants, const TenantLinks& links);

  Ui::TenantsPage& ui_;
  std::function<void(QWidget& widget)> onEdit_;
  std::set<const QWidget*> changed_;
  std::optional<qorcred::Date> start_;
  std::optional<qorcred::Date> end_;
};

}  // namespace qorhost
