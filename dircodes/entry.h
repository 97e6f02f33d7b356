// What the user entered on the directory-code screen, checked, as texts for a statement.
#pragma once

#include <string>
#include <string_view>

#include "dircodes/unit_notation.h"

namespace qorcred {

struct DirCodeEntry {
  std::string code;  ///< a number's text, 0 or more
  std::string phone;
  std::string extension;
  std::string timeDelay;
  std::string dndSchedule = "NULL";  ///< schedule id
  std::string_view isDndChecked = "False";
  std::string cfPhone;
  std::string cfExtension;
  std::string cfTimeDelay{kDelayWithoutExtension};
  std::string cfSchedule = "NULL";
  std::string_view isCfChecked = "False";
  std::string_view active = "False";
  std::string startDateText;  ///< empty when no date is chosen
  std::string endDateText;
  std::string displayName;
  std::string_view showDisplayName = "False";
  std::string_view showDirectoryCode = "False";
};

}  // namespace qorcred
