// The directory codes of a unit as rows, and one of them in full.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/desks/dir_code_desk.h"
#include "host/desks/list.h"
#include "host/desks/session.h"

namespace qorhost {

/// Every code in the screen's list, in its order, with the tenants who have it.
[[nodiscard]] List DirCodeList(DeskSession& session, DirCodeDesk& desk);

/// The code that the screen shows.
struct DirCodeDetail {
  std::string name;  ///< for people
  std::string key;   ///< for programs
  qorcred::Value value;
};
[[nodiscard]] std::vector<DirCodeDetail> DetailsShown(DirCodeDesk& desk);

/// The entries of a list that stand for rows; without the placeholders.
[[nodiscard]] std::vector<std::string> TenantsShown(DirCodeDesk& desk);

}  // namespace qorhost
