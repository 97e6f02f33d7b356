// The tenants of a unit as they are stored, and what they refer to in words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/date.h"
#include "host/desks/report_words.h"
#include "host/desks/session.h"
#include "host/desks/unit_schedules.h"

namespace qorhost {

inline constexpr std::size_t kTenantDoors = 4;
inline constexpr std::size_t kTenantCards = 2;

/// A row; 0 stands for no group, card or code, an empty text for none.
struct TenantRow {
  std::int32_t rid = 0;
  std::int32_t tenantId = 0;
  std::string lastName;
  std::string firstName;
  std::string initial;
  std::string nameAtUnit;
  std::int32_t group = 0;
  bool active = false;  ///< whether the period holds
  std::optional<qorcred::Date> start;
  std::optional<qorcred::Date> end;
  std::array<std::int32_t, kTenantDoors> schedules{};
  std::array<std::int32_t, kTenantCards> cards{};  ///< rows of CredentialBank
  std::int32_t code = 0;                           ///< row of DirectoryCode
  bool resident = false;

  /// "Tanaka Xenia M"
  [[nodiscard]] std::string Name() const;
  /// "Xenia Tanaka", as a unit shows it.
  [[nodiscard]] std::string SpokenName() const;
  /// "Tanaka Xenia M (RID 62)"
  [[nodiscard]] std::string NameWithRid() const;
};

/// In the order of their names, as people sort them (TextOrder).
[[nodiscard]] std::vector<TenantRow> ReadTenants(DeskSession& session, std::int32_t unitKey);

/// A SELECT of whole rows for each few hundred RIDs: statements have a bound on their length.
[[nodiscard]] std::vector<std::string> SelectsOfTenants(std::int32_t unitKey,
                                                        std::span<const std::int32_t> rids);
/// "RID IN (1,2,3,3)" for each few hundred: few lengths, with the last one repeated to fill them.
[[nodiscard]] std::vector<std::string> ConditionsOnRids(std::span<const std::int32_t> rids);

struct StoredCard {
  std::string entry;  ///< as the credential screen lists it: "Transmitter-301"
  double number = 0;  ///< that is printed on it
};

struct ListedCode {
  double number = 0;   ///< that is dialled
  bool listed = true;  ///< false for a deleted one
};

/// What the tenants of a unit refer to by its rows. What a row refers to and is not there goes by
/// its RID.
struct TenantLinks {
  TenantLinks(DeskSession& session, std::int32_t unitKey);

  std::map<std::int32_t, std::string> schedules;  ///< by id
  ScheduleIds offered;                            ///< those that can be chosen
  std::unordered_map<std::int32_t, StoredCard> cards;
  std::unordered_map<std::int32_t, ListedCode> codes;

  [[nodiscard]] std::string Schedule(std::int32_t id) const;
  [[nodiscard]] qorcred::Value Card(std::int32_t rid) const;                ///< Null without one
  [[nodiscard]] qorcred::StringArray Cards(const TenantRow& tenant) const;  ///< that are held
  [[nodiscard]] qorcred::Value Code(std::int32_t rid) const;
};

/// One column of the table Tenants that people see and change.
struct TenantColumn {
  std::string_view column;
  std::string_view title;
  std::string_view key;
  FieldKind kind;
  qorcred::Value (*shown)(const TenantRow&, const TenantLinks&);
  std::string (*literal)(const TenantRow&);  ///< its value in a statement
};
[[nodiscard]] std::span<const TenantColumn> TenantColumns();

/// A text in a statement, whatever it holds.
[[nodiscard]] std::string TextLiteral(std::string_view text);

}  // namespace qorhost
