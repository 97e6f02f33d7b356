#include "host/desks/credential_desk.h"

#include <fmt/format.h>

#include <utility>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/schema.h"
#include "frame/text.h"
#include "host/desks/credential_choice.h"
#include "host/desks/credential_rows.h"
#include "host/desks/credential_slots.h"
#include "host/desks/desk_error.h"
#include "host/desks/entered_numbers.h"
#include "host/desks/list_entries.h"
#include "host/desks/operation_record.h"
#include "host/desks/typed_input.h"
#include "host/desks/unit_settings.h"

namespace qorhost {

namespace {

constexpr std::int32_t kNoPreviousRow = 0;

std::shared_ptr<ScreenModel> MakeScreen(DeskScreen kind, qorcred::Date today) {
  return kind == DeskScreen::kTenantCreating ? MakeTenantCreatingScreen(today)
                                             : MakeCredentialScreen(today);
}

/// Counts the rows of a save and stops it when its progress handler says so: what the insert
/// raises ends the save, which undoes itself.
class WatchedSave {
 public:
  WatchedSave(const Progress& progress, std::int64_t total) : progress_(progress), total_(total) {}

  void OnInsert(std::string_view table) {
    if (!qorcred::SameMember(table, qorcred::table::CREDENTIALBANK)) {
      return;
    }
    ++done_;
    if (!cancelled_ && !progress_(done_, total_)) {
      cancelled_ = true;
      throw qorcred::RuntimeError(qorcred::ErrorNumber::kInvalidProcedureCall);
    }
  }
  [[nodiscard]] bool cancelled() const { return cancelled_; }

 private:
  const Progress& progress_;
  std::int64_t total_;
  std::int64_t done_ = 0;
  bool cancelled_ = false;
};

}  // namespace

CredentialDesk::CredentialDesk(DeskSession& session, std::int32_t unitKey, DeskScreen kind)
    : session_(session),
      unitKey_(unitKey),
      kind_(kind),
      screen_(MakeScreen(kind, session.Today())),
      shown_(session, unitKey) {
  StartController();
  Open();
}

void CredentialDesk::StartController() {
  controller_.emplace("clsCredential", session_.host(), session_.tracer());
  controller_->Set("gmobjCredentialScreen", qorcred::ObjectRef(screen_));
}

CredentialDesk::~CredentialDesk() {
  controller_->Set("gmobjCredentialScreen", qorcred::ObjectRef());
}

void CredentialDesk::Open() {
  // The screen's own handlers; they stand still while the controller writes the controls.
  typeSelected_ = screen_->List("cboCredentialType").OnSelect([this](std::int32_t /*index*/) {
    ShowTypesControls();
  });
  credentialSelected_ = credentials().OnSelect([this](std::int32_t index) {
    const bool byController = qorcred::ToBoolean(screen_->Variable("gblnModifiedFromClass"));
    if (index >= placeholders::kInCredentials && !byController) {
      controller_->Run<&qorcred::clsCredential::pbRetrieveCredentials>(
          session_.connection(), unitKey_, credentials().ItemData(index), kNoPreviousRow);
    }
  });

  shown_.TakeUnit();
  const OperationRecord opening(session_);
  FillDoors();
  controller_->Run<&qorcred::clsCredential::pbRetrieveSchedules>(session_.connection(), unitKey_);
  controller_->Run<&qorcred::clsCredential::pbRetrieveTenants>(session_.connection(), unitKey_);
  controller_->Run<&qorcred::clsCredential::pbRetrieveSettingsFromUnit>(session_.connection(),
                                                                        unitKey_);
  screen_->SetVariable("gblnDisplayFacilityCode", takesFacilityCode());
  RefreshCredentials();
  opening.RequireNoFailure("open the credential screen");

  // A unit with fewer than four doors ends this with a trapped failure, its labels being set.
  controller_->Run<&qorcred::clsCredential::pbRetrieveDoorDetails>(session_.connection(), unitKey_);
}

void CredentialDesk::ShowTypesControls() {
  const ListModel& types = screen_->List("cboCredentialType");
  const bool transmitter =
      types.selected() >= 0 && types.ItemData(types.selected()) == qorcred::kTransmitter;
  controller_->Run<&qorcred::clsCredential::pbTransmitterCtls>(transmitter);
}

void CredentialDesk::StartNew() {
  shown_.Forget();
  credentials().Select(0);
  for (const std::string_view box :
       {"txtFacilityCode", "txtPINStart", "txtPINEND", "txtIDCode", "txtSequenceCode"}) {
    screen_->Box(box).SetText("");
  }
  for (const std::string_view list : {"cboAssignedTo", "cboActivate"}) {
    screen_->List(list).Select(ListModel::kNone);
  }
  screen_->Option("optButtonDefault").SetOn(true);
  screen_->SetVariable("gstrTag", "");
  screen_->ClearFocus();
  ShowTypesControls();
}

/// The lists from which an operator chooses what to change.
void CredentialDesk::FillLists() {
  shown_.TakeUnit();
  const OperationRecord filling(session_);
  controller_->Run<&qorcred::clsCredential::pbRetrieveTenants>(session_.connection(), unitKey_);
  RefreshCredentials();
  filling.RequireNoFailure("fill the credential screen again");
}

void CredentialDesk::FillDoors() {
  ListModel& doors = screen_->List("cboActivate");
  doors.AddItem(std::string(kNoneEntry));
  const QueryResult result = session_.sql().Select(
      fmt::format("SELECT DOORNAME FROM DOORS WHERE UNITKEY={} ORDER BY DOORID", unitKey_));
  for (const ResultRow row : result.rows()) {
    doors.AddItem(qorcred::TextOrEmpty(row[0]));
  }
}

bool CredentialDesk::takesFacilityCode() const {
  return screen_->Box("txtFacilityCode").enabled();
}

ShownCredential CredentialDesk::Select(std::string_view credential) {
  std::int32_t index = FindCredential(session_, unitKey_, credentials(), credential);
  // The lists are to show what is stored: others may have deleted or renumbered it meanwhile.
  while (!ShowRow(credentials().ItemData(index))) {
    FillLists();
    index = FindCredential(session_, unitKey_, credentials(), credential);
  }
  Load(index);
  return Shown();
}

void CredentialDesk::SelectCredential(std::int32_t index) {
  const std::int32_t rid = credentials().ItemData(index);
  while (!ShowRow(rid)) {
    FillLists();
    index = credentials().FindData(rid);
    if (index < placeholders::kInCredentials) {
      throw FailureError("cannot load the credential: somebody else has deleted it meanwhile");
    }
  }
  Load(index);
}

void CredentialDesk::Load(std::int32_t index) {
  const OperationRecord loading(session_);
  credentials().Select(index);
  loading.RequireNoFailure("load the credential");
}

/// What a change of the row may not overwrite: the row and its holders. False when the lists are
/// older than the row.
bool CredentialDesk::ShowRow(std::int32_t rid) {
  if (session_.sql().work().open()) {
    return true;  // beside nobody else
  }
  return shown_.TakeRows(
      {{fmt::format("SELECT * FROM CREDENTIALBANK WHERE UnitKey={} AND RID={}", unitKey_, rid),
        ShownAs::kRow, "CREDENTIALBANK"},
       {fmt::format("SELECT * FROM TENANTS WHERE UnitKey={} AND {} ORDER BY RID", unitKey_,
                    Holds(rid)),
        ShownAs::kHolder, "TENANTS"}});
}

/// The controller has left the screen with the row's former date: the next change would be stale.
void CredentialDesk::LoadAgain(std::int32_t rid) {
  if (session_.sql().work().open()) {
    return;  // many follow, and none on this row
  }
  controller_->Run<&qorcred::clsCredential::pbRetrieveCredentials>(session_.connection(), unitKey_,
                                                                   rid, kNoPreviousRow);
}

ShownCredential CredentialDesk::Shown() const {
  const ListModel& list = screen_->List("cboCredentials");
  const ListModel& doors = screen_->List("cboActivate");
  const ListModel& tenants = screen_->List("cboAssignedTo");
  ShownCredential shown;
  if (list.selected() != ListModel::kNone) {
    shown.entry = list.SelectedText();
    shown.rid = list.ItemData(list.selected());
  }
  if (doors.visible()) {
    shown.door = doors.SelectedText();
  }
  if (tenants.selected() >= placeholders::kInTenants) {
    shown.tenant = qorcred::Trim(tenants.Text(tenants.selected()));
  }
  return shown;
}

void CredentialDesk::RequireUnitSettings() {
  // Nobody can take them away meanwhile, and an import asks for every line.
  if (hasSettings_ && session_.sql().work().locked()) {
    return;
  }
  RequireSettings(session_, unitKey_);
  hasSettings_ = true;
}

Assignment CredentialDesk::Chosen() const {
  const ListModel& tenants = screen_->List("cboAssignedTo");
  const bool chosen = tenants.selected() >= placeholders::kInTenants;
  return {unitKey_, Shown().rid,
          chosen ? std::optional(tenants.ItemData(tenants.selected())) : std::nullopt};
}

AssignmentLosses CredentialDesk::LossesOfSaving() {
  RequireUnitSettings();
  const Assignment chosen = Chosen();
  shown_.TakeAlso({SelectOfTaker(chosen), ShownAs::kTaker, "TENANTS"});
  return LossesOf(session_, chosen, credentials());
}

void CredentialDesk::RefreshCredentials(std::int32_t rid) {
  constexpr int kMostTries = 10;
  for (int tries = 0; tries < kMostTries; ++tries) {
    // The controller counts the rows to find the entry of one, also those without an entry.
    controller_->Run<&qorcred::clsCredential::pbRetrieveCredentials>(
        session_.connection(), unitKey_, qorcred::kAllCredentials,
        hidesRows_ ? kNoPreviousRow : rid);
    const EntryRows rows = GiveEntriesTheirRows(session_, unitKey_, credentials());
    hidesRows_ = rows != EntryRows::kOwn;
    if (rows == EntryRows::kOlder) {
      continue;
    }
    const std::int32_t index = credentials().FindData(rid);
    if (hidesRows_ && index >= placeholders::kInCredentials) {
      credentials().Select(index);
    }
    return;
  }
  throw FailureError("cannot show the credentials: others change them all the time; try again");
}

Outcome CredentialDesk::Work(std::string what, const std::function<Outcome()>& run) {
  return RunOnScreen(session_, shown_, *screen_,
                     {std::move(what), run, [this] { StartController(); }});
}

IssuedCredentials CredentialDesk::SaveNew(const Progress& progress) {
  RequireUnitSettings();
  IssuedCredentials issued;
  const std::string& first = screen_->Box("txtPINStart").text();
  const std::string& last = screen_->Box("txtPINEND").text();
  const std::string what =
      fmt::format("issue {} {}{}", screen_->List("cboCredentialType").SelectedText(), first,
                  last.empty() || last == first ? "" : " to " + last);
  static_cast<Outcome&>(issued) =
      Work(what, [this, &issued, &progress] { return SaveOnce(issued, progress); });
  return issued;
}

Outcome CredentialDesk::SaveOnce(IssuedCredentials& issued, const Progress& progress) {
  const auto entered = ReadEntered(*screen_);
  WatchedSave watched(progress, entered ? entered->Count() : 0);
  OperationRecord saving(session_, progress ? InsertHandler([&watched](std::string_view table) {
                           watched.OnInsert(table);
                         })
                                            : nullptr);
  const bool saved = controller_->Run<&qorcred::clsCredential::pbSave>(
      session_.connection(), unitKey_, kind_ == DeskScreen::kTenantCreating, false,
      &issued.lastRid);
  Outcome outcome = saving.End(saved);
  if (watched.cancelled()) {
    outcome.ending = Ending::kCancelled;
    outcome.failures.clear();  // what stopped the save
  }
  if (saved) {
    // The save left both boxes filled, with numbers that it accepted.
    const EnteredNumbers numbers = ReadEntered(*screen_).value_or(EnteredNumbers{});
    issued.first = numbers.first;
    issued.last = numbers.last;
    issued.type = screen_->List("cboCredentialType").SelectedText();
    issued.newTenantIds = qorcred::TextOrEmpty(screen_->Variable("gstrNewTenantIDs"));
  }
  return outcome;
}

Outcome CredentialDesk::SaveSelected() {
  RequireUnitSettings();
  const ShownCredential credential = Shown();
  Outcome outcome = Work("edit credential " + credential.entry, [this] {
    OperationRecord saving(session_);
    Outcome saved = saving.End(controller_->Run<&qorcred::clsCredential::pbSave>(
        session_.connection(), unitKey_, false, true, nullptr));
    // The controller answers True also when the tenant is not there any more.
    if (saved.done() && !IsHeldAsChosen(session_, Chosen())) {
      saved.ending = Ending::kStale;
    }
    return saved;
  });
  if (outcome.done()) {
    LoadAgain(credential.rid);
  }
  return outcome;
}

/// Whether the credential has the door and the one holder that the screen shows, or none.
bool CredentialDesk::IsStoredAsShown() {
  if (!IsHeldByChosenAlone(session_, Chosen())) {
    return false;
  }
  const QueryResult door =
      session_.sql().Select(fmt::format("SELECT DOORCODE FROM CREDENTIALBANK WHERE UnitKey={} AND "
                                        "RID={}",
                                        unitKey_, Shown().rid));
  const ListModel& doors = screen_->List("cboActivate");
  return door.rowCount == 1 &&
         (!doors.visible() ||
          qorcred::RoundToLong(qorcred::NumericValue(door.table->At(0, 0))) == doors.selected());
}

ChangedCredential CredentialDesk::SaveEdited() {
  // The controller would take the credential from its tenant, give it back and queue the step.
  if (IsStoredAsShown()) {
    return {Outcome::Unchanged(), Shown()};
  }
  const std::int32_t rid = Shown().rid;
  Outcome outcome = SaveSelected();
  if (outcome.ending == Ending::kRefused) {
    RefreshCredentials(rid);
  }
  return {std::move(outcome), Shown()};
}

Outcome CredentialDesk::AssignIssued(const IssuedCredentials& issued, std::int32_t tenant) {
  const std::int32_t index = credentials().AddItemWithData(
      fmt::format("{}-{}", issued.type, screen_->Box("txtPINStart").text()), issued.lastRid);
  SelectCredential(index);
  screen_->List("cboAssignedTo").Select(tenant);
  return SaveSelected();
}

Outcome CredentialDesk::Delete() {
  const ShownCredential credential = Shown();
  if (credential.rid <= 0) {
    throw FailureError("cannot delete a credential: none is selected");
  }
  return Work("delete credential " + credential.entry, [this, rid = credential.rid] {
    OperationRecord deleting(session_);
    const CredentialHolders holders = HoldersOf(session_, unitKey_, rid);
    const bool deleted =
        controller_->Run<&qorcred::clsCredential::pbDelete>(session_.connection(), unitKey_, rid);
    if (deleted) {
      ReleaseHolders(session_, unitKey_, rid, holders);
    }
    return deleting.End(deleted);
  });
}

ChangedCredential CredentialDesk::Renumber(CredentialNumber number) {
  const ShownCredential credential = Shown();
  const QueryResult same = session_.sql().Select(
      fmt::format("SELECT RID FROM CREDENTIALBANK WHERE UnitKey={} AND RID={} AND PINNo={}",
                  unitKey_, credential.rid, number.value()));
  if (same.rowCount > 0) {
    return {Outcome::Unchanged(), Shown()};
  }
  Outcome outcome = Work("renumber credential " + credential.entry, [&] {
    OperationRecord renumbering(session_);
    const bool stored = controller_->Run<&qorcred::clsCredential::pbUpdatePinNo>(
        session_.connection(), number.value(), unitKey_);
    if (stored) {
      // The controller renumbers without a word to the unit, which knows it by its number.
      QueueHoldersSteps(session_, unitKey_, credential.rid);
    }
    Outcome renumbered = renumbering.End(stored);
    if (renumbered.ending == Ending::kRefused && renumbered.messages.empty()) {
      renumbered.ending = Ending::kStale;
    }
    return renumbered;
  });
  if (outcome.done()) {
    LoadAgain(credential.rid);
  }
  return {std::move(outcome), Shown()};
}

}  // namespace qorhost
