// A credential in the cells of one line.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "host/desks/credential_entry.h"
#include "host/desks/import_words.h"
#include "host/files/import_file.h"

namespace qorhost {

/// The columns of a credential, in their order behind the first of them.
namespace credential_column {
enum : std::size_t { kType, kNumber, kFacility, kIdCode, kSequence, kButton, kCount };
}  // namespace credential_column

/// The inputs of the credential screen that these columns hold, when the first is `first`.
[[nodiscard]] std::array<ColumnField, credential_column::kCount> CredentialFields(
    std::size_t first);

/// The column whose cell is typed into a control of the credential screen, when the first is
/// `first`: that of the number where no cell is.
[[nodiscard]] std::size_t ColumnOfControl(std::string_view control, std::size_t first);

/// What empty cells mean; nothing where they stay empty.
struct CredentialDefaults {
  std::optional<std::string> type;
  std::optional<std::string> facility;
};

/// What the cells of a line say, to be entered. A unit that ignores facility codes stores 0, which
/// is taken without a word. Raises InputFault for a type that the screen does not have, for what
/// only transmitters have and for numbers outside the bounds of the type.
[[nodiscard]] NewCredentials ReadCredential(const ImportLine& line, std::size_t first,
                                            bool takesFacilityCode,
                                            const CredentialDefaults& defaults = {});

}  // namespace qorhost
