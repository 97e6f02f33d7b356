#include "host/desks/dir_code_series.h"

#include <fmt/format.h>

#include <memory>
#include <string_view>
#include <utility>

#include "host/desks/desk_series.h"
#include "host/desks/dir_code_list.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

using DirCodeSeries = DeskSeries<DirCodeDesk>;

DirCodeSeries DirCodesIn(DeskSession& session, std::int32_t unitKey) {
  return DirCodeSeries(
      [&session, unitKey] { return std::make_unique<DirCodeDesk>(session, unitKey); });
}

std::string NameOf(const ShownDirCode& code) {
  return WithRid(code.entry, code.rid);
}

WorkOrder OrderOnDirCodes(std::int32_t unitKey, std::string_view verb, std::size_t count) {
  return {{unitKey},
          fmt::format("{} {}", verb, Counted(count, "directory code", "directory codes")),
          {}};
}

}  // namespace

SeveralOutcome EditDirCodes(DeskSession& session, std::int32_t unitKey,
                            const std::vector<std::string>& names, const DirCodeEntry& entry,
                            const Consent& consent, std::vector<EditedDirCode>& edited) {
  DirCodeSeries series = DirCodesIn(session, unitKey);
  SeveralOperations operations;
  operations.begin = [&] {
    edited.clear();
    return series.Begin(names);
  };
  operations.run = [&](std::size_t at, OpenQuestions&) {
    DirCodeDesk& desk = series.At(at);
    EditedDirCode one{desk.Shown(), EnterDirCodeChange(desk, entry)};
    PartOutcome saved{desk.SaveEdited(), NameOf(one.code)};
    one.unchanged = saved.unchanged;
    edited.push_back(std::move(one));
    return saved;
  };
  return RunSeveral(session, OrderOnDirCodes(unitKey, "edit", names.size()), operations, consent);
}

SeveralOutcome DeleteDirCodes(DeskSession& session, std::int32_t unitKey,
                              const std::vector<std::string>& names, const Consent& consent,
                              std::vector<DeletedDirCode>& deleted) {
  DirCodeSeries series = DirCodesIn(session, unitKey);
  SeveralOperations operations;
  operations.begin = [&] {
    deleted.clear();
    return series.Begin(names);
  };
  operations.run = [&](std::size_t at, OpenQuestions&) {
    DirCodeDesk& desk = series.At(at);
    deleted.push_back({desk.Shown(), TenantsShown(desk)});
    return PartOutcome{desk.Delete(), NameOf(deleted.back().code)};
  };
  return RunSeveral(session, OrderOnDirCodes(unitKey, "delete", names.size()), operations, consent);
}

}  // namespace qorhost
