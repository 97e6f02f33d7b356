// Components know what a store can do, not how, nor how one is opened.
#include <sqlite3.h>

#include "host/store/engines/opening.h"
#include "host/store/sqlite/engine.h"
