// What is typed into the credential screen: faults by field, with what was given.
#include "host/desks/credential_entry.h"

#include <gmock/gmock.h>

#include "host/desks/credential_types.h"
#include "tests/host/desks/credential_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class CredentialEntries : public CredentialFixture {
 protected:
  /// The field at fault when the entry is typed in; "" when there is none.
  [[nodiscard]] std::string FieldOf(const NewCredentials& entry, std::int32_t unit = kUnit) {
    const auto fault = FaultOf(entry, unit);
    return fault ? std::string(fault->field()) : "";
  }
};

TEST_F(CredentialEntries, WhatCannotBeEnteredNamesItsField) {
  namespace field = credential_field;
  NewCredentials entry = Cards("9001");
  entry.type = "key";
  EXPECT_EQ(FieldOf(entry), field::kType);
  EXPECT_EQ(FieldOf(Cards("1\n2")), field::kFirst);
  EXPECT_EQ(FieldOf(Cards("1", "\xFF")), field::kLast);
  EXPECT_EQ(FieldOf(Cards("1"), 3), field::kFacility) << "unit 3 ignores facility codes";
  entry = Cards("9001");
  entry.idCode = "1";
  EXPECT_EQ(FieldOf(entry), field::kIdCode) << "of a card";
  entry = Cards("9001");
  entry.button = "4";
  EXPECT_EQ(FieldOf(entry), field::kButton) << "of a card";
  entry.type = "transmitter";
  entry.button = "3";
  EXPECT_EQ(FieldOf(entry), field::kButton);
  entry = Cards("9001");
  entry.to = "2027-12-31";
  EXPECT_EQ(FieldOf(entry), field::kEnd) << "without new tenants";
  entry.withTenants = true;
  EXPECT_EQ(FieldOf(entry), "");
  entry.from = "soon";
  EXPECT_EQ(FieldOf(entry), field::kStart);
  entry.schedules = "Full Access,Nope";
  EXPECT_EQ(FieldOf(entry), field::kSchedules);
  entry.schedules = "1,1,1,1,1";
  EXPECT_EQ(FieldOf(entry), field::kSchedules) << "five for four doors";
  for (const char* hole : {"", " ", ",", ",,,", "1,", ",1"}) {
    entry.schedules = hole;
    EXPECT_EQ(FieldOf(entry), field::kSchedules) << "full access at a door: '" << hole << "'";
  }
}

TEST_F(CredentialEntries, AFaultCarriesWhatWasGiven) {
  NewCredentials entry = Cards("9001");
  entry.to = "2027-12-31";
  EXPECT_EQ(FaultOf(entry)->value(), "2027-12-31") << "without new tenants";
  entry.from = "2027-01-01";
  EXPECT_EQ(FaultOf(entry)->value(), "2027-01-01");
  entry.schedules = "1,2";
  EXPECT_EQ(FaultOf(entry)->value(), "1,2");
  entry.withTenants = true;
  entry.schedules = "Full Access, Nope ,";
  EXPECT_EQ(FaultOf(entry)->value(), "Nope");
}

// An empty text once became 0, or one credential instead of a range.
TEST_F(CredentialEntries, AnEmptyNumberIsAFault) {
  namespace field = credential_field;
  for (const char* empty : {"", " "}) {
    NewCredentials entry = Cards("9001");
    entry.type = "transmitter";
    EXPECT_EQ(FieldOf(Cards("9001", empty)), field::kLast);
    for (const auto& [member, name] : {std::pair(&NewCredentials::facility, field::kFacility),
                                       std::pair(&NewCredentials::idCode, field::kIdCode),
                                       std::pair(&NewCredentials::sequence, field::kSequence),
                                       std::pair(&NewCredentials::button, field::kButton)}) {
      NewCredentials given = entry;
      given.*member = empty;
      EXPECT_EQ(FieldOf(given), name);
    }
  }
}

TEST_F(CredentialEntries, ANewNumberIsWithinTheBounds) {
  EXPECT_EQ(CredentialNumber("1").value(), 1);
  EXPECT_EQ(CredentialNumber(" 65535 ").value(), 65535);
  for (const char* given : {"-1", "65536", "", "1.5", "ten"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)CredentialNumber(given); }), credential_field::kNewNumber)
        << given;
  }
}

TEST_F(CredentialEntries, TakeTheTypesOfTheScreenAlone) {
  NewCredentials entry = Cards("9001");
  for (const CredentialTypeWords& type : EnteredTypes()) {
    entry.type = type.word;
    EXPECT_EQ(FieldOf(entry), "") << type.word;
  }
  entry.type = "card35";
  EXPECT_STREQ(FaultOf(entry)->what(), "type 'card35' is none of card30, card26 and transmitter");
}

TEST_F(CredentialEntries, ANameThatSeveralTenantsHaveIsToldWithTheirIds) {
  Run("UPDATE Tenants SET LastName='Doe', FirstName='Jane', MiddleInitial=NULL WHERE UnitKey=2 AND "
      "TenantID IN (61,62)");
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("rid:489");
  CredentialChange change;
  change.tenant = "doe jane";
  try {
    EnterChange(desk, change);
    ADD_FAILURE() << "nothing was refused";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), credential_field::kTenant);
    EXPECT_THAT(fault.what(),
                HasSubstr("2 tenants are called 'doe jane': give the id instead (61, 62)"));
  }
}

}  // namespace
}  // namespace qorhost::test
