// A folder without a rule is not let through.
#include "frame/clean.h"
