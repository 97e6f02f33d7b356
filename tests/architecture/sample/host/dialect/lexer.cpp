// The dialect does not know the store.
#include "host/store/store.h"
