// Files from outside: what is read, and why some are not.
#include "host/files/input_file.h"

#include <gmock/gmock.h>

#include <sstream>

#include "host/files/file_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

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
  EXPECT_THAT(FailureOf([&] { (void)OpenInputFile(folder.path() / "none", "unit file"); }),
              HasSubstr("cannot read the unit file '"));
}

TEST(InputFile, ThatCannotBeReadToItsEndIsAFailure) {
  std::istringstream stream("half of it");
  stream.setstate(std::ios::badbit);
  EXPECT_THAT(FailureOf([&] { (void)ReadWholeText(stream, "standard input"); }),
              HasSubstr("cannot read 'standard input' to its end"));
}

}  // namespace
}  // namespace qorhost::test
