// The dialect's functions and the order of its texts, on the server.
#pragma once

#include <string>

namespace qorhost::postgres {

/// The statements that create the schema "desktop" with all functions that printed statements call.
/// The database's encoding must be UTF8. The text is made when it is first asked for.
[[nodiscard]] const std::string& CreateFunctionsText();

}  // namespace qorhost::postgres
