#include "host/desktop/screens/tenant_creating_page.h"

#include <screens/ui_tenant_creating_page.h>

#include <array>

#include "host/desks/credential_entry.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/credential_widgets.h"
#include "host/desktop/screens/kept_entry.h"

namespace qorhost {

namespace {

/// The controls of a credential that is there already, and what the period says of itself.
const std::vector<std::string_view> kUnseen{"cboAssignedTo", "cboCredentials", "cboActivate",
                                            "lblActivate", "chkActive"};

/// What a person enters, in the order in which the screen takes it.
constexpr std::array<std::string_view, 14> kEntered{
    "cboCredentialType", "txtPINStart",   "txtPINEND",        "txtFacilityCode", "txtIDCode",
    "txtSequenceCode",   "cboSchedules1", "cboSchedules2",    "cboSchedules3",   "cboSchedules4",
    "dtpStart",          "dtpEnd",        "optButtonDefault", "optButton4"};

}  // namespace

TenantCreatingPage::TenantCreatingPage(Workplace& place)
    : EntryPage(place), ui_(std::make_unique<Ui::TenantCreatingPage>()) {
  ui_->setupUi(this);
  connect(ui_->saveButton, &QPushButton::clicked, this, [this] { Save(); });
  connect(ui_->newButton, &QPushButton::clicked, this, [this] {
    if (MayLeaveEntry()) {
      Refresh();
      ui_->txtPINStart->setFocus();
    }
  });
  OpenDesk();
}

TenantCreatingPage::~TenantCreatingPage() = default;

std::span<const FieldWidget> TenantCreatingPage::Fields() const {
  return kCredentialWidgets;
}

void TenantCreatingPage::OpenDesk() {
  auto desk =
      std::make_unique<CredentialDesk>(session(), place().unitKey(), DeskScreen::kTenantCreating);
  binding_.reset();  // not before: a store that fails leaves the screen as it is
  desk_ = std::move(desk);
  binding_.emplace(desk_->screen(), *this, kUnseen);
  binding_->OnEdit([this](QWidget& widget) { NoteEdit(widget); });
  SetEntered(false);
}

void TenantCreatingPage::Refresh() {
  (void)Run(tr("The screen cannot be shown."), [this] { OpenDesk(); });
}

void TenantCreatingPage::Save() {
  IssuedCredentials issued;
  const bool done = RunTold(tr("Creating tenants"), "unit", desk_->screen(), [&] {
    desk_->screen().ClearFocus();
    NewCredentials entry = TypedCredentials(*desk_, !ui_->txtPINEND->text().trimmed().isEmpty());
    entry.withTenants = true;
    EnterCredentials(*desk_, entry);
    issued = desk_->SaveNew(place().runner().progress());
    return WithoutFacts(issued);
  });
  if (!done) {
    return;
  }
  place().Tell(tr("Created %1 tenants with %2 to %3.")
                   .arg(static_cast<qulonglong>(issued.NewTenants().size()))
                   .arg(ToQt(issued.EntryOf(issued.first)))
                   .arg(static_cast<qlonglong>(issued.last)));
  SetEntered(false);
  (void)RunBehind(tr("The screen cannot be shown."), [this] { OpenDesk(); });
  place().TellChanged();
}

/// Others have changed the unit: it is shown as it is now, with what was entered.
void TenantCreatingPage::ShowOvertaken() {
  const KeptEntry entry(desk_->screen(), kEntered);
  (void)Run(tr("The screen cannot be shown."), [&] {
    OpenDesk();
    entry.PutInto(desk_->screen());
    SetEntered(true);
    ShowChanges();
  });
}

}  // namespace qorhost
