// The tour may look into the store, but not use controllers by hand.
#include "credentials/entry.h"
#include "host/cli/main.h"
#include "host/store/store.h"
