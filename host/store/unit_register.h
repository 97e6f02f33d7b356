// What a store holds of each unit.
#pragma once

#include <cstdint>
#include <memory>
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

/// Lets UnitRegister::Count() do without counting a unit's rows for as long as it lives: many saves
/// in one transaction, each of which asks for the counts, take time linear in their number. Must
/// begin and end outside the transaction.
class KeptCounts {
 public:
  virtual ~KeptCounts() = default;
  KeptCounts(const KeptCounts&) = delete;
  KeptCounts& operator=(const KeptCounts&) = delete;

  /// Counts the unit's rows and follows every change of them from now on, until the transaction in
  /// which it is called ends; it must let nobody else write.
  virtual void Follow(std::int32_t unitKey) = 0;

 protected:
  KeptCounts() = default;
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
  /// The session must outlive what is returned.
  [[nodiscard]] virtual std::unique_ptr<KeptCounts> KeepCounts() = 0;

 protected:
  UnitRegister() = default;
};

}  // namespace qorhost
