// The trace of a process that QORCRED_TRACE asks for: what it has, and that it can be replayed.
#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "com/call_trace.h"
#include "com/text.h"
#include "tests/com/client/client_fixture.h"
#include "tests/trace/trace_replay.h"

namespace qortest {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

std::wstring NamedFile() {
  std::array<wchar_t, MAX_PATH> folder{};
  GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
  return std::wstring(folder.data()) + L"qorcred calls.txt";
}

std::wstring File() {
  return qorcred::com::TraceFileOf(NamedFile(), GetCurrentProcessId());
}

/// Sets the variable before anything is created.
class Variable final : public testing::Environment {
 public:
  void SetUp() override {
    DeleteFileW(File().c_str());
    ASSERT_NE(SetEnvironmentVariableW(L"QORCRED_TRACE", NamedFile().c_str()), FALSE);
  }
};
const auto* const kVariable = testing::AddGlobalTestEnvironment(new Variable);

std::vector<std::string> AllLines() {
  std::FILE* file = _wfopen(File().c_str(), L"rb");
  if (file == nullptr) return {};
  std::vector<std::string> lines(1);
  for (int character = std::fgetc(file); character != EOF; character = std::fgetc(file)) {
    if (character == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += static_cast<char>(character);
    }
  }
  std::fclose(file);
  EXPECT_EQ(lines.back(), "") << "a line without its end";
  lines.pop_back();
  return lines;
}

class ComTrace : public ComTest {
 protected:
  void SetUp() override { before_ = AllLines().size(); }
  /// The lines that the test has added.
  [[nodiscard]] std::vector<std::string> Lines() const {
    std::vector<std::string> lines = AllLines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before_));
    return lines;
  }

 private:
  std::size_t before_ = 0;
};

TEST_F(ComTrace, HasOperationsWithTheCallsToTheHostBelow) {
  {
    const FakeManager manager;
    Client report(kCredentialReport);
    report.Put(L"gstrRIDsForDeletion", Variant(L"101,102"));
    const Outcome outcome = report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(3),
                                        Variant(manager.object));
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  }
  EXPECT_THAT(
      Lines(),
      ElementsAre(
          "new clsCredentialReport@1", "clsCredentialReport@1.gstrRIDsForDeletion = \"101,102\"",
          "clsCredentialReport@1.pbValidate(objConn: objConn@2, lngUnitKey: 3, objDB: "
          "objDB@3)",
          "  objDB@3.ExecuteSelect(conn: objConn@2, sql: \"Select TenantID from Tenants "
          "where UnitKey=3 And (CredentialID1 IN (101,102) OR CredentialID2 "
          "IN(101,102))\", errorFlag: False, errorText: \"\") -> rows@4",
          "  rows@4(row: 0, column: 0) -> \"\"", "-> True", "Release clsCredentialReport@1"));
}

TEST_F(ComTrace, HasComponentsFromTheirCreationToTheirRelease) {
  {
    const FakeManager manager;
    const std::unique_ptr<OfferedComponent> offered = Offer(manager);
    const Client controller(kCredential);
  }
  const std::vector<std::string> lines = Lines();
  EXPECT_THAT(lines, Contains(StartsWith("  CreateObject(progId: \"qorDBI.clsDBManager\") -> ")));
  EXPECT_THAT(lines,
              Contains(StartsWith("  CreateObject(progId: \"qorSPS.clsSendProgSteps\") ! 429 ")));
  EXPECT_THAT(lines, Contains(StartsWith("  Trapped(operation: \"Class_Initialize\") ! 429 ")));
  EXPECT_THAT(lines, Contains(StartsWith("Release clsCredential@")));
  EXPECT_THAT(lines, Contains(StartsWith("  Release qorDBI.clsDBManager@")));
}

TEST_F(ComTrace, HasWhatAnOperationRaises) {
  const Client controller(kCredentialReport);
  const Client codes(kDirCode);
  EXPECT_EQ(codes.Call(L"pbBase64Dec", Variant(L"NTA")).code, DISP_E_EXCEPTION);
  EXPECT_THAT(Lines(), Contains("! 9 \"Subscript out of range\""));
}

TEST_F(ComTrace, HasTheLinesOfAnotherThreadWithItsNumber) {
  std::thread([] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    { const Client report(kCredentialReport); }
    CoUninitialize();
  }).join();
  EXPECT_THAT(Lines(),
              ElementsAre("[2] new clsCredentialReport@1", "[2] Release clsCredentialReport@1"));
}

// Runs last: of all that this process has written on its first thread.
TEST_F(ComTrace, ZIsTheSameWhenItIsReplayed) {
  std::vector<std::string> lines = AllLines();
  std::erase_if(lines, [](const std::string& line) { return line.starts_with("["); });
  ASSERT_GT(lines.size(), 10U);
  EXPECT_EQ(Replayed(lines), lines);
}

TEST(TraceFile, HasTheNumberOfTheProcessInFrontOfItsEnding) {
  using qorcred::com::TraceFileOf;
  EXPECT_EQ(TraceFileOf(L"C:\\traces\\calls.txt", 4711), L"C:\\traces\\calls.4711.txt");
  EXPECT_EQ(TraceFileOf(L"C:\\tra.ces\\calls", 4711), L"C:\\tra.ces\\calls.4711");
  EXPECT_EQ(TraceFileOf(L"calls.old.txt", 7), L"calls.old.7.txt");
  EXPECT_EQ(TraceFileOf(L"d:calls", 7), L"d:calls.7");
}

}  // namespace
}  // namespace qortest
