// Files know neither the store nor the units nor who reads them.
#pragma once

#include "frame/clean.h"
#include "host/desks/desk.h"
#include "host/store/store.h"
#include "host/unit/code.h"
