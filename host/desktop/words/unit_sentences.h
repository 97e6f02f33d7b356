// What is said of units, of their files, and of rows that do not fit together: for the translation.
#pragma once

#include "host/desktop/words/desk_sentence.h"

namespace qorhost {

/// A part of kDeskSentences.
inline constexpr DeskSentence kUnitSentences[] = {
    {QT_TRANSLATE_NOOP("Desks", "the row: %1"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "another row has the same code"), ""},
    {QT_TRANSLATE_NOOP("Desks", "its code is no whole number of up to 15 digits"), ""},
    {QT_TRANSLATE_NOOP("Desks", "its %1 lies in the year %2, and a unit knows 2000 to 2099"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "the directory code %1 did not come out as the unit has it: %2; nothing was changed"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "the directory code %1 did not come out as the unit has it; nothing was changed"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the phone number holds control characters"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the extension holds control characters"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the call-forward phone number holds control characters"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the call-forward extension holds control characters"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the display name holds control characters"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the do-not-disturb schedule %1 is none of this unit's schedules"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the call-forward schedule %1 is none of this unit's schedules"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the display mode must be 0, 1, 2 or 3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the field \"%1\" must be 0 or 1"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "the %1 must be a number of digits"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "the %1 is above %2"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "the %1 is in use but empty"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "the %1 must be a day as YYMMDD"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "the %1 must be a time as hhmm"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "the file cannot be read from here on: %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the file is larger than %1 bytes: nothing from here on is read"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the line stands behind the end line: nothing from here on is read"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "there are too many bad lines: nothing from here on is read"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the end line says \"%1\", but %2 codes stand before it: the file is "
                       "damaged, or the line must be \"%3\""),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the end line says \"%1\", but %2 code stands before it: the file is "
                       "damaged, or the line must be \"%3\""),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the file is cut off: its last line must be \"%1\" and the number of codes"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "there are no codes, and no line \"%10\" that says so: the file may be cut off"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "the firmware's name is empty"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the firmware's name is too long"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the firmware's name is not valid UTF-8"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the firmware's name holds a control character"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 is there twice, as RID %2 and RID %3"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "%1 has the door %2, which is not there"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 has the schedule %2 for %3, which is not there"), "13"},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 has the directory code RID %2, which is not there"), ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 is in the group %2, which is not there"), ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 has the schedule %2 at door %3, which is not there"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1 holds the credential RID %2, which is not there"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 is held by %2 and by %3"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the period of %1 ends before it begins"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "its capacity is not known"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the setting '%1' is %2, and %3 to %4 can be"), ""},
    {QT_TRANSLATE_NOOP("Desks", "%1 codes are in use, and the unit takes %2"), ""},
    {QT_TRANSLATE_NOOP("Desks", ", since %1"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "nothing was deleted: there is no unit %1 any more"), ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "nothing was deleted: somebody else has changed what is in the unit meanwhile. Try again"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "{field} is that of a type, and the unit has none: give {type} as well"),
     ""},
    {QT_TRANSLATE_NOOP(
         "Desks",
         "there is no type '{value}': give one of %1, or {capacity} as well for a new one"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "The capacity of the type '%1' is that of %2 as well."), ""},
    {QT_TRANSLATE_NOOP(
         "Desks", "%1 codes are in use in %2, more than a capacity of %3: nothing was changed"),
     ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "the directory code %1 in %2 is longer than %3: nothing was changed"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "there is a unit %1 already: give another key"), ""},
    {QT_TRANSLATE_NOOP("Desks", "the highest key is taken: give one that is free"), ""},
    {QT_TRANSLATE_NOOP("Desks", "there is no unit %1 any more"), ""},
    {QT_TRANSLATE_NOOP("Desks",
                       "a new unit needs {field}: one that is stored, or the name of a new one "
                       "with its capacity; without nothing can be stored"),
     ""},
    {QT_TRANSLATE_NOOP("Desks", "a new unit needs {field}"), ""},
    {QT_TRANSLATE_NOOP("Desks", "{field} '{value}' is neither yes nor no"), ""},
};

}  // namespace qorhost
