#include "host/components/store_host.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "frame/date.h"
#include "frame/runtime_error.h"

namespace qorhost {
namespace {

using qorcred::MessageButton;
using qorcred::MessageStyle;

TEST(StoreHostTest, HandsItsServicesOn) {
  std::vector<std::string> seen;
  StoreHost::Services services;
  services.clock = [] { return qorcred::Date{46053}; };
  services.messageBox = [&](std::string_view text, MessageStyle, std::string_view title) {
    seen.push_back(std::string(title) + ": " + std::string(text));
    return MessageButton::kYes;
  };
  services.failureLog = [&](std::string_view operation, const qorcred::RuntimeError& failure) {
    seen.push_back(std::string(operation) + ": " + failure.description());
  };
  services.letEventsRun = [&] { seen.emplace_back("events"); };
  StoreHost host(services);

  EXPECT_EQ(host.Now(), qorcred::Date{46053});
  EXPECT_EQ(host.ShowMessage("Sure?", MessageStyle::kQuestion, "Title"), MessageButton::kYes);
  host.LetEventsRun();
  host.ReportFailure("pbSave", qorcred::RuntimeError(qorcred::ErrorNumber::kInternal, "broken"));
  EXPECT_EQ(seen, (std::vector<std::string>{"Title: Sure?", "events", "pbSave: broken"}));
  EXPECT_NE(host.CreateComponent("qorTent.clsTenant"), nullptr);
}

TEST(StoreHostTest, WithoutAMessageBoxNoticesAreClosedAndQuestionsDeclined) {
  StoreHost host({});
  EXPECT_EQ(host.ShowMessage("a", MessageStyle::kNotice, "t"), MessageButton::kOk);
  EXPECT_EQ(host.ShowMessage("a", MessageStyle::kRefusal, "t"), MessageButton::kOk);
  EXPECT_EQ(host.ShowMessage("a", MessageStyle::kQuestion, "t"), MessageButton::kNo);
  host.LetEventsRun();
  host.ReportFailure("pbSave", qorcred::RuntimeError(qorcred::ErrorNumber::kInternal));
}

TEST(StoreHostTest, ALogThatFailsStopsNothing) {
  StoreHost::Services services;
  bool called = false;
  services.failureLog = [&](std::string_view, const qorcred::RuntimeError&) {
    called = true;
    throw std::runtime_error("disk full");
  };
  StoreHost host(services);
  host.ReportFailure("pbSave", qorcred::RuntimeError(qorcred::ErrorNumber::kInternal));
  EXPECT_TRUE(called);
}

TEST(StoreHostTest, TheSystemClockIsWholeSecondsAndNeverRunsBackwards) {
  const Clock clock = SystemClock();
  const qorcred::Date first = clock();
  const qorcred::Date second = clock();
  EXPECT_GE(qorcred::SecondsBetween(first, second), 0);
  EXPECT_EQ(qorcred::FromCivil(qorcred::ToCivil(first)), first);
}

}  // namespace
}  // namespace qorhost
