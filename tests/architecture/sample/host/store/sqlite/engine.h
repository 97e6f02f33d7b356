// An engine knows its own headers and the contract, and nothing that is built on it.
#pragma once

#include <sqlite3.h>

#include "host/components/steps.h"
#include "host/dialect/lexer.h"
#include "host/store/store.h"
