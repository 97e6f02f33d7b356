#include "bench/idle_host.h"

#include <fmt/format.h>

#include <limits>
#include <string>
#include <utility>

#include "bench/check.h"
#include "frame/capacity.h"
#include "frame/result_table.h"
#include "frame/siblings.h"

namespace qorbench {

namespace {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::Value;

class IdleConnectionObject final : public qorcred::Object {
 public:
  Value Invoke(std::string_view /*member*/, InvokeKind /*kind*/, Arguments /*arguments*/) override {
    return {};
  }
};

class IdleManager final : public qorcred::Object {
 public:
  explicit IdleManager(std::shared_ptr<IdleCounts> counts) : counts_(std::move(counts)) {}

  Value Invoke(std::string_view member, InvokeKind /*kind*/, Arguments arguments) override {
    if (member == "ExecuteInsert") {
      counts_->statementBytes += arguments[1].As<std::string>()->size();
      ++counts_->inserts;
      return {counts_->inserts};
    }
    if (member == "ExecuteSelect") {
      return {Select(*arguments[1].As<std::string>())};
    }
    return {member == "pbGetRowIDStringConstant" ? "_ROWID_" : "_LMDATE_"};
  }

 private:
  [[nodiscard]] static qorcred::ObjectRef Select(std::string_view sql) {
    auto table = std::make_shared<qorcred::ResultTable>();
    if (sql.find("TOTAL") != std::string_view::npos) {
      table->At(0, 0) = qorcred::CapacityText(std::numeric_limits<std::int16_t>::max());
    }
    return table;
  }

  std::shared_ptr<IdleCounts> counts_;
};

class IdleApplication final : public qorcred::Object {
 public:
  Value Invoke(std::string_view /*member*/, InvokeKind /*kind*/, Arguments arguments) override {
    constexpr std::size_t kCredentials = 5;
    arguments[kCredentials] = Value("-32768");
    return {};
  }
};

}  // namespace

IdleHost::IdleHost() : counts_(std::make_shared<IdleCounts>()) {}

qorcred::ObjectRef IdleHost::CreateComponent(std::string_view programmaticId) {
  if (programmaticId == qorcred::component::kDatabaseManager) {
    return std::make_shared<IdleManager>(counts_);
  }
  if (programmaticId == qorcred::component::kApplication) {
    return std::make_shared<IdleApplication>();
  }
  return IdleConnection();  // nothing is asked of the other components
}

qorcred::MessageButton IdleHost::ShowMessage(std::string_view text, qorcred::MessageStyle /*style*/,
                                             std::string_view /*title*/) {
  Check(false, fmt::format("a save without the message \"{}\"", text));
  return qorcred::MessageButton::kOk;
}

void IdleHost::ReportFailure(std::string_view operation,
                             const qorcred::RuntimeError& failure) noexcept {
  Check(false, fmt::format("{} without the failure \"{}\"", operation, failure.description()));
}

qorcred::ObjectRef IdleConnection() {
  return std::make_shared<IdleConnectionObject>();
}

}  // namespace qorbench
