// Statements that both engines know, in the server's spelling.
#pragma once

#include <string>
#include <string_view>

namespace qorhost::postgres::test {

/// The statement with the store's names in double quotes, as the server tells letter case apart.
[[nodiscard]] std::string WithQuotedNames(std::string_view sql);

}  // namespace qorhost::postgres::test
