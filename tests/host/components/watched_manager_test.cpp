// What a watcher of the database manager is told.
#include "host/components/watched_manager.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/host/components/component_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class WatchedManagers : public ComponentFixture {
 protected:
  [[nodiscard]] qorcred::DatabaseManager Watched(InsertHandler onInsert) {
    return qorcred::DatabaseManager(std::make_shared<WatchedManager>(
        Create(qorcred::component::kDatabaseManager),
        [this](std::string_view text) { errors_.emplace_back(text); }, std::move(onInsert)));
  }
  [[nodiscard]] qorcred::DatabaseManager Watched() {
    return Watched([this](std::string_view table) { inserted_.emplace_back(table); });
  }

  std::vector<std::string> errors_;
  std::vector<std::string> inserted_;
};

constexpr const char* kInsert = "INSERT INTO DOORS (UNITKEY,DOORID,DOORNAME) VALUES (1,9,'Yard')";

TEST_F(WatchedManagers, TellAnInsertWithItsTableAsItIsNamed) {
  EXPECT_GT(Watched().ExecuteInsert(Connection(), kInsert, "", "Doors", error_), 0);
  EXPECT_THAT(inserted_, ElementsAre("Doors"));
  EXPECT_THAT(errors_, IsEmpty());
}

TEST_F(WatchedManagers, TellAFailedStatementAndNoInsertForIt) {
  (void)Watched().ExecuteInsert(Connection(), "INSERT INTO nowhere", "", "DOORS", error_);
  EXPECT_THAT(errors_, ElementsAre(HasSubstr("line 1")));
  EXPECT_THAT(inserted_, IsEmpty());
  EXPECT_EQ(errors_[0], error_.text);
}

TEST_F(WatchedManagers, TellNothingOfOtherStatementsAndMembers) {
  const qorcred::DatabaseManager watched = Watched();
  EXPECT_EQ(watched.ExecuteScalar(Connection(), "SELECT UnitName FROM Units", error_),
            qorcred::Value("Court"));
  EXPECT_EQ(watched.RowIdText(), "_ROWID_");
  EXPECT_THAT(errors_, IsEmpty());
  EXPECT_THAT(inserted_, IsEmpty());
}

TEST_F(WatchedManagers, RaiseWhatTheirHandlerOfInsertsRaises) {
  const qorcred::DatabaseManager watched =
      Watched([](std::string_view) { throw std::runtime_error("enough"); });
  EXPECT_THROW((void)watched.ExecuteInsert(Connection(), kInsert, "", "DOORS", error_),
               std::runtime_error);
}

}  // namespace
}  // namespace qorhost::test
