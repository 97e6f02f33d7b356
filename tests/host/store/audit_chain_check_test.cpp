// What is told of entries that are not as they were written, when their numbers leave some out.
#include "host/store/audit_chain_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "host/store/audit_chain.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = ChainFault::Kind;

/// A history as a store writes it, in which every third number is left out.
class NumbersWithGaps : public testing::Test {
 protected:
  void SetUp() override {
    Add(1);
    Add(2);
    Add({});
    Add(1);
    Add(2);
    Add(2);
    Add(1);
    Add({});
    Add(2);
    Add(1);
  }

  /// An entry of the unit, or of the whole store, behind all that are there.
  void Add(std::optional<std::int32_t> unit) {
    ReadEntry added;
    added.entry.entry = Number(static_cast<int>(entries_.size()));
    added.entry.unitKey = unit;
    added.rows = {""};
    std::vector<std::string> before;
    if (unit) {
      if (const ReadEntry* const last = LastOf(*unit)) {
        added.previous = last->entry.entry;
        before.push_back(last->hash);
      }
    } else {
      for (const ReadEntry* const end : Ends()) {
        before.push_back(end->hash);
      }
    }
    added.hash = HashOf(added.entry, before, added.rows);
    entries_.push_back(added);
  }
  static std::int64_t Number(int nth) { return nth + 1 + nth / 2; }

  const ReadEntry* LastOf(std::int32_t unit) const {
    const auto found = std::find_if(entries_.rbegin(), entries_.rend(), [&](const ReadEntry& one) {
      return one.entry.unitKey.value_or(unit) == unit;
    });
    return found == entries_.rend() ? nullptr : &*found;
  }
  /// Those that no other one follows yet.
  std::vector<const ReadEntry*> Ends() const {
    const auto ofStore = std::find_if(entries_.rbegin(), entries_.rend(),
                                      [](const ReadEntry& one) { return !one.entry.unitKey; });
    std::vector<const ReadEntry*> ends;
    for (const ReadEntry& one : entries_) {
      const bool isOfStore = ofStore != entries_.rend() && &*ofStore == &one;
      if (isOfStore || (one.entry.unitKey && LastOf(*one.entry.unitKey) == &one)) {
        ends.push_back(&one);
      }
    }
    return ends;
  }
  void Remove(int nth) {
    std::erase_if(entries_, [&](const ReadEntry& one) { return one.entry.entry == Number(nth); });
  }

  /// With the versions that the last entries of the units have given them before anything was
  /// removed, but those that a test says.
  std::vector<ChainFault> Faults(std::int64_t ofFirst = Number(9),
                                 std::int64_t ofSecond = Number(8)) const {
    AuditChainCheck check(false);
    std::vector<ChainFault> faults;
    for (ReadEntry one : entries_) {
      check.Take(one);
      if (const auto fault = FaultIn(one)) {
        faults.push_back(*fault);
      }
    }
    for (const auto& [unit, entry] : {std::pair(1, ofFirst), std::pair(2, ofSecond)}) {
      if (const auto fault = check.FaultOfVersion(unit, entry)) {
        faults.push_back(*fault);
      }
    }
    return faults;
  }

  std::vector<ReadEntry> entries_;
};

TEST_F(NumbersWithGaps, AreNoFault) {
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(NumbersWithGaps, TellARemovedEntryByTheOneBehindIt) {
  Remove(4);
  EXPECT_THAT(Faults(), ElementsAre(ChainFault{Kind::kMissing, Number(4), 2}));
}

TEST_F(NumbersWithGaps, TellARemovedEntryOfTheStoreByTheUnits) {
  Remove(7);
  EXPECT_THAT(Faults(), ElementsAre(ChainFault{Kind::kMissing, Number(7), 2},
                                    ChainFault{Kind::kMissing, Number(7), 1}));
}

TEST_F(NumbersWithGaps, TellTheLastEntryOfAUnitByItsVersion) {
  Remove(8);
  EXPECT_THAT(Faults(), ElementsAre(ChainFault{Kind::kMissing, Number(8), 2}));
}

TEST_F(NumbersWithGaps, TellEntriesBeforeOneOfTheStoreByThat) {
  Remove(6);  // the unit's next one follows that of the store
  EXPECT_THAT(Faults(), ElementsAre(ChainFault{Kind::kAltered, Number(7), {}}));
}

TEST_F(NumbersWithGaps, TellAVersionThatWasSetBack) {
  EXPECT_THAT(Faults(Number(6)), ElementsAre(ChainFault{Kind::kAltered, Number(9), 1}));
}

TEST_F(NumbersWithGaps, TellAnEntryThatFollowsAnOlderOneThanTheLast) {
  Add(1);
  ReadEntry& beside = entries_.back();
  const ReadEntry& followed = entries_[entries_.size() - 5];  // the unit's last but one
  ASSERT_EQ(followed.entry.unitKey, 1);
  beside.previous = followed.entry.entry;
  const std::vector<std::string> before{followed.hash};
  beside.hash = HashOf(beside.entry, before, beside.rows);
  EXPECT_THAT(Faults(Number(10)), ElementsAre(ChainFault{Kind::kAltered, Number(10), 1}));
}

TEST_F(NumbersWithGaps, TellAnEntryThatFollowsNoneOfItsUnit) {
  Add(1);
  entries_.back().previous.reset();
  entries_.back().hash = HashOf(entries_.back().entry, {}, entries_.back().rows);
  EXPECT_THAT(Faults(Number(10)), ElementsAre(ChainFault{Kind::kAltered, Number(10), 1}));
}

TEST_F(NumbersWithGaps, LetAUnitThatCameLaterFollowNone) {
  Add(3);
  entries_.back().previous.reset();
  entries_.back().hash = HashOf(entries_.back().entry, {}, entries_.back().rows);
  Add(3);
  EXPECT_THAT(Faults(), IsEmpty());
}

}  // namespace
}  // namespace qorhost::test
