// Uses the standard library and its own folder only.
#pragma once

#include <string>

#include "frame/upward.h"
