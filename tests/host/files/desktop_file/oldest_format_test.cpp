// Texts of the oldest format, in frames as a reader tells them: there is no sample of that format.
#include <gmock/gmock.h>

#include "host/files/desktop_file/reader_frames.h"
#include "host/files/desktop_file/reader_message.h"

namespace qorhost::test {
namespace {

using namespace desktop_file;

/// Frames as a reader puts them, with an end that is right for them.
class Frames {
 public:
  void Put(FrameKind kind, const Payload& payload) {
    const std::string frame = FrameHeaderOf(kind, payload.bytes().size()) + payload.bytes();
    sum_.Add(frame);
    bytes_ += frame;
    ++count_;
  }
  [[nodiscard]] std::string Ended() const {
    Payload end;
    end.AddLarge(count_);
    end.AddLarge(sum_.sum());
    return bytes_ + FrameHeaderOf(FrameKind::kEnd, end.bytes().size()) + end.bytes();
  }

 private:
  std::string bytes_;
  RunningSum sum_;
  std::uint64_t count_ = 0;
};

constexpr std::uint32_t kLaterFormat = 1;

/// A file with one table of one text.
DesktopFile FileOf(std::uint32_t format, std::uint32_t codePage, std::string_view text,
                   unsigned asked) {
  Frames frames;
  Payload file;
  file.AddNumber(kFormNumber);
  file.AddNumber(format);
  file.AddNumber(codePage);
  frames.Put(FrameKind::kFile, file);
  Payload table;
  table.AddText("TENANTS");
  table.AddByte(0);
  table.AddNumber(1);
  table.AddNumber(1);
  table.AddText("LastName");
  table.AddByte(static_cast<std::uint8_t>(DesktopType::kText));
  table.AddByte(0);
  table.AddNumber(50);
  frames.Put(FrameKind::kTable, table);
  Payload row;
  row.AddText(text);
  frames.Put(FrameKind::kRow, row);
  return TablesIn(frames.Ended(), "old.mdb", asked);
}

DesktopText TextOf(const DesktopFile& file) {
  return std::get<DesktopText>(file.tables.at(0).rows.at(0).at(0));
}

struct CodePageCase {
  const char* name;
  std::uint32_t told;
  unsigned asked;
  unsigned used;
  std::string_view bytes;
  std::string_view utf8;
  bool isWhole = true;
};

class OldestFormat : public testing::TestWithParam<CodePageCase> {};

TEST_P(OldestFormat, ReadsTextsInTheCodePage) {
  const CodePageCase& one = GetParam();
  const DesktopFile file = FileOf(kOldestFormat, one.told, one.bytes, one.asked);
  EXPECT_EQ(file.codePage, one.used);
  EXPECT_EQ(TextOf(file).utf8, one.utf8);
  EXPECT_EQ(TextOf(file).isWhole, one.isWhole);
}
INSTANTIATE_TEST_SUITE_P(
    All, OldestFormat,
    testing::Values(
        CodePageCase{"ThatOfTheFile", 1250, 0, 1250, "Dvo\xF8\xE1k", "Dvořák"},
        CodePageCase{"ThatWhichIsAskedFor", 1252, 1250, 1250, "Dvo\xF8\xE1k", "Dvořák"},
        CodePageCase{"TheUsualOneWhereTheFileTellsNone", 0, 0, 1252, "T\xFCr", "Tür"},
        CodePageCase{"TheUsualOneForOneThatIsNotKnown", 7, 0, 1252, "T\xFCr", "Tür"},
        CodePageCase{"CyrillicAskedFor", 1252, 1251, 1251, "\xC4\xE2\xE5\xF0\xFC", "Дверь"},
        CodePageCase{"TwoBytesThatBeginAShortForm", 1252, 0, 1252,
                     "\xFF\xFE"
                     "A",
                     "ÿþA"},
        CodePageCase{"NoCharacterThere", 1252, 0, 1252, "a\x81z", "a\xEF\xBF\xBDz", false},
        CodePageCase{"NothingAtAll", 1250, 0, 1250, "", ""}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(LaterFormats, HaveNoCodePageWhateverIsAskedFor) {
  const DesktopFile file = FileOf(kLaterFormat, 1250, std::string_view("A\0\x59\x01", 4), 1251);
  EXPECT_EQ(file.codePage, std::nullopt);
  EXPECT_EQ(TextOf(file).utf8, "Ař");
}

}  // namespace
}  // namespace qorhost::test
