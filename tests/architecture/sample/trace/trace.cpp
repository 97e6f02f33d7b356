// The trace knows objects, not screens.
#include "host/screens/screen.h"
