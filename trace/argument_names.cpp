#include "trace/argument_names.h"

#include <array>

#include "frame/manager_operations.h"
#include "frame/object.h"

namespace qorcred::trace {

namespace {

constexpr std::size_t kMostArguments = 9;

struct MemberArguments {
  std::string_view member;
  std::array<std::string_view, kMostArguments> names;
};

constexpr std::array kMembers{
    MemberArguments{kExecuteSelect.name, {"conn", "sql", "errorFlag", "errorText"}},
    MemberArguments{kExecuteScalar.name, {"conn", "sql", "errorFlag", "errorText"}},
    MemberArguments{kExecuteQueryDelete.name, {"conn", "sql", "errorFlag", "errorText"}},
    MemberArguments{kExecuteUpdate.name,
                    {"conn", "sql", "table", "errorFlag", "errorText", "lastModified", "rid"}},
    MemberArguments{kExecuteInsert.name,
                    {"conn", "sql", "lastModified", "table", "errorFlag", "errorText"}},
    MemberArguments{kExecuteDelete.name, {"conn", "table", "rid", "errorFlag", "errorText"}},
    MemberArguments{"pbGetUnitStatus",
                    {"conn", "unitKey", "status", "text4", "text5", "credentials", "entryCodes",
                     "directoryCodes", "text9"}},
    MemberArguments{"pbGetMaxGroupIDOrLinkID", {"unitKey", "conn", "linkID"}},
    MemberArguments{"pbIncrementMaxGroupIDOrLinkIDByOne", {"unitKey", "conn", "linkID", "by"}},
    MemberArguments{"pbGetTenantID", {"conn", "unitKey", "rid"}},
    MemberArguments{"pvCreateProgramSteps", {"conn", "unitKey", "tenant"}},
    MemberArguments{"pbGenDirCodePrgStep", {"conn", "unitKey", "rid"}},
    MemberArguments{"pbGenChgDirCodePrgStep", {"conn", "unitKey", "rid"}},
    MemberArguments{"pbGenDelDirCodePrgStep", {"conn", "unitKey", "rid"}},
    MemberArguments{"pbDeleteDirCodePrgStep", {"conn", "unitKey", "rid"}},
    MemberArguments{"pbDeleteDirCodePrgStepExists", {"conn", "unitKey", "code"}},
    MemberArguments{"Execute", {"sql", "rowsAffected"}},
    MemberArguments{"AddItem", {"text", "index"}},
    MemberArguments{"RemoveItem", {"index"}},
    MemberArguments{"Remove", {"index"}},
    MemberArguments{"Add", {"item"}},
    MemberArguments{"ReDim", {"lowRow", "highRow", "lowColumn", "highColumn"}},
    MemberArguments{"InsertRows", {"row"}},
    MemberArguments{"DeleteRows", {"row"}},
    MemberArguments{"QuickSort", {"lowRow", "highRow", "column", "order", "type"}},
    MemberArguments{"ItemData", {"index"}},
    MemberArguments{"List", {"index"}},
    MemberArguments{"Columns", {"index"}},
    MemberArguments{"LowerBound", {"dimension"}},
    MemberArguments{"UpperBound", {"dimension"}},
};

/// Whether the names of the manager's arguments have the error flag where its operations have it.
constexpr bool FlagsAreInPlace() {
  for (const ManagerOperation& operation : kManagerOperations) {
    for (const MemberArguments& known : kMembers) {
      if (known.member == operation.name && known.names[operation.errorFlagAt] != "errorFlag") {
        return false;
      }
    }
  }
  return true;
}
static_assert(FlagsAreInPlace());

}  // namespace

std::vector<std::string_view> MembersWithArgumentNames() {
  std::vector<std::string_view> members;
  for (const MemberArguments& known : kMembers) members.push_back(known.member);
  return members;
}

std::string_view IndexName(std::size_t at, std::size_t count) {
  if (count == 1) return "index";
  if (count != 2) return {};
  return at == 0 ? "row" : "column";
}

std::string_view ArgumentName(std::string_view member, std::size_t at) {
  if (at >= kMostArguments) return {};
  for (const MemberArguments& known : kMembers) {
    if (SameMember(known.member, member)) return known.names[at];
  }
  return {};
}

}  // namespace qorcred::trace
