// Desks use all that lies below them, and no front end.
#pragma once

#include "credentials/entry.h"
#include "host/cli/main.h"
#include "host/components/steps.h"
#include "host/desks/entry.h"
#include "host/files/rows.h"
#include "host/store/store.h"
