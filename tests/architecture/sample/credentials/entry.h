// May use the frame.
#pragma once

#include "frame/clean.h"
