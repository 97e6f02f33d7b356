// The library uses the standard library alone.
#include <fmt/format.h>
#include <unistd.h>

#include <vector>
