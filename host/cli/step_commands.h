// The commands that hand programming steps over to a unit.
#pragma once

#include <string>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/desks/step_desk.h"

namespace qorhost {

struct StepOptions {
  ListOptions asked;   ///< of list
  std::string to;      ///< of export: a file, or - for standard output
  bool force = false;  ///< of export: replaces a file
  StepChoice choice;   ///< of done
  bool trial = false;  ///< of export and done: tells what it would do
};

/// Lists what waits, with times and subjects.
ExitStatus RunStepList(const GlobalOptions& global, const ListOptions& asked, Console& console);
/// Writes what waits for a unit down.
ExitStatus RunStepExport(const GlobalOptions& global, const StepOptions& options, Console& console);
/// Marks what was handed over as sent.
ExitStatus RunStepsDone(const GlobalOptions& global, const StepOptions& options, Console& console);

}  // namespace qorhost
