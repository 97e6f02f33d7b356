// Stores as a desk opens, makes and replaces them, looks them over, and runs a statement by hand.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/store_file.h"
#include "host/desks/store_overview.h"
#include "host/desks/store_statement.h"
#include "host/files/file_error.h"
#include "host/files/fresh_file.h"
#include "host/store/store_error.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

namespace fs = std::filesystem;

qorcred::Date AtNoon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

std::size_t UnitsIn(const fs::path& file) {
  return DeskSession(OpenStoreFile(file, Access::kRead), {}).Units().size();
}

std::ptrdiff_t EntriesIn(const fs::path& folder) {
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

TEST(StoreFiles, AreMadeReplacedAndSeen) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  EXPECT_THROW((void)OpenStoreFile(file, Access::kRead), MissingStore);
  CreateStore(file, true, AtNoon);
  EXPECT_EQ(UnitsIn(file), 3U);
  ReplaceStore(file, false, AtNoon);
  EXPECT_EQ(EntriesIn(folder.path()), 1) << "something was left beside it";
  EXPECT_EQ(UnitsIn(file), 0U);
}

/// What PutStore() says of the place; nothing when it made a store there.
std::optional<FileProblem> ProblemOfPutting(const fs::path& file, Standing existing) {
  try {
    PutStore(file, {true, AtNoon, {}}, existing);
  } catch (const FileError& failure) {
    return failure.problem();
  }
  return std::nullopt;
}

TEST(StoreFiles, ArePutWhereNothingStandsOrWhereAStoreMayBeReplaced) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  EXPECT_EQ(ProblemOfPutting(file, Standing::kStays), std::nullopt);
  EXPECT_EQ(ProblemOfPutting(file, Standing::kStays), FileProblem::kExists);
  EXPECT_EQ(ProblemOfPutting(file, Standing::kReplaced), std::nullopt);
  EXPECT_EQ(UnitsIn(file), 3U);
}

TEST(StoreFiles, AreNeverPutInThePlaceOfAFolderOrALink) {
  const TemporaryFolder folder;
  fs::create_symlink("nowhere.db", folder.File("link.db"));
  for (const Standing existing : {Standing::kStays, Standing::kReplaced}) {
    EXPECT_EQ(ProblemOfPutting(folder.path(), existing), FileProblem::kOccupied);
    EXPECT_EQ(ProblemOfPutting(folder.File("link.db"), existing), FileProblem::kOccupied);
  }
  EXPECT_EQ(EntriesIn(folder.path()), 1);
}

TEST(StoreFiles, NeverTakeThePlaceOfSomethingElse) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("notes.txt")) << "these are notes, not a database";
  EXPECT_THROW(ReplaceStore(folder.File("notes.txt"), true, AtNoon), ForeignFile);
  EXPECT_EQ(EntriesIn(folder.path()), 1);
}

TEST(StoreFiles, AreReadableByTheirOwnerAloneFromTheBeginning) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  const mode_t before = umask(0);
  CreateStore(file, true, AtNoon);
  DeskSession session(OpenStoreFile(file, Access::kChange), {});
  (void)session.sql().Change("UPDATE DOORS SET DOORNAME='Yard' WHERE DOORID=4", std::nullopt);
  umask(before);
  ASSERT_EQ(EntriesIn(folder.path()), 3) << "store, log and index";
  for (const auto& entry : fs::directory_iterator(folder.path())) {
    EXPECT_EQ(entry.status().permissions(), fs::perms(0600)) << entry.path();
  }
}

TEST(StoreFiles, KeepTheirRightsWhenTheyAreReplaced) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  CreateStore(file, true, AtNoon);
  fs::permissions(file, fs::perms(0660));
  ReplaceStore(file, false, AtNoon);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0660));
}

TEST(StoreFiles, AreNotMadeOverWhatIsThere) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  CreateStore(file, true, AtNoon);
  try {
    CreateStore(file, false, AtNoon);
    ADD_FAILURE() << "made twice";
  } catch (const FileError& failure) {
    EXPECT_EQ(failure.problem(), FileProblem::kExists);
  }
  EXPECT_EQ(EntriesIn(folder.path()), 1);
  EXPECT_EQ(UnitsIn(file), 3U);
}

TEST(StoreFiles, OfAKilledProcessAreRemovedByTheNextAndThoseOfALivingOneStay) {
  const TemporaryFolder folder;
  for (const char* name : {".qorhost-Ab12cd", ".qorhost-Ab12cd-wal", ".qorhost-Ab12cd-shm"}) {
    std::ofstream(folder.File(name)) << "half of a store";
  }
  const FreshFile living(folder.File("other.db"));
  for (const char* name : {".qorhost-notes", ".qorhost-Ab12cd.txt", "qorhost-Ab12cd"}) {
    std::ofstream(folder.File(name)) << "a person's own";
  }
  ASSERT_EQ(EntriesIn(folder.path()), 4) << "the three that were left are gone";
  CreateStore(folder.File("building.db"), true, AtNoon);
  EXPECT_EQ(EntriesIn(folder.path()), 5);
  EXPECT_TRUE(fs::exists(living.path()));
  EXPECT_TRUE(fs::exists(folder.File("building.db")));
}

// The engine would take the log for the new store's.
TEST(StoreFiles, AreNotMadeBesideTheLogOfAStoreThatIsGone) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("building.db-wal")) << "a log";
  EXPECT_THROW(CreateStore(folder.File("building.db"), true, AtNoon), RefusedError);
  EXPECT_EQ(EntriesIn(folder.path()), 1);
}

// They were refused there, until somebody took away what nobody had asked for.
TEST(StoreFiles, AreMadeBesideWhatAnotherOneLeftAndWhatHoldsNothing) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  std::ofstream(folder.File("building.db-wal")) << std::string(32, '\x37');  // a header alone
  std::ofstream(folder.File("building.db-shm")) << std::string(32768, '\x18');
  std::ofstream(folder.File("building.db-journal")).flush();
  CreateStore(file, true, AtNoon);
  EXPECT_EQ(EntriesIn(folder.path()), 1) << "what was left is gone";
  EXPECT_EQ(UnitsIn(file), 3U);
}

// Its index must not be met by those who open the new one.
TEST(StoreFiles, AreMadeBesideTheEmptyLogOfOneThatIsGoneAndStillOpen) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  CreateStore(file, false, AtNoon);
  DeskSession gone(OpenStoreFile(file, Access::kChange), {});
  EXPECT_EQ(gone.Units().size(), 0U);
  ASSERT_EQ(EntriesIn(folder.path()), 3) << "store, log and index";
  fs::remove(file);
  CreateStore(file, true, AtNoon);
  DeskSession made(OpenStoreFile(file, Access::kChange), {});
  const StoreStatements rename("UPDATE DOORS SET DOORNAME='Yard' WHERE DOORID=4");
  EXPECT_THROW((void)rename.Run(gone), StoreError);
  EXPECT_EQ(made.Units().size(), 3U);
  EXPECT_EQ(gone.Units().size(), 0U);
}

TEST(StoreFiles, AreNotMadeBesideWhatIsNoFile) {
  const TemporaryFolder folder;
  for (const char* name : {"building.db-wal", "building.db-shm", "building.db-journal"}) {
    fs::create_symlink("nowhere", folder.File(name));
    EXPECT_THROW(CreateStore(folder.File("building.db"), true, AtNoon), RefusedError) << name;
    EXPECT_EQ(EntriesIn(folder.path()), 1);
    fs::remove(folder.File(name));
  }
}

// It was made, and could not be opened.
TEST(StoreFiles, AreNotMadeUnderANameThatIsTooLongForWhatStandsBesideThem) {
  const TemporaryFolder folder;
  EXPECT_THROW(CreateStore(folder.File(std::string(248, 'a')), true, AtNoon), StoreError);
  EXPECT_EQ(EntriesIn(folder.path()), 0);
  CreateStore(folder.File(std::string(247, 'a')), true, AtNoon);
  EXPECT_EQ(UnitsIn(folder.File(std::string(247, 'a'))), 3U);
}

/// Runs `work` in processes that begin together; what each of them returned.
std::vector<int> InProcesses(int count, const std::function<int(int)>& work) {
  int start[2];
  EXPECT_EQ(pipe(start), 0);
  std::vector<pid_t> children;
  for (int number = 0; number < count; ++number) {
    const pid_t child = fork();
    if (child == 0) {
      close(start[1]);
      char none = 0;
      (void)!read(start[0], &none, 1);  // until the parent closes its end
      _exit(work(number));
    }
    children.push_back(child);
  }
  close(start[0]);
  close(start[1]);
  std::vector<int> results;
  for (const pid_t child : children) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    results.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
  }
  return results;
}

// Once a loser deleted the winner's store.
TEST(StoreFiles, AreMadeByOneOfSeveralProcessesAtOnce) {
  constexpr int kMade = 0;
  constexpr int kFoundOne = 1;
  constexpr int kOther = 2;
  for (int round = 0; round < 5; ++round) {
    const TemporaryFolder folder;
    const fs::path file = folder.File("building.db");
    const std::vector<int> results = InProcesses(3, [&](int) {
      try {
        CreateStore(file, true, AtNoon);
        return kMade;
      } catch (const FileError& failure) {
        return failure.problem() == FileProblem::kExists ? kFoundOne : kOther;
      } catch (const std::exception&) {
        return kOther;
      }
    });
    EXPECT_THAT(results, testing::UnorderedElementsAre(kMade, kFoundOne, kFoundOne));
    EXPECT_EQ(EntriesIn(folder.path()), 1);
    EXPECT_EQ(UnitsIn(file), 3U);
  }
}

// Two processes replace it, one writes, two read: what is read is one store or the other, whole,
// and nothing is ever damaged.
TEST(StoreFiles, AreWholeForEverybodyWhileTheyAreReplaced) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  CreateStore(file, true, AtNoon);
  const std::vector<int> results = InProcesses(5, [&](int number) {
    try {
      for (int round = 0; round < 6; ++round) {
        if (number == 0 || number == 4) {
          ReplaceStore(file, round % 2 == 0, AtNoon);
        } else if (number == 1) {
          DeskSession session(OpenStoreFile(file, Access::kChange), {});
          (void)session.sql().Change("UPDATE DOORS SET DOORNAME='Yard' WHERE DOORID=4",
                                     std::nullopt);
        } else if (const std::size_t units = UnitsIn(file); units != 0 && units != 3) {
          return 2;
        }
      }
    } catch (const std::exception& failure) {
      std::fprintf(stderr, "%d: %s\n", number, failure.what());
      return 1;
    }
    return 0;
  });
  EXPECT_THAT(results, testing::Each(0));
  EXPECT_EQ(UnitsIn(file), 0U) << "the last one that was put there";
}

class Overview : public DeskFixture {};

TEST_F(Overview, HasTheUnitsTheirDoorsAndTheirSteps) {
  const List units = UnitList(session(), session().Units());
  ASSERT_EQ(units.rows.size(), 3U);
  EXPECT_EQ(units.rows[0][1], qorcred::Value("Harbour Court"));
  const List doors = DoorList(session(), {{2, ""}});
  ASSERT_GE(doors.rows.size(), 4U);
  EXPECT_EQ(qorcred::TextOrEmpty(doors.rows[0][3]).size(), 12U) << "a caption is cut";
  EXPECT_TRUE(StepList(session(), std::nullopt).rows.empty());
}

class Statements : public DeskFixture {};

TEST_F(Statements, ReadRowsWithTheirTypes) {
  const StoreStatements statement("SELECT Top 1 IsGroupZero, RID, NULL FROM TenantGroup");
  EXPECT_TRUE(statement.reads());
  const Table rows = std::get<Table>(statement.Run(session()).front());
  ASSERT_EQ(rows.rows.size(), 1U);
  EXPECT_TRUE(rows.rows[0][0].Is(qorcred::ValueType::kBoolean));
  EXPECT_TRUE(rows.rows[0][2].Is(qorcred::ValueType::kNull));
}

TEST_F(Statements, TellHowManyRowsTheyChanged) {
  const StoreStatements statement("UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=1 AND DOORID=4");
  EXPECT_FALSE(statement.reads());
  EXPECT_EQ(std::get<ChangedRows>(statement.Run(session()).front()).rows, 1);
  EXPECT_EQ(Cell("SELECT DOORID FROM DOORS WHERE UNITKEY=1 AND DOORNAME='Yard'"), "4");
}

TEST_F(Statements, AreRefusedWithLineAndColumn) {
  for (const char* text : {"", "DROP TABLE Tenants", "SELECT 'x", "SELECT nope FROM Tenants"}) {
    try {
      (void)StoreStatements(text).Run(session());
      ADD_FAILURE() << text;
    } catch (const RefusedError& error) {
      EXPECT_THAT(error.what(), HasSubstr("line 1, column ")) << text;
    }
  }
}

}  // namespace
}  // namespace qorhost::test
