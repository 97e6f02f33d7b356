// What was done to a store, by whom, and what it made of the rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/field_names.h"
#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/files/table.h"
#include "host/store/audit_log.h"
#include "host/store/row_change.h"

namespace qorhost {

/// What the inputs are called in an InputFault.
namespace history_input {
inline constexpr std::string_view kSince = "since";
inline constexpr std::string_view kEntry = "entry";
inline constexpr std::string_view kHead = "head";
}  // namespace history_input

/// Which entries are looked for; what is left out does not narrow.
struct HistoryQuery {
  std::optional<std::int32_t> unitKey;  ///< entries of the whole store are among them
  std::string since;                    ///< a date of UTC or with its offset, or days back: "7d"
  std::string who;                      ///< a part of the name
  std::string subject;                  ///< a part of what was done, or of a text in its rows
  std::optional<std::size_t> latest;    ///< only so many, the latest ones
};

/// The entries, oldest first. Letter case of names and texts does not count. Raises InputFault for
/// a `since` that is neither.
[[nodiscard]] List HistoryList(DeskSession& session, const HistoryQuery& query);

/// An entry by the number that the table shows. Raises InputFault when there is none.
[[nodiscard]] WorkEntry EntryOf(DeskSession& session, std::string_view number);

/// What an entry made of the rows, field by field, as lists call them; values as they are stored,
/// but the capacity of a type as a number.
/// Of a run of new rows the first is shown.
[[nodiscard]] Table EntryTable(DeskSession& session, std::int64_t entry,
                               NamedFor reader = NamedFor::kPeople);

/// A row that an entry has made, changed or deleted.
struct TouchedRow {
  RowChangeKind kind = RowChangeKind::kInserted;
  std::string table;
  std::int64_t rid = 0;
};
/// Those of an entry, as EntryTable() shows them; several changes of a row behind each other are
/// one.
[[nodiscard]] std::vector<TouchedRow> RowsTouched(DeskSession& session, std::int64_t entry);

/// What units of work that are only tried would have made of the rows.
struct TriedChanges {
  Table fields;         ///< as EntryTable() has them
  std::string summary;  ///< "Tenants: 1 changed; CredentialBank: 40 new", as in HistoryList()
  std::int64_t rows = 0;
  std::int64_t steps = 0;  ///< programming steps that would have been queued
};
[[nodiscard]] TriedChanges ChangesTried(DeskSession& session, NamedFor reader);

/// "entry 12 (credentials add, by anna, 2026-01-31 12:00:00 UTC)"
[[nodiscard]] std::string DescriptionOf(const WorkEntry& entry);

/// The head of every unit's chain.
[[nodiscard]] Table HeadTable(DeskSession& session);

/// A head as it is noted and given back: "1:57:0f3a...", unit, entry and hash.
[[nodiscard]] std::string TextOf(const ChainHead& head);
/// Raises InputFault for anything else.
[[nodiscard]] ChainHead ReadHead(std::string_view given);

/// What is wrong with the audit, a sentence each, and with `noted` heads that it does not have any
/// more; nothing when it is as it was written.
[[nodiscard]] std::vector<std::string> FaultsOfHistory(DeskSession& session,
                                                       const std::vector<ChainHead>& noted);

}  // namespace qorhost
