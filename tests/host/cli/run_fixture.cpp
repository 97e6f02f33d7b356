#include "tests/host/cli/run_fixture.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "frame/date.h"
#include "host/cli/command_line.h"

namespace qorhost::test {

Outcome RunFixture::Run(std::vector<std::string> words, const std::string& input, bool terminal) {
  if (!storeOfEnvironment_ && std::find(words.begin(), words.end(), "--db") == words.end()) {
    words.insert(words.begin(), {"--db", File("building.db")});
  }
  Environment environment;
  environment.inputIsTerminal = terminal;
  environment.errorIsTerminal = terminal;
  environment.outputIsTerminal = outputIsTerminal_;
  environment.columns = columns_;
  environment.readerIsGone = [this] { return readerIsGone_; };
  environment.store = storeOfEnvironment_;
  environment.unit = unitOfEnvironment_;
  environment.desktopReader = desktopReader_.value_or(QORHOST_DESKTOP_READER);
  environment.clock = [] { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); };
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  std::ostream full(nullptr);
  const int status = RunCommandLine(words, in, outputFails_ ? full : out, err, environment);
  return {status, out.str(), err.str()};
}

nlohmann::json RunFixture::Rows(std::vector<std::string> words) {
  words.emplace_back("--json");
  const Outcome outcome = Run(std::move(words));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return nlohmann::json::parse(outcome.out);
}

void RunFixture::InitDemo() {
  static const TemporaryFolder kept;
  const std::filesystem::path made = kept.File("building.db");
  if (!std::filesystem::exists(made)) {
    const Outcome outcome = Run({"--db", made.string(), "init", "--demo"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
  std::filesystem::copy_file(made, File("building.db"));
}

void RunFixture::CopyFiles(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::filesystem::copy(
      from, to,
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
}

}  // namespace qorhost::test
