// What is taken for UTF-8, and what speaks against it.
#include "host/files/text_encoding.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "host/files/file_error.h"

namespace qorhost {
namespace {

using namespace std::string_literals;

TEST(EncodingDoubt, TellsWhatATextIsInsteadAndWhereItShows) {
  struct Row {
    const char* name;
    std::string text;
    bool isLikeUtf16;
    std::size_t badLine;
  };
  const std::vector<Row> rows{
      {"nothing", "", false, 0},
      {"plain letters", "Name\nBerg\n", false, 0},
      {"letters with accents", "Name\nM\xC3\xBCller\n", false, 0},
      {"with a byte order mark", "\xEF\xBB\xBFName\nM\xC3\xBCller\n", false, 0},
      {"Windows-1252 in the first line",
       "Stra\xDF"
       "e\nBerg\n",
       false, 1},
      {"Windows-1252 in the last line", "Name\nBerg\nM\xFCller", false, 3},
      {"a character that is cut off", "Name\nM\xC3", false, 2},
      {"UTF-16 without a mark", "N\0a\0m\0e\0\n\0"s, true, 0},
      {"UTF-16 with a mark, which is read", "\xFF\xFEN\0a\0\n\0"s, false, 0},
      {"a zero byte behind the first line", "Name\nBe\0rg\n"s, false, 0},
      {"that, and a line of another encoding", "Name\nBe\0rg\nM\xFCller\n"s, false, 3},
  };
  for (const Row& row : rows) {
    const EncodingDoubt doubt = DoubtAbout(row.text);
    EXPECT_EQ(doubt.isLikeUtf16, row.isLikeUtf16) << row.name;
    EXPECT_EQ(doubt.badLine, row.badLine) << row.name;
    std::optional<FileProblem> refused;
    try {
      RequireUndoubted(row.text);
    } catch (const FileError& refusal) {
      refused = refusal.problem();
    }
    EXPECT_EQ(refused, row.isLikeUtf16    ? std::optional(FileProblem::kLikeUtf16)
                       : row.badLine != 0 ? std::optional(FileProblem::kNotUtf8)
                                          : std::nullopt)
        << row.name;
  }
}

}  // namespace
}  // namespace qorhost
