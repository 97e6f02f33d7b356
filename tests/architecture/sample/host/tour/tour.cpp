// The tour may know the demo building, but neither the command line nor controllers.
#include "credentials/entry.h"
#include "host/cli/main.h"
#include "host/store/store.h"
