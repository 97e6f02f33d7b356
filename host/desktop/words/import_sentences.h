// What is said of spreadsheets and of their rows: for the translation.
#pragma once

#include "host/desktop/words/desk_sentence.h"

namespace qorhost {

/// A part of kDeskSentences.
inline constexpr DeskSentence kImportSentences[] = {
    {QT_TRANSLATE_NOOP("Desks", "%1 credentials are called '{value}', say rid:N: %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", "{field} '{value}' is none of %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "{field} '{value}' cannot be entered: the screen has %1"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "leave {first day} and {last day} out: an inactive code has no period; "
                       "{active} makes it active"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "%1 tenants are called '{value}': leave {field} empty and assign the "
                       "credential by the tenant's id afterwards"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 '%2' was not taken over: without an extension it is %3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 was not taken over: %2 is %3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "line %1: %2; the store gave up there and nothing was imported"),
     "2"},
    {QT_TRANSLATE_NOOP("Desks", "line %1: there is no column %2; the columns are %3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "line %1: there are no columns %2; the columns are %3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "line %1: the file has no heading '%2'; its headings are \"%3\""),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "line %1: %2; nothing was imported"), "2"},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "column %1 has no heading, and '%2' stands in it: give it a heading, or say what it is"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "line 1 has zero bytes between its letters, as UTF-16 has, so nothing was imported"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "line %1 is not UTF-8, so nothing was imported"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "byte %1 of the file is no %2: it has another encoding, or was cut off; "
                       "nothing was imported"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the file is a workbook of a spreadsheet program and no text, so nothing "
                       "was imported: save the sheet as CSV there, and import that"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "cannot read '%1' to its end: %2; nothing was imported"), ""},
    {QT_TRANSLATE_NOOP("Desks", "cannot read '%1' to its end; nothing was imported"), ""},
    {QT_TRANSLATE_NOOP("Desks", "cannot write '%1': %2"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "the file ends within this line: if it was cut off there, the last cell is not whole"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "it was not stored"), ""},
    {QT_TRANSLATE_NOOP("Desks", "a cell is longer than %1 bytes"), ""},
    {QT_TRANSLATE_NOOP("Desks", "there is text behind the closing quote of a cell"), ""},
    {QT_TRANSLATE_NOOP("Desks", "there are more than %1 cells"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "a quote stands inside a cell: put the whole cell in quotes and write the quote twice"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field}: there is no schedule '{value}' on the screen of this unit"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "{field}: there is no %1 '{value}' on the screen of this unit"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "{field} '{value}' does not tell in which order day, month and year stand: %1"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "{field} '{value}' is no date in the order %1: write it so, or as 2026-12-31"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}' is no date: write it as 2026-12-31 or 31 Dec 2026, with "
                       "a time as in '2026-12-31 18:00'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "{field} '{value}' lies outside the years 100 to 9999"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}': the store has no fields to narrow this report by: "
                       "TenantSelectionFields is empty"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}': the report finds schedules by their names alone; rows "
                       "without one have '%1 = no'"),
     "1"},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "'%1' has a question mark: a letter may have been lost when the file was written"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "%1 has the directory code %2: whether the line means somebody else of that "
                       "name cannot be told; with the tenant's id in the column \"%3\" it can"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "%1 has the directory code %2, and is somebody else of the same name"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "several tenants are called %1: which one is meant can be told by the "
                       "tenant's id in the column \"%2\""),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "{field} '{value}' is not what the directory code %1 dials by line %2: that is '%3'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}' is not what the directory code %1 dials: that is '%2'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the directory code %1 stays as it is stored"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the directory code %1 stays as line %2 says"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}' and %1 '%2' stand in one line: leave one of them empty"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "{field} is empty: lists show tenants by it; %1 stands for nobody"),
     ""},
};

}  // namespace qorhost
