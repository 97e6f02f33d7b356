// An entry is typed into a desk, which knows nothing of it.
#include "host/desks/entry.h"

#include "host/desks/desk.h"
