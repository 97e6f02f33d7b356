#include "host/components/components.h"

#include <fmt/format.h>

#include <memory>
#include <utility>

#include "frame/runtime_error.h"
#include "frame/siblings.h"
#include "frame/text.h"
#include "host/components/application_object.h"
#include "host/components/connection_manager.h"
#include "host/components/database_manager.h"
#include "host/components/step_sender.h"
#include "host/components/tenant_object.h"

namespace qorhost {

void ComponentRegistry::Register(std::string_view programmaticId, Factory factory) {
  factories_[qorcred::UpperAscii(programmaticId)] = std::move(factory);
}

qorcred::ObjectRef ComponentRegistry::Create(std::string_view programmaticId) const {
  const auto found = factories_.find(qorcred::UpperAscii(programmaticId));
  if (found == factories_.end()) {
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kCannotCreateComponent,
                                fmt::format("There is no component '{}'", programmaticId));
  }
  return found->second();
}

ComponentRegistry StoreComponents() {
  namespace component = qorcred::component;
  ComponentRegistry registry;
  registry.Register(component::kDatabaseManager,
                    [] { return std::make_shared<DatabaseManagerObject>(); });
  registry.Register(component::kStepSender, [] { return std::make_shared<StepSenderObject>(); });
  registry.Register(component::kTenant, [] { return std::make_shared<TenantObject>(); });
  registry.Register(component::kApplication, [] { return std::make_shared<ApplicationObject>(); });
  registry.Register(component::kConnectionManager,
                    [] { return std::make_shared<ConnectionManagerObject>(); });
  return registry;
}

}  // namespace qorhost
