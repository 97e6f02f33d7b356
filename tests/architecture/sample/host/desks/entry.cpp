// An entry is typed into a desk, which knows nothing of it; and it may not know a widget.
#include "host/desks/entry.h"

#include <QWidget>

#include "host/desks/desk.h"
