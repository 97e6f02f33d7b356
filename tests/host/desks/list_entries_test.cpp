// The entry of a list that a person means, and what is told when there is none.
#include "host/desks/list_entries.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "host/desks/input_fault.h"

namespace qorhost {
namespace {

constexpr std::string_view kField = "tenant";

/// What is told of a fault; "" when there is none.
std::string FaultIn(const std::function<void()>& work) {
  try {
    work();
  } catch (const InputFault& fault) {
    return fault.what();
  }
  return "";
}

class ListEntries : public testing::Test {
 protected:
  ListEntries() {
    tenants_.AddItemWithData("<Unassigned>", 7);
    tenants_.AddItemWithData("Abel Karin ", 42);
    tenants_.AddItemWithData("Berg Bea", 43);
    tenants_.AddItemWithData("berg bea", 44);
    tenants_.AddItemWithData("43", 45);
    for (const char* door : {"<None>", "Lobby", "Garage", "garage"}) {
      doors_.AddItem(door);
    }
  }
  [[nodiscard]] std::int32_t Tenant(std::string_view given) const {
    return FindEntry(tenants_, kField, given, "tenant", placeholders::kInTenants);
  }
  [[nodiscard]] std::int32_t Door(std::string_view given) const {
    return FindDoor(doors_, "door", given);
  }

  ListModel tenants_;
  ListModel doors_;
};

TEST_F(ListEntries, AreFoundByWordsOfATenantsName) {
  tenants_.AddItemWithData("O'Brien Maeve", 46);
  tenants_.AddItemWithData("Brandt S\xC3\xB8ren", 47);
  EXPECT_EQ(Tenant("obrien maeve"), 5);
  EXPECT_EQ(Tenant("maeve o'brien"), 5);
  EXPECT_EQ(Tenant("soren"), 6);
  EXPECT_EQ(Tenant("kar abel"), 1);
  EXPECT_EQ(FaultIn([&] { (void)Tenant("4"); }),
            "tenant: there is no tenant '4' on the screen of this unit");
  EXPECT_EQ(FaultIn([&] { (void)Tenant("b"); }),
            "tenant: 3 tenants are called 'b': give the id instead (43, 44, 47)");
}

TEST_F(ListEntries, AreFoundByTheirNumberFirst) {
  EXPECT_EQ(Tenant("42"), 1);
  EXPECT_EQ(Tenant(" 43 "), 2) << "also called so is another";
  EXPECT_EQ(Tenant("44"), 3);
}

TEST_F(ListEntries, AreFoundByTheirTextWithoutCaseAndBlanks) {
  EXPECT_EQ(Tenant("  ABEL karin"), 1);
}

TEST_F(ListEntries, ThatStandForNoRowAreFoundByTextAlone) {
  EXPECT_EQ(Tenant("<unassigned>"), 0);
  EXPECT_EQ(FaultIn([&] { (void)Tenant("7"); }),
            "tenant: there is no tenant '7' on the screen of this unit");
}

TEST_F(ListEntries, OfOneNameAreToldByTheirNumbers) {
  EXPECT_EQ(FaultIn([&] { (void)Tenant("Berg Bea"); }),
            "tenant: 2 tenants are called 'Berg Bea': give the id instead (43, 44)");
  for (std::int32_t data = 100; data < 112; ++data) {
    tenants_.AddItemWithData("Cole", data);
  }
  EXPECT_EQ(FaultIn([&] { (void)Tenant("Cole"); }),
            "tenant: 12 tenants are called 'Cole': give the id instead (100, 101, 102, 103, 104, "
            "105, 106, 107, 108, 109, ...)");
}

TEST_F(ListEntries, ADoorIsFoundByItsPlaceOrItsName) {
  EXPECT_EQ(Door("0"), 0);
  EXPECT_EQ(Door("None"), 0);
  EXPECT_EQ(Door("3"), 3);
  EXPECT_EQ(Door(" lobby"), 1);
  for (const char* none : {"4", "-1", "Yard", ""}) {
    EXPECT_NE(FaultIn([&] { (void)Door(none); }), "") << none;
  }
  EXPECT_EQ(FaultIn([&] { (void)Door("Garage"); }),
            "door: 2 doors are called 'Garage': give the door's number instead");
}

}  // namespace
}  // namespace qorhost
