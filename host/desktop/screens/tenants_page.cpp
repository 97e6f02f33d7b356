#include "host/desktop/screens/tenants_page.h"

#include <screens/ui_tenants_page.h>

#include <QItemSelectionModel>
#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "frame/convert.h"
#include "host/desks/credential_fields.h"
#include "host/desks/row_names.h"
#include "host/desks/shown_value.h"
#include "host/desks/tenant_fields.h"
#include "host/desks/tenant_list.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/changes_dialog.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/lease_end_dialog.h"
#include "host/desktop/screens/typing_pause.h"
#include "host/desktop/words/list_words.h"

namespace qorhost {

namespace {

namespace field = tenant_field;

constexpr std::size_t kRid = 0;  // the list's column
/// The fields of the list that are columns; the form has them all.
constexpr std::array<std::string_view, 3> kColumns{"name", "end", "code"};
constexpr int kMostNames = 8;

constexpr std::array kFields{FieldWidget{field::kLastName, "lastName"},
                             FieldWidget{field::kFirstName, "firstName"},
                             FieldWidget{field::kInitial, "initial"},
                             FieldWidget{field::kNameAtUnit, "nameAtUnit"},
                             FieldWidget{field::kGroup, "group"},
                             FieldWidget{field::kActive, "active"},
                             FieldWidget{field::kStart, "start"},
                             FieldWidget{field::kEnd, "end"},
                             FieldWidget{field::kSchedules, "schedule1"},
                             FieldWidget{field::kCard, "card1"},
                             FieldWidget{credential_field::kCredential, "card1"},
                             FieldWidget{field::kCode, "code"},
                             FieldWidget{field::kResident, "resident"}};

Table ChangeTable(const std::vector<TenantChange>& changes) {
  Table table;
  table.columns = {{FromQt(TenantsPage::tr("Tenant")), "tenant"},
                   {FromQt(TenantsPage::tr("Field")), "field"},
                   {FromQt(TenantsPage::tr("Before")), "before"},
                   {FromQt(TenantsPage::tr("After")), "after"}};
  for (const TenantChange& change : changes) {
    table.rows.push_back({change.name, change.field.title, FromQt(ShownInList({}, change.before)),
                          FromQt(ShownInList({}, change.after))});
  }
  return table;
}

QString Tenants(std::size_t count) {
  return count == 1 ? TenantsPage::tr("1 tenant")
                    : TenantsPage::tr("%1 tenants").arg(static_cast<qulonglong>(count));
}

QString NamesOf(const std::vector<TenantRow>& tenants) {
  QStringList names;
  for (const TenantRow& tenant : tenants) {
    if (names.size() == kMostNames) {
      names.append(
          TenantsPage::tr("and %1 more").arg(static_cast<qulonglong>(tenants.size()) - kMostNames));
      break;
    }
    names.append(ToQt(tenant.Name()));
  }
  return names.join(QStringLiteral(", "));
}

QString HeldByNobody(const std::vector<std::string>& cards) {
  QStringList names;
  for (const std::string& card : cards) {
    names.append(ToQt(card));
  }
  return names.join(QStringLiteral(", "));
}

}  // namespace

TenantsPage::TenantsPage(Workplace& place)
    : EntryPage(place),
      ui_([this] {
        auto ui = std::make_unique<Ui::TenantsPage>();
        ui->setupUi(this);
        return ui;
      }()),
      form_(*ui_, [this](QWidget& widget) { NoteEdit(widget); }) {
  SetUp(*ui_->tenants, list_);
  SqueezeColumns(*ui_->tenants);
  EmptyHint::Show(
      *ui_->tenants,
      HintOrNotFound(*ui_->findTenant, tr("The unit has no tenants yet. Enter the first one "
                                          "beside this list, and press Save.")));
  ConnectWidgets();
  OpenDesk();
  ShowList();
  ShowChosen();
}

TenantsPage::~TenantsPage() = default;

std::span<const FieldWidget> TenantsPage::Fields() const {
  return kFields;
}

void TenantsPage::ConnectWidgets() {
  NarrowBy(*ui_->findTenant, [this](const QString& text) {
    list_.Narrow(text);
    ShowCount();
    SelectChosen();
  });
  connect(ui_->tenants->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
          [this] { SelectChosen(); });
  connect(ui_->tenants->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!showing_) {
      TakeSelection();
    }
  });
  connect(ui_->saveButton, &QPushButton::clicked, this, [this] { Save(); });
  connect(ui_->newButton, &QPushButton::clicked, this, [this] {
    if (MayLeaveEntry()) {
      StartNew();
      ui_->lastName->setFocus();
    }
  });
  connect(ui_->endButton, &QPushButton::clicked, this, [this] { EndLeases(); });
  connect(ui_->deleteButton, &QPushButton::clicked, this, [this] { Delete(); });
}

void TenantsPage::OpenDesk() {
  desk_ = std::make_unique<TenantDesk>(session(), place().unitKey());
  form_.Offer(desk_->links(), ReadTenantGroups(session(), place().unitKey()), desk_->tenants());
}

void TenantsPage::ShowList() {
  List list = TenantList(desk_->tenants(), desk_->links());
  const std::vector<ListField> fields = list.fields;
  showing_ = true;
  list_.Show(std::move(list));
  showing_ = false;
  for (int column = 0; column < static_cast<int>(fields.size()); ++column) {
    const std::string& key = fields[static_cast<std::size_t>(column)].key;
    ui_->tenants->setColumnHidden(
        column, std::find(kColumns.begin(), kColumns.end(), key) == kColumns.end());
  }
  FitColumns(*ui_->tenants);
  ShowCount();
  SelectChosen();
}

void TenantsPage::ShowCount() {
  const QString all = Tenants(list_.total());
  ui_->tenantCount->setText(
      ui_->findTenant->text().isEmpty() ? all : tr("%1 of %2").arg(list_.rowCount()).arg(all));
}

/// Those of the chosen ones that the list shows.
void TenantsPage::SelectChosen() {
  const std::set<std::int32_t> chosen(chosen_.begin(), chosen_.end());
  QItemSelection rows;
  QModelIndex first;
  for (int row = 0; row < list_.rowCount() && !chosen.empty(); ++row) {
    if (chosen.contains(qorcred::ToLong(list_.Row(row).at(kRid)))) {
      const QModelIndex index = list_.index(row, 0);
      rows.select(index, list_.index(row, list_.columnCount() - 1));
      first = first.isValid() ? first : index;
    }
  }
  showing_ = true;
  ui_->tenants->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
  if (first.isValid()) {
    ui_->tenants->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  }
  showing_ = false;
}

TenantsPage::Rids TenantsPage::Selected() const {
  Rids rids;
  for (const QModelIndex& row : ui_->tenants->selectionModel()->selectedRows()) {
    rids.push_back(qorcred::ToLong(list_.Row(row.row()).at(kRid)));
  }
  std::sort(rids.begin(), rids.end());
  return rids;
}

void TenantsPage::TakeSelection() {
  const Rids selected = Selected();
  if (selected == chosen_) {
    return;
  }
  if (!MayLeaveEntry()) {
    SelectChosen();
    return;
  }
  (void)Run(tr("The tenants cannot be shown."), [&] {
    Choose(selected);
    SetEntered(false);
    form_.Forget();
    ShowChosen();
  });
}

void TenantsPage::Choose(const Rids& rids) {
  chosen_.clear();
  if (!rids.empty()) {
    desk_->Choose({RowNames(rids)});
  }
  chosen_ = rids;
  unread_.reset();
}

void TenantsPage::ShowChosen() {
  const std::vector<TenantRow> tenants =
      chosen_.empty() ? std::vector<TenantRow>() : desk_->chosen();
  form_.Show(tenants, desk_->links(), session().Today());
  ui_->title->setText(tenants.empty()       ? tr("New tenant")
                      : tenants.size() == 1 ? ToQt(tenants.front().Name())
                                            : Tenants(tenants.size()));
  ui_->severalHint->setVisible(tenants.size() > 1);
  ui_->periodHint->setVisible(tenants.empty());
  ui_->groupLease->updateGeometry();  // else it keeps the height of a hint that has gone
  ui_->endButton->setEnabled(!tenants.empty());
  ui_->deleteButton->setEnabled(!tenants.empty());
}

void TenantsPage::StartNew() {
  ShowAgain({});
}

/// Those of the tenants whom the store still has, in ascending order like these.
TenantsPage::Rids TenantsPage::StillThere(const Rids& rids) const {
  Rids there;
  for (const TenantRow& tenant : desk_->tenants()) {
    if (std::binary_search(rids.begin(), rids.end(), tenant.rid)) {
      there.push_back(tenant.rid);
    }
  }
  std::sort(there.begin(), there.end());
  return there;
}

void TenantsPage::ShowAgain(const Rids& rids) {
  (void)Run(tr("The tenants cannot be shown."), [&] { ShowStored(rids); });
}

/// What an operation has left; told already.
void TenantsPage::ShowSaved(const Rids& rids) {
  const auto own = session().sql().work().Committed(place().unitKey());
  if (!RunBehind(tr("The tenants cannot be shown."), [&] { ShowStored(rids); })) {
    chosen_ = rids;
    SetEntered(false);
    form_.Forget();
    if (rids.empty()) {
      ShowChosen();
    }
    unread_ = own.value_or(UnitVersion{});
  }
  place().TellChanged();
}

/// Where the reading behind a change was cancelled, the tenants are read again first: what others
/// have changed since is to be seen before something is done to it.
bool TenantsPage::AreSeen() {
  if (!unread_) {
    return true;
  }
  const Rids chosen = chosen_;
  bool alone = false;
  const bool done = Run(tr("The tenants cannot be shown."), [&] {
    const UnitVersion own = *unread_;
    ShowWithEntry();
    alone = session().sql().work().VersionOf(place().unitKey()) == own;
  });
  if (!done) {
    chosen_ = chosen;
  } else if (!alone) {
    place().Tell(tr("The tenants are shown as they are now. Look at them and try again."));
  }
  return done && alone;
}

/// What is stored now, with those of the tenants chosen who are still there.
void TenantsPage::ShowStored(const Rids& rids) {
  OpenDesk();
  Choose(StillThere(rids));
  SetEntered(false);
  form_.Forget();
  ShowList();
  ShowChosen();
}

/// Others have changed the unit: it is shown as it is now, with what was entered for those who are
/// still there.
void TenantsPage::ShowOvertaken() {
  (void)Run(tr("The tenants cannot be shown."), [this] { ShowWithEntry(); });
}

void TenantsPage::ShowWithEntry() {
  OpenDesk();
  const Rids there = StillThere(chosen_);
  if (there.empty() && !chosen_.empty()) {
    SetEntered(false);
    form_.Forget();
  }
  Choose(there);
  ShowList();
  ShowChosen();
}

void TenantsPage::Refresh() {
  ShowAgain(Rids(chosen_));
}

void TenantsPage::Save() {
  if (AreSeen()) {
    chosen_.empty() ? Add() : Edit();
  }
}

void TenantsPage::Add() {
  AddedTenant added;
  const bool done = RunTold(tr("Saving the tenant"), "unit", [&] {
    added = desk_->Add(form_.Entry(), Trial::kNo);
    return WithoutFacts(added);
  });
  if (!done) {
    return;
  }
  place().Tell(tr("Added tenant %1.").arg(ToQt(added.tenant.Name())));
  ShowSaved({added.tenant.rid});
}

bool TenantsPage::RunChange(const QString& what, const Change& change, Trial trial,
                            ChangedTenants& changed) {
  return RunTold(what, "tenants", [&] {
    changed = change(trial);
    return WithoutFacts(changed);
  });
}

/// Tries a change of many, shows what it would do, and does it when that is wanted.
void TenantsPage::MakeChange(const QString& what, const QString& question, const QString& go,
                             const Change& change) {
  ChangedTenants changed;
  if (!RunChange(what, change, Trial::kYes, changed)) {
    return;
  }
  if (changed.tenants == 0) {
    TellChanged(changed);
    return;
  }
  QString told = question.arg(Tenants(changed.tenants));
  if (!changed.freed.empty()) {
    told += tr(" Held by nobody then: %1.").arg(HeldByNobody(changed.freed));
  }
  if (ChangesDialog::Ask(this, told, ChangeTable(changed.changes), go) &&
      RunChange(what, change, Trial::kNo, changed)) {
    TellChanged(changed);
  }
}

void TenantsPage::TellChanged(const ChangedTenants& changed) {
  const Rids rids = chosen_;
  const QString whom = rids.size() == 1 ? ui_->title->text() : Tenants(changed.tenants);
  if (changed.tenants == 0) {
    SetEntered(false);
    place().Tell(tr("It is stored so already."));
    return;
  }
  place().Tell(
      changed.freed.empty()
          ? tr("Changed %1.").arg(whom)
          : tr("Changed %1. Held by nobody now: %2.").arg(whom, HeldByNobody(changed.freed)));
  ShowSaved(rids);
}

void TenantsPage::Edit() {
  const TenantEntry entry = form_.Entry();
  const auto change = [&](Trial trial) { return desk_->Edit(entry, trial); };
  if (chosen_.size() > 1) {
    MakeChange(tr("Changing the tenants"), tr("%1 will be changed."), tr("&Change"), change);
    return;
  }
  ChangedTenants changed;
  if (RunChange(tr("Saving the tenant"), change, Trial::kNo, changed)) {
    TellChanged(changed);
  }
}

void TenantsPage::EndLeases() {
  if (!MayLeaveEntry() || !AreSeen()) {
    return;
  }
  LeaseEndDialog asked(this, tr("The lease of %1 ends.").arg(NamesOf(desk_->chosen())),
                       session().Today());
  if (asked.exec() != QDialog::Accepted) {
    return;
  }
  const std::string day = FromQt(asked.day());
  MakeChange(tr("Ending leases"), tr("The lease of %1 will end."), tr("&End lease"),
             [&](Trial trial) { return desk_->End(day, asked.freesCards(), trial); });
}

void TenantsPage::Delete() {
  if (!AreSeen()) {
    return;
  }
  const std::vector<TenantRow> tenants = desk_->chosen();
  if (!AskToGoOn(this,
                 tr("Delete %1: %2?\nThe unit is told to forget them, and their cards are free.")
                     .arg(Tenants(tenants.size()), NamesOf(tenants)))) {
    return;
  }
  ChangedTenants deleted;
  const auto change = [&](Trial trial) { return desk_->Delete(trial); };
  if (!RunChange(tr("Deleting tenants"), change, Trial::kNo, deleted)) {
    return;
  }
  place().Tell(tr("Deleted %1.").arg(Tenants(deleted.tenants)));
  ShowSaved({});
}

}  // namespace qorhost
