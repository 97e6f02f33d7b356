// Faults in inputs, in the words of different front ends.
#include "host/desks/input_fault.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace qorhost {
namespace {

constexpr std::array kWords{FieldWord{"first day", "--from", {}}, FieldWord{"last day", "--to", {}},
                            FieldWord{"door", "--door", "'doors' lists them"},
                            FieldWord{"tenant", "", {}}};

TEST(InputFault, IsToldInTheWordsOfTheFrontEnd) {
  const InputFault fault("first day", "soon", "{field} '{value}' is no date");
  EXPECT_EQ(InWords(fault, kWords), "--from 'soon' is no date");
  constexpr std::array kColumns{FieldWord{"first day", "Start Date", {}}};
  EXPECT_EQ(InWords(fault, kColumns), "Start Date 'soon' is no date");
}

TEST(InputFault, GoesByItsOwnNameWhereThereIsNoWord) {
  const InputFault fault("colour", "red", "{field} '{value}' is not known");
  EXPECT_EQ(InWords(fault, kWords), "colour 'red' is not known");
  EXPECT_STREQ(fault.what(), "colour 'red' is not known");
}

TEST(InputFault, NamesOtherInputsToo) {
  const InputFault fault("last day", "", "leave {first day} and {last day} out");
  EXPECT_EQ(InWords(fault, kWords), "leave --from and --to out");
}

TEST(InputFault, GoesWithoutANameThatTheFrontEndLeavesOut) {
  EXPECT_EQ(InWords(InputFault("tenant", "X", "{field}: there is no tenant '{value}'"), kWords),
            "there is no tenant 'X'");
  EXPECT_EQ(InWords(InputFault("door", "X", "{field}: there is no door '{value}'"), kWords),
            "--door: there is no door 'X'");
}

TEST(InputFault, SaysWhereToLookWhereSomethingIsListed) {
  EXPECT_EQ(
      InWords(InputFault("door", "X", "no door '{value}'", InputFault::Kind::kSeeList), kWords),
      "no door 'X': 'doors' lists them");
  EXPECT_EQ(InWords(InputFault("door", "X", "two doors '{value}'"), kWords), "two doors 'X'");
  EXPECT_EQ(InWords(InputFault("tenant", "X", "no '{value}'", InputFault::Kind::kSeeList), kWords),
            "no 'X'");
}

TEST(InputFault, NeverTakesAValueForAName) {
  EXPECT_EQ(InWords(InputFault("door", "{first day} {value} {", "'{value}'?"), kWords),
            "'{first day} {value} {'?");
}

TEST(InputFault, NeverTakesATextFromElsewhereForAName) {
  for (const char* text : {"{value}", "{field}", "{door}", "{{value}}", "{", "{{", "}", "plain"}) {
    EXPECT_EQ(InWords(InputFault("door", "X", "'{value}' is not " + InReason(text)), kWords),
              std::string("'X' is not ") + text);
  }
}

TEST(InputFault, LeavesBracesAloneThatStandForNothing) {
  EXPECT_EQ(InWords(InputFault("door", "X", "{ {} {unknown} {field"), kWords),
            "{ {} {unknown} {field");
}

}  // namespace
}  // namespace qorhost
