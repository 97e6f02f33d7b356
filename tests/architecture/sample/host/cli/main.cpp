// The command line may use the desks, but no test code, and reaches below them for nothing.
#include "credentials/entry.h"
#include "host/components/steps.h"
#include "host/desks/desk.h"
#include "host/screens/screen.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/engine.h"
#include "host/store/store.h"
#include "tests/support/recording_host.h"
