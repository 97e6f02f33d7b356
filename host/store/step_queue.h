// The queue of programming steps that wait to be sent to the units.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/store/sqlite/session.h"

namespace qorhost {

/// What a step tells the unit. The texts stand in ProgramSteps.Kind.
namespace step {
inline constexpr std::string_view kProgramTenant = "program tenant";
inline constexpr std::string_view kProgramDirectoryCode = "program directory code";
inline constexpr std::string_view kChangeDirectoryCode = "change directory code";
inline constexpr std::string_view kDeleteDirectoryCode = "delete directory code";
}  // namespace step

struct ProgramStep {
  std::int32_t rid = 0;
  std::int32_t unitKey = 0;
  std::string kind;
  std::int32_t subjectRid = 0;  ///< the Tenants or DirectoryCode row
  std::string code;             ///< directory code that the unit drops or replaces; may be empty
  qorcred::Value queuedAt;      ///< Date
  bool sent = false;
};

/// Appends a step in constant time.
void QueueStep(SqlSession& session, std::int32_t unitKey, std::string_view kind,
               std::int32_t subjectRid, std::string_view code = {});

/// Takes the unsent steps of that kind back; returns how many there were.
std::int64_t WithdrawSteps(SqlSession& session, std::int32_t unitKey, std::string_view kind,
                           std::int32_t subjectRid);

/// The queue in the order in which it is sent; of one unit or of all.
[[nodiscard]] std::vector<ProgramStep> ListSteps(SqlSession& session,
                                                 std::optional<std::int32_t> unitKey);

}  // namespace qorhost
