// What is said of stores on a server, and of the server: for the translation.
#pragma once

#include "host/desktop/words/desk_sentence.h"

namespace qorhost {

/// A part of kDeskSentences.
inline constexpr DeskSentence kServerSentences[] = {
    {QT_TRANSLATE_NOOP("Desks",
                       "The server tells of a changed row in other words than the store's own: "
                       "nothing was stored; ask its administrator who has altered the store's "
                       "triggers"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The changes could not be written down for the audit: nothing was stored"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The connection to the server was lost while it was to store: nothing was "
                       "stored; try again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "The connection to the server was lost while it was to store: %1"),
     "1"},
    {QT_TRANSLATE_NOOP("Desks",
                       "it is not known whether it was stored: look at the history (qorhost "
                       "history list) before you do it again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "The transaction had failed before its end: nothing was stored"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1': its server does not answer, and was not waited for any "
                       "longer"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "The store '%1': another program is writing to the store: nothing was changed; "
         "let it finish, then try again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' cannot be opened: its server is older than PostgreSQL 15"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' cannot be opened: the database keeps its texts in another "
                       "encoding than UTF-8: create it with ENCODING 'UTF8'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' cannot be opened: permission denied for schema qorhost, "
                       "which belongs to '%2' (no role of operators has rights on it: let the "
                       "owner name one with 'init --rights-only --operators ROLE')"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' cannot be opened: permission denied for schema qorhost, "
                       "which belongs to '%2' (ask the server's administrator for %3)"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' is of an earlier version of this program, and is brought "
                       "up to date by its owner: let a member of the role '%2' open it once"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "The store '%1' cannot be opened: %2 (%3)"), "3"},
    {QT_TRANSLATE_NOOP("Desks", "The store '%1' cannot be opened: %2"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store '%1' was brought up to date by a newer version of this program "
                       "while it was open: nothing was stored; use that version"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "There is no store in '%1': create it first"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "'%1' is in a form that no version of this program has written (schema "
                       "%2)"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store's name cannot be read: write postgresql://HOST/DATABASE, or "
                       "service=NAME"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "The store's name holds a password, which other programs of the machine "
                       "could read: leave it out and put it into the file ~/.pgpass, or "
                       "PGPASSWORD into the environment"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "Stores on a server need %1 (Debian: libpq5), which cannot be loaded"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "The statement failed: it worked for too long and was ended (%1)"),
     "1"},
    {QT_TRANSLATE_NOOP("Desks",
                       "The statement failed: %1 (the connection to the server was lost: nothing "
                       "was stored; try again)"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the server cannot be reached: check its address, the network and whether "
                       "it runs"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "it may be starting: try again"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "put it into the file ~/.pgpass, which nobody else may read, as "
                       "HOST:PORT:DATABASE:USER:PASSWORD, or PGPASSWORD into the environment"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the server does not let this user do it: ask its administrator"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the server, or this connection, takes no changes: ask its administrator"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the server's disk is full: its administrator has to make room"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the server cannot read or write its disk: tell its administrator"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the server ended it before it was done: try again, or ask its "
                       "administrator how long a statement may work"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "there is no such database on the server: check its name"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the database is damaged: tell the server's administrator"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the server has not enough memory: tell its administrator"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the statement or one of its values is too long: use a shorter one"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the row belongs to a unit that does not exist, or is a unit that other "
                       "rows belong to"),
     ""},
};

}  // namespace qorhost
