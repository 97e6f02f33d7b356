// The store may use the dialect, and not the screens.
#pragma once

#include "host/dialect/lexer.h"
#include "host/screens/screen.h"
#ifdef __linux__
#endif
