// What a sample database holds, as the file beside it tells it.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/desktop_file/desktop_file.h"

namespace qorhost::test {

/// A file among the samples.
[[nodiscard]] std::filesystem::path SampleDatabase(std::string_view name);
/// What its table of expected values says: of building-2000.mdb that in
/// building-2000.expected.json.
[[nodiscard]] nlohmann::ordered_json ExpectedOf(std::string_view name);

/// A date as those files write it.
[[nodiscard]] std::string ExpectedDate(double serial);
/// A cell as those files write it; discarded for types that they write otherwise than the page
/// does.
[[nodiscard]] nlohmann::json AsExpected(const DesktopCell& cell);

/// Where a table is not what is expected: a line each, with the first rows alone.
[[nodiscard]] std::vector<std::string> Differences(const DesktopTable& table,
                                                   const nlohmann::ordered_json& expected);

}  // namespace qorhost::test
