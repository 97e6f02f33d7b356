// Which rows the credential report's conditions select, worked out on the rows themselves.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/end_to_end/report_meaning.h"
#include "tests/host/end_to_end/report_population.h"

namespace qortest {

/// A condition with what its values stand for.
struct CredentialCondition {
  std::int32_t field = 0;  ///< 0 type, 1 number, 2 facility code, 3 the holder's name
  std::int32_t operation = 0;
  std::string_view word;
  /// Of a name: as a text literal, without the blanks around it, doubled quotes undone.
  std::string text;
  std::optional<double> number;        ///< nothing for an empty text
  std::optional<double> secondNumber;  ///< nothing for an empty text
  std::int32_t type = 0;
};

inline constexpr std::size_t kCredentialColumns = 10;
using CredentialLine = std::array<qorcred::Value, kCredentialColumns>;

/// The report's rows by credential and holder; nothing when the store must refuse the statement.
[[nodiscard]] std::optional<std::vector<CredentialLine>> CredentialLines(
    const Population& population, std::int32_t unit,
    const std::vector<CredentialCondition>& conditions);

}  // namespace qortest
