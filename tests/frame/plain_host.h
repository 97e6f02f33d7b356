// A host of which only the defaults are wanted.
#pragma once

#include "frame/host.h"

namespace qortest {

class PlainHost : public qorcred::Host {
 public:
  qorcred::ObjectRef CreateComponent(std::string_view) override {
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kCannotCreateComponent);
  }
  qorcred::MessageButton ShowMessage(std::string_view, qorcred::MessageStyle,
                                     std::string_view) override {
    return qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return {}; }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view, const qorcred::RuntimeError&) noexcept override {}
};

}  // namespace qortest
