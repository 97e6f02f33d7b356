#include "host/desks/dir_code_desk.h"

#include <fmt/format.h>

#include <optional>
#include <vector>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/input_fault.h"
#include "host/desks/typed_input.h"
#include "host/desks/whole_number.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

namespace field = dir_code_field;

/// The number that an operator means; nothing when the text is none.
std::optional<double> NumberMeant(std::string_view text) {
  const std::string_view trimmed = qorcred::Trim(text);
  if (!qorcred::IsNumeric(trimmed)) {
    return std::nullopt;
  }
  try {
    return qorcred::Val(trimmed);
  } catch (const qorcred::RuntimeError&) {
    return std::nullopt;
  }
}

/// The row that the choice names.
std::int32_t FindRow(DeskSession& session, std::int32_t unitKey, std::string_view choice) {
  constexpr std::string_view kRowPrefix = "rid:";
  if (qorcred::CompareIgnoringCase(choice.substr(0, kRowPrefix.size()), kRowPrefix) == 0) {
    const std::string_view row = choice.substr(kRowPrefix.size());
    const auto rid = WholeNumber(row);
    if (!rid) {
      throw InputFault(field::kChoice, row, "the row '{value}' is no whole number of 32 bits");
    }
    return *rid;
  }
  const std::optional<double> number = NumberMeant(choice);
  std::vector<std::int32_t> rids;
  if (number && *number >= 0) {
    const QueryResult found = session.sql().Select(
        fmt::format("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY={} AND DIRECTORYCODE={} ORDER BY "
                    "RID",
                    unitKey, qorcred::NumberText(*number)));
    for (const ResultRow row : found.rows()) {
      rids.push_back(qorcred::ToLong(row[0]));
    }
  }
  if (rids.empty()) {
    throw InputFault(field::kChoice, choice,
                     fmt::format("unit {} has no directory code '{{value}}'", unitKey),
                     InputFault::Kind::kSeeList);
  }
  if (rids.size() > 1) {
    throw InputFault(
        field::kChoice, choice,
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
      controller_(session.host()) {
  controller_.set_mobjDirCodeScreen(session.Visible(screen_));
  Open();
}

DirCodeDesk::~DirCodeDesk() {
  controller_.set_mobjDirCodeScreen(nullptr);
}

void DirCodeDesk::Open() {
  codeSelected_ = codes().OnSelect([this](std::int32_t index) {
    const bool byController = qorcred::ToBoolean(screen_->Variable("gblnModifiedFromClass"));
    // The first entry, "<Add New>", stands for no row.
    if (index > 0 && !byController) {
      controller_.pbRetrieveDirCodes(session_.connection(), unitKey_, codes().ItemData(index));
    }
  });
  const OperationRecord opening(session_);
  controller_.pbRetrieveSchedules(session_.connection(), unitKey_);
  controller_.pbRetrieveSettingsFromUnit(session_.connection(), unitKey_);
  RefreshCodes();
  opening.RequireNoFailure("open the directory-code screen");
}

ShownDirCode DirCodeDesk::Select(std::string_view choice) {
  const std::int32_t rid = FindRow(session_, unitKey_, choice);
  const std::int32_t index = codes().FindData(rid);
  if (index < 1) {
    throw InputFault(field::kChoice, choice,
                     fmt::format("unit {} has no directory code in row {}", unitKey_, rid),
                     InputFault::Kind::kSeeList);
  }
  const OperationRecord loading(session_);
  codes().Select(index);
  loading.RequireNoFailure("load the directory code");
  return Shown();
}

ShownDirCode DirCodeDesk::Shown() {
  return {codes().SelectedText(), codes().ItemData(codes().selected())};
}

qorcred::Value DirCodeDesk::StoredCode() {
  return session_.sql().Scalar(
      fmt::format("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE RID={}", Shown().rid));
}

void DirCodeDesk::RefreshCodes(std::int32_t rid) {
  constexpr std::int32_t kWholeList = -1;
  controller_.pbRetrieveDirCodes(session_.connection(), unitKey_, kWholeList, rid);
}

void DirCodeDesk::TypeCode(const std::string& code) {
  TextModel& box = codeBox();
  const std::int32_t most = box.maxLength();
  // The box would cut the text, and another code than the one meant would be stored.
  if (most > 0 && qorcred::Utf16Length(code) > static_cast<std::size_t>(most)) {
    throw InputFault(field::kCode, code,
                     fmt::format("{{field}} '{{value}}' is longer than the {} digits of this "
                                 "unit's codes",
                                 most));
  }
  box.SetText(TypedText(field::kCode, code));
}

SavedDirCode DirCodeDesk::SaveNew() {
  SavedDirCode saved;
  screen_->SetVariable("gstrTag", "");
  OperationRecord saving(session_);
  const bool done = controller_.pbSave(session_.connection(), unitKey_, false, &saved.rid);
  // The save looks a text up before it checks that it is a number: that lookup may fail.
  if (!IsDigits(codeBox().text())) {
    saving.ForgiveFirstFailure(saved.rid > 0);
  }
  static_cast<Outcome&>(saved) = saving.End(done);
  if (done && saved.rid < 1) {
    // A step was queued for a row that is not there.
    session_.sql().steps().Withdraw(unitKey_, step::kProgramDirectoryCode, saved.rid);
    saved.ending = Ending::kFailed;
  }
  return saved;
}

AddedDirCode DirCodeDesk::AddCode() {
  const std::string typed = codeBox().text();
  AddedDirCode added;
  static_cast<SavedDirCode&>(added) = SaveNew();
  if (added.isStored()) {
    RefreshCodes(added.rid);
    added.code = Shown();
    added.number = codeBox().text();
    added.asNumber = !qorcred::IsNumeric(qorcred::Trim(typed));
  }
  return added;
}

template <typename Operation>
Outcome DirCodeDesk::Change(Operation&& operation) {
  OperationRecord changing(session_);
  const std::int64_t before = session_.sql().changesSoFar();
  Outcome outcome = changing.End(operation());
  // A save answers True also when someone else has changed the code meanwhile.
  if (outcome.done() && session_.sql().changesSoFar() == before) {
    outcome.ending = Ending::kStale;
  }
  return outcome;
}

Outcome DirCodeDesk::SaveEdited() {
  screen_->SetVariable("gstrTag", "EDIT");
  return Change([&] {
    return controller_.pbSave(session_.connection(), unitKey_, true, nullptr, codes().selected());
  });
}

Outcome DirCodeDesk::Renumber(const std::string& code) {
  return Change([&] { return controller_.pbUpdateDirCode(session_.connection(), unitKey_, code); });
}

Outcome DirCodeDesk::Delete(std::int32_t rid) {
  constexpr bool kWithoutMessage = true;
  constexpr bool kAsk = true;  // only with the question do the tenants lose the code, too
  OperationRecord deleting(session_);
  return deleting.End(
      controller_.pbDelete(session_.connection(), unitKey_, rid, kWithoutMessage, kAsk));
}

}  // namespace qorhost
