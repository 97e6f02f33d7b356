// The copy of a file that is read in its place.
#include "host/files/desktop_file/unwritten_copy.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "host/files/file_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

using desktop_file::Descriptor;
using desktop_file::UnwrittenCopy;
using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;

constexpr std::uintmax_t kMegabyte = std::uintmax_t{1} << 20;

class UnwrittenCopies : public testing::Test {
 protected:
  UnwrittenCopies() { std::ofstream(file_) << "the first bytes"; }

  /// What is done to the file between its two looks, and what comes of it.
  [[nodiscard]] std::string RefusalAfter(const std::function<void()>& change) const {
    try {
      (void)UnwrittenCopy(file_, kMegabyte, change);
    } catch (const FileError& failure) {
      return failure.what();
    }
    return "copied";
  }

  using Changed = std::pair<std::int64_t, std::int64_t>;  // seconds and parts of one
  [[nodiscard]] Changed ChangedLast() const {
    struct stat status {};
    EXPECT_EQ(stat(file_.c_str(), &status), 0);
    return {status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
  }

  TemporaryFolder folder_;
  fs::path file_ = folder_.File("building.mdb");
};

TEST_F(UnwrittenCopies, HoldWhatTheFileHolds) {
  const Descriptor copy = UnwrittenCopy(file_, kMegabyte);
  std::string bytes(64, '\0');
  bytes.resize(static_cast<std::size_t>(read(copy.number(), bytes.data(), bytes.size())));
  EXPECT_EQ(bytes, "the first bytes");
  EXPECT_LT(write(copy.number(), "x", 1), 0) << "the copy is open for reading alone";
  EXPECT_EQ(RefusalAfter([] {}), "copied");
}

TEST_F(UnwrittenCopies, OfAFileThatIsWrittenMeanwhileAreRefused) {
  const auto says =
      AllOf(HasSubstr("was written while it was read"), HasSubstr("close the program"));
  EXPECT_THAT(RefusalAfter([&] { std::ofstream(file_, std::ios::app) << "more"; }), says);
  EXPECT_THAT(RefusalAfter([&] { fs::resize_file(file_, 3); }), says);
  EXPECT_THAT(RefusalAfter([&] {
                fs::last_write_time(file_, fs::last_write_time(file_) + std::chrono::seconds(1));
              }),
              says);
}

/// Whoever writes may set the time of the last writing back; the system's own time tells it.
TEST_F(UnwrittenCopies, TellAWriterAlsoWhereTheTimeWasSetBack) {
  const auto before = fs::last_write_time(file_);
  fs::last_write_time(file_, before - std::chrono::hours(1));
  const auto old = fs::last_write_time(file_);
  EXPECT_THAT(RefusalAfter([&] {
                // As often as it takes for the system's clock to go on.
                for (const Changed first = ChangedLast(); ChangedLast() == first;) {
                  std::ofstream(file_) << "the other bytes";
                  fs::last_write_time(file_, old);
                }
              }),
              HasSubstr("was written while it was read"));
}

TEST_F(UnwrittenCopies, OfLargerFilesThanThereAreAreNotMade) {
  constexpr std::uintmax_t kSize = 15;
  EXPECT_NO_THROW((void)UnwrittenCopy(file_, kSize));
  EXPECT_THROW((void)UnwrittenCopy(file_, kSize - 1), FileError);
  fs::resize_file(file_, std::uintmax_t{5} << 40);  // a hole of five terabytes
  EXPECT_THAT([&] { (void)UnwrittenCopy(file_, std::uintmax_t{2} << 30); },
              ThrowsMessage<FileError>(
                  AllOf(HasSubstr("has 5242880 MB"), HasSubstr("has 2048 MB at most"))));
}

}  // namespace
}  // namespace qorhost::test
