// The desks' sentences in the language of the program.
#pragma once

#include <QString>
#include <string_view>

namespace qorhost {

/// A sentence that a desk, a file or the store says, in the program's language; names and values in
/// it stay as they are. What is not known here, a controller's own message above all, is told as it
/// came.
[[nodiscard]] QString Told(std::string_view sentence);

}  // namespace qorhost
