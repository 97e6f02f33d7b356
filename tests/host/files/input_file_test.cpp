// Files from outside: what is read, and why some are not.
#include "host/files/input_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>
#include <streambuf>

#include "host/files/file_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

template <typename Read>
std::string FailureOf(Read&& read) {
  try {
    read();
  } catch (const FileError& error) {
    EXPECT_EQ(error.problem(), FileProblem::kUnreachable);
    return error.what();
  }
  return "read";
}

TEST(InputFile, IsReadToItsLastByte) {
  const TemporaryFolder folder;
  const std::string text = std::string("a\0b\r\n", 5) + std::string(3 << 20, 'x');
  std::ofstream(folder.path() / "text", std::ios::binary) << text;
  EXPECT_TRUE(ReadWholeFile(folder.path() / "text") == text);
  std::istringstream stream(text);
  EXPECT_TRUE(ReadWholeText(stream, "standard input") == text);
}

TEST(InputFile, ThatIsNotThereOrAFolderIsToldByName) {
  const TemporaryFolder folder;
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeFile(folder.path() / "none"); }),
              HasSubstr("there is no file '"));
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeFile(folder.path()); }),
              HasSubstr("cannot read the file '"));
  EXPECT_THAT(FailureOf([&] { const InputFile file(folder.path() / "none", "unit file"); }),
              AllOf(HasSubstr("cannot read the unit file '"), HasSubstr("No such file")));
}

// Nobody stands at the other end of the pipe: waiting would never end.
TEST(InputFile, ThatIsNoFileIsRefusedAtOnce) {
  const TemporaryFolder folder;
  const std::filesystem::path pipe = folder.path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeFile(pipe); }), HasSubstr("it is a pipe"));
  EXPECT_THAT(FailureOf([&] { const InputFile file(pipe); }), HasSubstr("it is a pipe"));
  std::filesystem::create_symlink("pipe", folder.path() / "link");
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeFile(folder.path() / "link"); }),
              HasSubstr("it is a pipe"));
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeFile("/dev/zero"); }), HasSubstr("it is a device"));
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeFile(folder.path()); }), HasSubstr("it is a folder"));
}

TEST(InputFile, IsReadToItsEndWhateverSizeItClaims) {
  const std::filesystem::path status = "/proc/self/status";
  if (!std::filesystem::exists(status)) GTEST_SKIP() << "no file here claims a wrong size";
  ASSERT_EQ(std::filesystem::file_size(status), 0U);
  EXPECT_THAT(ReadWholeFile(status), HasSubstr("Name:"));
}

// Each read gives more, as a file does that somebody goes on writing.
class EndlessBuffer : public std::streambuf {
 public:
  [[nodiscard]] std::size_t given() const { return given_; }

 protected:
  int_type underflow() override {
    given_ += bytes_.size();
    setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
    return traits_type::to_int_type(bytes_.front());
  }

 private:
  std::string bytes_ = std::string(1 << 20, 'x');
  std::size_t given_ = 0;
};

TEST(InputFile, ThatNeverEndsIsReadUpToTheBound) {
  EndlessBuffer buffer;
  std::istream in(&buffer);
  try {
    (void)ReadWholeText(in, "log.csv");
    FAIL() << "it ended";
  } catch (const FileError& error) {
    EXPECT_EQ(error.problem(), FileProblem::kUnusable);
    EXPECT_THAT(error.what(), HasSubstr("'log.csv' is larger than 256 MB"));
  }
  EXPECT_LE(buffer.given(), kLargestText + (std::size_t{2} << 20));
}

TEST(InputFile, ThatCannotBeReadToItsEndIsAFailure) {
  std::istringstream stream("half of it");
  stream.setstate(std::ios::badbit);
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeText(stream, "standard input"); }),
              HasSubstr("cannot read 'standard input' to its end"));
}

}  // namespace
}  // namespace qorhost::test
