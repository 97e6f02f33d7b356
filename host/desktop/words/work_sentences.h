// What units of work are called in the history, as desks name them: for the translation.
#pragma once

#include "host/desktop/words/desk_sentence.h"

namespace qorhost {

/// Tried behind kDeskSentences, in turn: one that another one would take in stands before it.
inline constexpr DeskSentence kWorkSentences[] = {
    {QT_TRANSLATE_NOOP("Desks", "demo building"), ""},
    {QT_TRANSLATE_NOOP("Desks", "init from %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "issue %1 %2 to %3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "issue %1 %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit credential %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "renumber credential %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "replace credential %1 by %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete credential %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete credentials of the report"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit %1 credentials"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete %1 credentials"), ""},
    {QT_TRANSLATE_NOOP("Desks", "add directory code %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit directory code %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "renumber directory code %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete directory code %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit %1 directory codes"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete %1 directory codes"), ""},
    {QT_TRANSLATE_NOOP("Desks", "add tenant %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit tenant %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete tenant %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "end the lease of tenant %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit %1 tenants"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete %1 tenants"), ""},
    {QT_TRANSLATE_NOOP("Desks", "end the lease of %1 tenants"), ""},
    {QT_TRANSLATE_NOOP("Desks", "import tenants"), ""},
    {QT_TRANSLATE_NOOP("Desks", "import credentials"), ""},
    {QT_TRANSLATE_NOOP("Desks", "import directory codes"), ""},
    {QT_TRANSLATE_NOOP("Desks", "merge with the unit's directory codes"), ""},
    {QT_TRANSLATE_NOOP("Desks", "steps done"), ""},
    {QT_TRANSLATE_NOOP("Desks", "undo entry %1: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "undo entries %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "add unit %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit unit %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "edit units %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete unit %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete units %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "rename door %1 to %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", "rename %1 doors"), ""},
    {QT_TRANSLATE_NOOP("Desks", "add schedule %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "rename schedule %1 to %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete schedule %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete %1 schedules"), ""},
    {QT_TRANSLATE_NOOP("Desks", "sql, %1: %2; ..."), ""},
    {QT_TRANSLATE_NOOP("Desks", "sql: %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "entry %1 (%2, by %3, %4 UTC)"), "2"},
};

}  // namespace qorhost
