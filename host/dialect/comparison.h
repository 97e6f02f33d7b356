// How the sides of a comparison, and a value and the column it is written to, are made alike.
#pragma once

#include <vector>

#include "host/dialect/lexer.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// Whether the expression yields the engine's truth (1, 0) and not a value of the dialect (-1, 0).
[[nodiscard]] bool IsCondition(const Expression& expression);

/// Whether the expression is a text column as it is, which carries its collation along.
[[nodiscard]] bool IsTextColumn(const Expression& expression);

/// Whether values of the expression may be texts, so that an order of them needs the collation.
[[nodiscard]] bool MayBeText(const Expression& expression);

/// Makes two sides of a comparison alike: by the column's type where one is a column.
/// `ordering` is set for < and the like, where a text that is no date cannot stand beside dates.
void Align(Expression& one, Expression& other, bool ordering);

/// Makes the left side of IN (SELECT ...) like the values of the sub-select.
void AlignWithResult(Expression& left, const ResultColumn& result);

/// Makes a value what the column takes.
void AlignWithColumn(Expression& value, const Column& column);

/// Whether a comparison of the two must name the collation.
[[nodiscard]] bool NeedsCollation(const Expression& one, const Expression& other);

}  // namespace qorhost::dialect
