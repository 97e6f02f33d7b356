#include "frame/host.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "outcome.h"
#include "plain_host.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

std::string AnsiOf(std::string_view text) {
  qortest::PlainHost host;
  const std::vector<std::uint8_t> bytes = host.TextToAnsi(text);
  return {bytes.begin(), bytes.end()};
}

TEST(HostTest, DatesReadAsMonthDayYear) {
  qortest::PlainHost host;
  EXPECT_EQ(host.DateText(Date{46053.0}), "1/31/2026");
  EXPECT_EQ(host.DateText(Date{46053.75}), "1/31/2026 6:00:00 PM");
}

TEST(HostTest, TextBecomesCodePage1252) {
  const struct {
    const char* name;
    std::string_view text;
    std::string_view bytes;
  } rows[] = {
      {"Nothing", "", ""},
      {"Ascii", "abc+/=", "abc+/="},
      {"Latin", "\xC3\xA4\xC3\xBF", "\xE4\xFF"},
      {"NoBreakSpace", "\xC2\xA0", "\xA0"},
      {"Euro", "\xE2\x82\xAC", "\x80"},
      {"Dagger", "\xE2\x80\xA0", "\x86"},
      {"YWithDiaeresis", "\xC5\xB8", "\x9F"},
      {"ControlOfAnOpenPlace", "\xC2\x81", "\x81"},
      {"ControlOfATakenPlace", "\xC2\x80", "?"},
      {"Greek", "\xCE\xB1", "?"},
      {"SurrogatePairIsTwoUnits", "\xF0\x9F\x98\x80", "??"},
      {"InvalidBytes", "a\xFF\x80", "a??"},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(AnsiOf(row.text), row.bytes); });
}

TEST(HostTest, BytesBecomeTheCharactersOfCodePage1252) {
  qortest::PlainHost host;
  const std::vector<std::uint8_t> bytes = {'A', 0x80, 0x8D, 0x93, 0x9F, 0xA0, 0xE9, 0xFF};
  EXPECT_EQ(host.AnsiToText(bytes),
            "A\xE2\x82\xAC\xC2\x8D\xE2\x80\x9C\xC5\xB8\xC2\xA0\xC3\xA9\xC3\xBF");
  EXPECT_EQ(host.AnsiToText({}), "");
}

TEST(HostTest, EveryByteSurvivesTheWayToTextAndBack) {
  qortest::PlainHost host;
  std::vector<std::uint8_t> bytes(256);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  EXPECT_EQ(host.TextToAnsi(host.AnsiToText(bytes)), bytes);
}

}  // namespace
}  // namespace qorcred
