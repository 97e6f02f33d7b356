// Frames between the reader of desktop database files and the program that started it.
#include "host/files/desktop_file/reader_message.h"

#include <gtest/gtest.h>

namespace qorhost::test {
namespace {

using namespace desktop_file;

TEST(ReaderMessages, GiveBackWhatWasPutIn) {
  Payload payload;
  payload.AddByte(0xFE);
  payload.AddNumber(0xFFFFFFFE);
  payload.AddLarge(0x0102030405060708U);
  payload.AddText(std::string_view("a\0b", 3));
  payload.AddNullCell();
  payload.AddText("");
  PayloadReader reader(payload.bytes());
  EXPECT_EQ(reader.Byte(), 0xFE);
  EXPECT_EQ(reader.Number(), 0xFFFFFFFE);
  EXPECT_EQ(reader.Large(), 0x0102030405060708U);
  EXPECT_EQ(reader.Text(), std::string_view("a\0b", 3));
  EXPECT_EQ(reader.Cell(), std::nullopt);
  EXPECT_FALSE(reader.IsAtItsEnd());
  EXPECT_EQ(reader.Cell(), std::string_view());
  EXPECT_TRUE(reader.IsAtItsEnd());
}

TEST(ReaderMessages, NothingIsReadBeyondTheEnd) {
  Payload payload;
  payload.AddText("door");
  for (std::size_t length = 0; length < payload.bytes().size(); ++length) {
    PayloadReader reader(std::string_view(payload.bytes()).substr(0, length));
    EXPECT_EQ(reader.Text(), "") << length;
    EXPECT_FALSE(reader.whole()) << length;
    EXPECT_EQ(reader.Number(), 0U);
    EXPECT_FALSE(reader.IsAtItsEnd());
  }
}

TEST(ReaderMessages, TheSumTellsOrderAndEveryByte) {
  const auto sum = [](std::string_view one, std::string_view two) {
    RunningSum running;
    running.Add(one);
    running.Add(two);
    return running.sum();
  };
  EXPECT_EQ(sum("ab", "c"), sum("a", "bc"));
  EXPECT_NE(sum("ab", "c"), sum("ba", "c"));
  EXPECT_NE(sum("ab", "c"), sum("ab", ""));
}

}  // namespace
}  // namespace qorhost::test
