#include "tests/support/missing_component.h"

#include <algorithm>
#include <string>
#include <utility>

namespace qortest {

namespace contract = qorcred::contract;

namespace {

/// Operation, component, whether missing at the controller's creation.
using Use = std::tuple<std::string_view, std::string_view, bool>;

const contract::Operation& CreationOf(const contract::Class& of) {
  return *std::find_if(of.operations.begin(), of.operations.end(),
                       [](const auto& one) { return one.name == contract::kCreation; });
}

bool Names(const std::vector<std::string_view>& list, std::string_view name) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

/// The uses that have to be described.
std::set<Use> UsesIn(const contract::Class& of) {
  const std::vector<std::string_view> kept = CreationOf(of).creates;
  std::set<Use> uses;
  for (const contract::Operation& operation : of.operations) {
    for (const std::string_view component : operation.creates) {
      uses.emplace(operation.name, component, false);
    }
    if (operation.name == contract::kCreation) continue;
    for (const contract::Part& part : operation.others) {
      // The first that is kept, the manager, serves statements also where an operation makes
      // another.
      const bool isOwn = !Names(operation.creates, part.names) || part.names == kept.front();
      if (Names(kept, part.names) && isOwn) uses.emplace(operation.name, part.names, true);
    }
  }
  return uses;
}

}  // namespace

std::map<AbsenceKey, contract::Absence> DescribedAbsences(const contract::Class& of) {
  std::map<AbsenceKey, contract::Absence> all;
  for (const contract::Operation& operation : of.operations) {
    for (const contract::Absence& absence : operation.absences) {
      const AbsenceKey key{operation.name, absence.component, absence.sinceCreation, absence.use};
      EXPECT_TRUE(all.emplace(key, absence).second) << operation.name << " " << absence.component;
    }
  }
  return all;
}

void ExpectAllTried(const contract::Class& of, const std::set<AbsenceKey>& tried) {
  std::set<Use> described;
  for (const auto& [key, absence] : DescribedAbsences(of)) {
    const auto& [operation, component, sinceCreation, use] = key;
    described.emplace(operation, component, sinceCreation);
    EXPECT_EQ(tried.count(key), 1U)
        << operation << " without " << component << " " << use << " is described and not tried";
  }
  const std::set<Use> uses = UsesIn(of);
  EXPECT_GE(uses.size(), 10U);
  for (const auto& [operation, component, sinceCreation] : uses) {
    EXPECT_EQ(described.count({operation, component, sinceCreation}), 1U)
        << operation << " without " << component
        << (sinceCreation ? " since the controller's creation" : "") << " is not described";
  }
}

void ExpectDescribed(RecordingHost& host, std::optional<bool> result,
                     const contract::Absence& described) {
  const auto& trapped = host.services().trapped();
  EXPECT_EQ(trapped.empty() ? 0 : static_cast<int>(trapped.front().second), described.failure);
  EXPECT_EQ(!result ? "" : *result ? "True" : "False", described.result);
  EXPECT_EQ(host.transactions().open(), 0);
}

}  // namespace qortest
