// What an import's report tells a person.
#pragma once

#include <string>
#include <vector>

#include "host/desks/import_run.h"

namespace qorhost::test {

/// "3!: text" for a refused line, "3: text" for a note.
inline std::vector<std::string> Told(const ImportReport& report) {
  std::vector<std::string> told;
  for (const LineRemark& remark : report.remarks) {
    told.push_back(std::to_string(remark.line) + (remark.refused ? "!: " : ": ") +
                   report.TextOf(remark));
  }
  return told;
}

}  // namespace qorhost::test
