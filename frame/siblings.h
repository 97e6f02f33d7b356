// Typed views of the sibling components that controllers call, and their programmatic identifiers.
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/controls.h"
#include "frame/object.h"

namespace qorcred {

namespace component {
inline constexpr std::string_view kDatabaseManager = "qorDBI.clsDBManager";
inline constexpr std::string_view kStepSender = "qorSPS.clsSendProgSteps";
inline constexpr std::string_view kTenant = "qorTent.clsTenant";
inline constexpr std::string_view kApplication = "qorAppln.clsApplication";
inline constexpr std::string_view kConnectionManager = "qorCommn.clsConnectionManager";
}  // namespace component

/// `qorTent.clsTenant`: link codes, tenant ids and the programming steps of tenants.
class TenantComponent : public View {
 public:
  using View::View;

  /// The link code for the unit's next tenant.
  [[nodiscard]] std::int32_t NextLinkCode(std::int32_t unitKey, const ObjectRef& connection) const;
  /// Takes the link code of NextLinkCode().
  void TakeLinkCode(std::int32_t unitKey, const ObjectRef& connection) const;
  /// The tenant id of the Tenants row `rid`.
  [[nodiscard]] std::int32_t TenantId(const ObjectRef& connection, std::int32_t unitKey,
                                      std::int32_t rid) const;
  /// Queues the steps that program `tenant` into the unit.
  void CreateProgramSteps(const ObjectRef& connection, std::int32_t unitKey,
                          std::int32_t tenant) const;
};

/// `qorAppln.clsApplication`: the state of units.
class ApplicationComponent : public View {
 public:
  using View::View;

  /// The unit's codes in use: credentials, entry codes and directory codes together, added in
  /// 16-bit arithmetic. Raises kOverflow when a count or the sum does not fit.
  [[nodiscard]] std::int16_t CodesInUse(const ObjectRef& connection, std::int32_t unitKey) const;
};

}  // namespace qorcred
