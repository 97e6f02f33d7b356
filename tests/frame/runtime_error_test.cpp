#include "frame/runtime_error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

TEST(RuntimeErrorTest, EveryNumberHasItsStandardText) {
  const struct {
    const char* name;
    ErrorNumber number;
    int value;
    const char* text;
  } rows[] = {
      {"InvalidCall", ErrorNumber::kInvalidProcedureCall, 5, "Invalid procedure call or argument"},
      {"Overflow", ErrorNumber::kOverflow, 6, "Overflow"},
      {"OutOfMemory", ErrorNumber::kOutOfMemory, 7, "Out of memory"},
      {"IndexOutOfRange", ErrorNumber::kIndexOutOfRange, 9, "Subscript out of range"},
      {"TypeMismatch", ErrorNumber::kTypeMismatch, 13, "Type mismatch"},
      {"Internal", ErrorNumber::kInternal, 51, "Internal error"},
      {"ObjectNotSet", ErrorNumber::kObjectNotSet, 91, "Object variable not set"},
      {"InvalidUseOfNull", ErrorNumber::kInvalidUseOfNull, 94, "Invalid use of Null"},
      {"ObjectRequired", ErrorNumber::kObjectRequired, 424, "Object required"},
      {"CannotCreate", ErrorNumber::kCannotCreateComponent, 429, "Component can't create object"},
      {"UnknownMember", ErrorNumber::kUnknownMember, 438,
       "Object doesn't support this property or method"},
      {"UnknownArgument", ErrorNumber::kUnknownArgument, 448, "Named argument not found"},
      {"NotOptional", ErrorNumber::kArgumentNotOptional, 449, "Argument not optional"},
      {"ArgumentCount", ErrorNumber::kWrongArgumentCount, 450,
       "Wrong number of arguments or invalid property assignment"},
      {"ApplicationDefined", ErrorNumber::kApplicationDefined, 1000,
       "Application-defined or object-defined error"},
      {"ANumberOfAHost", static_cast<ErrorNumber>(3021), 3021,
       "Application-defined or object-defined error"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(static_cast<int>(row.number), row.value);
    EXPECT_EQ(DescriptionOf(row.number), row.text);
    EXPECT_EQ(RuntimeError(row.number).description(), row.text);
    EXPECT_STREQ(RuntimeError(row.number).what(), row.text);
  });
}

TEST(RuntimeErrorTest, AnOwnDescriptionReplacesTheStandardOne) {
  const RuntimeError failure(ErrorNumber::kUnknownMember, "No member \"Foo\"");
  EXPECT_EQ(failure.number(), ErrorNumber::kUnknownMember);
  EXPECT_EQ(failure.description(), "No member \"Foo\"");
}

template <typename Thrown>
RuntimeError FailureOf(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    return CurrentFailure();
  }
}

TEST(CurrentFailureTest, KeepsARuntimeErrorAsItIs) {
  const RuntimeError failure = FailureOf(RuntimeError(ErrorNumber::kOverflow, "Too many"));
  EXPECT_EQ(failure.number(), ErrorNumber::kOverflow);
  EXPECT_EQ(failure.description(), "Too many");
}

TEST(CurrentFailureTest, NumbersAnExhaustedMemory) {
  EXPECT_EQ(FailureOf(std::bad_alloc()).number(), ErrorNumber::kOutOfMemory);
}

TEST(CurrentFailureTest, KeepsTheTextOfAnyOtherException) {
  const RuntimeError failure = FailureOf(std::runtime_error("disk on fire"));
  EXPECT_EQ(failure.number(), ErrorNumber::kInternal);
  EXPECT_EQ(failure.description(), "disk on fire");
}

TEST(CurrentFailureTest, NumbersWhatIsNoExceptionAtAll) {
  const RuntimeError failure = FailureOf(42);
  EXPECT_EQ(failure.number(), ErrorNumber::kInternal);
  EXPECT_EQ(failure.description(), "Internal error");
}

}  // namespace
}  // namespace qorcred
