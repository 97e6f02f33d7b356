// The dialect knows neither the store nor an engine.
#include <sqlite3.h>

#include "host/store/store.h"
