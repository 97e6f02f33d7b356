// How a command ended, told in a line or as one object.
#pragma once

#include <ostream>
#include <string>

#include "host/terminal/console.h"

namespace qorhost {

struct Ended {
  ExitStatus status = ExitStatus::kDone;
  std::string message = "";  ///< "" when everything was said
  std::string field = "";    ///< of an input that is wrong
  std::string value = "";    ///< what was given there
};

/// One object of a command that failed, with all that it said: {"error":{...}}. Of one that was
/// done and had something to say {"told":{...}}; else nothing. `notes` are its lines.
void PrintEndedAsJson(std::ostream& err, const Ended& ended, const Console& console,
                      const std::string& notes);

}  // namespace qorhost
