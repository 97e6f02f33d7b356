// The command line may use everything below it, but no test code.
#include "credentials/entry.h"
#include "host/components/steps.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/engine.h"
#include "tests/support/recording_host.h"
