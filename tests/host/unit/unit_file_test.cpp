#include "host/unit/unit_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ios>
#include <sstream>
#include <streambuf>
#include <string>
#include <system_error>

#include "host/unit/unit_generator.h"
#include "tests/host/unit/sample_code.h"

namespace {

using qorcred::unit_place::Place;
using qorhost::UnitFile;
using qorhost::UnitReading;
using qortest::SampleCode;
using qortest::With;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace qorcred::unit_place;  // the places

constexpr const char* kHead = "qorCred unit file 2\nfirmware FC02.010\n";
// Of files that have no end line.
constexpr const char* kOldHead = "qorCred unit file 1\nfirmware FC02.010\n";
constexpr const char* kLine =
    ";;;;101;5550101;12;5550202;34;Adler, K.;1;1;240315;0930;1;301231;2359;5;1;30;1;7;40;1\n";

UnitReading Read(const std::string& text) {
  std::istringstream in(text);
  return qorhost::ReadUnitFile(in);
}

std::string Written(const UnitFile& file) {
  std::ostringstream out;
  qorhost::WriteUnitFile(out, file);
  return out.str();
}

MATCHER_P2(FaultAt, line, reason, "") {
  return arg.line == static_cast<std::size_t>(line) &&
         ::testing::ExplainMatchResult(HasSubstr(reason), arg.reason, result_listener);
}

TEST(UnitFileTest, HoldsOneCodeALine) {
  UnitFile file;
  file.codes = {SampleCode()};
  EXPECT_EQ(Written(file), std::string(kHead) + kLine + "end 1\n");

  const UnitReading reading = Read(std::string(kHead) + kLine + "end 1\n");
  EXPECT_THAT(reading.faults, IsEmpty());
  EXPECT_TRUE(reading.isUnitFile);
  EXPECT_TRUE(reading.isCounted);
  EXPECT_EQ(reading.file.firmware, "FC02.010");
  ASSERT_THAT(reading.file.codes, SizeIs(1));
  EXPECT_EQ(reading.file.codes[0], SampleCode());
}

TEST(UnitFileTest, SkipsCommentsAndEmptyLines) {
  const UnitReading reading =
      Read(std::string(kHead) + "# the lobby\n\n" + kLine + "end 1\n\n#end");
  EXPECT_THAT(reading.faults, IsEmpty());
  EXPECT_THAT(reading.file.codes, SizeIs(1));
}

TEST(UnitFileTest, ReadsAByteOrderMarkAndCarriageReturns) {
  std::string text = "\xEF\xBB\xBF" + std::string(kHead) + kLine + "end 1\n";
  for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2)) {
    text.insert(at, 1, '\r');
  }
  const UnitReading reading = Read(text);
  EXPECT_THAT(reading.faults, IsEmpty());
  EXPECT_EQ(reading.file.firmware, "FC02.010");
  ASSERT_THAT(reading.file.codes, SizeIs(1));
  EXPECT_EQ(reading.file.codes[0], SampleCode());
}

TEST(UnitFileTest, ReadsALastLineWithoutLineFeed) {
  for (std::string text : {std::string(kHead) + kLine + "end 1\n", std::string(kOldHead) + kLine}) {
    text.pop_back();
    EXPECT_THAT(Read(text).faults, IsEmpty());
    EXPECT_THAT(Read(text).file.codes, SizeIs(1));
  }
}

TEST(UnitFileTest, TextsOfAnyKindSurvive) {
  for (const char* text : {";", "\\", "\\;", "a;b;;", "#1", "line\nbreak", "a\r\nb", "\r", "\t",
                           " blanks ", "\"quoted\"", "Gro\xC3\x9F", "\\n", "#"}) {
    UnitFile file;
    file.codes = {With(kDisplayName, text)};
    const UnitReading reading = Read(Written(file));
    ASSERT_THAT(reading.faults, IsEmpty()) << text;
    ASSERT_THAT(reading.file.codes, SizeIs(1)) << text;
    EXPECT_EQ(reading.file.codes[0], file.codes[0]) << text;
  }
}

TEST(UnitFileTest, AFieldThatBeginsLikeACommentSurvives) {
  UnitFile file;
  file.codes = {SampleCode()};
  file.codes[0].fields[0] = "#7";
  EXPECT_THAT(Written(file), HasSubstr("\n\\#7;"));
  EXPECT_THAT(Read(Written(file)).file.codes, SizeIs(1));
}

TEST(UnitFileTest, EveryBadLineIsToldAndTheOthersAreKept) {
  std::string good = kLine;
  std::string other = good;
  other.replace(other.find("101"), 3, "102");
  const UnitReading reading = Read(std::string(kHead) + "nonsense\n" + good + "a\\q;\n" + other +
                                   ";;;;x;;;;;;;;;;;;;;;;;;;\n" + good + "end 6\n");
  EXPECT_THAT(reading.faults,
              ElementsAre(FaultAt(3, "1 fields instead of 24"), FaultAt(5, "backslash"),
                          FaultAt(7, "directory code must be a number"),
                          FaultAt(8, "101 stands in line 4 already")));
  ASSERT_THAT(reading.file.codes, SizeIs(2));
  EXPECT_EQ(qorhost::NumberOf(reading.file.codes[1]), 102);
}

TEST(UnitFileTest, OneFieldMoreIsAFault) {
  std::string line = kLine;
  line.insert(line.size() - 1, ";");
  EXPECT_THAT(Read(kHead + line + "end 1\n").faults,
              ElementsAre(FaultAt(3, "25 fields instead of 24")));
}

TEST(UnitFileTest, LongLinesAreFaultsWhereTheyStand) {
  const std::string longest(qorhost::kLongestUnitLine, 'x');
  const UnitReading reading =
      Read(std::string(kHead) + longest + "\n" + longest + "x\n" + kLine + "end 3\n");
  EXPECT_THAT(reading.faults, ElementsAre(FaultAt(3, "1 fields"), FaultAt(4, "longer than 4096")));
  EXPECT_THAT(reading.file.codes, SizeIs(1));
}

TEST(UnitFileTest, AnotherFileIsNotRead) {
  for (const char* text :
       {"", "\n", "qorCred unit file 3\n", "PK\x03\x04", "qorCred unit file 1 "}) {
    const UnitReading reading = Read(text + std::string(kLine));
    EXPECT_THAT(reading.faults, ElementsAre(FaultAt(1, "begins with the line"))) << text;
    EXPECT_FALSE(reading.isUnitFile) << text;
    EXPECT_THAT(reading.file.codes, IsEmpty()) << text;
  }
}

TEST(UnitFileTest, TheFirmwareMustBeTold) {
  for (const char* second : {"", "firmware\n", "firmware \n", "FC01.005\n"}) {
    const UnitReading reading = Read("qorCred unit file 1\n" + std::string(second) + kLine);
    EXPECT_THAT(reading.faults, ElementsAre(FaultAt(2, "firmware"))) << second;
    EXPECT_FALSE(reading.isUnitFile) << second;
    EXPECT_THAT(reading.file.codes, IsEmpty()) << second;
  }
}

TEST(UnitFileTest, TheFirmwareMustBeALineOfText) {
  const struct {
    std::string firmware;
    const char* fault;
  } rows[] = {{"FC02.010", ""},
              {"\xC3\x9C 1", ""},
              {"", "empty"},
              {"\xFF", "not valid UTF-8"},
              {"a\r", "control character"},
              {"a\nb", "control character"},
              {std::string(4087, 'x'), ""},
              {std::string(4088, 'x'), "too long"}};
  for (const auto& row : rows) {
    EXPECT_THAT(qorhost::FaultInFirmware(row.firmware), HasSubstr(row.fault));
    if (*row.fault != '\0') continue;
    UnitFile file;
    file.firmware = row.firmware;
    EXPECT_EQ(Read(Written(file)).file.firmware, row.firmware);
  }
  for (const std::string& bad : {std::string("a\r\r"), std::string(4088, 'x')}) {
    const UnitReading reading = Read("qorCred unit file 1\nfirmware " + bad + "\n" + kLine);
    EXPECT_THAT(reading.faults, SizeIs(1));
    EXPECT_THAT(reading.file.codes, IsEmpty());
  }
}

TEST(UnitFileTest, TheLongestCodeFitsIntoALine) {
  for (const std::string& character : {std::string("\xE2\x82\xAC"), std::string("\\")}) {
    UnitFile file;
    file.codes = {With(kCode, "999999999999999")};
    for (const Place text : {kPhone, kExtension, kCfPhone, kCfExtension, kDisplayName}) {
      std::string& longest = file.codes[0][text];
      longest.clear();
      for (std::size_t i = 0; i < qorhost::kLongestUnitText; ++i) longest += character;
    }
    for (const Place number : {kDndSchedule, kTimeDelay, kCfSchedule, kCfTimeDelay}) {
      file.codes[0][number] = "2147483647";
    }
    const UnitReading reading = Read(Written(file));
    EXPECT_THAT(reading.faults, IsEmpty());
    EXPECT_EQ(reading.file.codes, file.codes);
  }
}

// Gives a text and then fails, as a drive that goes away.
class FailingBuffer : public std::streambuf {
 public:
  explicit FailingBuffer(std::string text) : text_(std::move(text)) {
    setg(text_.data(), text_.data(), text_.data() + text_.size());
  }

 protected:
  int_type underflow() override {
    throw std::ios_base::failure("read", std::make_error_code(std::errc::io_error));
  }

 private:
  std::string text_;
};

TEST(UnitFileTest, AFailingStreamIsToldAtItsLine) {
  const struct {
    std::string text;
    int line;
    std::size_t codes;
  } rows[] = {
      {"", 1, 0}, {"qorCred unit file 1\n", 2, 0}, {std::string(kHead) + kLine + ";", 4, 1}};
  for (const auto& row : rows) {
    FailingBuffer buffer(row.text);
    std::istream in(&buffer);
    const UnitReading reading = qorhost::ReadUnitFile(in);
    EXPECT_THAT(reading.faults, ElementsAre(FaultAt(row.line, "cannot be read from here on")));
    EXPECT_THAT(reading.file.codes, SizeIs(row.codes));
  }
}

TEST(UnitFileTest, AnEmptyUnitIsAUnitWhenItsEndLineSaysSo) {
  const UnitReading reading = Read(std::string(kHead) + "end 0\n");
  EXPECT_THAT(reading.faults, IsEmpty());
  EXPECT_THAT(reading.file.codes, IsEmpty());
  EXPECT_EQ(Written(reading.file), std::string(kHead) + "end 0\n");
}

// A merge with a file that was cut off would delete the codes behind the cut.
TEST(UnitFileTest, AFileThatIsCutAnywhereIsToldAsBad) {
  UnitFile file;
  for (const char* code : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}) {
    file.codes.push_back(With(kCode, code));
  }
  const std::string whole = Written(file);
  ASSERT_THAT(Read(whole).faults, IsEmpty());
  // The last line feed alone may be missing.
  for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
    EXPECT_FALSE(Read(whole.substr(0, length)).faults.empty()) << length << " bytes";
  }
}

TEST(UnitFileTest, AMissingEndLineIsToldBehindTheLastLine) {
  EXPECT_THAT(Read(std::string(kHead) + kLine).faults, ElementsAre(FaultAt(4, "cut off")));
  EXPECT_THAT(Read(kHead).faults, ElementsAre(FaultAt(3, "cut off")));
}

TEST(UnitFileTest, TheEndLineCountsTheLinesWithCodes) {
  for (const char* end : {"end 2\n", "end 0\n", "end 01\n", "end 1 \n", "end -1\n", "end \n"}) {
    EXPECT_THAT(Read(std::string(kHead) + kLine + end).faults,
                ElementsAre(FaultAt(4, "must be \"end 1\"")))
        << end;
  }
  // Bad lines stand for codes, too.
  EXPECT_THAT(Read(std::string(kHead) + kLine + "nonsense\nend 2\n").faults,
              ElementsAre(FaultAt(4, "1 fields")));
}

TEST(UnitFileTest, NothingStandsBehindTheEndLineButComments) {
  std::string other = kLine;
  other.replace(other.find("101"), 3, "102");
  const UnitReading reading = Read(std::string(kHead) + kLine + "end 1\n# a\n" + other);
  EXPECT_THAT(reading.faults, ElementsAre(FaultAt(6, "behind the end line")));
  EXPECT_THAT(reading.file.codes, SizeIs(1));
}

TEST(UnitFileTest, AnOlderFileWithoutEndLineIsTakenAndKnownAsSuch) {
  const UnitReading reading = Read(std::string(kOldHead) + kLine);
  EXPECT_THAT(reading.faults, IsEmpty());
  EXPECT_TRUE(reading.isUnitFile);
  EXPECT_FALSE(reading.isCounted);
  EXPECT_THAT(reading.file.codes, SizeIs(1));
}

TEST(UnitFileTest, AnOlderFileWithoutCodesIsBadBecauseItMayBeCutOff) {
  const UnitReading reading = Read(kOldHead);
  EXPECT_THAT(reading.faults, ElementsAre(FaultAt(3, "there are no codes")));
  EXPECT_THAT(Read(std::string(kOldHead) + "end 0\n").faults, IsEmpty());
}

TEST(UnitFileTest, ReadingEndsAtTooManyBadLines) {
  std::string text = kHead;
  for (std::size_t i = 0; i < 5 * qorhost::kMostUnitFaults; ++i) text += "x\n";
  const UnitReading reading = Read(text);
  EXPECT_THAT(reading.faults, SizeIs(qorhost::kMostUnitFaults + 1));
  EXPECT_THAT(reading.faults.back().reason, HasSubstr("too many bad lines"));
}

// Begins as a unit file and never ends, as one does that somebody goes on writing.
class EndlessFile : public std::streambuf {
 public:
  EndlessFile() { Give(head_); }

 protected:
  int_type underflow() override {
    Give(comment_);
    return traits_type::to_int_type(comment_.front());
  }

 private:
  void Give(std::string& text) { setg(text.data(), text.data(), text.data() + text.size()); }

  std::string head_ = std::string(kHead) + kLine;
  std::string comment_ = "# and so on\n";
};

TEST(UnitFileTest, ReadingEndsAtTheLargestSize) {
  EndlessFile buffer;
  std::istream in(&buffer);
  const UnitReading reading = qorhost::ReadUnitFile(in, 10'000);
  EXPECT_THAT(reading.faults, SizeIs(1));
  EXPECT_THAT(reading.faults.front().reason, HasSubstr("larger than 10000 bytes"));
  EXPECT_THAT(reading.file.codes, SizeIs(1));
}

TEST(UnitFileTest, WritingWhatWasReadIsByteIdentical) {
  const std::string once = Written(qorhost::GenerateUnit(2000, 7));
  const UnitReading reading = Read(once);
  EXPECT_THAT(reading.faults, IsEmpty());
  EXPECT_EQ(Written(reading.file), once);
}

}  // namespace
