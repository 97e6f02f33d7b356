// Two who do something to one unit at once, stepped through every order: what comes of it is what
// would have come of it one after the other, or one of them is told and has changed nothing.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>

#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

struct Meeting {
  std::string name;
  SeatOperation first;
  SeatOperation second;
  int capacity = kRoomy;
  /// Whether the first may have to be told that the second was faster. Where it may not, both are
  /// stored, whoever was faster, or the second is refused because the first is writing.
  bool mayBeStale = false;
};

void PrintTo(const Meeting& meeting, std::ostream* out) {
  *out << meeting.name;
}

/// What both told, and what is in the store then.
struct Result {
  Told first;
  Told second;
  std::vector<std::string> content;
  friend bool operator==(const Result&, const Result&) = default;
};

std::string TextOf(const Result& result) {
  return fmt::format("first {}\nsecond {}\n{}", TextOf(result.first), TextOf(result.second),
                     fmt::join(result.content, "\n"));
}

class Meetings : public testing::TestWithParam<Meeting> {
 protected:
  void SetUp() override {
    MakeBuilding(folder_.File("new.db"), GetParam().capacity);
    new_ = std::make_unique<sqlite::Database>(folder_.File("new.db"), OpenMode::kReadWrite);
  }

  /// Both seats at a new building.
  void Begin() {
    if (first_ != nullptr) {
      CopyWhole(*new_, first_->database());  // faster than to open them again
      return;
    }
    const std::filesystem::path file = folder_.File("building.db");
    std::filesystem::copy_file(folder_.File("new.db"), file);
    first_ = std::make_unique<Seat>(file, "anna");
    second_ = std::make_unique<Seat>(file, "bert");
    for (const std::unique_ptr<Seat>* seat : {&first_, &second_}) {
      (*seat)->database().Run("PRAGMA synchronous=OFF");  // nothing is lost here
    }
  }
  Result End(Told first, Told second) {
    return {std::move(first), std::move(second), ContentOf(first_->database())};
  }
  [[nodiscard]] Told RunFirst() { return RunAt(GetParam().first, *first_); }
  [[nodiscard]] Told RunSecond() { return RunAt(GetParam().second, *second_); }

  [[nodiscard]] bool IsBusy(const Told& told) const {
    return told.ending == Ending::kFailed &&
           TextOf(told).find("another program is writing to the store") != std::string::npos;
  }

  TemporaryFolder folder_;
  std::unique_ptr<sqlite::Database> new_;
  std::unique_ptr<Seat> first_;
  std::unique_ptr<Seat> second_;
};

TEST_P(Meetings, EndAsIfOneHadComeAfterTheOther) {
  Begin();
  const Told firstAlone = RunFirst();
  const std::vector<std::string> afterFirst = ContentOf(first_->database());
  const Result firstThenSecond = End(firstAlone, RunSecond());
  Begin();
  const Told secondAlone = RunSecond();
  const std::vector<std::string> afterSecond = ContentOf(first_->database());
  const Result secondThenFirst = End(RunFirst(), secondAlone);
  ASSERT_TRUE(firstAlone.done()) << TextOf(firstAlone);
  ASSERT_TRUE(secondAlone.done()) << TextOf(secondAlone);

  int stale = 0;
  int busy = 0;
  int nth = 0;
  for (bool ended = false; !ended; ++nth) {
    SCOPED_TRACE(fmt::format("{}, the other before its statement {}", GetParam().first.name, nth));
    Begin();
    Told second;
    bool met = false;
    first_->BeforeStatements([&](int statement) {
      if (statement == nth) {
        met = true;
        second = RunSecond();
      }
    });
    const Told first = RunFirst();
    first_->BeforeStatements([](int) {});
    ended = !met;
    if (ended) {
      second = RunSecond();
    }
    const Result result = End(first, second);
    EXPECT_EQ(WrongIn(first_->database(), GetParam().capacity), std::vector<std::string>());
    EXPECT_EQ(first_->database().Number("SELECT count(*) FROM AuditEntries"),
              (first.done() ? 1 : 0) + (second.done() ? 1 : 0));
    if (IsBusy(second)) {
      ++busy;
      EXPECT_EQ(first, firstAlone) << TextOf(first);
      EXPECT_EQ(result.content, afterFirst);
    } else if (first.ending == Ending::kStale) {
      ++stale;
      EXPECT_EQ(second, secondAlone) << TextOf(second);
      EXPECT_EQ(result.content, afterSecond);
      EXPECT_EQ(first.changedBy.size(), 1U);
      EXPECT_TRUE(first.messages.empty() && first.failures.empty()) << TextOf(first);
      if (!first.changedBy.empty()) {
        EXPECT_TRUE(first.changedBy[0].starts_with("bert: ")) << first.changedBy[0];
      }
    } else {
      EXPECT_TRUE(result == firstThenSecond || result == secondThenFirst)
          << TextOf(result) << "\n--- the first before the second:\n"
          << TextOf(firstThenSecond) << "\n--- the second before the first:\n"
          << TextOf(secondThenFirst);
    }
    if (HasFailure()) {
      return;
    }
  }
  EXPECT_GT(busy, 0) << "never while the first was writing";
  EXPECT_EQ(stale > 0, GetParam().mayBeStale);
  RecordProperty("orders", nth);
}

std::vector<Meeting> MeetingsOfTwo() {
  const std::string phone = "555-8888";
  return {
      {"SameRange", IssueCards("201", "203"), IssueCards("201", "203")},
      {"SameRangeWithTenants", IssueCardsWithTenants("201", "202"),
       IssueCardsWithTenants("201", "202")},
      {"RangesThatOverlap", IssueCards("201", "203"), IssueCards("203", "204")},
      {"SameCode", AddCode("301"), AddCode("301")},
      {"TwoRangesForLittleRoom", IssueCards("201", "203"), IssueCards("211", "213"),
       kCodesInUse + 5},
      {"TwoRangesThatFillTheUnit", IssueCards("201", "203"), IssueCards("211", "213"),
       kCodesInUse + 3},
      {"CardAndCodeForOnePlace", IssueCards("201", "201"), AddCode("301"), kCodesInUse + 1},
      {"CodeAndCardForOnePlace", AddCode("301"), IssueCards("201", "201"), kCodesInUse + 1},
      {"CardAndImportForOnePlace", IssueCards("201", "201"), ImportCards("card26,301,7,\n"),
       kCodesInUse + 1},
      {"ImportAndCodeForOnePlace", ImportCards("card26,301,7,\n"), AddCode("301"), kCodesInUse + 1},
      {"CodeAndImportForOnePlace", AddCode("301"), ImportCodes("302,555-1\n"), kCodesInUse + 1},
      {"TwoCardsToOneNumber", RenumberCard("103", 300), RenumberCard("104", 300)},
      {"TwoCodesToOneNumber", RenumberCode("102", "300"), RenumberCode("103", "300")},
      {"OneCardToTwoTenants", AssignCard("103", "Berg Bea"), AssignCard("103", "Cole Cem"), kRoomy,
       true},
      {"AHeldCardToTwoTenants", AssignCard("101", "Berg Bea"), AssignCard("101", "Cole Cem"),
       kRoomy, true},
      {"TwoCardsToOneTenant", AssignCard("103", "Berg Bea"), AssignCard("104", "Berg Bea")},
      {"AssigningAndDeleting", AssignCard("103", "Berg Bea"), DeleteCard("103"), kRoomy, true},
      {"DeletingAndAssigning", DeleteCard("103"), AssignCard("103", "Berg Bea"), kRoomy, true},
      {"AssigningAndDeletingInAReport", AssignCard("103", "Berg Bea"), DeleteInReport("3"), kRoomy,
       true},
      {"DeletingInAReportAndAssigning", DeleteInReport("3"), AssignCard("103", "Berg Bea"), kRoomy,
       true},
      {"DeletingAHeldCardTwice", DeleteCard("101"), DeleteCard("101"), kRoomy, true},
      {"TwoEditsOfOneCode", EditPhone("102", phone), EditPhone("102", "555-9999"), kRoomy, true},
      {"EditsOfTwoCodes", EditPhone("102", phone), EditPhone("103", phone)},
      {"DeletingAndEditingACode", DeleteCode("102"), EditPhone("102", phone), kRoomy, true},
      {"EditingAndDeletingACode", EditPhone("102", phone), DeleteCode("102"), kRoomy, true},
      {"EditingAndRenumberingACode", EditPhone("rid:2", phone), RenumberCode("102", "300"), kRoomy,
       true},
      {"AssigningAndRenumbering", AssignCard("103", "Berg Bea"), RenumberCard("103", 300), kRoomy,
       true},
      {"RenumberingAndAssigning", RenumberCard("103", 300), AssignCard("103", "Berg Bea"), kRoomy,
       true},
      {"RenumberingAndEditingACode", RenumberCode("102", "300"), EditPhone("rid:2", phone), kRoomy,
       true},
      {"AssigningToATenantWhoIsDeleted", AssignCard("103", "Berg Bea"),
       WriteByHand("DELETE FROM Tenants WHERE LastName='Berg'"), kRoomy, true},
      {"MergingAndAdding", MergeUnit(), AddCode("300")},
      {"AddingAndMerging", AddCode("300"), MergeUnit()},
      {"EditingAndMerging", EditPhone("102", phone), MergeUnit(), kRoomy, true},
      {"EditingAndWritingByHand", EditPhone("102", phone),
       WriteByHand("UPDATE DIRECTORYCODE SET PHONENUMBER='by hand' WHERE DIRECTORYCODE=102"),
       kRoomy, true},
      {"WritingByHandAndEditing",
       WriteByHand("UPDATE DIRECTORYCODE SET DISPLAYNAME='by hand' WHERE DIRECTORYCODE=102"),
       EditPhone("102", phone)},
  };
}

INSTANTIATE_TEST_SUITE_P(OfTwo, Meetings, testing::ValuesIn(MeetingsOfTwo()),
                         [](const testing::TestParamInfo<Meeting>& one) { return one.param.name; });

}  // namespace
}  // namespace qorhost::test
