// Database files of desktop applications: every value of the samples as it was written, and a clear
// refusal of everything that cannot be read whole.
#include "host/files/desktop_file/desktop_file.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <string>

#include "host/files/desktop_file/descriptor.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/desktop_file/reader_process.h"
#include "host/files/file_error.h"
#include "tests/host/files/desktop_file/expected_values.h"
#include "tests/host/files/desktop_file/refused_files.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

class DesktopFiles : public testing::Test {
 protected:
  void SetUp() override {
    if (fs::path(QORHOST_DESKTOP_READER).empty()) {
      GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
    }
  }

  [[nodiscard]] static DesktopReading Reading(std::vector<std::string> wanted) {
    DesktopReading reading;
    reading.wanted = std::move(wanted);
    reading.reader = QORHOST_DESKTOP_READER;
    return reading;
  }
  /// With the rows of all tables that hold any of the building's.
  [[nodiscard]] static DesktopReading WholeReading() {
    return Reading({"Units", "UnitTypes", "UnitSettings", "Doors", "Schedules", "TenantGroup",
                    "CredentialBank", "Tenants", "TenantsBackup", "DirectoryCode",
                    "TenantSelectionFields", "AccessEvents", "Site Notes", "Recipes", "Ingredients",
                    "Shops and Doors"});
  }
  [[nodiscard]] fs::path Written(std::string_view name, const std::string& bytes) const {
    const fs::path file = folder_.File(name);
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }
  [[nodiscard]] static std::string RefusalOf(const fs::path& file,
                                             const DesktopReading& reading = WholeReading()) {
    try {
      (void)ReadDesktopFile(file, reading);
    } catch (const FileError& failure) {
      return failure.what();
    }
    return "read";
  }

  TemporaryFolder folder_;
};

class DesktopSamples : public DesktopFiles, public testing::WithParamInterface<const char*> {};

TEST_P(DesktopSamples, EveryValueIsWhatWasWritten) {
  const DesktopFile file = ReadDesktopFile(SampleDatabase(GetParam()), WholeReading());
  const nlohmann::ordered_json expected = ExpectedOf(GetParam());
  EXPECT_EQ(file.tables.size(), expected.at("tables").size());
  for (const DesktopTable& table : file.tables) {
    ASSERT_TRUE(expected.at("tables").contains(table.name)) << table.name;
    EXPECT_THAT(Differences(table, expected.at("tables").at(table.name)), IsEmpty());
    EXPECT_EQ(table.count, table.rows.size()) << table.name;
  }
}
INSTANTIATE_TEST_SUITE_P(All, DesktopSamples,
                         testing::Values("building-2000.mdb", "building-2010.accdb",
                                         "building-large.accdb", "building-odd.mdb",
                                         "encoded-2000.mdb", "other-application.mdb"),
                         [](const auto& sample) {
                           std::string name(sample.param);
                           std::erase_if(name, [](unsigned char letter) {
                             return std::isalnum(letter) == 0;
                           });
                           return name;
                         });

TEST_F(DesktopFiles, TablesThatAreNotWantedHaveNoRowsAndTheirCount) {
  const DesktopFile file =
      ReadDesktopFile(SampleDatabase("building-2000.mdb"), Reading({"tenants"}));
  for (const DesktopTable& table : file.tables) {
    EXPECT_EQ(table.rows.size(), table.name == "TENANTS" ? 120U : 0U) << table.name;
    EXPECT_GT(table.count, 0U) << table.name;
  }
}

/// Whether somebody has opened a file for writing, or changed anything of it or its folder, since
/// this was made. Permissions would tell nothing to those who may do everything.
class Watch {
 public:
  explicit Watch(const fs::path& file) : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    constexpr unsigned kOfFile = IN_MODIFY | IN_ATTRIB | IN_CLOSE_WRITE;
    constexpr unsigned kOfFolder = IN_CREATE | IN_DELETE | IN_MOVE;
    EXPECT_GE(inotify_add_watch(events_.number(), file.c_str(), kOfFile), 0);
    EXPECT_GE(inotify_add_watch(events_.number(), file.parent_path().c_str(), kOfFolder), 0);
  }
  [[nodiscard]] bool HasSeenAny() const {
    std::array<char, 4096> events{};
    return read(events_.number(), events.data(), events.size()) > 0;
  }

 private:
  desktop_file::Descriptor events_;
};

TEST_F(DesktopFiles, TheOriginalIsNotTouched) {
  const fs::path file = Written("building.mdb", BytesOfFile(SampleDatabase("encoded-2000.mdb")));
  const Watch watch(file);
  const auto before = fs::last_write_time(file);
  (void)ReadDesktopFile(file, WholeReading());
  EXPECT_FALSE(watch.HasSeenAny());
  EXPECT_EQ(fs::last_write_time(file), before);
  EXPECT_EQ(BytesOfFile(file), BytesOfFile(SampleDatabase("encoded-2000.mdb")));
  std::fstream(file, std::ios::in | std::ios::out).close();
  EXPECT_TRUE(watch.HasSeenAny()) << "a file that is opened for writing, and not written, is seen";
}

TEST_F(DesktopFiles, PasswordsAreRefusedAlsoWhereThePagesAreReadable) {
  for (const char* name : {"password-2000.mdb", "password-2010.accdb"}) {
    EXPECT_THAT(RefusalOf(SampleDatabase(name)),
                AllOf(HasSubstr(name), HasSubstr("has a password"), HasSubstr("in a copy")));
  }
}

TEST_F(DesktopFiles, WhatIsNoDatabaseIsRefused) {
  EXPECT_THAT(RefusalOf(Written("empty.mdb", "")), HasSubstr("is empty"));
  EXPECT_THAT(RefusalOf(Written("one.mdb", "S")), HasSubstr("is no desktop database"));
  EXPECT_THAT(RefusalOf(Written("text.mdb", "Standard Jet DB is only text here")),
              HasSubstr("is no desktop database"));
  const std::string mark("\0\1\0\0Standard Jet DB\0", 20);
  EXPECT_NE(RefusalOf(Written("head.mdb", mark)), "read");
  EXPECT_THAT(RefusalOf(folder_.File("none.mdb")), HasSubstr("there is no file"));
  EXPECT_THAT(RefusalOf(folder_.path()), HasSubstr("it is a folder"));
}

TEST_F(DesktopFiles, WhatIsTurnedAwayIsToldWhy) {
  for (const RefusedFile& refused : MakeRefusedFiles(QORHOST_DESKTOP_SAMPLES, folder_.path())) {
    if (refused.says == "another application") continue;  // that is read, and no building
    EXPECT_THAT(RefusalOf(refused.file), HasSubstr(refused.says)) << refused.file;
  }
}

TEST_F(DesktopFiles, AFormatOfLaterDaysIsRefused) {
  std::string bytes = BytesOfFile(SampleDatabase("building-2010.accdb"));
  bytes[0x14] = 0x63;
  EXPECT_THAT(RefusalOf(Written("later.accdb", bytes)), HasSubstr("a format that is not known"));
}

TEST_F(DesktopFiles, ACutFileIsRefused) {
  const std::string whole = BytesOfFile(SampleDatabase("building-2000.mdb"));
  EXPECT_THAT(RefusalOf(Written("within.mdb", whole.substr(0, 279'762))),
              HasSubstr("ends within a page"));
  for (std::size_t pages = 1; pages * kDesktopPage < whole.size(); pages += 7) {
    EXPECT_THAT(RefusalOf(Written("pages.mdb", whole.substr(0, pages * kDesktopPage))),
                HasSubstr("is damaged"))
        << pages;
  }
}

/// A page of a table, of the catalogue of tables, or one that nothing is read from.
TEST_F(DesktopFiles, AFileThatHasLostAPageOfRowsIsRefusedOrReadWhole) {
  const std::string whole = BytesOfFile(SampleDatabase("building-2010.accdb"));
  const nlohmann::ordered_json expected = ExpectedOf("building-2010.accdb");
  int refused = 0;
  for (std::size_t page = 1; page < whole.size() / kDesktopPage; ++page) {
    if (whole[page * kDesktopPage] != 1) continue;
    const fs::path file = Written("flipped.accdb", WithPageOfChance(whole, page));
    try {
      for (const DesktopTable& table : ReadDesktopFile(file, WholeReading()).tables) {
        EXPECT_THAT(Differences(table, expected.at("tables").at(table.name)), IsEmpty()) << page;
      }
    } catch (const FileError& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("is damaged")) << page;
      ++refused;
    }
  }
  EXPECT_GT(refused, 20);
}

/// The page takes 27 tenants with it and three pointers to tenants on another page, who cannot be
/// found without: 90 of 120 are left. A reader that takes rows for those of a table where they
/// stand, and passes over pointers, finds these three all the same, and tells 93.
TEST_F(DesktopFiles, RowsThatAreLostAreCountedInTheRefusal) {
  const std::string whole = BytesOfFile(SampleDatabase("building-2010.accdb"));
  EXPECT_THAT(RefusalOf(Written("flipped.accdb", WithPageOfChance(whole, kPageOfTenants))),
              AllOf(HasSubstr("'TENANTS' says that it has 120 rows, and 90 can be read"),
                    HasSubstr("older copy")));
}

/// In the catalogue the kind of a table stands before its name, with two dates and four bytes
/// between.
TEST_F(DesktopFiles, ATableThatStandsElsewhereIsToldToBeLinked) {
  using namespace std::string_view_literals;
  constexpr std::size_t kBetween = 22;
  constexpr char kTable = 1;
  for (const char kind : {'\4', '\6'}) {  // by ODBC, or in another file of this kind
    std::string bytes = BytesOfFile(SampleDatabase("building-2000.mdb"));
    const std::size_t name = bytes.find("T\0E\0N\0A\0N\0T\0S\0"sv);
    ASSERT_EQ(bytes.at(name - kBetween), kTable);
    bytes[name - kBetween] = kind;
    const DesktopFile file = ReadDesktopFile(Written("linked.mdb", bytes), WholeReading());
    const auto tenants =
        std::find_if(file.tables.begin(), file.tables.end(),
                     [](const DesktopTable& table) { return table.name == "TENANTS"; });
    ASSERT_NE(tenants, file.tables.end());
    EXPECT_TRUE(tenants->isLinked);
    EXPECT_THAT(tenants->rows, IsEmpty());
  }
}

TEST_F(DesktopFiles, ReadingEndsAtItsLimits) {
  DesktopReading reading = WholeReading();
  reading.longest = std::chrono::milliseconds(1);
  EXPECT_THAT(RefusalOf(SampleDatabase("building-large.accdb"), reading),
              HasSubstr("was not read within"));
  reading = WholeReading();
  reading.mebibytes = 1;
  EXPECT_THAT(RefusalOf(SampleDatabase("building-large.accdb"), reading), HasSubstr("is damaged"));
}

/// The reader limits itself; a program in its place does so in the same way, and goes beyond.
TEST_F(DesktopFiles, TheReadersMemoryAndProcessorTimeHaveAnEnd) {
  DesktopReading reading = Reading({"fills"});
  reading.reader = QORHOST_LIMITED_PROGRAM;
  reading.mebibytes = 64;
  EXPECT_THAT(RefusalOf(SampleDatabase("encoded-2000.mdb"), reading),
              HasSubstr("was not read within 64 MB of memory"));
  reading.wanted = {"turns"};
  reading.processorTime = std::chrono::seconds(1);
  EXPECT_THAT(RefusalOf(SampleDatabase("encoded-2000.mdb"), reading),
              HasSubstr("was not read within 1 s of processor time"));
}

/// All that the reader tells of a file counts but its end.
TEST_F(DesktopFiles, RowsHaveAsManyBytesAsAreRead) {
  constexpr std::size_t kEnd = desktop_file::kFrameHeader + 16;
  const fs::path file = SampleDatabase("building-2000.mdb");
  DesktopReading reading = WholeReading();
  reading.mostBytes = desktop_file::RunReader(file, reading).frames.size() - kEnd;
  EXPECT_EQ(RefusalOf(file, reading), "read");
  --reading.mostBytes;
  EXPECT_THAT(RefusalOf(file, reading), HasSubstr("holds more than"));
}

TEST_F(DesktopFiles, AFileThatIsLargerThanAnyIsNotCopied) {
  const fs::path file = Written("huge.mdb", BytesOfFile(SampleDatabase("encoded-2000.mdb")));
  fs::resize_file(file, std::uintmax_t{3} << 30);
  EXPECT_THAT(RefusalOf(file), AllOf(HasSubstr("has 3072 MB"), HasSubstr("has 2048 MB at most")));
  DesktopReading reading = WholeReading();
  reading.largestFile = fs::file_size(SampleDatabase("encoded-2000.mdb"));
  EXPECT_EQ(RefusalOf(SampleDatabase("encoded-2000.mdb"), reading), "read");
  --reading.largestFile;
  EXPECT_THAT(RefusalOf(SampleDatabase("encoded-2000.mdb"), reading), HasSubstr("name another"));
}

TEST_F(DesktopFiles, AreToldByTheirBeginning) {
  EXPECT_TRUE(IsDesktopFile(SampleDatabase("building-2000.mdb")));
  EXPECT_TRUE(IsDesktopFile(SampleDatabase("password-2010.accdb")));
  EXPECT_FALSE(IsDesktopFile(Written("text.mdb", "Standard Jet DB is only text here")));
  EXPECT_FALSE(IsDesktopFile(Written("empty.mdb", "")));
  EXPECT_FALSE(IsDesktopFile(folder_.path()));
  EXPECT_FALSE(IsDesktopFile(folder_.File("none.mdb")));
}

TEST_F(DesktopFiles, WithoutAReaderTheRefusalSaysHowToGetOne) {
  DesktopReading reading = WholeReading();
  reading.reader = folder_.File("none");
  EXPECT_THAT(RefusalOf(SampleDatabase("building-2000.mdb"), reading), HasSubstr("mdbtools-dev"));
}

TEST_F(DesktopFiles, AReaderThatTellsHalfIsNotBelieved) {
  const auto reader = [&](std::string_view script) {
    const fs::path file = folder_.File("reader");
    std::ofstream(file) << "#!/bin/sh\n" << script << "\n";
    fs::permissions(file, fs::perms::owner_all);
    DesktopReading reading = WholeReading();
    reading.reader = file;
    return RefusalOf(SampleDatabase("building-2000.mdb"), reading);
  };
  const std::string cut = fmt::format("{} 512 60 100000 Units 3<&3 | head -c 300",
                                      fs::path(QORHOST_DESKTOP_READER).string());
  EXPECT_THAT(reader("exit 0"), HasSubstr("is damaged"));
  EXPECT_THAT(reader("PATH=/bin:/usr/bin\n" + cut), HasSubstr("is damaged"));
  EXPECT_THAT(reader("printf 'H\\377\\377\\377\\377'"), HasSubstr("is damaged"));
  EXPECT_THAT(reader("kill -SEGV $$"), HasSubstr("is damaged"));
  EXPECT_THAT(reader("exec cat /dev/zero"), HasSubstr("is damaged")) << "without an end";
}

}  // namespace
}  // namespace qorhost::test
