// What desks say, as they write it: for the translation.
#pragma once

#include <array>
#include <span>

#include "host/desktop/words/building_sentences.h"
#include "host/desktop/words/entry_sentences.h"
#include "host/desktop/words/import_sentences.h"
#include "host/desktop/words/moving_sentences.h"
#include "host/desktop/words/server_sentences.h"
#include "host/desktop/words/store_sentences.h"
#include "host/desktop/words/unit_sentences.h"

namespace qorhost {

/// What begins or ends in a sentence of any kind.
inline constexpr DeskSentence kWideSentences[] = {
    {QT_TRANSLATE_NOOP("Desks", "%1; nothing was imported"), "1"},
    {QT_TRANSLATE_NOOP("Desks", "directory code %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "tenant %1"), ""},
    {QT_TRANSLATE_NOOP("Desks", "cannot %1: %2"), "12"},
};

/// Each is tried in turn: one that another one would take in, too, stands before it.
inline constexpr std::array<std::span<const DeskSentence>, 10> kDeskSentences{
    kEntrySentences,    kServerSentences, kStoreSentences,     kImportSentences, kUnitSentences,
    kBuildingSentences, kMovingSentences, kMovedFileSentences, kWideSentences,   kUserSentences};

}  // namespace qorhost
