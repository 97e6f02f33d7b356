// The queue of programming steps, in the table ProgramSteps.
#pragma once

#include "host/store/step_queue.h"

namespace qorhost::postgres {

class Session;

class StepQueue final : public qorhost::StepQueue {
 public:
  explicit StepQueue(Session& session) : session_(session) {}

  using qorhost::StepQueue::Queue;
  void Queue(std::int32_t unitKey, std::string_view kind, std::int32_t subjectRid,
             std::string_view code) override;
  void WithdrawAll(std::int32_t unitKey, std::string_view kind,
                   std::span<const std::int32_t> subjectRids) override;
  void QueueAll(std::int32_t unitKey, std::string_view kind,
                std::span<const std::int32_t> subjectRids) override;
  std::int64_t Withdraw(std::int32_t unitKey, std::string_view kind,
                        std::int32_t subjectRid) override;
  [[nodiscard]] bool IsDeletionPending(std::int32_t unitKey, std::string_view code) override;
  [[nodiscard]] std::string CodeAtUnit(std::int32_t unitKey, std::int32_t rid) override;
  [[nodiscard]] std::vector<ProgramStep> List(std::optional<std::int32_t> unitKey) override;

 private:
  Session& session_;
};

}  // namespace qorhost::postgres
