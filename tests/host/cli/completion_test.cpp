// Scripts for shells and the manual page, made from the commands.
#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <memory>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

/// What a command writes to its standard output.
std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> shell(popen(command.c_str(), "r"), pclose);
  std::string output;
  for (int letter = std::fgetc(shell.get()); letter != EOF; letter = std::fgetc(shell.get())) {
    output += static_cast<char>(letter);
  }
  return output;
}

/// Whether the machine has a program.
bool Has(const std::string& program) {
  return !OutputOf("command -v " + program).empty();
}

class Completion : public RunFixture {
 protected:
  /// Writes the script for a shell; in front of it a function that does what the program does, on
  /// the demo store.
  [[nodiscard]] std::string Script(const std::string& shell) {
    std::string script = File("completion." + shell);
    const std::string program = std::string(QORHOST_PROGRAM) + " --db " + File("building.db");
    std::ofstream(script) << (shell == "fish"
                                  ? "function qorhost; command " + program + " $argv; end\n"
                                  : "qorhost() { command " + program + " \"$@\"; }\n")
                          << Run({"completion", shell}).out;
    return script;
  }
  /// What the script for Bash offers for the last of these words.
  [[nodiscard]] std::string Offered(const std::string& words, const std::string& environment = "") {
    return OutputOf(environment + " bash -c 'source " + Script("bash") + "; COMP_WORDS=(" + words +
                    "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _qorhost; "
                    "echo \"${COMPREPLY[@]}\"'");
  }
  /// The same in zsh, as it runs what was written for Bash.
  [[nodiscard]] std::string OfferedByZsh(const std::string& words) {
    return OutputOf("ZDOTDIR=" + folder().string() + " zsh -f -c 'autoload -U +X compinit && " +
                    "compinit -u -d " + File("dump") + "; source " + Script("zsh") +
                    "; offer() { emulate -L sh; setopt kshglob noshglob braceexpand ksharrays; "
                    "COMP_WORDS=(" +
                    words +
                    "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _qorhost; "
                    "echo \"${COMPREPLY[@]}\"; }; offer' 2>&1");
  }
  /// What fish offers behind a line, without the descriptions.
  [[nodiscard]] std::string OfferedByFish(const std::string& line) {
    return OutputOf("HOME=" + folder().string() + " fish -N -c 'source " + Script("fish") +
                    "; complete -C \"" + line +
                    "\" | string split -f1 \\t | string join \" \"' 2>&1");
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

TEST_F(Completion, BashIsOfferedTheValuesThatThereAre) {
  InitDemo();
  EXPECT_EQ(Offered("qorhost units list --format t"), "table\n");
  EXPECT_EQ(Offered("qorhost units list --format h"), "html\n");
  EXPECT_EQ(Offered("qorhost tenants edit 62 --resident \"\""), "yes no\n");
  EXPECT_EQ(Offered("qorhost tenants list --unit \"\""), "1 2 3\n");
  EXPECT_EQ(Offered("qorhost --unit 2 tenants edit 62 --schedule1 L"), "Late\\ Shift\n");
}

TEST_F(Completion, BashIsOfferedTheArgumentsThatThereAre) {
  InitDemo();
  EXPECT_EQ(Offered("qorhost units edit \"\""), "1 2 3\n");
  EXPECT_EQ(Offered("qorhost units delete 1 3"), "3\n") << "of several";
  EXPECT_EQ(Offered("qorhost --unit 2 schedules edit L"), "Late\\ Shift\n");
  EXPECT_EQ(Offered("qorhost --unit 2 tenants show Hollis"), "Hollis\\ Elena\\ G Hollis\\ Marek\n");
  EXPECT_EQ(Offered("qorhost --unit 2 tenants show \"Hollis\\\\ E\""), "Hollis\\ Elena\\ G\n");
  EXPECT_EQ(Offered("qorhost --unit 2 dircodes renumber 10"), "101 102 103 104 105 106\n");
  EXPECT_EQ(Offered("qorhost --unit 2 credentials delete 32"), "320 321 322 323 324 325\n");
  EXPECT_EQ(Offered("qorhost history undo \"\""), "1\n");
  EXPECT_EQ(Offered("qorhost completion \"\""), "bash zsh fish\n");
  EXPECT_EQ(Offered("qorhost units edit 1 --na"), "--name\n") << "options behind a hyphen";
}

TEST_F(Completion, BashIsOfferedWhatTheUnitOfTheEnvironmentHas) {
  InitDemo();
  EXPECT_EQ(Run({"doors", "edit", "4", "--name", "Yard2", "--unit", "2"}).status, 0);
  EXPECT_EQ(Run({"doors", "edit", "4", "--name", "Yard3", "--unit", "3"}).status, 0);
  EXPECT_EQ(Offered("qorhost doors edit Yard"), "Yard2 Yard3\n");
  EXPECT_EQ(Offered("qorhost doors edit Yard", "QORHOST_UNIT=2"), "Yard2\n");
  EXPECT_EQ(Offered("qorhost --unit 3 doors edit Yard", "QORHOST_UNIT=2"), "Yard3\n");
  EXPECT_EQ(Offered("qorhost units edit \"\"", "QORHOST_UNIT=2"), "1 2 3\n");
}

TEST_F(Completion, BashIsOfferedFilesAndNothingElseWhereAnArgumentIsNew) {
  InitDemo();
  EXPECT_EQ(Offered("qorhost --unit 2 dircodes add \"\""), "\n");
  EXPECT_EQ(Offered("qorhost backup \"\""), "\n");
  EXPECT_EQ(Offered("qorhost find \"\""), "\n");
}

TEST_F(Completion, BashIsOfferedWordsBehindHelp) {
  EXPECT_EQ(Offered("qorhost he"), "help\n");
  EXPECT_EQ(Offered("qorhost help cred"), "credentials\n");
  EXPECT_EQ(Offered("qorhost help report d"), "dircodes\n");
}

TEST_F(Completion, ZshIsOfferedTheSame) {
  if (!Has("zsh")) {
    GTEST_SKIP() << "zsh is not installed";
  }
  InitDemo();
  EXPECT_EQ(OfferedByZsh("qorhost cred"), "credentials\n");
  EXPECT_EQ(OfferedByZsh("qorhost --unit 2 credentials add --st"), "--start\n");
  EXPECT_EQ(OfferedByZsh("qorhost units list --format t"), "table\n");
  EXPECT_EQ(OfferedByZsh("qorhost tenants list --unit \"\""), "1 2 3\n");
  EXPECT_EQ(OfferedByZsh("qorhost units edit \"\""), "1 2 3\n");
  EXPECT_EQ(OfferedByZsh("qorhost help report d"), "dircodes\n");
  EXPECT_EQ(OfferedByZsh("qorhost --unit 2 tenants edit 62 --schedule1 L"), "Late\\ Shift\n");
}

TEST_F(Completion, FishIsOfferedTheSame) {
  if (!Has("fish")) {
    GTEST_SKIP() << "fish is not installed";
  }
  InitDemo();
  EXPECT_EQ(OfferedByFish("qorhost cred"), "credentials\n");
  EXPECT_EQ(OfferedByFish("qorhost credentials a"), "add assign\n");
  EXPECT_EQ(OfferedByFish("qorhost --unit 2 credentials add --st"), "--start\n");
  EXPECT_EQ(OfferedByFish("qorhost units list --format t"), "table\n");
  EXPECT_EQ(OfferedByFish("qorhost tenants list --unit "), "1 2 3\n");
  EXPECT_EQ(OfferedByFish("qorhost units edit "), "1 2 3\n");
  EXPECT_EQ(OfferedByFish("qorhost completion "), "bash fish zsh\n");
  EXPECT_EQ(OfferedByFish("qorhost help report d"), "dircodes\n");
  EXPECT_EQ(OfferedByFish("qorhost --unit 2 tenants edit 62 --schedule1 L"), "Late Shift\n");
}

TEST_F(Completion, TheManualPageIsSetWithoutAWarning) {
  if (!Has("groff")) {
    GTEST_SKIP() << "groff is not installed";
  }
  std::ofstream(File("qorhost.1")) << Run({"manual"}).out;
  EXPECT_EQ(OutputOf("groff -man -Tutf8 -ww -z " + File("qorhost.1") + " 2>&1"), "");
  EXPECT_THAT(OutputOf("groff -man -Tutf8 " + File("qorhost.1") + " 2>&1"),
              HasSubstr("dircodes export"));
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

TEST_F(Completion, TheManualPageTellsHowCommandsEndAndWhatTheyReadOfTheEnvironment) {
  const std::string page = Run({"manual"}).out;
  const std::size_t status = page.find("\n.SH EXIT STATUS\n.TP\n.B 0\n");
  const std::size_t environment = page.find("\n.SH ENVIRONMENT\n.TP\n.B QORHOST_DB\n");
  ASSERT_NE(status, std::string::npos);
  ASSERT_NE(environment, std::string::npos);
  EXPECT_LT(status, environment);
  for (const char* told :
       {"\n.B 1\nRefused", "\n.B 2\nUsage", "\n.B 3\nThe store", "\n.B QORHOST_UNIT\nThe key"}) {
    EXPECT_THAT(page, HasSubstr(told));
  }
}

}  // namespace
}  // namespace qorhost::test
