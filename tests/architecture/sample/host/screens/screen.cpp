// Screens do not know the controllers.
#include "credentials/entry.h"
