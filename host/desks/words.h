// Small words in what desks and front ends tell.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qorhost {

/// "1 line", "2 lines"
[[nodiscard]] std::string Counted(std::size_t count, std::string_view one, std::string_view many);

/// Whether a person says yes, as Yes or True, or no, as No or False, in any letter case; nothing
/// for anything else.
[[nodiscard]] std::optional<bool> YesOrNo(std::string_view given);

/// What a row is called, with its identity: "Transmitter-301 (RID 17)".
[[nodiscard]] std::string WithRid(std::string_view name, std::int32_t rid);

}  // namespace qorhost
