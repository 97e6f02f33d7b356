// Tests may use everything, but ask for no platform either.
#include <sqlite3.h>

#include "frame/clean.h"
#include "host/cli/main.h"
#ifndef __APPLE__
#endif
