// The mark that keeps a spreadsheet from taking a cell for a formula.
#pragma once

#include <string>
#include <string_view>

namespace qorhost {

/// A text that no spreadsheet takes for a formula: one that begins with = + - @, a tab, a carriage
/// return or ' gets a ' in front. WithoutFormulaMark() gives it back.
[[nodiscard]] std::string WithoutFormula(std::string_view text);

/// A cell without the ' that WithoutFormula() put in front.
[[nodiscard]] std::string WithoutFormulaMark(std::string cell);

}  // namespace qorhost
