// Knows the engines by their folders, not by their headers.
#include <sqlite3.h>

#include "host/store/sqlite/engine.h"
#include "host/store/store.h"
