#include "host/cli/dir_code_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/cli/arguments.h"
#include "host/cli/display_text.h"
#include "trace/tracing_object.h"

namespace qorhost {

namespace {

bool IsDigits(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

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
std::int32_t FindRow(StoreSession& session, std::int32_t unitKey, std::string_view choice) {
  constexpr std::string_view kRowPrefix = "rid:";
  if (qorcred::CompareIgnoringCase(choice.substr(0, kRowPrefix.size()), kRowPrefix) == 0) {
    return ReadLong("the row", choice.substr(kRowPrefix.size()));
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
    throw UsageError(
        fmt::format("unit {} has no directory code '{}': 'qorhost dircodes list' shows them",
                    unitKey, Displayable(choice)));
  }
  if (rids.size() > 1) {
    throw UsageError(
        fmt::format("{} rows have the directory code '{}': name a row instead (rid:{})",
                    rids.size(), Displayable(choice), fmt::join(rids, ", rid:")));
  }
  return rids.front();
}

}  // namespace

DirCodeDesk::DirCodeDesk(StoreSession& session, std::int32_t unitKey)
    : session_(session),
      unitKey_(unitKey),
      screen_(MakeDirectoryCodeScreen(session.Today())),
      controller_(session.host()) {
  if (session.traced()) {
    controller_.set_mobjDirCodeScreen(std::make_shared<TracingScreen>(
        screen_, session.transcript(),
        [screen = screen_.get()](std::string_view name) { return screen->SpelledName(name); }));
  } else {
    controller_.set_mobjDirCodeScreen(screen_);
  }
  Open();
}

DirCodeDesk::~DirCodeDesk() {
  codes().OnSelect(nullptr);
  controller_.set_mobjDirCodeScreen(nullptr);
}

void DirCodeDesk::Open() {
  codes().OnSelect([this](std::int32_t index) {
    const bool byController = qorcred::ToBoolean(screen_->Variable("gblnModifiedFromClass"));
    // The first entry, "<Add New>", stands for no row.
    if (index > 0 && !byController) {
      controller_.pbRetrieveDirCodes(session_.connection(), unitKey_, codes().ItemData(index));
    }
  });
  session_.log().Clear();
  controller_.pbRetrieveSchedules(session_.connection(), unitKey_);
  controller_.pbRetrieveSettingsFromUnit(session_.connection(), unitKey_);
  RefreshCodes();
  RequireNoFailure("open the directory-code screen");
}

void DirCodeDesk::RequireNoFailure(std::string_view doing) {
  if (!session_.log().failures.empty()) {
    throw FailureError(fmt::format("cannot {}: {}", doing, session_.log().failures.front()));
  }
}

std::int32_t DirCodeDesk::Select(const std::string& choice) {
  const std::int32_t rid = FindRow(session_, unitKey_, choice);
  const std::int32_t index = codes().FindData(rid);
  if (index < 1) {
    throw UsageError(
        fmt::format("unit {} has no directory code in row {}: 'qorhost dircodes list' shows them",
                    unitKey_, rid));
  }
  session_.log().Clear();
  codes().Select(index);
  RequireNoFailure("load the directory code");
  return rid;
}

void DirCodeDesk::RefreshCodes(std::int32_t rid) {
  constexpr std::int32_t kWholeList = -1;
  controller_.pbRetrieveDirCodes(session_.connection(), unitKey_, kWholeList, rid);
}

void DirCodeDesk::TypeCode(std::string_view option, const std::string& code) {
  TextBox& box = screen_->Box("txtdirectorycode");
  const std::int32_t most = box.maxLength();
  // The box would cut the text, and another code than the one meant would be stored.
  if (most > 0 && qorcred::Utf16Length(code) > static_cast<std::size_t>(most)) {
    throw UsageError(fmt::format("{} '{}' is longer than the {} digits of this unit's codes",
                                 option, Displayable(code), most));
  }
  box.SetText(TypedText(option, code));
}

template <typename Operation>
bool DirCodeDesk::Watch(Operation&& operation) {
  session_.log().Clear();
  const std::int64_t before = session_.sql().changesSoFar();
  const bool succeeded = operation();
  changedRows_ = session_.sql().changesSoFar() != before;
  return succeeded;
}

bool DirCodeDesk::SaveNew(std::int32_t* newRid) {
  std::int32_t rid = 0;
  screen_->SetVariable("gstrTag", "");
  const bool saved =
      Watch([&] { return controller_.pbSave(session_.connection(), unitKey_, false, &rid); });
  // The save looks a text up before it checks that it is a number: that lookup may fail.
  OperationLog& log = session_.log();
  const bool wentOn = rid > 0 || log.refusals + log.questions > 0 || log.failures.size() > 1;
  if (!log.failures.empty() && wentOn && !IsDigits(screen_->Box("txtdirectorycode").text())) {
    log.failures.erase(log.failures.begin());
  }
  if (saved && rid < 1) {
    // A step was queued for a row that is not there.
    session_.sql().steps().Withdraw(unitKey_, step::kProgramDirectoryCode, rid);
  }
  *newRid = rid;
  return saved;
}

bool DirCodeDesk::SaveEdited() {
  screen_->SetVariable("gstrTag", "EDIT");
  return Watch([&] {
    return controller_.pbSave(session_.connection(), unitKey_, true, nullptr, codes().selected());
  });
}

bool DirCodeDesk::Renumber(const std::string& code) {
  return Watch([&] { return controller_.pbUpdateDirCode(session_.connection(), unitKey_, code); });
}

bool DirCodeDesk::Delete(std::int32_t rid) {
  constexpr bool kWithoutMessage = true;
  constexpr bool kAsk = true;  // only with the question do the tenants lose the code, too
  return Watch([&] {
    return controller_.pbDelete(session_.connection(), unitKey_, rid, kWithoutMessage, kAsk);
  });
}

std::string CodeName(DirCodeDesk& desk, std::int32_t index) {
  return fmt::format("{} (RID {})", desk.codes().Text(index), desk.codes().ItemData(index));
}

}  // namespace qorhost
