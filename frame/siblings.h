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

/// A unit's codes in use by kind, as the application component gave them.
struct CodeCounts {
  Value credentials;
  Value entryCodes;
  Value directoryCodes;

  /// All together, added one by one as 16-bit or 32-bit numbers. An empty count is 0. Raise
  /// kTypeMismatch for a text that is no number, kOverflow when a count or a sum does not fit.
  [[nodiscard]] std::int16_t Sum16() const;
  [[nodiscard]] std::int32_t Sum32() const;
};

/// `qorAppln.clsApplication`: the state of units.
class ApplicationComponent : public View {
 public:
  using View::View;

  /// The unit's codes in use. The component may change the unit key: what comes back is the key
  /// for the rest of the caller's operation.
  [[nodiscard]] CodeCounts CodesInUse(const ObjectRef& connection, std::int32_t& unitKey) const;
};

/// `qorSPS.clsSendProgSteps`: the programming steps of directory codes. Every operation hands the
/// unit key over by reference and takes it back: the sender may change it. Deletions do the same
/// with the directory code's row.
class StepSender : public View {
 public:
  using View::View;

  /// Queues the step that programs the row into the unit. The row comes from the screen: the sender
  /// gets its value alone.
  void ProgramDirCode(const ObjectRef& connection, std::int32_t& unitKey, std::int32_t rid) const {
    Value row(rid);
    Send("pbGenDirCodePrgStep", connection, unitKey, row, Passing::kValue);
  }
  /// The same for a row that was just inserted, whose identity stands in a variable.
  void ProgramNewDirCode(const ObjectRef& connection, std::int32_t& unitKey,
                         std::int32_t rid) const {
    Value row(rid);
    Send("pbGenDirCodePrgStep", connection, unitKey, row, Passing::kVariable);
  }
  /// Queues the step that changes the code of the screen's row in the unit.
  void ChangeDirCode(const ObjectRef& connection, std::int32_t& unitKey, std::int32_t rid) const {
    Value row(rid);
    Send("pbGenChgDirCodePrgStep", connection, unitKey, row, Passing::kValue);
  }
  /// Queues the step that deletes the row's code from the unit.
  void DeleteDirCode(const ObjectRef& connection, std::int32_t& unitKey, std::int32_t& rid) const {
    SendAndReadRow("pbGenDelDirCodePrgStep", connection, unitKey, rid);
  }
  /// Withdraws the steps of a row that the unit has not been sent yet.
  void WithdrawDirCode(const ObjectRef& connection, std::int32_t& unitKey,
                       std::int32_t& rid) const {
    SendAndReadRow("pbDeleteDirCodePrgStep", connection, unitKey, rid);
  }
  /// Whether an unsent step deletes the code `code` from the unit.
  [[nodiscard]] bool IsDeletionPending(const ObjectRef& connection, std::int32_t& unitKey,
                                       double code) const;

 private:
  void SendAndReadRow(std::string_view step, const ObjectRef& connection, std::int32_t& unitKey,
                      std::int32_t& rid) const;
  Value Send(std::string_view operation, const ObjectRef& connection, std::int32_t& unitKey,
             Value& subject, Passing subjectPassing) const;
};

/// `qorCommn.clsConnectionManager`: the link to the unit.
class ConnectionManager : public View {
 public:
  using View::View;

  /// Tells the unit that the link is still in use.
  void Ping() const { Call(object(), "pbPing"); }
};

}  // namespace qorcred
