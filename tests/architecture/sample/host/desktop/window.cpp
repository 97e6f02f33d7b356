// A window shows widgets, but knows nothing of the command line.
#include <QWidget>

#include "host/cli/main.h"
#include "host/desks/desk.h"
