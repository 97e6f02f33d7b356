#include "host/desks/dir_code_desk.h"

#include <fmt/format.h>

#include <vector>

#include "frame/convert.h"
#include "frame/row_state.h"
#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/desks/dir_code_fields.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/operation_record.h"
#include "host/desks/row_names.h"
#include "host/desks/typed_input.h"
#include "host/desks/unit_settings.h"

namespace qorhost {

namespace {

namespace code_field = dir_code_field;

constexpr std::int32_t kNoFormerRow = 0;
constexpr std::int32_t kNoFormerIndex = 0;

/// The row that the choice names.
std::int32_t FindRow(DeskSession& session, std::int32_t unitKey, std::string_view choice) {
  if (const auto rid = RowNamed(code_field::kChoice, choice)) {
    return *rid;
  }
  const TakenNumber number = NumberTaken(qorcred::Trim(choice));
  std::vector<std::int32_t> rids;
  if (number.isAll && *number.value >= 0) {
    const QueryResult found = session.sql().Select(
        fmt::format("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY={} AND DIRECTORYCODE={} ORDER BY "
                    "RID",
                    unitKey, qorcred::NumberText(*number.value)));
    for (const ResultRow row : found.rows()) {
      rids.push_back(qorcred::ToLong(row[0]));
    }
  }
  if (rids.empty()) {
    throw InputFault(code_field::kChoice, choice,
                     fmt::format("unit {} has no directory code '{{value}}'", unitKey),
                     InputFault::Kind::kSeeList);
  }
  if (rids.size() > 1) {
    throw InputFault(
        code_field::kChoice, choice,
        fmt::format("{} rows have the directory code '{{value}}': name a row instead (rid:{})",
                    rids.size(), fmt::join(rids, ", rid:")));
  }
  return rids.front();
}

}  // namespace

DirCodeDesk::DirCodeDesk(DeskSession& session, std::int32_t unitKey)
    : session_(session),
      unitKey_(unitKey),
      screen_(MakeDirectoryCodeScreen(session.Today())),
      shown_(session, unitKey) {
  StartController();
  Open();
}

void DirCodeDesk::StartController() {
  controller_.emplace("clsDirCode", session_.host(), session_.tracer());
  controller_->Set("mobjDirCodeScreen", qorcred::ObjectRef(screen_));
}

DirCodeDesk::~DirCodeDesk() {
  controller_->Set("mobjDirCodeScreen", qorcred::ObjectRef());
}

void DirCodeDesk::Open() {
  codeSelected_ = codes().OnSelect([this](std::int32_t index) {
    const bool byController = qorcred::ToBoolean(screen_->Variable("gblnModifiedFromClass"));
    if (index >= placeholders::kInDirCodes && !byController) {
      controller_->Run<&qorcred::clsDirCode::pbRetrieveDirCodes>(
          session_.connection(), unitKey_, codes().ItemData(index), kNoFormerRow);
    }
  });
  RequireSettings(session_, unitKey_);
  FillLists();
}

void DirCodeDesk::FillLists() {
  shown_.TakeUnit();
  const OperationRecord filling(session_);
  controller_->Run<&qorcred::clsDirCode::pbRetrieveSchedules>(session_.connection(), unitKey_);
  controller_->Run<&qorcred::clsDirCode::pbRetrieveSettingsFromUnit>(session_.connection(),
                                                                     unitKey_);
  RefreshCodes();
  filling.RequireNoFailure("open the directory-code screen");
}

std::int32_t DirCodeDesk::Find(std::string_view choice) {
  const std::int32_t rid = FindRow(session_, unitKey_, choice);
  const std::int32_t index = codes().FindData(rid);
  if (index < placeholders::kInDirCodes) {
    throw InputFault(code_field::kChoice, choice,
                     fmt::format("unit {} has no directory code in row {}", unitKey_, rid),
                     InputFault::Kind::kSeeList);
  }
  return index;
}

ShownDirCode DirCodeDesk::Select(std::string_view choice) {
  std::int32_t index = Find(choice);
  // The list is to show the code as it is stored: an edit stores what the list shows.
  while (!ShowRow(codes().ItemData(index))) {
    FillLists();
    index = Find(choice);
  }
  const OperationRecord loading(session_);
  codes().Select(index);
  loading.RequireNoFailure("load the directory code");
  loaded_ = screen_->Snapshot();
  return Shown();
}

/// What a change of the row may not overwrite: the row and its holders. False when the list is
/// older than the row.
bool DirCodeDesk::ShowRow(std::int32_t rid) {
  const std::string ofRow = fmt::format("UNITKEY={} AND RID={}", unitKey_, rid);
  return shown_.TakeRows(
      {{"SELECT * FROM DIRECTORYCODE WHERE " + ofRow, ShownAs::kRow, "DIRECTORYCODE"},
       {fmt::format("SELECT * FROM TENANTS WHERE UNITKEY={} AND DIRECTORYCODE={} ORDER BY RID",
                    unitKey_, rid),
        ShownAs::kHolder, "TENANTS"}});
}

ShownDirCode DirCodeDesk::Shown() {
  const std::int32_t selected = codes().selected();
  return selected == ListModel::kNone
             ? ShownDirCode{}
             : ShownDirCode{codes().SelectedText(), codes().ItemData(selected)};
}

void DirCodeDesk::StartNew() {
  loaded_.reset();
  shown_.Forget();
  codes().Select(0);
  for (const std::string_view box : {"txtdirectorycode", "txtPhoneNo", "txtExtn", "txtPhoneNocf",
                                     "txtExtnCF", "txtDisplayName"}) {
    screen_->Box(box).SetText("");
  }
  for (const std::string_view box :
       {"chkDND", "chkCallForwarding", "chkActive", "chkShowDisplayName", "chkShowDirCode"}) {
    screen_->Check(box).SetState(0);
  }
  for (const std::string_view list : {qorcred::kDndScheduleList, qorcred::kCfScheduleList}) {
    screen_->List(list).Select(ListModel::kNone);
  }
  for (const std::string_view spinner : {"pvnTimeDelay", "pvnTimeDelayCF"}) {
    screen_->Spin(spinner).SetValue(std::int32_t{0});
  }
  screen_->List("lstTenants").Clear();
  screen_->ClearFocus();
  // The dates that the unit gives a new code.
  for (const std::string_view picker : {"dtpStart", "dtpEnd"}) {
    screen_->Date(picker).Choose(std::nullopt);
  }
  const OperationRecord beginning(session_);
  controller_->Run<&qorcred::clsDirCode::pbRetrieveSettingsFromUnit>(session_.connection(),
                                                                     unitKey_);
  beginning.RequireNoFailure("begin a new directory code");
}

void DirCodeDesk::RefreshCodes(std::int32_t rid) {
  controller_->Run<&qorcred::clsDirCode::pbRetrieveDirCodes>(session_.connection(), unitKey_,
                                                             qorcred::kNoRid, rid);
}

void DirCodeDesk::TypeCode(const std::string& given) {
  const std::string code = TypedNumber(code_field::kCode, given);
  TextModel& box = codeBox();
  const std::int32_t most = box.maxLength();
  // The box would cut the text, and another code than the one meant would be stored.
  if (most > 0 && qorcred::Utf16Length(code) > static_cast<std::size_t>(most)) {
    throw InputFault(code_field::kCode, code,
                     fmt::format("{{field}} '{{value}}' is longer than the {} digits of this "
                                 "unit's codes",
                                 most));
  }
  box.SetText(code);
}

Outcome DirCodeDesk::Work(std::string what, const std::function<Outcome()>& run) {
  loaded_.reset();
  return RunOnScreen(session_, shown_, *screen_,
                     {std::move(what), run, [this] { StartController(); }});
}

SavedDirCode DirCodeDesk::SaveNew() {
  SavedDirCode saved;
  static_cast<Outcome&>(saved) = Work("add directory code " + codeBox().text(),
                                      [this, &saved] { return SaveOnce(saved.rid); });
  return saved;
}

Outcome DirCodeDesk::SaveOnce(std::int32_t& rid) {
  screen_->SetVariable("gstrTag", "");
  OperationRecord saving(session_);
  rid = 0;
  const bool done = controller_->Run<&qorcred::clsDirCode::pbSave>(session_.connection(), unitKey_,
                                                                   false, &rid, kNoFormerIndex);
  // The save looks an empty text up before it refuses it: that lookup fails.
  if (!qorcred::IsDigits(codeBox().text())) {
    saving.ForgiveFirstFailure(rid > 0);
  }
  Outcome saved = saving.End(done);
  if (done && rid < 1) {
    saved.ending = Ending::kFailed;  // a step was queued for a row that is not there
  }
  return saved;
}

AddedDirCode DirCodeDesk::AddCode() {
  AddedDirCode added;
  static_cast<SavedDirCode&>(added) = SaveNew();
  if (added.isStored()) {
    RefreshCodes(added.rid);
    added.code = Shown();
    added.number = codeBox().text();
  }
  return added;
}

Outcome DirCodeDesk::Change(std::string_view what, const std::function<bool()>& change) {
  return Work(fmt::format("{} directory code {}", what, Shown().entry), [&] {
    OperationRecord changing(session_);
    const std::int64_t before = session_.sql().work().written();
    Outcome changed = changing.End(change());
    // A save answers True also when someone else has changed the code meanwhile.
    if (changed.done() && session_.sql().work().written() == before) {
      changed.ending = Ending::kStale;
    }
    return changed;
  });
}

/// Whether the screen shows the selected code as it was loaded and is stored.
bool DirCodeDesk::IsAsLoaded() const {
  return loaded_ && screen_->Snapshot() == *loaded_ && !shown_.WhatDiffers();
}

Outcome DirCodeDesk::SaveEdited() {
  if (IsAsLoaded()) {
    return Outcome::Unchanged();
  }
  return Change("edit", [this] {
    screen_->SetVariable("gstrTag", "EDIT");
    return controller_->Run<&qorcred::clsDirCode::pbSave>(session_.connection(), unitKey_, true,
                                                          nullptr, codes().selected());
  });
}

Outcome DirCodeDesk::Renumber() {
  const std::string& code = codeBox().text();
  const qorcred::Value stored = StoredCode();
  if (qorcred::IsDigits(code) && !qorcred::IsEmptyText(stored) && !shown_.WhatDiffers() &&
      qorcred::NumericValue(stored) == qorcred::Val(code)) {
    return Outcome::Unchanged();
  }
  return Change("renumber", [this] {
    return controller_->Run<&qorcred::clsDirCode::pbUpdateDirCode>(session_.connection(), unitKey_,
                                                                   codeBox().text());
  });
}

Outcome DirCodeDesk::Delete() {
  const ShownDirCode code = Shown();
  if (code.rid <= 0) {
    throw FailureError("cannot delete a directory code: none is selected");
  }
  static constexpr bool kWithoutMessage = true;
  static constexpr bool kAsk = true;  // only with the question do the tenants lose the code, too
  return Work("delete directory code " + code.entry, [this, rid = code.rid] {
    OperationRecord deleting(session_);
    return deleting.End(controller_->Run<&qorcred::clsDirCode::pbDelete>(
        session_.connection(), unitKey_, rid, kWithoutMessage, kAsk));
  });
}

}  // namespace qorhost
