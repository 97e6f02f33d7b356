// Objects of a host as controllers see them in a traced run.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "trace/tracer.h"

namespace qorcred::trace {

/// Writes every call and hands it on, with untraced arguments. Objects that come back are traced.
class TracedObject final : public Object {
 public:
  TracedObject(std::shared_ptr<Tracer> tracer, std::string name, ObjectRef inner,
               bool tellsRelease);
  ~TracedObject() override;
  TracedObject(const TracedObject&) = delete;
  TracedObject& operator=(const TracedObject&) = delete;

  [[nodiscard]] const ObjectRef& inner() const { return inner_; }

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override;

 private:
  [[nodiscard]] std::string Call(std::string_view member, InvokeKind kind,
                                 Arguments arguments) const;
  [[nodiscard]] std::string LabelOf(std::string_view member, Arguments arguments) const;

  std::shared_ptr<Tracer> tracer_;
  std::string name_;
  ObjectRef inner_;
  bool tellsRelease_;
};

}  // namespace qorcred::trace
