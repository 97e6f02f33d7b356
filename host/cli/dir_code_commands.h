// The commands that show, enter, change and delete directory codes.
#pragma once

#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/desks/dir_code_entry.h"

namespace qorhost {

struct DirCodeAddOptions {
  std::string code;
  DirCodeEntry entry;
  bool trial = false;  ///< tells what it would do
};

/// A stored code is named by its number as it is dialled, or by its row as in "rid:17".
struct DirCodeEditOptions {
  std::vector<std::string> choices;
  DirCodeEntry entry;
  bool trial = false;
};

struct DirCodeRenumberOptions {
  std::string choice;
  std::string number;
  bool trial = false;
};

struct DirCodeDeleteOptions {
  std::vector<std::string> choices;
  bool trial = false;
};

ExitStatus RunDirCodeList(const GlobalOptions& global, const ListOptions& options,
                          Console& console);
ExitStatus RunDirCodeShow(const GlobalOptions& global, const std::vector<std::string>& choices,
                          Console& console);
ExitStatus RunDirCodeAdd(const GlobalOptions& global, const DirCodeAddOptions& options,
                         Console& console);
/// Of several codes all are changed, or deleted, or none.
ExitStatus RunDirCodeEdit(const GlobalOptions& global, const DirCodeEditOptions& options,
                          Console& console);
ExitStatus RunDirCodeRenumber(const GlobalOptions& global, const DirCodeRenumberOptions& options,
                              Console& console);
ExitStatus RunDirCodeDelete(const GlobalOptions& global, const DirCodeDeleteOptions& options,
                            Console& console);

}  // namespace qorhost
