// Reports use the frame alone, even where a screen's controller has what they need.
#include "reports/report.h"

#include "credentials/entry.h"
#include "dircodes/entry.h"
#include "frame/clean.h"
#include "host/screens/screen.h"
