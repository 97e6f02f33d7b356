#include "host/desktop/screens/dir_code_page.h"

#include <screens/ui_dir_code_page.h>

#include <QInputDialog>
#include <array>

#include "host/desks/dir_code_entry.h"
#include "host/desks/list_entries.h"
#include "host/desks/row_names.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/kept_entry.h"
#include "host/desktop/screens/list_finder.h"

namespace qorhost {

namespace {

namespace field = dir_code_field;

constexpr std::array kFields{FieldWidget{field::kChoice, "cbodirectorycode"},
                             FieldWidget{field::kCode, "txtdirectorycode"},
                             FieldWidget{field::kPhone, "txtPhoneNo"},
                             FieldWidget{field::kExtension, "txtExtn"},
                             FieldWidget{field::kDelay, "pvnTimeDelay"},
                             FieldWidget{field::kDnd, "cboSchedules"},
                             FieldWidget{field::kForwardPhone, "txtPhoneNocf"},
                             FieldWidget{field::kForwardExtension, "txtExtnCF"},
                             FieldWidget{field::kForwardSchedule, "cboSchedulesCF"},
                             FieldWidget{field::kForwardDelay, "pvnTimeDelayCF"},
                             FieldWidget{field::kStart, "dtpStart"},
                             FieldWidget{field::kEnd, "dtpEnd"},
                             FieldWidget{field::kActive, "chkActive"},
                             FieldWidget{field::kDisplayName, "txtDisplayName"}};

/// What a person enters beside the code itself.
constexpr std::array<std::string_view, 16> kEntered{
    "txtPhoneNo",         "txtExtn",           "pvnTimeDelay", "chkDND",
    "cboSchedules",       "txtPhoneNocf",      "txtExtnCF",    "pvnTimeDelayCF",
    "cboSchedulesCF",     "chkCallForwarding", "chkActive",    "txtDisplayName",
    "chkShowDisplayName", "chkShowDirCode",    "dtpStart",     "dtpEnd"};

}  // namespace

DirCodePage::DirCodePage(Workplace& place)
    : EntryPage(place), ui_(std::make_unique<Ui::DirCodePage>()) {
  ui_->setupUi(this);
  ConnectWidgets();
  OpenDesk();
  ShowOpened();
}

DirCodePage::~DirCodePage() = default;

std::span<const FieldWidget> DirCodePage::Fields() const {
  return kFields;
}

void DirCodePage::OpenDesk() {
  auto desk = std::make_unique<DirCodeDesk>(session(), place().unitKey());
  binding_.reset();  // not before: a store that fails leaves the screen as it is
  desk_ = std::move(desk);
  // The buttons are those of a screen that edits and selects in steps of its own.
  binding_.emplace(desk_->screen(), *this, std::vector<std::string_view>{"cmdedit", "cmdSelect"});
  binding_->OnEdit([this](QWidget& widget) {
    if (&widget == ui_->lstTenants) {
      return;  // looking at a tenant enters nothing
    }
    NoteEdit(widget);
  });
  binding_->OnChoice("cbodirectorycode", [this](std::int32_t index) { ChooseCode(index); });
}

void DirCodePage::ConnectWidgets() {
  connect(ui_->saveButton, &QPushButton::clicked, this, [this] { Save(); });
  connect(ui_->newButton, &QPushButton::clicked, this, [this] {
    if (MayLeaveEntry()) {
      (void)Run(tr("A new directory code cannot be begun."), [this] { StartNew(); });
      ui_->txtdirectorycode->setFocus();
    }
  });
  connect(ui_->renumberButton, &QPushButton::clicked, this, [this] { Renumber(); });
  connect(ui_->deleteButton, &QPushButton::clicked, this, [this] { Delete(); });
  FindEntriesBy(
      *ui_->findCode, [this]() -> const ListModel& { return desk_->codes(); },
      [this](std::int32_t index) {
        ChooseCode(index);
        ShowChanges();
      });
}

bool DirCodePage::isNew() {
  return desk_->codes().selected() < placeholders::kInDirCodes;
}

void DirCodePage::ShowMode() {
  ShowChanges();
  const bool fresh = isNew();
  ui_->txtdirectorycode->setReadOnly(!fresh);
  ui_->renumberButton->setEnabled(!fresh);
  ui_->deleteButton->setEnabled(!fresh);
  ui_->groupTenants->setVisible(!fresh);
  ui_->title->setText(fresh ? tr("New directory code")
                            : tr("Directory code %1").arg(ToQt(desk_->Shown().entry)));
}

void DirCodePage::StartNew() {
  desk_->StartNew();
  ShowOpened();
}

/// The screen as it opened, for a new code.
void DirCodePage::ShowOpened() {
  desk_->codes().Select(0);
  TickForNewCode(desk_->screen());
  SetEntered(false);
  ShowMode();
}

void DirCodePage::Refresh() {
  const std::int32_t rid = desk_->Shown().rid;
  const bool wasNew = isNew();
  (void)Run(tr("The directory codes cannot be shown."), [&] {
    OpenDesk();
    if (wasNew || desk_->codes().FindData(rid) < placeholders::kInDirCodes) {
      ShowOpened();
    } else {
      ShowRow(rid);
    }
  });
}

void DirCodePage::ChooseCode(std::int32_t index) {
  if (!MayLeaveEntry()) {
    return;
  }
  if (index < placeholders::kInDirCodes) {
    (void)Run(tr("A new directory code cannot be begun."), [this] { StartNew(); });
    return;
  }
  (void)Run(tr("The directory code cannot be shown."),
            [this, index] { ShowRow(desk_->codes().ItemData(index)); });
}

void DirCodePage::ShowRow(std::int32_t rid) {
  (void)desk_->Select(RowName(rid));
  SetEntered(false);
  ShowMode();
}

void DirCodePage::Save() {
  isNew() ? SaveNew() : SaveEdited();
}

/// Whether it was done: then nothing is entered any more.
bool DirCodePage::RunOnCode(const QString& title, const std::function<Outcome()>& operation) {
  const bool done = RunTold(title, "directory code", desk_->screen(), operation);
  if (done) {
    SetEntered(false);
  }
  return done;
}

void DirCodePage::ShowOvertaken() {
  const bool fresh = isNew();
  const std::int32_t rid = desk_->Shown().rid;
  const KeptEntry entry(desk_->screen(), kEntered);
  const std::string code = desk_->screen().Box("txtdirectorycode").text();
  (void)Run(tr("The directory codes cannot be shown."), [&] {
    OpenDesk();
    if (!fresh && desk_->codes().FindData(rid) < placeholders::kInDirCodes) {
      ShowOpened();  // it was deleted, and what was entered for it is of no use
      return;
    }
    if (fresh) {
      ShowOpened();
      desk_->screen().Box("txtdirectorycode").SetText(code);
    } else {
      ShowRow(rid);
    }
    entry.PutInto(desk_->screen());
    SetEntered(true);
    ShowChanges();
  });
}

void DirCodePage::SaveNew() {
  AddedDirCode added;
  const bool done = RunOnCode(tr("Saving the directory code"), [&] {
    desk_->screen().ClearFocus();
    CheckTypedCode(*desk_);
    added = desk_->AddCode();
    return WithoutFacts(added);
  });
  if (!done) {
    return;
  }
  place().Tell(tr("Saved directory code %1.").arg(ToQt(added.number)));
  (void)RunBehind(tr("The directory code cannot be shown."), [&] { ShowRow(added.rid); });
  place().TellChanged();
}

void DirCodePage::SaveEdited() {
  const ShownDirCode shown = desk_->Shown();
  Outcome saved;
  const bool done = RunOnCode(tr("Saving the directory code"), [&] {
    desk_->screen().ClearFocus();
    CheckTypedChange(*desk_);
    saved = desk_->SaveEdited();
    return WithoutFacts(saved);
  });
  if (!done) {
    return;
  }
  place().Tell(saved.unchanged ? tr("%1 is stored so already.").arg(ToQt(shown.entry))
                               : tr("Saved directory code %1.").arg(ToQt(shown.entry)));
  (void)RunBehind(tr("The directory code cannot be shown."), [&] { ShowRow(shown.rid); });
  place().TellChanged();
}

void DirCodePage::Renumber() {
  if (!MayLeaveEntry()) {
    return;
  }
  const ShownDirCode shown = desk_->Shown();
  bool given = false;
  const QString number = QInputDialog::getText(
      this, tr("Renumber"), tr("New code in place of %1:").arg(ToQt(shown.entry)),
      QLineEdit::Normal, QString(), &given);
  if (!given) {
    return;
  }
  const bool done = RunOnCode(tr("Renumbering the directory code"), [&] {
    (void)desk_->Select(RowName(shown.rid));
    desk_->TypeCode(FromQt(number.trimmed()));
    return WithoutFacts(desk_->Renumber());
  });
  if (done) {
    place().Tell(tr("%1 is %2 now.").arg(ToQt(shown.entry), number.trimmed()));
    place().TellChanged();
  }
  (void)RunBehind(tr("The directory code cannot be shown."), [&] {
    if (done) {
      desk_->RefreshCodes();
    }
    ShowRow(shown.rid);
  });
}

void DirCodePage::Delete() {
  const ShownDirCode shown = desk_->Shown();
  const bool done =
      RunOnCode(tr("Deleting the directory code"), [&] { return WithoutFacts(desk_->Delete()); });
  if (!done) {
    return;
  }
  place().Tell(tr("Deleted directory code %1.").arg(ToQt(shown.entry)));
  (void)RunBehind(tr("The directory codes cannot be shown."), [&] {
    desk_->RefreshCodes();
    StartNew();
  });
  place().TellChanged();
}

}  // namespace qorhost
