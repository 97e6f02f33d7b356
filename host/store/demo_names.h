// Invented people of the demo store.
#pragma once

#include <array>
#include <string_view>

namespace qorhost::demo {

inline constexpr std::array<std::string_view, 41> kFirstNames{
    "Amelia",  "Bruno", "Carla", "Dmitri", "Elena",  "Farid",  "Greta", "Hugo",  "Ines",
    "Jonas",   "Katya", "Liam",  "Mina",   "Noor",   "Oscar",  "Paula", "Quinn", "Rosa",
    "Samir",   "Tessa", "Umar",  "Vera",   "Wiktor", "Xenia",  "Yusuf", "Zoe",   "Anders",
    "Beatriz", "Cem",   "Dora",  "Émile",  "Fiona",  "Gustav", "Hana",  "Ivo",   "Jasmin",
    "Kofi",    "Leïla", "Marek", "Nadia",  "Søren"};

inline constexpr std::array<std::string_view, 59> kLastNames{
    "Abbott",   "Bergmann",  "Castellano", "Drummond",   "Ekström",    "Fairweather",  "Grünwald",
    "Hollis",   "Ibarra",    "Jankowski",  "Keller",     "Lindqvist",  "Moreau",       "Nakamura",
    "O'Brien",  "Petrov",    "Quintero",   "Rosenthal",  "Santos",     "Thornbury",    "Ueda",
    "Vasquez",  "Whitlock",  "Xanthos",    "Yilmaz",     "Zielinski",  "Åkesson",      "Baptiste",
    "Carmody",  "Delacroix", "Eastwick",   "Ferreira",   "Gallagher",  "Haddad",       "Iversen",
    "Johansen", "Kowalski",  "Lombardi",   "McAllister", "Nuñez",      "Okafor",       "Pemberton",
    "Raghavan", "Silvestri", "Tanaka",     "Underhill",  "Vandermeer", "Winterbourne", "Yates",
    "Zimmer",   "Ashdown",   "Brandt",     "Corrigan",   "Dunmore",    "Öztürk",       "Fitzroy",
    "Grimaldi", "Hawthorne", "Imhof"};

inline constexpr std::string_view kInitials = "ABCDEFGHJKLMNPRSTW";

}  // namespace qorhost::demo
