// What a row's MODIFIED column says.
#pragma once

#include <cstdint>

namespace qorcred {

/// The unit's copy of a row against the row.
namespace row_state {
inline constexpr std::int16_t kInUnit = 0;
inline constexpr std::int16_t kNotSent = 1;
inline constexpr std::int16_t kChanged = 2;
inline constexpr std::int16_t kDeleted = 3;  ///< neither listed nor counted
}  // namespace row_state

/// Stands for no row where a row is left out or all are meant.
inline constexpr std::int32_t kNoRid = -1;

}  // namespace qorcred
