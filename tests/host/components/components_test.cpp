#include "host/components/components.h"

#include <gtest/gtest.h>

#include "frame/runtime_error.h"
#include "frame/siblings.h"

namespace qorhost {
namespace {

TEST(ComponentsTest, MakesEveryComponentThatControllersAskFor) {
  const ComponentRegistry registry = StoreComponents();
  for (const std::string_view id :
       {qorcred::component::kDatabaseManager, qorcred::component::kStepSender,
        qorcred::component::kTenant, qorcred::component::kApplication,
        qorcred::component::kConnectionManager}) {
    EXPECT_NE(registry.Create(id), nullptr) << id;
  }
}

TEST(ComponentsTest, MakesANewOneAtEveryCall) {
  const ComponentRegistry registry = StoreComponents();
  EXPECT_NE(registry.Create("qorDBI.clsDBManager"), registry.Create("qorDBI.clsDBManager"));
}

TEST(ComponentsTest, FindsIdentifiersInAnyLetterCase) {
  EXPECT_NE(StoreComponents().Create("QORdbi.CLSdbmanager"), nullptr);
}

TEST(ComponentsTest, RaisesForAnUnknownIdentifier) {
  for (const char* id : {"", "qorDBI", "qorDBI.clsDBManager2"}) {
    try {
      static_cast<void>(StoreComponents().Create(id));
      FAIL() << id;
    } catch (const qorcred::RuntimeError& failure) {
      EXPECT_EQ(failure.number(), qorcred::ErrorNumber::kCannotCreateComponent);
      EXPECT_NE(failure.description().find("'" + std::string(id) + "'"), std::string::npos);
    }
  }
}

TEST(ComponentsTest, AComponentCanBeReplaced) {
  ComponentRegistry registry = StoreComponents();
  registry.Register("QORTENT.CLSTENANT", [] { return qorcred::ObjectRef(); });
  EXPECT_EQ(registry.Create("qorTent.clsTenant"), nullptr);
}

}  // namespace
}  // namespace qorhost
