// Doors that get another name.
#include "host/desks/door_desk.h"

#include "host/desks/credential_desk.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

class DoorDeskTest : public DeskFixture {
 protected:
  ChangedDoor Rename(const std::string& door, const std::string& name, Trial trial = Trial::kNo) {
    return RenameDoor(session(), kUnit, door, name, trial);
  }
  [[nodiscard]] std::string FourthDoor() {
    CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
    return desk.screen().List("cboActivate").Text(4);
  }
};

TEST_F(DoorDeskTest, IsRenamedByItsNumberOrItsName) {
  const ChangedDoor renamed = Rename("4", "Anna's Yard");
  EXPECT_EQ(renamed.door, 4);
  EXPECT_EQ(renamed.former, "Service Corridor Level Two");
  EXPECT_EQ(FourthDoor(), "Anna's Yard");
  EXPECT_EQ(Rename("anna's yard", "Yard").door, 4);
  EXPECT_EQ(FourthDoor(), "Yard");
  EXPECT_TRUE(Rename("4", "Yard").unchanged);
}

TEST_F(DoorDeskTest, ADoorThatIsNotThereIsAFault) {
  for (const char* door : {"0", "5", "Cellar", ""}) {
    EXPECT_EQ(FieldAtFault([&] { Rename(door, "Yard"); }), door_input::kDoor) << door;
  }
}

TEST_F(DoorDeskTest, ANameMeansOneDoor) {
  for (const char* name : {"", " ", "front entrance door", "3", "none", "<None>", "a\x1b[31mb"}) {
    EXPECT_EQ(FieldAtFault([&] { Rename("4", name); }), door_input::kName) << name;
  }
}

TEST_F(DoorDeskTest, ATrialChangesNothing) {
  EXPECT_EQ(Rename("4", "Yard", Trial::kYes).name, "Yard");
  EXPECT_EQ(FourthDoor(), "Service Corridor Level Two");
}

}  // namespace
}  // namespace qorhost::test
