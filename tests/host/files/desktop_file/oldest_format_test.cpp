// Texts of the oldest format, in frames as a reader tells them: there is no sample of that format.
#include <gmock/gmock.h>

#include "host/files/desktop_file/reader_frames.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/file_error.h"

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
  DesktopReading reading;
  reading.codePage = asked;
  return TablesIn(frames.Ended(), "old.mdb", reading);
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
  bool isGuessed = false;
};

class OldestFormat : public testing::TestWithParam<CodePageCase> {};

TEST_P(OldestFormat, ReadsTextsInTheCodePage) {
  const CodePageCase& one = GetParam();
  const DesktopFile file = FileOf(kOldestFormat, one.told, one.bytes, one.asked);
  EXPECT_EQ(file.codePage, (DesktopCodePage{one.used, one.isGuessed}));
  EXPECT_EQ(TextOf(file).utf8, one.utf8);
  EXPECT_EQ(TextOf(file).isWhole, one.isWhole);
}
INSTANTIATE_TEST_SUITE_P(
    All, OldestFormat,
    testing::Values(
        CodePageCase{"ThatOfTheFile", 1250, 0, 1250, "Dvo\xF8\xE1k", "Dvořák"},
        CodePageCase{"ThatWhichIsAskedFor", 1252, 1250, 1250, "Dvo\xF8\xE1k", "Dvořák"},
        CodePageCase{"TheUsualOneWhereTheFileTellsNone", 0, 0, 1252, "T\xFCr", "Tür", true, true},
        CodePageCase{"TheUsualOneForOneThatIsNotKnown", 7, 0, 1252, "T\xFCr", "Tür", true, true},
        CodePageCase{"CyrillicAskedFor", 1252, 1251, 1251, "\xC4\xE2\xE5\xF0\xFC", "Дверь"},
        CodePageCase{"TwoBytesThatBeginAShortForm", 1252, 0, 1252,
                     "\xFF\xFE"
                     "A",
                     "ÿþA"},
        CodePageCase{"NoCharacterThere", 1252, 0, 1252, "a\x81z", "a\xEF\xBF\xBDz", false},
        CodePageCase{"NothingAtAll", 1250, 0, 1250, "", ""}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(LaterFormats, HaveNoCodePageAndRefuseOneThatIsAskedFor) {
  constexpr std::string_view kText("A\0\x59\x01", 4);
  const DesktopFile file = FileOf(kLaterFormat, 1250, kText, 0);
  EXPECT_EQ(file.codePage, std::nullopt);
  EXPECT_EQ(TextOf(file).utf8, "Ař");
  EXPECT_THAT([&] { (void)FileOf(kLaterFormat, 1250, kText, 1250); },
              testing::ThrowsMessage<FileError>(
                  testing::AllOf(testing::HasSubstr("'old.mdb' has its texts in Unicode"),
                                 testing::HasSubstr("name no code page"))));
}

TEST(FilesThatAreTooLarge, AreRefusedWithWhatToDo) {
  const auto refusalOf = [](std::string_view table) -> std::string {
    Frames frames;
    Payload fault;
    fault.AddByte(static_cast<std::uint8_t>(ReadFault::kTooLarge));
    fault.AddText(table);
    fault.AddLarge(0);
    fault.AddLarge(0);
    frames.Put(FrameKind::kFault, fault);
    try {
      (void)TablesIn(frames.Ended(), "old.mdb", {});
    } catch (const FileError& failure) {
      return failure.what();
    }
    return "read";
  };
  EXPECT_EQ(refusalOf(""),
            "'old.mdb' holds more than the 128 MB that are read of one file: delete what nobody "
            "needs any more in a copy, and name that");
  EXPECT_EQ(refusalOf("TENANTS"),
            "'old.mdb' has a text of more than 16 MB in its table 'TENANTS': shorten it in a copy, "
            "and name that");
}

}  // namespace
}  // namespace qorhost::test
