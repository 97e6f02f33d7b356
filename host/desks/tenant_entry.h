// What an operator enters for a tenant.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/tenant_fields.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

/// The most characters of a name, as UTF-16 units.
namespace tenant_bound {
inline constexpr std::size_t kName = 50;
inline constexpr std::size_t kInitial = 5;
}  // namespace tenant_bound

/// As it is typed; what is left out stays as it is. "none" stands for no date, no directory code
/// and, as the one card, for no cards.
struct TenantEntry {
  std::optional<std::string> lastName;
  std::optional<std::string> firstName;
  std::optional<std::string> initial;
  std::optional<std::string> nameAtUnit;
  std::optional<std::string> group;   ///< the RID of a group of the unit, or "zero"
  std::optional<std::string> active;  ///< yes or no; else a period makes it yes, none no
  std::optional<std::string> from;
  std::optional<std::string> to;  ///< a date without a time is the day's last second
  /// Of doors 1 to 4, by id or name.
  std::array<std::optional<std::string>, kTenantDoors> schedules;
  /// The input that each of them came from, which a fault is about.
  std::array<std::string_view, kTenantDoors> scheduleInputs = tenant_field::kDoorSchedules;
  std::vector<std::string> cards;  ///< those that are held afterwards, and no others; at most two
  std::optional<std::string> code;
  std::optional<std::string> resident;  ///< yes or no

  /// Takes "A,B,C,D" apart, one for each door from the first on that has none yet. Raises
  /// InputFault when there are more than four, or one is empty.
  void SetSchedules(const std::string& given);
  [[nodiscard]] bool IsEmpty() const;
};

/// The id of the schedule that a person names, by its id or name, of those that the unit offers.
/// Raises InputFault when there is none or several.
[[nodiscard]] std::int32_t FindSchedule(const TenantLinks& links, std::string_view field,
                                        const std::string& given);

/// The entry read, with what it names found in the unit.
class TenantValues {
 public:
  /// Raises InputFault for what cannot be entered or is not there. Cards are left to whoever knows
  /// them: `cards` are the rows of the entry's.
  TenantValues(DeskSession& session, std::int32_t unitKey, const TenantEntry& entry,
               const TenantLinks& links, std::optional<std::vector<std::int32_t>> cards);

  /// The row with what was entered. A name at the unit that was the tenant's name, or none, follows
  /// a new name. Raises InputFault for a period that ends before it begins.
  [[nodiscard]] TenantRow AppliedTo(const TenantRow& before) const;

 private:
  void ReadNames(const TenantEntry& entry);
  void ReadLinks(DeskSession& session, std::int32_t unitKey, const TenantEntry& entry,
                 const TenantLinks& links);
  [[nodiscard]] static std::array<std::int32_t, kTenantCards> Slots(
      const TenantRow& before, const std::vector<std::int32_t>& cards);

  using GivenDay = std::optional<std::optional<qorcred::Date>>;  // nothing: stays; none: taken away

  TenantEntry typed_;
  std::optional<std::int32_t> group_;
  std::optional<bool> active_;
  GivenDay start_;
  GivenDay end_;
  std::array<std::optional<std::int32_t>, kTenantDoors> schedules_;
  std::optional<std::vector<std::int32_t>> cards_;
  std::optional<std::int32_t> code_;
  std::optional<bool> resident_;
};

}  // namespace qorhost
