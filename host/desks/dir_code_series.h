// Changes of several directory codes of a unit as one unit of work.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/several.h"

namespace qorhost {

struct EditedDirCode {
  ShownDirCode code;
  std::vector<std::string> cleared;  ///< what EnterDirCodeChange() returns
  bool unchanged = false;
};

/// Changes the codes that `names` name, all alike. `edited` is what became of each. Raises what
/// DirCodeDesk::Select() and EnterDirCodeChange() raise; nothing was changed then.
[[nodiscard]] SeveralOutcome EditDirCodes(DeskSession& session, std::int32_t unitKey,
                                          const std::vector<std::string>& names,
                                          const DirCodeEntry& entry, const Consent& consent,
                                          std::vector<EditedDirCode>& edited);

struct DeletedDirCode {
  ShownDirCode code;
  std::vector<std::string> tenants;  ///< who had it
};

/// Deletes them. `deleted` is what they were.
[[nodiscard]] SeveralOutcome DeleteDirCodes(DeskSession& session, std::int32_t unitKey,
                                            const std::vector<std::string>& names,
                                            const Consent& consent,
                                            std::vector<DeletedDirCode>& deleted);

}  // namespace qorhost
