#include "host/desks/credential_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/schema.h"
#include "frame/siblings.h"
#include "frame/text.h"
#include "frame/trap.h"
#include "host/desks/credential_fields.h"
#include "host/desks/credential_slots.h"
#include "host/desks/credential_types.h"
#include "host/desks/desk_error.h"
#include "host/desks/entered_numbers.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/tenant_name.h"
#include "host/desks/typed_input.h"
#include "host/desks/unit_settings.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

constexpr std::string_view kNoDoor = "<None>";
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

CredentialNumber::CredentialNumber(std::string_view typed)
    : value_(ReadLong(credential_field::kNewNumber, typed)) {
  if (value_ < 0 || value_ > qorcred::kHighestCredentialNumber) {
    throw InputFault(credential_field::kNewNumber, typed,
                     fmt::format("{{field}} '{{value}}' must be a whole number from 1 to {}",
                                 qorcred::kHighestCredentialNumber));
  }
}

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
  typeSelected_ = screen_->List("cboCredentialType").OnSelect([this](std::int32_t index) {
    const bool transmitter =
        index >= 0 && screen_->List("cboCredentialType").ItemData(index) == qorcred::kTransmitter;
    controller_->Run<&qorcred::clsCredential::pbTransmitterCtls>(transmitter);
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
  doors.AddItem(std::string(kNoDoor));
  const QueryResult result = session_.sql().Select(
      fmt::format("SELECT DOORNAME FROM DOORS WHERE UNITKEY={} ORDER BY DOORID", unitKey_));
  for (const ResultRow row : result.rows()) {
    doors.AddItem(qorcred::TextOrEmpty(row[0]));
  }
}

bool CredentialDesk::takesFacilityCode() const {
  return screen_->Box("txtFacilityCode").enabled();
}

/// The rows that a person may mean.
std::vector<std::int32_t> CredentialDesk::RowsNamed(std::string_view credential) {
  const std::string_view wanted = qorcred::Trim(credential);
  if (const auto rid = RowNamed(credential_field::kCredential, wanted)) {
    return {*rid};
  }
  std::vector<std::int32_t> rids;
  if (const auto number = WholeNumber(wanted)) {
    const QueryResult found = session_.sql().Select(
        fmt::format("SELECT RID FROM CREDENTIALBANK WHERE UnitKey={} AND PINNo={} ORDER BY RID",
                    unitKey_, *number));
    for (const ResultRow row : found.rows()) {
      rids.push_back(qorcred::ToLong(row[0]));
    }
    return rids;
  }
  const ListModel& list = credentials();
  for (const std::int32_t index : EntriesWithText(list, wanted, placeholders::kInCredentials)) {
    rids.push_back(list.ItemData(index));
  }
  return rids;
}

/// "Transmitter 301, facility code 7 (rid:609); ...", not too many of them.
std::string CredentialDesk::Described(std::vector<std::int32_t> rids) {
  constexpr std::size_t kMost = 10;
  const bool more = rids.size() > kMost;
  rids.resize(std::min(rids.size(), kMost));
  const QueryResult found = session_.sql().Select(fmt::format(
      "SELECT RID, CredentialType, PINNo, FacilityCode FROM CREDENTIALBANK WHERE UnitKey={} AND "
      "RID IN ({}) ORDER BY RID",
      unitKey_, fmt::join(rids, ",")));
  std::string described;
  for (const ResultRow row : found.rows()) {
    const std::string_view label = ScreenLabelOf(qorcred::NumericValue(row[1]));
    described += fmt::format("{}{} {}, facility code {} (rid:{})", described.empty() ? "" : "; ",
                             label.empty() ? "Credential" : label, qorcred::TextOrEmpty(row[2]),
                             qorcred::TextOrEmpty(row[3]), qorcred::ToLong(row[0]));
  }
  return more ? described + "; ..." : described;
}

std::int32_t CredentialDesk::Find(std::string_view credential) {
  const std::vector<std::int32_t> rids = RowsNamed(credential);
  if (rids.size() > 1) {
    throw InputFault(credential_field::kCredential, credential,
                     fmt::format("{} credentials are called '{{value}}', say rid:N: {}",
                                 rids.size(), InReason(Described(rids))));
  }
  const std::int32_t index = rids.empty() ? ListModel::kNone : credentials().FindData(rids.front());
  if (index < placeholders::kInCredentials) {
    throw InputFault(credential_field::kCredential, credential,
                     fmt::format("unit {} has no credential '{{value}}'", unitKey_),
                     InputFault::Kind::kSeeList);
  }
  return index;
}

ShownCredential CredentialDesk::Select(std::string_view credential) {
  std::int32_t index = Find(credential);
  // The lists are to show what is stored: others may have deleted or renumbered it meanwhile.
  while (!ShowRow(credentials().ItemData(index))) {
    FillLists();
    index = Find(credential);
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

AssignmentLosses CredentialDesk::LossesOfSaving() {
  RequireUnitSettings();
  const std::int32_t rid = Shown().rid;
  const ListModel& tenants = screen_->List("cboAssignedTo");
  const bool chosen = tenants.selected() >= placeholders::kInTenants;
  const std::int32_t tenantId = chosen ? tenants.ItemData(tenants.selected()) : 0;
  const std::string ofTenant =
      fmt::format("FROM TENANTS WHERE UnitKey={} AND TenantID={}", unitKey_, tenantId);
  shown_.TakeAlso({fmt::format("SELECT * {} ORDER BY RID", ofTenant), ShownAs::kTaker, "TENANTS"});

  AssignmentLosses losses;
  const QueryResult holders = session_.sql().Select(fmt::format(
      "SELECT {} FROM TENANTS WHERE UnitKey={} AND {} AND TenantID<>{} ORDER BY TenantID",
      kTenantFullName, unitKey_, Holds(rid), tenantId));
  for (const ResultRow row : holders.rows()) {
    losses.holders.emplace_back(qorcred::Trim(qorcred::TextOrEmpty(row[0])));
  }
  const QueryResult full = session_.sql().Select(
      fmt::format("SELECT CREDENTIALID1 {} AND {} AND CREDENTIALID1<>{} AND CREDENTIALID2<>{}",
                  ofTenant, kHoldsTwo, rid, rid));
  if (full.rowCount > 0) {
    const std::int32_t replaced = qorcred::ToLong(full.table->At(0, 0));
    const std::int32_t index = credentials().FindData(replaced);
    losses.replaced =
        WithRid(index == ListModel::kNone ? "a credential" : credentials().Text(index), replaced);
  }
  return losses;
}

void CredentialDesk::RefreshCredentials(std::int32_t rid) {
  controller_->Run<&qorcred::clsCredential::pbRetrieveCredentials>(session_.connection(), unitKey_,
                                                                   qorcred::kAllCredentials, rid);
}

Outcome CredentialDesk::Work(std::string what, const std::function<Outcome()>& run) {
  return RunOnScreen(session_, shown_, *screen_,
                     {std::move(what), run, [this] { StartController(); }});
}

IssuedCredentials CredentialDesk::SaveNew(const Progress& progress) {
  RequireUnitSettings();
  IssuedCredentials issued;
  const std::string& last = screen_->Box("txtPINEND").text();
  const std::string what =
      fmt::format("issue {} {}{}", screen_->List("cboCredentialType").SelectedText(),
                  screen_->Box("txtPINStart").text(), last.empty() ? "" : " to " + last);
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
    if (saved.done() && !IsHeldAsChosen()) {
      saved.ending = Ending::kStale;
    }
    return saved;
  });
  if (outcome.done()) {
    LoadAgain(credential.rid);
  }
  return outcome;
}

bool CredentialDesk::IsHeldAsChosen() {
  const ListModel& tenants = screen_->List("cboAssignedTo");
  const std::int32_t chosen = tenants.selected();
  if (chosen < placeholders::kInTenants) {
    return true;
  }
  const QueryResult holder = session_.sql().Select(
      fmt::format("SELECT RID FROM TENANTS WHERE UnitKey={} AND TenantID={} AND {}", unitKey_,
                  tenants.ItemData(chosen), Holds(Shown().rid)));
  return holder.rowCount > 0;
}

/// Whether the credential has the door and the one holder that the screen shows, or none.
bool CredentialDesk::IsStoredAsShown() {
  const std::int32_t rid = Shown().rid;
  const ListModel& tenants = screen_->List("cboAssignedTo");
  const QueryResult holders = session_.sql().Select(
      fmt::format("SELECT TenantID FROM TENANTS WHERE UnitKey={} AND {}", unitKey_, Holds(rid)));
  const bool isHeld = tenants.selected() >= placeholders::kInTenants;
  if (holders.rowCount != (isHeld ? 1U : 0U) ||
      (isHeld &&
       qorcred::ToLong(holders.table->At(0, 0)) != tenants.ItemData(tenants.selected()))) {
    return false;
  }
  const QueryResult door = session_.sql().Select(fmt::format(
      "SELECT DOORCODE FROM CREDENTIALBANK WHERE UnitKey={} AND RID={}", unitKey_, rid));
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
    return deleting.End(
        controller_->Run<&qorcred::clsCredential::pbDelete>(session_.connection(), unitKey_, rid));
  });
}

/// The controller renumbers without a word to the unit, which knows the credential by its number.
void CredentialDesk::QueueHoldersSteps(std::int32_t rid) {
  qorcred::Trap(session_.ownHost(), "queue the holder's step", [&] {
    const QueryResult holders = session_.sql().Select(
        fmt::format("SELECT TenantID FROM TENANTS WHERE UnitKey={} AND {} ORDER BY TenantID",
                    unitKey_, Holds(rid)));
    if (holders.rowCount == 0) {
      return;
    }
    const qorcred::TenantComponent tenants(
        session_.ownHost().CreateComponent(qorcred::component::kTenant));
    for (const ResultRow row : holders.rows()) {
      tenants.CreateProgramSteps(session_.connection(), unitKey_, qorcred::ToLong(row[0]));
    }
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
      QueueHoldersSteps(credential.rid);
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
