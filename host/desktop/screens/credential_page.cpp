#include "host/desktop/screens/credential_page.h"

#include <screens/ui_credential_page.h>

#include <QInputDialog>
#include <array>

#include "frame/screen_names.h"
#include "host/desks/credential_entry.h"
#include "host/desks/list_entries.h"
#include "host/desks/words.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/credential_widgets.h"
#include "host/desktop/screens/kept_entry.h"
#include "host/desktop/screens/list_finder.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

/// The controls of the tenants that the tenant-creating screen makes.
const std::vector<std::string_view>& UnseenControls() {
  static const std::vector<std::string_view> unseen = [] {
    std::vector<std::string_view> names(qorcred::kScheduleLists.begin(),
                                        qorcred::kScheduleLists.end());
    names.insert(names.end(), {"chkActive", "dtpStart", "dtpEnd", "lblDoor1", "lblDoor2",
                               "lblDoor3", "lblDoor4"});
    return names;
  }();
  return unseen;
}

/// What a person enters, in the order in which the screen takes it.
constexpr std::array<std::string_view, 8> kEnteredNew{
    "cboCredentialType", "txtPINStart",     "txtPINEND",        "txtFacilityCode",
    "txtIDCode",         "txtSequenceCode", "optButtonDefault", "optButton4"};
constexpr std::array<std::string_view, 2> kEnteredEdit{"cboActivate", "cboAssignedTo"};

/// "Transmitter-301", or "Transmitter-301 to 305".
QString Described(const IssuedCredentials& issued) {
  const QString first = ToQt(issued.EntryOf(issued.first));
  return issued.Count() == 1
             ? first
             : CredentialPage::tr("%1 to %2").arg(first).arg(static_cast<qlonglong>(issued.last));
}

}  // namespace

CredentialPage::CredentialPage(Workplace& place)
    : EntryPage(place), ui_(std::make_unique<Ui::CredentialPage>()) {
  ui_->setupUi(this);
  ConnectWidgets();
  OpenDesk();
  ShowOpened();
}

CredentialPage::~CredentialPage() = default;

std::span<const FieldWidget> CredentialPage::Fields() const {
  return kCredentialWidgets;
}

void CredentialPage::OpenDesk() {
  auto desk =
      std::make_unique<CredentialDesk>(session(), place().unitKey(), DeskScreen::kCredentials);
  binding_.reset();  // not before: a store that fails leaves the screen as it is
  desk_ = std::move(desk);
  binding_.emplace(desk_->screen(), *this, UnseenControls());
  binding_->OnEdit([this](QWidget& widget) { NoteEdit(widget); });
  binding_->OnChoice("cboCredentials", [this](std::int32_t index) { ChooseCredential(index); });
}

void CredentialPage::ConnectWidgets() {
  connect(ui_->saveButton, &QPushButton::clicked, this, [this] { Save(); });
  connect(ui_->newButton, &QPushButton::clicked, this, [this] {
    if (MayLeaveEntry()) {
      (void)Run(tr("A new credential cannot be begun."), [this] { StartNew(); });
      ui_->txtPINStart->setFocus();
    }
  });
  connect(ui_->renumberButton, &QPushButton::clicked, this, [this] { Renumber(); });
  connect(ui_->deleteButton, &QPushButton::clicked, this, [this] { Delete(); });
  for (QRadioButton* howMany : {ui_->oneCredential, ui_->severalCredentials}) {
    connect(howMany, &QRadioButton::toggled, this, [this] { ShowMode(); });
  }
  FindEntriesBy(
      *ui_->findCredential, [this]() -> const ListModel& { return desk_->credentials(); },
      [this](std::int32_t index) {
        ChooseCredential(index);
        ShowChanges();
      });
}

bool CredentialPage::isNew() const {
  return desk_->credentials().selected() < placeholders::kInCredentials;
}

void CredentialPage::ShowMode() {
  ShowChanges();
  const bool fresh = isNew();
  const bool several = ui_->severalCredentials->isChecked();
  ui_->groupNew->setVisible(fresh);
  ui_->groupHolder->setVisible(!fresh);
  ui_->groupCard->setEnabled(fresh);
  ui_->firstLabel->setText(several ? tr("First n&umber:") : tr("N&umber:"));
  ui_->lastLabel->setVisible(several);
  ui_->txtPINEND->setVisible(several);
  ui_->renumberButton->setEnabled(!fresh);
  ui_->deleteButton->setEnabled(!fresh);
  ui_->title->setText(fresh ? tr("New credentials") : ToQt(desk_->Shown().entry));
}

void CredentialPage::StartNew() {
  desk_->StartNew();
  ShowOpened();
}

/// The screen as it opened, for new credentials.
void CredentialPage::ShowOpened() {
  desk_->credentials().Select(0);
  SetEntered(false);
  ShowMode();
}

void CredentialPage::Refresh() {
  const std::int32_t rid = desk_->Shown().rid;
  const bool wasNew = isNew();
  (void)Run(tr("The credentials cannot be shown."), [&] {
    OpenDesk();
    if (wasNew || desk_->credentials().FindData(rid) < placeholders::kInCredentials) {
      ShowOpened();
    } else {
      ShowRow(rid);
    }
  });
}

void CredentialPage::ChooseCredential(std::int32_t index) {
  if (!MayLeaveEntry()) {
    return;
  }
  if (index < placeholders::kInCredentials) {
    (void)Run(tr("A new credential cannot be begun."), [this] { StartNew(); });
    return;
  }
  (void)Run(tr("The credential cannot be shown."),
            [this, index] { ShowRow(desk_->credentials().ItemData(index)); });
}

void CredentialPage::ShowRow(std::int32_t rid) {
  desk_->SelectCredential(desk_->credentials().FindData(rid));
  SetEntered(false);
  ShowMode();
}

void CredentialPage::Save() {
  isNew() ? SaveNew() : SaveEdited();
}

void CredentialPage::SaveNew() {
  const NewCredentials entry = TypedCredentials(*desk_, ui_->severalCredentials->isChecked());
  IssuedCredentials issued;
  const bool done = RunTold(tr("Saving credentials"), "unit", desk_->screen(), [&] {
    desk_->screen().ClearFocus();
    EnterCredentials(*desk_, entry);
    issued = desk_->SaveNew(place().runner().progress());
    return WithoutFacts(issued);
  });
  if (!done) {
    return;
  }
  SetEntered(false);
  place().Tell(tr("Saved %1.").arg(Described(issued)));
  (void)RunBehind(tr("The credential cannot be shown."), [&] {
    desk_->RefreshCredentials();
    ShowRow(issued.lastRid);
  });
  place().TellChanged();
}

void CredentialPage::ShowOvertaken() {
  HasEntries() ? ShowWithEntry() : Refresh();
}

/// Others have changed the unit: it is shown as it is now, with what was entered.
void CredentialPage::ShowWithEntry() {
  const bool fresh = isNew();
  const std::int32_t rid = desk_->Shown().rid;
  const KeptEntry entry(desk_->screen(), fresh ? std::span<const std::string_view>(kEnteredNew)
                                               : std::span<const std::string_view>(kEnteredEdit));
  (void)Run(tr("The credentials cannot be shown."), [&] {
    OpenDesk();
    if (!fresh && desk_->credentials().FindData(rid) < placeholders::kInCredentials) {
      ShowOpened();  // it was deleted, and what was entered for it is of no use
      return;
    }
    fresh ? ShowOpened() : ShowRow(rid);
    entry.PutInto(desk_->screen());
    SetEntered(true);
    ShowChanges();
  });
}

bool CredentialPage::ConsentsToLosses() {
  const ShownCredential shown = desk_->Shown();
  const auto question =
      QuestionOf(desk_->LossesOfSaving(), WithRid(shown.entry, shown.rid), shown.tenant);
  if (!question) {
    return true;
  }
  const OpenGate open(place().runner().gate());
  return AskToGoOn(this, Told(*question));
}

void CredentialPage::SaveEdited() {
  ChangedCredential changed;
  bool refused = false;
  const bool done = RunTold(tr("Saving the credential"), "credential", desk_->screen(), [&] {
    desk_->screen().ClearFocus();
    refused = !ConsentsToLosses();
    if (!refused) {
      changed = desk_->SaveEdited();
    }
    return WithoutFacts(changed);
  });
  if (!done || refused) {
    return;
  }
  SetEntered(false);
  place().Tell(changed.unchanged
                   ? tr("%1 is stored so already.").arg(ToQt(changed.credential.entry))
                   : tr("Saved %1.").arg(ToQt(changed.credential.entry)));
  place().TellChanged();
}

void CredentialPage::Renumber() {
  if (!MayLeaveEntry()) {
    return;
  }
  const ShownCredential shown = desk_->Shown();
  bool given = false;
  const QString number =
      QInputDialog::getText(this, tr("Renumber"), tr("New number of %1:").arg(ToQt(shown.entry)),
                            QLineEdit::Normal, QString(), &given);
  if (!given) {
    return;
  }
  SetEntered(false);  // it was left before
  const bool done = RunTold(tr("Renumbering the credential"), "credential", [&] {
    return WithoutFacts(desk_->Renumber(CredentialNumber(FromQt(number.trimmed()))));
  });
  if (!done) {
    return;
  }
  place().Tell(tr("%1 has the number %2 now.").arg(ToQt(shown.entry), number.trimmed()));
  (void)RunBehind(tr("The credential cannot be shown."), [&] {
    desk_->RefreshCredentials();
    ShowRow(shown.rid);
  });
  place().TellChanged();
}

void CredentialPage::Delete() {
  const ShownCredential shown = desk_->Shown();
  // The controller asks where somebody holds it.
  if (shown.tenant.empty() && !AskToGoOn(this, tr("Delete %1?").arg(ToQt(shown.entry)))) {
    return;
  }
  const bool done =
      RunTold(tr("Deleting the credential"), "credential", [&] { return desk_->Delete(); });
  if (!done) {
    return;
  }
  place().Tell(tr("Deleted %1.").arg(ToQt(shown.entry)));
  (void)RunBehind(tr("The credentials cannot be shown."), [&] {
    desk_->RefreshCredentials();
    StartNew();
  });
  place().TellChanged();
}

}  // namespace qorhost
