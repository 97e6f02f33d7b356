#include "tests/scenarios/scenarios.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

#include "tests/support/noted_controllers.h"

namespace qortest {
namespace {

template <typename Class>
std::shared_ptr<qorcred::Controller> CreateNoted(qorcred::Host& host) {
  return std::make_shared<UnderTest<Class>>(host);
}

/// Runs a scenario with what it touches of its host noted.
std::string RunNoted(Scenario scenario) {
  static const std::map<std::string_view, decltype(Scenario::create)> kCreators{
      {"clsCredential", CreateNoted<qorcred::clsCredential>},
      {"clsDirCode", CreateNoted<qorcred::clsDirCode>},
      {"clsDirCodeReport", CreateNoted<qorcred::clsDirCodeReport>},
      {"clsCredentialReport", CreateNoted<qorcred::clsCredentialReport>}};
  scenario.create = kCreators.at(scenario.className);
  return RunNatively(scenario);
}

std::string FileText(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(ScenariosTest, GiveTheTranscriptsThatAreKept) {
  std::string all;
  for (const Scenario& scenario : Scenarios()) {
    all += KeptText(scenario, RunNoted(scenario));
  }
  if (std::getenv("QORCRED_UPDATE_GOLDEN") != nullptr) {
    ASSERT_EQ(std::getenv("CI"), nullptr) << "goldens are not written in CI";
    std::ofstream(QORCRED_TRANSCRIPTS, std::ios::binary) << all;
  }
  const std::string kept = FileText(QORCRED_TRANSCRIPTS);
  for (const Scenario& scenario : Scenarios()) {
    EXPECT_EQ(KeptTranscript(all, scenario), KeptTranscript(kept, scenario)) << scenario.name;
  }
  EXPECT_EQ(all.size(), kept.size()) << "transcripts of scenarios that are no more";
}

TEST(ScenariosTest, ReachTheirEndsWithoutAFailure) {
  for (const Scenario& scenario : Scenarios()) {
    const std::string transcript = RunNoted(scenario);
    EXPECT_NE(transcript.find(scenario.reaches), std::string::npos) << transcript;
    // A component would report a trapped failure, and show a message, elsewhere.
    EXPECT_EQ(transcript.find("Trapped"), std::string::npos) << transcript;
    EXPECT_EQ(transcript.find("MsgBox"), std::string::npos) << transcript;
  }
}

}  // namespace
}  // namespace qortest
