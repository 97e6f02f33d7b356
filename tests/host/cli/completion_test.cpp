// Scripts for shells and the manual page, made from the commands.
#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <memory>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class Completion : public RunFixture {
 protected:
  /// What the script for Bash offers for the last of these words.
  [[nodiscard]] std::string Offered(const std::string& words) {
    const std::string script = File("completion.bash");
    std::ofstream(script) << Run({"completion", "bash"}).out;
    const std::string command = "bash -c 'source " + script + "; COMP_WORDS=(" + words +
                                "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _qorhost; "
                                "echo \"${COMPREPLY[@]}\"'";
    const std::unique_ptr<FILE, int (*)(FILE*)> shell(popen(command.c_str(), "r"), pclose);
    std::string offered;
    for (int letter = std::fgetc(shell.get()); letter != EOF; letter = std::fgetc(shell.get())) {
      offered += static_cast<char>(letter);
    }
    return offered;
  }
};

TEST_F(Completion, BashIsOfferedCommandsAndOptions) {
  EXPECT_EQ(Offered("qorhost cred"), "credentials\n");
  EXPECT_EQ(Offered("qorhost credentials a"), "add assign\n");
  EXPECT_EQ(Offered("qorhost --unit 2 credentials add --st"), "--start\n");
  EXPECT_EQ(Offered("qorhost history undo --d"), "--dry-run --db\n");
}

TEST_F(Completion, BashIsOfferedFilesWhereAValueIsDue) {
  EXPECT_EQ(Offered("qorhost --db \"\""), "\n");
}

TEST_F(Completion, OtherShellsHaveTheirs) {
  EXPECT_THAT(Run({"completion", "zsh"}).out, HasSubstr("bashcompinit"));
  EXPECT_THAT(Run({"completion", "fish"}).out,
              HasSubstr("-n 'test (__qorhost_path) = \"history\"' -a undo -d "));
  EXPECT_EQ(Run({"completion", "tcsh"}).status, 2);
}

TEST_F(Completion, TheManualPageHasEveryCommand) {
  const std::string page = Run({"manual"}).out;
  EXPECT_THAT(page, HasSubstr(".TH QORHOST 1"));
  for (const char* command : {"init", "credentials add", "dircodes sync", "report credentials",
                              "history undo", "backup", "completion"}) {
    EXPECT_THAT(page, HasSubstr(std::string(".SS qorhost ") + command + "\n")) << command;
  }
  EXPECT_THAT(page, HasSubstr(".B \\-\\-unit N\n"));
}

}  // namespace
}  // namespace qorhost::test
