// Lost credentials and their successors.
#include "host/desks/credential_replacement.h"

#include <gmock/gmock.h>

#include "frame/capacity.h"
#include "host/desks/credential_fields.h"
#include "host/desks/desk_error.h"
#include "host/desks/history_undo.h"
#include "host/desks/store_check.h"
#include "host/store/step_queue.h"
#include "tests/host/desks/credential_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CredentialReplacementTest : public CredentialFixture {
 protected:
  static constexpr std::int32_t kHolder = 62;  // holds one card

  void SetUp() override {
    CredentialFixture::SetUp();
    card_ = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62");
    Run("DELETE FROM ProgramSteps");
    Run("UPDATE CredentialBank SET DOORCODE=3 WHERE RID=" + card_);
  }

  [[nodiscard]] ReplacedCredential Replace(const std::string& lost, const std::string& successor,
                                           bool keepLost = false, Trial trial = Trial::kNo) {
    return ReplaceCredential(session(), kUnit, {lost, successor, keepLost}, trial);
  }
  [[nodiscard]] std::string RefusalOf(const std::string& lost, const std::string& successor) {
    try {
      (void)Replace(lost, successor);
    } catch (const RefusedError& refusal) {
      return refusal.what();
    }
    return "";
  }
  [[nodiscard]] std::string Slots() {
    return Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62") + "/" +
           Cell("SELECT CREDENTIALID2 FROM Tenants WHERE RID=62");
  }
  /// Type, number, facility code and door of a stored credential.
  [[nodiscard]] std::string Stored(std::int32_t rid) {
    const std::string row = " FROM CredentialBank WHERE RID=" + std::to_string(rid);
    return Cell("SELECT CredentialType" + row) + " " + Cell("SELECT PINNo" + row) + " " +
           Cell("SELECT FacilityCode" + row) + " " + Cell("SELECT DOORCODE" + row);
  }
  [[nodiscard]] std::vector<std::int32_t> Programmed() {
    std::vector<std::int32_t> rids;
    for (const ProgramStep& step : session().sql().steps().List(kUnit)) {
      EXPECT_EQ(step.kind, step::kProgramTenant);
      rids.push_back(step.subjectRid);
    }
    return rids;
  }
  [[nodiscard]] std::vector<std::string> Faults() {
    std::vector<std::string> faults;
    for (const Finding& finding : FindingsIn(session(), kUnit)) {
      faults.push_back(finding.what);
    }
    return faults;
  }
  /// Lets the unit take no more than it has.
  void FillUnit() {
    const auto credentials = CountOf("SELECT RID FROM CredentialBank WHERE UnitKey=2");
    const auto codes = CountOf("SELECT RID FROM DirectoryCode WHERE UnitKey=2");
    Run("UPDATE UNITTYPES SET TOTAL='" +
        qorcred::CapacityText(static_cast<int>(credentials + codes)) +
        "' WHERE DESCRIPTION='Entry Panel 2000'");
  }

  std::string card_;  // of tenant 62
};

TEST_F(CredentialReplacementTest, ANewCardTakesTheLostOnesSlotAndDoor) {
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001");
  ASSERT_TRUE(replaced.done());
  EXPECT_TRUE(replaced.issued);
  EXPECT_EQ(replaced.successor.entry, "Corvin 30-Bit Card-60001");
  EXPECT_EQ(Stored(replaced.successor.rid), "0 60001 7 3");
  EXPECT_EQ(Slots(), std::to_string(replaced.successor.rid) + "/");
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE RID=" + card_), 0U);
  EXPECT_THAT(Programmed(), ElementsAre(kHolder));
  EXPECT_THAT(Faults(), IsEmpty());
  EXPECT_THAT(shown_, IsEmpty()) << "no question is asked";
}

TEST_F(CredentialReplacementTest, IsOneUnitOfWork) {
  const auto last = session().sql().audit().After(0, std::nullopt).back().entry;
  (void)Replace("rid:" + card_, "60001");
  const auto entries = session().sql().audit().After(last, kUnit);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].what, "replace credential rid:" + card_ + " by 60001");
}

TEST_F(CredentialReplacementTest, IsUndone) {
  ASSERT_TRUE(Replace("rid:" + card_, "60001").done());
  const auto entry = session().sql().audit().After(0, kUnit).back().entry;
  EXPECT_TRUE(UndoEntry(session(), std::to_string(entry), Trial::kNo).done());
  EXPECT_EQ(Slots(), card_ + "/");
  EXPECT_EQ(Stored(std::stoi(card_)).back(), '3') << "the door";
  EXPECT_EQ(StoredBetween("60001", "60001"), 0U);
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(CredentialReplacementTest, ALostCardThatIsKeptIsHeldByNobody) {
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001", true);
  ASSERT_TRUE(replaced.done());
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE RID=" + card_), 1U);
  EXPECT_EQ(Slots(), std::to_string(replaced.successor.rid) + "/");
  // Found again, it can be given back.
  ASSERT_TRUE(Replace("60001", "rid:" + card_).done());
  EXPECT_EQ(Slots(), card_ + "/");
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(CredentialReplacementTest, TheSecondSlotStaysTheSecond) {
  Run("UPDATE Tenants SET CREDENTIALID2=CREDENTIALID1, CREDENTIALID1=NULL WHERE RID=62");
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001");
  EXPECT_EQ(Slots(), "/" + std::to_string(replaced.successor.rid));
}

TEST_F(CredentialReplacementTest, AStoredCardThatNobodyHoldsIsTakenByItsNumberEntryOrRow) {
  NewCredentials spare = Cards("60001");
  spare.type = "card30";
  const IssuedCredentials issued = Issue(spare);
  for (const std::string& given : {std::string("60001"), std::string("Corvin 30-Bit Card-60001"),
                                   "rid:" + std::to_string(issued.lastRid)}) {
    const ReplacedCredential replaced = Replace("rid:" + card_, given, false, Trial::kYes);
    EXPECT_FALSE(replaced.issued) << given;
    EXPECT_EQ(replaced.successor.rid, issued.lastRid) << given;
  }
}

TEST_F(CredentialReplacementTest, ANumberAloneMeansACardOfTheLostOnesKind) {
  (void)Issue(Cards("60001"));  // of another type
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001");
  EXPECT_TRUE(replaced.issued);
  EXPECT_EQ(replaced.successor.entry, "Corvin 30-Bit Card-60001");
}

TEST_F(CredentialReplacementTest, ATransmitterIsIssuedWithAllItsCodes) {
  NewCredentials lost;
  lost.type = "transmitter";
  lost.first = "777";
  lost.facility = "9";
  lost.idCode = "26";
  lost.sequence = "2";
  lost.button = "4";
  ASSERT_TRUE(Issue(lost).done());
  const ReplacedCredential replaced = Replace("Transmitter-777", "778");
  ASSERT_TRUE(replaced.done());
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE UnitKey=2 AND CredentialType=2 AND "
                    "PINNo=778 AND FacilityCode=9 AND IDCode=26 AND SequenceNumber=2 AND "
                    "ButtonNumber=4"),
            1U);
}

TEST_F(CredentialReplacementTest, AUnitWithoutFacilityCodesHasThemNotEntered) {
  const std::string lost = Cell("SELECT Top 1 RID FROM CredentialBank WHERE UnitKey=3");
  const ReplacedCredential replaced =
      ReplaceCredential(session(), 3, {"rid:" + lost, "60001", false}, Trial::kNo);
  EXPECT_TRUE(replaced.done());
  EXPECT_FALSE(replaced.holder.empty());
}

TEST_F(CredentialReplacementTest, WorksOnAFullUnit) {
  FillUnit();
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001");
  ASSERT_TRUE(replaced.done());
  EXPECT_EQ(Slots(), std::to_string(replaced.successor.rid) + "/");
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(CredentialReplacementTest, AStoredSuccessorIsGivenInAFullUnit) {
  const IssuedCredentials spare = Issue(Cards("60001"));
  FillUnit();
  ASSERT_TRUE(Replace("rid:" + card_, "rid:" + std::to_string(spare.lastRid), true).done());
  EXPECT_EQ(Slots(), std::to_string(spare.lastRid) + "/");
}

TEST_F(CredentialReplacementTest, AFullUnitHasNoRoomBesideALostCardThatIsKept) {
  FillUnit();
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001", true);
  EXPECT_EQ(replaced.ending, Ending::kRefused);
  EXPECT_EQ(shown_.size(), 1U) << "the controller says why";
  EXPECT_EQ(Slots(), card_ + "/");
  EXPECT_THAT(Programmed(), IsEmpty());
}

TEST_F(CredentialReplacementTest, WhatNobodyHoldsIsReplacedWithoutAStep) {
  ASSERT_TRUE(Issue(Cards("60001")).done());
  const ReplacedCredential replaced = Replace("60001", "60002");
  ASSERT_TRUE(replaced.done());
  EXPECT_EQ(replaced.holder, "");
  EXPECT_EQ(StoredBetween("60001", "60002"), 1U);
  EXPECT_THAT(Programmed(), IsEmpty());
}

TEST_F(CredentialReplacementTest, AResidentsCardIsReplacedToo) {
  Run("UPDATE Tenants SET Resident=1 WHERE RID=62");
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001");
  ASSERT_TRUE(replaced.done());
  EXPECT_EQ(Slots(), std::to_string(replaced.successor.rid) + "/");
  EXPECT_THAT(Programmed(), ElementsAre(kHolder));
}

TEST_F(CredentialReplacementTest, ASuccessorThatSomebodyHoldsIsRefusedWithTheName) {
  const std::string other = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=63");
  const std::string name = Cell("SELECT LastName FROM Tenants WHERE RID=63");
  EXPECT_THAT(RefusalOf("rid:" + card_, "rid:" + other), HasSubstr(" is held by " + name));
  EXPECT_EQ(Slots(), card_ + "/");
  EXPECT_THAT(Programmed(), IsEmpty());
}

TEST_F(CredentialReplacementTest, ALostCardWithTwoHoldersIsRefused) {
  Run("UPDATE Tenants SET CREDENTIALID1=" + card_ + " WHERE RID=63");
  EXPECT_THAT(RefusalOf("rid:" + card_, "60001"), HasSubstr(" and by "));
  EXPECT_EQ(StoredBetween("60001", "60001"), 0U);
}

TEST_F(CredentialReplacementTest, ATypeThatIsNotIssuedNeedsAStoredSuccessor) {
  const IssuedCredentials spare = Issue(Cards("60001"));
  Run("UPDATE CredentialBank SET CredentialType=3 WHERE RID=" + card_);
  EXPECT_THAT(RefusalOf("rid:" + card_, "60002"), HasSubstr("of a type that is not issued here"));
  EXPECT_EQ(Slots(), card_ + "/");
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE RID=" + card_), 1U);
  EXPECT_TRUE(Replace("rid:" + card_, "rid:" + std::to_string(spare.lastRid)).done());
}

TEST_F(CredentialReplacementTest, WrongNamesAreFaults) {
  const auto fault = [this](const std::string& lost, const std::string& successor) {
    return FieldAtFault([&] { (void)Replace(lost, successor); });
  };
  EXPECT_EQ(fault("rid:99999", "60001"), credential_field::kCredential);
  EXPECT_EQ(fault("rid:" + card_, "rid:99999"), credential_field::kCredential);
  EXPECT_EQ(fault("rid:" + card_, "rid:" + card_), credential_field::kNewNumber);
  EXPECT_EQ(fault("rid:" + card_, Cell("SELECT PINNo FROM CredentialBank WHERE RID=" + card_)),
            credential_field::kNewNumber);
  EXPECT_EQ(fault("rid:" + card_, "65536"), credential_field::kNewNumber);
  EXPECT_EQ(Slots(), card_ + "/");
}

TEST_F(CredentialReplacementTest, ATrialChangesNothing) {
  const auto last = session().sql().audit().After(0, std::nullopt).back().entry;
  const ReplacedCredential replaced = Replace("rid:" + card_, "60001", false, Trial::kYes);
  EXPECT_TRUE(replaced.done());
  EXPECT_FALSE(replaced.holder.empty());
  EXPECT_EQ(Slots(), card_ + "/");
  EXPECT_EQ(StoredBetween("60001", "60001"), 0U);
  EXPECT_THAT(Programmed(), IsEmpty());
  EXPECT_EQ(session().sql().audit().After(0, std::nullopt).back().entry, last);
}

}  // namespace
}  // namespace qorhost::test
