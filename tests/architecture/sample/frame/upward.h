// The frame may not know what is built on it.
#pragma once

#include "credentials/entry.h"
#include "host/cli/main.h"
