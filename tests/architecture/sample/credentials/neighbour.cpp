// Controllers do not know each other.
#include "com/dispatch.h"
#include "dircodes/entry.h"
#include "helper.h"
