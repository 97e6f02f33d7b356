// What is said of doors and schedules, and of a store that was looked over: for the translation.
#pragma once

#include "host/desktop/words/desk_sentence.h"

namespace qorhost {

/// A part of kDeskSentences.
inline constexpr DeskSentence kBuildingSentences[] = {
    // Doors and schedules.
    {QT_TRANSLATE_NOOP("Desks", "the unit has no door '{value}'"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 doors are called '{value}': give the door's number instead"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}' would be taken for a door's number or for no door"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "door %1 has the name '{value}' already"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 schedules are called '{value}': give the id instead"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the unit has no schedule '{value}'"), ""},
    {QT_TRANSLATE_NOOP("Desks", "every unit has the schedule '{value}', as it is"), ""},
    {QT_TRANSLATE_NOOP("Desks", "{field} '{value}' would be taken for an id"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} '{value}' has an apostrophe, with which no report could be asked "
                       "for it: write ’ instead"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the schedule %1 has the name '{value}' already"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the unit has a schedule %1 already: give another id"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the highest id is taken: give one that is free"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "the schedule %1, %2, is in use by %3. Give them another one first; nothing was deleted"),
     "3"},
    // What a look over the store finds.
    {QT_TRANSLATE_NOOP("Desks", "the store is damaged: %1"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "restore the last backup"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the identity %1 of %2 stands in several units: %3"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "credentials of the type %1, which no screen knows: %2, the first RID %3"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 has the directory code RID %2, which is unit %3's"), ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 is in the group %2, which is unit %3's"), ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 holds the credential RID %2, which is unit %3's"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the programming step %1 is about the tenant RID %2, which is unit %3's"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "the programming step %1 is about the directory code RID %2, which is unit %3's"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the row %1 of TenantsBackup is of the tenant RID %2, who is unit %3's"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the history: %1"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "entry %1 is not as it was written, or one that it follows is not"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "entry %1 is missing"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the rows of entry %1 cannot be read"), ""},
    {QT_TRANSLATE_NOOP("Desks", "give one of them another number, or delete it"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "give them a type that the screens know ('sql --write'), or leave them"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "give it one of the unit's doors, from 1, or 0 for none; neither a screen nor another "
         "command can load the card before: 'sql --write \"UPDATE CredentialBank SET DOORCODE=0 "
         "WHERE RID=%1\"'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "give the code another schedule for %1, or switch that off"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "give the tenant another directory code, or none"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "mark it as sent, for it would tell the unit of another one's row: 'steps done %1 --unit "
         "%2'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "put the tenant into one of the unit's groups, or into 0, which is none"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "put the tenant into one of the unit's groups"), ""},
    {QT_TRANSLATE_NOOP("Desks", "give the tenant another schedule at that door"), ""},
    {QT_TRANSLATE_NOOP("Desks", "give the tenant another credential, or none"), ""},
    {QT_TRANSLATE_NOOP("Desks", "assign it to the right one"), ""},
    {QT_TRANSLATE_NOOP("Desks", "change its first or its last day"), ""},
    {QT_TRANSLATE_NOOP("Desks", "give it a type that has one: 'units edit %1 --type TYPE'"), ""},
    {QT_TRANSLATE_NOOP("Desks", "delete what is not needed: nothing can be added before"), ""},
    {QT_TRANSLATE_NOOP("Desks", "give it another one: 'units edit %1 %2'"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "no screen and no other command deletes it: 'sql --write \"DELETE FROM "
                       "TenantsBackup WHERE RID=%1\"'"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "compare with a backup; what the rows hold is not touched by it"),
     ""},
};

/// Who uses a schedule: a part of kDeskSentences that is so wide that it stands behind the others.
inline constexpr DeskSentence kUserSentences[] = {
    {QT_TRANSLATE_NOOP("Desks", "%1, and by %2"), "12"},
    {QT_TRANSLATE_NOOP("Desks", "%1 tenants: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "%1 tenant: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "%1 directory codes: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "%1 directory code: %2"), "2"},
    {QT_TRANSLATE_NOOP("Desks", "%1; and %2 more"), ""},
};

}  // namespace qorhost
