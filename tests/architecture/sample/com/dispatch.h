// Here the platform is known.
#pragma once
#ifdef _WIN32
#endif
#include "credentials/entry.h"
