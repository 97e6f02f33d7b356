#include "host/components/application_object.h"

#include <gtest/gtest.h>

#include "host/store/demo.h"
#include "tests/host/components/component_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::Value;

using Status = std::array<Value, 9>;

class ApplicationObjectTest : public ComponentFixture {
 protected:
  [[nodiscard]] Status StatusOf(std::int32_t unit) {
    Status status{Value(Connection()), Value(unit), Value(std::int16_t{0}),
                  Value(""),           Value(""),   Value(""),
                  Value(""),           Value(""),   Value("")};
    application_.object().Invoke("pbGetUnitStatus", InvokeKind::kCall, status);
    return status;
  }

  qorcred::ApplicationComponent application_{Create(qorcred::component::kApplication)};
};

TEST_F(ApplicationObjectTest, TellsWhatAUnitHolds) {
  Run("DELETE FROM Units");
  CreateDemoData(connection_->session());
  Run("INSERT INTO ProgramSteps (UnitKey, Sent) VALUES (1, 0), (1, -1), (2, 0)");
  const Status status = StatusOf(demo::kNearlyFullUnit);
  EXPECT_EQ(status[2], Value(std::int16_t{-1}));
  EXPECT_EQ(status[3], Value("Harbour Court"));
  EXPECT_EQ(status[4], Value("Entry Panel 500"));
  EXPECT_EQ(status[5], Value("488"));
  EXPECT_EQ(status[6], Value("0"));
  EXPECT_EQ(status[7], Value("10"));
  EXPECT_EQ(status[8], Value("1"));
  EXPECT_EQ(application_.CodesInUse(Connection(), demo::kNearlyFullUnit), 498);
}

TEST_F(ApplicationObjectTest, ExcludesDirectoryCodesThatAreDeletedOrBelowZero) {
  Run("INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, MODIFIED) VALUES (1, 1, 0), (1, 0, 1), "
      "(1, 2, NULL), (1, -1, 0), (1, 3, 3), (2, 4, 0)");
  EXPECT_EQ(StatusOf(kUnit)[7], Value("3"));
}

TEST_F(ApplicationObjectTest, AnUnknownUnitHoldsNothing) {
  const Status status = StatusOf(99);
  EXPECT_EQ(status[2], Value(std::int16_t{0}));
  EXPECT_EQ(status[3], Value(""));
  EXPECT_EQ(status[4], Value(""));
  for (std::size_t count = 5; count < status.size(); ++count) {
    EXPECT_EQ(status[count], Value("0"));
  }
}

TEST_F(ApplicationObjectTest, AUnitWithoutSettingsHasNoType) {
  const Status status = StatusOf(kUnit);
  EXPECT_EQ(status[2], Value(std::int16_t{-1}));
  EXPECT_EQ(status[3], Value("Court"));
  EXPECT_EQ(status[4], Value(""));
}

TEST_F(ApplicationObjectTest, TakesNineArguments) {
  EXPECT_EQ(FailureOf([&] {
              qorcred::Call(application_.object(), "pbGetUnitStatus", Connection(), kUnit);
            }).number(),
            ErrorNumber::kWrongArgumentCount);
}

}  // namespace
}  // namespace qorhost::test
