// The contract may use the dialect, and neither the screens nor an engine.
#pragma once

#include "host/dialect/lexer.h"
#include "host/screens/screen.h"
#include "host/store/sqlite/engine.h"
#ifdef __linux__
#endif
