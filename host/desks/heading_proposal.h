// What the headings of a spreadsheet may stand for.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/import_sheet.h"
#include "host/files/import_file.h"

namespace qorhost {

/// The column that a heading most likely stands for, by its words without accents and letter case:
/// it has all of the column's, or begins as it does. Words that people use instead are known
/// ("Telephone", "Flat", "Move in"), a slip of the pen in a longer one is forgiven. Columns that
/// are `taken` are left out. Nothing when none is like it.
[[nodiscard]] std::optional<std::size_t> ColumnLike(std::string_view heading,
                                                    std::span<const ImportColumn> columns,
                                                    const std::vector<std::size_t>& taken);

/// For each heading that stands for no column the one that it may stand for, in the order of the
/// file; an empty one for a heading that is like none, or like one that another heading has. A
/// heading that cannot be written between commas and in quotes, or is there twice, goes by its
/// place: "#3".
[[nodiscard]] std::vector<HeadingMeant> ProposedMeanings(const UnknownHeadings& headings,
                                                         std::span<const ImportColumn> columns);

/// What a heading of a sheet may stand for.
struct SheetProposal {
  std::size_t place;
  std::string column;  ///< the import's; "" to leave it out
};

/// For each heading of a sheet whose meaning nobody knows the column that it may stand for, each
/// column once; one that is like none may be left out. Nothing where no heading is known or like a
/// column: the first line may be a title.
[[nodiscard]] std::vector<SheetProposal> ProposalsFor(const ImportSheet& sheet,
                                                      std::span<const ImportColumn> columns);

}  // namespace qorhost
