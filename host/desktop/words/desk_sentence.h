// A sentence as a desk, a file or the store says it.
#pragma once

#include <QCoreApplication>

namespace qorhost {

/// What stands where %1 and {field} do is kept as it is; where a part is such a sentence again, its
/// places are named behind.
struct DeskSentence {
  const char* text;
  const char* told;  ///< the places, as in "12", whose texts are told in the same way
};

}  // namespace qorhost
