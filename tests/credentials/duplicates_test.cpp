// A credential must be unique within its type: what is compared for which type, and what the user
// is told about a duplicate.
#include "credentials/duplicates.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/data_services.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class SingleDuplicate : public CredentialTest {};

TEST_F(SingleDuplicate, OfATransmitterSharesAllFiveValues) {
  Screen().EnterSingle(kTransmitter, "700");
  Database().Select("val(ButtonNumber) = 1", {{kUnit}});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(EffectsAre(R"~(
    gstrTag = "Single"
    txtPINEND.Text = "700"
    ExecuteSelect "Select UnitKey from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 700 and val(FacilityCode) = 12 and val(IDCode) = 5 and val(SequenceNumber) = 1 and val(ButtonNumber) = 1" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code,ID Code,Sequence Code, Button No. cannot be duplicated. Credential Number = 700, Facility Code = 12 ,ID Code=5, Sequence Code=1, Button No.=1" -> 1
  )~"));
}

TEST_F(SingleDuplicate, IsNoneWhenOnlyTheButtonDiffers) {
  Screen().EnterSingle(kTransmitter, "700");
  Host().controls().Option("optButton4").SetOn(true);
  Database().Select("val(ButtonNumber) = 1", {{kUnit}});

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select UnitKey from"),
            Lines{"ExecuteSelect \"Select UnitKey from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 2 and val(PINNo) = 700 and val(FacilityCode) = 12 and "
                  "val(IDCode) = 5 and val(SequenceNumber) = 1 and val(ButtonNumber) = 4\" -> no "
                  "rows"});
}

TEST_F(SingleDuplicate, OfACardSharesNumberAndFacility) {
  Screen().EnterSingle(kCard30, "100");
  Database().Select("and PINNo = 100 and FacilityCode = 12", {{kUnit, 100}});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(EffectsAre(R"~(
    gstrTag = "Single"
    txtPINEND.Text = "100"
    ExecuteSelect "Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 0 and PINNo = 100 and FacilityCode = 12" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code cannot be duplicated. Credential Number = 100, Facility Code = 12" -> 1
  )~"));
}

TEST_F(SingleDuplicate, IsNoneWithAnotherFacility) {
  Screen().EnterSingle(kCard30, "100");
  Host().SetText("txtFacilityCode", "13");
  Database().Select("and PINNo = 100 and FacilityCode = 12", {{kUnit, 100}});

  EXPECT_TRUE(Screen().SaveNew());
}

TEST_F(SingleDuplicate, ReadsEmptyBoxesAsZero) {
  Screen().EnterSingle(kCard26, "100");
  Host().SetText("txtFacilityCode", "");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select"),
            Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 1 and PINNo = 100 and FacilityCode = 0\" -> no rows"});
}

TEST_F(SingleDuplicate, TrimsTheBoxes) {
  Screen().EnterSingle(kTransmitter, "  700 ");
  Host().SetText("txtFacilityCode", " 12 ");
  Host().SetText("txtIDCode", " 5");
  Host().SetText("txtSequenceCode", "1 ");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select UnitKey from").size(), 1U);
  EXPECT_NE(Host()
                .transcript()
                .StartingWith("ExecuteSelect \"Select UnitKey from")
                .front()
                .find("val(PINNo) = 700 and val(FacilityCode) = 12 and val(IDCode) = 5 and "
                      "val(SequenceNumber) = 1 and"),
            std::string::npos);
}

// The check reads the leading number of the box, the save the whole of it.
TEST_F(SingleDuplicate, IsLookedForUnderTheLeadingNumber) {
  Screen().EnterSingle(kCard26, "1,000");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select"),
            Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 1 and PINNo = 1 and FacilityCode = 12\" -> no rows"});
  ASSERT_EQ(Host().transcript().StartingWith("ExecuteInsert ").size(), 1U);
  EXPECT_NE(Host().transcript().StartingWith("ExecuteInsert ").front().find("_ROWID_,1,1000,12,"),
            std::string::npos);
}

TEST_F(SingleDuplicate, IsNotAnyEditedRow) {
  Screen().ShowStored(1, 0);
  EXPECT_TRUE(Screen().SaveEdited());
  Screen().EnterSingle(kCard26, "100");
  Host().StartOver();

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select"),
            Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 1 and PINNo = 100 and FacilityCode = 12\" -> no rows"});
}

TEST_F(SingleDuplicate, IsNotAnyRowOfAnEditThatFailed) {
  Screen().ShowStored(1, 0);
  Host().gate().FailOn("ExecuteUpdate");
  EXPECT_FALSE(Screen().SaveEdited());
  Screen().EnterSingle(kCard26, "100");
  Host().StartOver();

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select"),
            Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 1 and PINNo = 100 and FacilityCode = 12\" -> no rows"});
}

// In single mode only the first number is looked for, whatever stands in the ending box.
TEST_F(SingleDuplicate, IsLookedForAtTheStartOfARangeEnteredInSingleMode) {
  Screen().EnterSingle(kCard26, "100");
  Host().SetText("txtPINEND", "102");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select"),
            Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 1 and PINNo = 100 and FacilityCode = 12\" -> no rows"});
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert ").size(), 3U);
}

class RangeDuplicate : public CredentialTest {};

TEST_F(RangeDuplicate, OfTransmittersNamesTheLowestNumber) {
  Screen().EnterRange(kTransmitter, "700", "800");
  Database().Select("Select Top 1", {{kUnit, 707}});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select Top 1 UnitKey, PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and FacilityCode = 12 and IDCode = 5 and SequenceNumber = 1 and ButtonNumber = 1 and PINNo >=700  and PINNo <=800 Order by CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code, ID Code, Sequence Code, Button No. cannot be duplicated. Credential Number = 707, Facility Code = 12, ID Code=5, Sequence Code=1, Button No.=1" -> 1
  )~"));
}

TEST_F(RangeDuplicate, OfTransmittersComparesTheButton) {
  Screen().EnterRange(kTransmitter, "700", "800");
  Host().controls().Option("optButton4").SetOn(true);
  Database().Select("Select Top 1", {{kUnit, "0707"}});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select Top 1 UnitKey, PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and FacilityCode = 12 and IDCode = 5 and SequenceNumber = 1 and ButtonNumber = 4 and PINNo >=700  and PINNo <=800 Order by CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code, ID Code, Sequence Code, Button No. cannot be duplicated. Credential Number = 0707, Facility Code = 12, ID Code=5, Sequence Code=1, Button No.=4" -> 1
  )~"));
}

TEST_F(RangeDuplicate, OfCardsNamesTheLowestNumber) {
  for (const std::int32_t type : {kCard30, kCard26}) {
    CredentialScreen screen;
    screen.EnterRange(type, "100", "200");
    screen.host().database().Select("Select Top 1", {{kUnit, 150}});

    EXPECT_FALSE(screen.SaveNew());

    EXPECT_TRUE(SameLines(
        screen.host().transcript().Read(Detail::kEffects),
        R"~(ExecuteSelect "Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = )~" +
            std::to_string(type) +
            R"~( and PINNo >=100  and PINNo <=200 and FacilityCode = 12 Order by CredentialType,PINNo,FacilityCode" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code cannot be duplicated. Credential Number = 150, Facility Code = 12" -> 1
  )~"));
  }
}

TEST_F(RangeDuplicate, IsLookedForInEveryModeButSingle) {
  for (const std::string_view mode : {"SINGLE", "single", "", "Range"}) {
    CredentialScreen screen;
    screen.EnterRange(kCard26, "100", "100");
    screen.host().controls().SetVariable("gstrTag", mode);

    EXPECT_TRUE(screen.SaveNew());

    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteSelect \"Select"),
              Lines{"ExecuteSelect \"Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey "
                    "= 3 and CredentialType = 1 and PINNo >=100  and PINNo <=100 and FacilityCode "
                    "= 12 Order by CredentialType,PINNo,FacilityCode\" -> no rows"})
        << mode;
  }
}

TEST_F(RangeDuplicate, UsesTheWholeNumbersOfTheBoxes) {
  Screen().EnterRange(kCard26, "1,000", "1e3");
  Host().SetText("txtFacilityCode", "");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select"),
            Lines{"ExecuteSelect \"Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = "
                  "3 and CredentialType = 1 and PINNo >=1000  and PINNo <=1000 and FacilityCode = "
                  "0 Order by CredentialType,PINNo,FacilityCode\" -> no rows"});
}

class GivenValues : public CredentialTest {
 protected:
  bool Validate(std::int16_t type, std::int32_t number, std::int16_t button) {
    const qorcred::DatabaseManager manager(Host().host().CreateComponent("qorDBI.clsDBManager"));
    qorcred::DatabaseError error;
    const qorcred::DuplicateCheck check{Host().host(), manager, Connection(), kUnit, error};
    return qorcred::pvValidateCredentialValues(check, type, number, 12, 5, 1, button);
  }
};

TEST_F(GivenValues, OfATransmitterAreComparedOneAndAll) {
  Database().Select("val(ButtonNumber) = 4", {{kUnit}});

  EXPECT_TRUE(Validate(kTransmitter, 700, 1));
  EXPECT_FALSE(Validate(kTransmitter, 700, 4));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select UnitKey from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 700 and val(FacilityCode) = 12 and val(IDCode) = 5 and val(SequenceNumber) = 1 and val(ButtonNumber) = 1" -> no rows
    ExecuteSelect "Select UnitKey from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 700 and val(FacilityCode) = 12 and val(IDCode) = 5 and val(SequenceNumber) = 1 and val(ButtonNumber) = 4" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code,ID Code,Sequence Code, Button No. cannot be duplicated. Credential Number = 700, Facility Code = 12 ,ID Code=5, Sequence Code=1, Button No.=4" -> 1
  )~"));
}

TEST_F(GivenValues, OfACardAreNumberAndFacility) {
  Database().Select("PINNo = 800", {{kUnit, 800}});

  EXPECT_TRUE(Validate(kCard30, 700, 1));
  EXPECT_FALSE(Validate(kCard26, 800, 1));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 0 and PINNo = 700 and FacilityCode = 12" -> no rows
    ExecuteSelect "Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and PINNo = 800 and FacilityCode = 12" -> 1 row
    MsgBox 64 "Pello RT" "For this Credential Type, the combination of Credential Number and the Facility Code cannot be duplicated. Credential Number = 800, Facility Code = 12" -> 1
  )~"));
}

class DuplicateWithTenants : public TenantCreatingTest {};

TEST_F(DuplicateWithTenants, IsNotLookedForInSingleMode) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteSelect \"Select UnitKey").empty());
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteSelect \"Select Top").empty());
}

TEST_F(DuplicateWithTenants, IsLookedForInARange) {
  Screen().EnterRange(kCard26, "100", "101");
  Screen().EnterTenantDefaults();
  Database().Select("Select Top 1", {{kUnit, 101}});

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_EQ(Host().transcript().StartingWith("MsgBox").size(), 1U);
}

}  // namespace
}  // namespace qortest
