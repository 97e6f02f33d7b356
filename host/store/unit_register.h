// What a store holds of each unit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace qorhost {

struct UnitFacts {
  std::string name;
  bool hasSettings = false;  ///< there is a row of UnitSettings
  std::string type;          ///< its UNITTYPE, by which UNITTYPES describes it; may be empty
};

/// The rows of a unit that count. Directory codes below 0 and deleted ones do not.
struct UnitCounts {
  std::int64_t credentials = 0;
  std::int64_t directoryCodes = 0;
  std::int64_t pendingSteps = 0;
  friend bool operator==(const UnitCounts&, const UnitCounts&) = default;
};

/// A part of SqlSession, and raises what that raises.
class UnitRegister {
 public:
  virtual ~UnitRegister() = default;
  UnitRegister(const UnitRegister&) = delete;
  UnitRegister& operator=(const UnitRegister&) = delete;

  /// Nothing for a unit that the store does not have.
  [[nodiscard]] virtual std::optional<UnitFacts> Find(std::int32_t unitKey) = 0;
  [[nodiscard]] virtual UnitCounts Count(std::int32_t unitKey) = 0;
  /// Counts the unit's rows and follows every change of them until the unit of work ends, which
  /// must have taken the right to write: Count() does without counting them meanwhile. Many saves,
  /// each of which asks for the counts, take time linear in their number then.
  virtual void KeepCounts(std::int32_t unitKey) = 0;

 protected:
  UnitRegister() = default;
};

}  // namespace qorhost
