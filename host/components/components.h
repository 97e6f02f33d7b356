// The sibling components by programmatic identifier.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "frame/object.h"

namespace qorhost {

/// Makes components. Identifiers compare without regard to ASCII case.
class ComponentRegistry {
 public:
  using Factory = std::function<qorcred::ObjectRef()>;

  /// Adds a component or replaces the one with the same identifier.
  void Register(std::string_view programmaticId, Factory factory);

  /// A new component. Raises kCannotCreateComponent for an unknown identifier.
  [[nodiscard]] qorcred::ObjectRef Create(std::string_view programmaticId) const;

 private:
  std::map<std::string, Factory, std::less<>> factories_;  // by upper-cased identifier
};

/// The database manager, the step sender, the tenant and the application component.
[[nodiscard]] ComponentRegistry StoreComponents();

}  // namespace qorhost
