// Buildings as folders of CSV files with schema.ini, read back by what these two say.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <charconv>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "frame/convert.h"
#include "host/desks/moving_in/moving_out.h"
#include "host/desks/store_file.h"
#include "host/dialect/canonical_date.h"
#include "host/files/file_error.h"
#include "host/store/engines/opening.h"
#include "tests/host/desks/moving_in/moving_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

Clock NoonOfMovingOut() {
  return [] { return qorcred::FromCivil({2026, 2, 3, 12, 0, 0}); };
}

std::string WholeText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// A cell of a CSV file; nothing is not an empty text.
using WrittenCell = std::optional<std::string>;

/// By the rules of such files alone: commas, quotes that are doubled, lines that end with CR LF.
std::vector<std::vector<WrittenCell>> LinesOf(const std::string& text) {
  std::vector<std::vector<WrittenCell>> lines;
  std::vector<WrittenCell> line;
  std::size_t at = 0;
  while (at < text.size()) {
    WrittenCell cell;
    if (text[at] == '"') {
      cell.emplace();
      for (++at; text.at(at) != '"' || (at + 1 < text.size() && text[at + 1] == '"'); ++at) {
        if (text[at] == '"') ++at;
        cell->push_back(text[at]);
      }
      ++at;
    } else {
      const std::size_t end = text.find_first_of(",\r", at);
      if (end > at) cell = text.substr(at, end - at);
      at = end;
    }
    line.push_back(cell);
    if (text.at(at) == ',') {
      ++at;
      continue;
    }
    EXPECT_EQ(text.substr(at, 2), "\r\n");
    at += 2;
    lines.push_back(std::move(line));
    line.clear();
  }
  return lines;
}

/// The types that schema.ini has of a file's columns, in their order.
std::vector<std::pair<std::string, std::string>> TypesOf(const std::string& schema,
                                                         const std::string& file) {
  std::vector<std::pair<std::string, std::string>> types;
  const std::size_t begin = schema.find("[" + file + "]\r\n");
  EXPECT_NE(begin, std::string::npos) << file;
  std::istringstream lines(schema.substr(begin));
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line) && line != "\r") {
    if (!line.starts_with("Col") || line.starts_with("ColName")) continue;
    const std::size_t name = line.find("=\"") + 2;
    const std::size_t end = line.find('"', name);
    types.emplace_back(line.substr(name, end - name), line.substr(end + 2, line.size() - end - 3));
  }
  return types;
}

double SerialOf(const std::string& text) {
  return dialect::FromCanonicalDate(text).value().serial;
}

DesktopCell CellAs(const std::string& type, const WrittenCell& cell) {
  if (!cell) return DesktopNull{};
  if (type == "Long") return std::int64_t{std::stoll(*cell)};
  if (type == "Double") return std::stod(*cell);
  if (type == "Bit") return *cell != "0";
  if (type == "DateTime") return DesktopDate{SerialOf(*cell)};
  return DesktopText{*cell, true};
}

/// The folder as the application's import makes tables of it.
DesktopFile FileOf(const fs::path& folder) {
  DesktopFile file;
  const std::string schema = WholeText(folder / "schema.ini");
  for (const KnownTable& known : KnownTables()) {
    const std::string name = std::string(known.name) + ".csv";
    const auto types = TypesOf(schema, name);
    const auto lines = LinesOf(WholeText(folder / name));
    DesktopTable table;
    table.name = known.name;
    for (const auto& [column, type] : types) table.columns.push_back({column, {}, false, 0});
    for (std::size_t at = 1; at < lines.size(); ++at) {
      EXPECT_EQ(lines[at].size(), types.size()) << name;
      std::vector<DesktopCell>& row = table.rows.emplace_back();
      for (std::size_t column = 0; column < types.size(); ++column) {
        row.push_back(CellAs(types[column].second, lines[at][column]));
      }
    }
    table.count = table.rows.size();
    file.tables.push_back(std::move(table));
  }
  return file;
}

/// Every cell of a building's tables.
std::vector<std::string> CellsOf(SqlSession& session) {
  std::vector<std::string> cells;
  for (const KnownTable& known : KnownTables()) {
    std::string names;
    for (const dialect::Column& column : LayoutOf(known).columns) {
      names += (names.empty() ? "" : ", ") + std::string(column.name);
    }
    const QueryResult rows =
        session.Select("SELECT " + names + " FROM " + std::string(known.name) + " ORDER BY RID");
    for (const ResultRow row : rows.rows()) {
      for (std::size_t at = 0; at < rows.columns.size(); ++at) {
        const qorcred::Value& cell = row[static_cast<std::int32_t>(at)];
        cells.push_back(std::string(known.name) + "." + rows.columns[at] + " " +
                        std::to_string(static_cast<int>(cell.type())) + " " +
                        qorcred::TextOrEmpty(cell));
      }
    }
  }
  return cells;
}

class MovedOutBuildings : public testing::Test {
 protected:
  [[nodiscard]] fs::path Folder() const { return folder_.File("csv"); }

  void ExpectSameAfterMoving(DeskSession& session) {
    MoveOut(session, Folder(), std::nullopt, Trial::kNo);
    const MovingPlan plan(FileOf(Folder()), "csv", std::nullopt);
    EXPECT_EQ(plan.refusedRows(), 0U);
    EXPECT_EQ(plan.CountOf(Settlement::kAdjusted), 0U);
    const std::unique_ptr<Store> store = OpenMemoryStore();
    const std::unique_ptr<SqlSession> again = store->StartSession(NoonOfMovingOut());
    BringIn(*again, plan, "csv");
    EXPECT_EQ(CellsOf(*again), CellsOf(session.sql()));
  }

  TemporaryFolder folder_;
};

TEST_F(MovedOutBuildings, AreEqualStoresWhenTheyAreReadBack) {
  DeskSession session(DemoStoreInMemory(NoonOfMovingOut()), {});
  ExpectSameAfterMoving(session);
}

TEST_F(MovedOutBuildings, KeepEveryOddTextAndDate) {
  if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
    GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
  }
  MovingOrder order;
  order.file = SampleDatabase("building-odd.mdb");
  order.reading.reader = QORHOST_DESKTOP_READER;
  std::unique_ptr<Store> store = OpenMemoryStore();
  BringIn(*store->StartSession(NoonOfMovingOut()), PlanMoving(order), "odd.mdb");
  DeskSession session(std::move(store), {});
  ExpectSameAfterMoving(session);
  const std::string schema = WholeText(Folder() / "schema.ini");
  EXPECT_THAT(schema, HasSubstr("\"NameAtUnit\" Memo\r\n"));
  EXPECT_THAT(schema, HasSubstr("\"MODIFIED\" Text Width 255\r\n"));
  EXPECT_THAT(schema, HasSubstr("CharacterSet=65001\r\n"));
}

TEST_F(MovedOutBuildings, TellNullFromAnEmptyText) {
  DeskSession session(DemoStoreInMemory(NoonOfMovingOut()), {});
  session.sql().Change("UPDATE DOORS SET DOORNAME='' WHERE UNITKEY=1 AND DOORID=1", std::nullopt);
  session.sql().Change("UPDATE DOORS SET DOORNAME=NULL WHERE UNITKEY=1 AND DOORID=2", std::nullopt);
  MoveOut(session, Folder(), std::nullopt, Trial::kNo);
  EXPECT_THAT(WholeText(Folder() / "DOORS.csv"),
              testing::StartsWith("\"RID\",\"UNITKEY\",\"DOORID\",\"DOORNAME\"\r\n"
                                  "1,1,1,\"\"\r\n2,1,2,\r\n"));
}

TEST_F(MovedOutBuildings, OfOneUnitHaveItsRowsAlone) {
  DeskSession session(DemoStoreInMemory(NoonOfMovingOut()), {});
  MoveOut(session, Folder(), 2, Trial::kNo);
  const DesktopFile file = FileOf(Folder());
  EXPECT_EQ(file.tables.front().rows.size(), 1U);
  EXPECT_EQ(MovingPlan(file, "csv", std::nullopt).refusedRows(), 0U);
}

/// A limit on the size of files, which the files of the larger tables do not keep.
TEST_F(MovedOutBuildings, ThatCannotBeWrittenLeaveNothing) {
  DeskSession session(DemoStoreInMemory(NoonOfMovingOut()), {});
  MoveOut(session, folder_.File("whole"), std::nullopt, Trial::kNo);
  std::set<std::uintmax_t> sizes{0};
  for (const auto& file : fs::directory_iterator(folder_.File("whole"))) {
    sizes.insert(file.file_size() - 1);
  }
  ASSERT_GT(sizes.size(), 5U);
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlim_t usual = std::exchange(limit.rlim_cur, 0);
  for (const std::uintmax_t size : sizes) {
    limit.rlim_cur = size;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_THAT([&] { MoveOut(session, Folder(), std::nullopt, Trial::kNo); },
                testing::ThrowsMessage<FileError>(
                    testing::AllOf(HasSubstr("cannot write the folder '" + Folder().string() + "'"),
                                   HasSubstr("File too large"))))
        << size;
    limit.rlim_cur = usual;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator()), 1);
  }
  (void)std::signal(SIGXFSZ, former);
}

TEST_F(MovedOutBuildings, ComeIntoNewOrEmptyFoldersAlone) {
  DeskSession session(DemoStoreInMemory(NoonOfMovingOut()), {});
  fs::create_directory(Folder());
  MoveOut(session, Folder() / "", std::nullopt, Trial::kNo);
  EXPECT_EQ(std::distance(fs::directory_iterator(Folder()), fs::directory_iterator()), 12);
  const auto problemOf = [&](const fs::path& place, Trial trial) -> std::optional<FileProblem> {
    try {
      MoveOut(session, place, std::nullopt, trial);
    } catch (const FileError& failure) {
      return failure.problem();
    }
    return std::nullopt;
  };
  EXPECT_EQ(problemOf(Folder(), Trial::kNo), FileProblem::kExists);
  EXPECT_EQ(problemOf(Folder(), Trial::kYes), FileProblem::kExists);
  EXPECT_EQ(problemOf(Folder() / "Units.csv", Trial::kNo), FileProblem::kOccupied);
  EXPECT_EQ(problemOf(folder_.File("none") / "csv", Trial::kNo), FileProblem::kUnreachable);
  EXPECT_EQ(problemOf(folder_.File("tried"), Trial::kYes), std::nullopt);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator()), 1);
}

}  // namespace
}  // namespace qorhost::test
