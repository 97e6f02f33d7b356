// Tracing decorators of the connection and of the components that controllers create.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/tracing_object.h"

namespace qortest {

/// A connection: `BeginTrans`, `Execute "INSERT ..." -> 1` with the rows affected.
class TracingConnection final : public TracingObject {
 public:
  using TracingObject::TracingObject;

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;
};

/// A component: `Method argument -> result` without the connection, and
/// `Release "programmatic.id"` when its last reference goes.
/// The database manager's error arguments are not shown; after the result stands ` ! "error text"`
/// when the error flag came back True. A unit's status shows its three counts alone.
class TracingComponent final : public TracingObject {
 public:
  TracingComponent(std::string programmaticId, qorcred::ObjectRef inner, TranscriptSink sink);
  ~TracingComponent() override;
  TracingComponent(const TracingComponent&) = delete;
  TracingComponent& operator=(const TracingComponent&) = delete;

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  std::string programmaticId_;
};

}  // namespace qortest
