// The program as a process runs it.
#pragma once

#include <functional>

#include "host/desktop/shell/main_window.h"

namespace qorhost {

/// Runs the program with the arguments of its process until its window is closed, and returns what
/// the process is to return. `shown` is told of the window before anything of it is painted; it may
/// be empty.
int RunProgram(int argc, char** argv, const std::function<void(MainWindow& window)>& shown = {});

}  // namespace qorhost
