// What is said of stores and of files that are read and written: for the translation.
#pragma once

#include "host/desktop/words/desk_sentence.h"

namespace qorhost {

/// A part of kDeskSentences.
inline constexpr DeskSentence kStoreSentences[] = {
    {QT_TRANSLATE_NOOP("Desks", "there is no database '%1'"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' exists already"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' was made by somebody else meanwhile, and is left as it is"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is no store of this program and is not replaced"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' belongs to the store itself: name another file"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' was left behind by a store that is gone: move it away first"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "'%1' is in an older form and has a log beside it: open it once as a store, "
                       "which brings it up to date"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "cannot write '%1': there is no folder '%2'"), ""},
    {QT_TRANSLATE_NOOP("Desks", "there is no file '%1'"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "'%1' is larger than %2 MB: split it, with the headings in each part; nothing "
         "was imported"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the printer, or the file, takes nothing"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "Printing needs '%1' and Qt's library for printers (Debian: "
         "libqt6printsupport6), which cannot be loaded; a report can be saved as PDF"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is a database of another program: name another file"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is empty: create the store first"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "'%1' was written by a newer version of this program (schema %2, this one "
                       "reads up to %3): use that version"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is being replaced again and again: try again later"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is damaged: %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", "The store '%1': %2 (%3)"), "3"},
    {QT_TRANSLATE_NOOP("Desks", "Cannot open the store '%1': %2 (%3)"), "3"},
    {QT_TRANSLATE_NOOP("Desks", "The store '%1' cannot be written: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "The store '%1' is in use: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "The statement failed: %1 (%2)"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "The statement cannot be run: %1 (%2)"), "2"},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' was moved or replaced while it was open: open it again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store was moved or replaced while it was open: nothing was stored"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "Somebody else has changed the unit meanwhile: nothing was stored"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The operation was given up after an earlier failure: nothing was stored"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "The operation was cancelled: nothing was stored"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "Another user's program has the store '%1' open: let it finish, then try again"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "another program is writing to the store: nothing was changed; let it finish, "
         "then try again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "check the rights on the file and its folder, or open it for reading only"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "the store cannot be written: check the rights on the file and its folder, or "
         "whether it was opened for reading only"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the disk is full: make room, then try again"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the disk could not be read or written: check it, then try again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the file is not a store: choose another one"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the store is damaged: put back a copy of it"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "the file cannot be opened: check its name and the rights on it and its folder"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "there is not enough memory: close other programs, then try again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the query asks for far more work than a report: narrow it"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is a link: name the store that it leads to"), ""},
    {QT_TRANSLATE_NOOP("Desks", "'%1' is no name of a file: name another file"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "'%1' belongs to the store and is never replaced: name another file"),
     ""},
};

}  // namespace qorhost
