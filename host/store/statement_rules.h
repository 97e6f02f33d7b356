// What a session asks of statements, whatever its engine.
#pragma once

#include <optional>
#include <string_view>

#include "frame/value.h"
#include "host/dialect/catalog.h"
#include "host/dialect/translator.h"
#include "host/store/unit_of_work.h"

namespace qorhost {

/// Raises StoreError unless the statement is of that kind; of none given: unless it changes rows.
void RequireChange(dialect::StatementKind found, std::optional<dialect::StatementKind> wanted);
/// Raises StoreError for another statement than a SELECT.
void RequireSelect(dialect::StatementKind found);

/// The table of the version that a change is meant for: as the caller names it, else the changed
/// one. Null where rows have no version.
[[nodiscard]] const dialect::Table* VersionedTable(std::string_view named,
                                                   std::string_view changed);
/// Whether two last-modified values, dates or texts, mean the same second.
[[nodiscard]] bool IsSameVersion(const qorcred::Value& stored, const qorcred::Value& meant);

/// The table of that name. Raises StoreError when there is none.
[[nodiscard]] const dialect::Table& RequireTable(std::string_view name);

/// What a statement of a unit of work that is void is told.
[[nodiscard]] std::string_view WordsOf(VoidReason reason);

}  // namespace qorhost
