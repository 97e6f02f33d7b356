// Siblings use the store, not the command line.
#include "host/cli/main.h"
#include "host/store/store.h"
