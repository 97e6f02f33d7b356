// The queue of programming steps that wait to be sent to the units.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/dialect/translator.h"

namespace qorhost {

/// What a step tells the unit. The texts stand in ProgramSteps.Kind.
namespace step {
inline constexpr std::string_view kProgramTenant = "program tenant";
inline constexpr std::string_view kProgramDirectoryCode = "program directory code";
inline constexpr std::string_view kChangeDirectoryCode = "change directory code";
inline constexpr std::string_view kDeleteDirectoryCode = "delete directory code";
}  // namespace step

struct ProgramStep {
  std::int32_t rid = 0;
  std::int32_t unitKey = 0;
  std::string kind;
  std::int32_t subjectRid = 0;  ///< the Tenants or DirectoryCode row
  std::string code;             ///< directory code that the unit drops or replaces; may be empty
  qorcred::Value queuedAt;      ///< Date
  bool sent = false;
};

/// A part of SqlSession, and raises what that raises.
class StepQueue {
 public:
  virtual ~StepQueue() = default;
  StepQueue(const StepQueue&) = delete;
  StepQueue& operator=(const StepQueue&) = delete;

  /// Appends a step in constant time.
  virtual void Queue(std::int32_t unitKey, std::string_view kind, std::int32_t subjectRid,
                     std::string_view code) = 0;
  void Queue(std::int32_t unitKey, std::string_view kind, std::int32_t subjectRid) {
    Queue(unitKey, kind, subjectRid, {});
  }
  /// Appends a step of the kind for each row, in their order. Takes one statement for each run of
  /// rows without gaps.
  virtual void QueueAll(std::int32_t unitKey, std::string_view kind,
                        std::span<const std::int32_t> subjectRids) = 0;
  /// Appends a step in the place of an unsent one of that kind and row. A step is made up from its
  /// row when it is sent, so a row needs none twice; the later place is the right one: what was
  /// queued in between may free the code that the row has now.
  void QueueOnce(std::int32_t unitKey, std::string_view kind, std::int32_t subjectRid,
                 std::string_view code = {}) {
    Withdraw(unitKey, kind, subjectRid);
    Queue(unitKey, kind, subjectRid, code);
  }
  /// The same for many rows that a change of all of them has changed: the steps stand in the order
  /// of the rows' RIDs.
  void QueueAllOnce(std::int32_t unitKey, std::string_view kind,
                    std::vector<std::int32_t> subjectRids) {
    std::sort(subjectRids.begin(), subjectRids.end());
    WithdrawAll(unitKey, kind, subjectRids);
    QueueAll(unitKey, kind, subjectRids);
  }
  /// Takes the unsent steps of that kind of all these rows back. Takes one statement for each run
  /// of rows without gaps.
  virtual void WithdrawAll(std::int32_t unitKey, std::string_view kind,
                           std::span<const std::int32_t> subjectRids) = 0;
  /// Takes the unsent steps of that kind back; returns how many there were.
  virtual std::int64_t Withdraw(std::int32_t unitKey, std::string_view kind,
                                std::int32_t subjectRid) = 0;
  /// Whether the deletion of that code is still to be sent.
  [[nodiscard]] virtual bool IsDeletionPending(std::int32_t unitKey, std::string_view code) = 0;
  /// The code under which the unit knows a DirectoryCode row: the one before its change when there
  /// is one. Empty when there is no such row.
  [[nodiscard]] virtual std::string CodeAtUnit(std::int32_t unitKey, std::int32_t rid) = 0;
  /// The queue in the order in which it is sent; of one unit or of all.
  [[nodiscard]] virtual std::vector<ProgramStep> List(std::optional<std::int32_t> unitKey) = 0;

 protected:
  StepQueue() = default;

  /// The row of a step that waits, and its values.
  [[nodiscard]] static const std::shared_ptr<const dialect::AddedRow>& FormOfStep();
  using StepValues = std::array<qorcred::Value, 5>;
  [[nodiscard]] static StepValues ValuesOfStep(std::int32_t unitKey, std::string_view kind,
                                               std::int32_t subjectRid, std::string_view code,
                                               std::string_view queuedAt);
};

}  // namespace qorhost
