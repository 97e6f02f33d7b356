// A component that raises with a number and a text of its own, and one that throws what it likes:
// what comes back from an operation that traps, from one that raises, and what the host is told.
#include <frame/convert.h>
#include <frame/date.h>
#include <reports/cls_dir_code_report.h>

#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "objects.h"

// Numbers of this host; the library hands them on as they are.
constexpr auto kStoreIsFull = static_cast<qorcred::ErrorNumber>(1234);

class FailingManager final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind, Arguments arguments) override {
    if (!SameMember(member, "ExecuteSelect")) Raise(qorcred::ErrorNumber::kUnknownMember);
    const std::string sql = qorcred::ToText(arguments[1]);
    if (sql.find("UnitSettings") != std::string::npos) {
      throw std::runtime_error("The cable is out.");
    }
    throw qorcred::RuntimeError(kStoreIsFull, "The store is full.");
  }
};

class ToldHost final : public qorcred::Host {
 public:
  ObjectRef CreateComponent(std::string_view id) override {
    if (SameMember(id, "qorDBI.clsDBManager")) return std::make_shared<FailingManager>();
    return std::make_shared<Properties>(Properties::Pairs{});
  }
  qorcred::MessageButton ShowMessage(std::string_view, qorcred::MessageStyle,
                                     std::string_view) override {
    return qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    std::cout << "told: " << operation << " ended with " << static_cast<int>(failure.number())
              << ", " << failure.description() << '\n';
  }
};

int main() {
  ToldHost host;
  const ObjectRef connection = std::make_shared<Properties>(Properties::Pairs{});
  qorcred::clsDirCodeReport report(host);

  // These trap: the result is the one so far, nothing is thrown, the host is told.
  const std::string name = report.pbGetUnitName(connection, 3);
  std::cout << "unit name: \"" << name << "\"\n";
  const std::int32_t length = report.pbGetEntryLength(connection);
  std::cout << "digits of an entry code: " << length << '\n';

  // This one raises, with number and text as the component gave them. The host is told nothing.
  try {
    report.pbGenSql(connection, 3);
  } catch (const qorcred::RuntimeError& failure) {
    std::cout << "raised: " << static_cast<int>(failure.number()) << ", " << failure.description()
              << '\n';
  }
}
