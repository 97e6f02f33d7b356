#include "host/components/connection_manager.h"

#include <array>

#include "host/store/method_table.h"

namespace qorhost {

qorcred::Value ConnectionManagerObject::Invoke(std::string_view member, qorcred::InvokeKind kind,
                                               qorcred::Arguments arguments) {
  using Self = ConnectionManagerObject;
  static constexpr std::array kMethods{
      Method<Self>{"pbPing", 0, 0, &Self::Ping},
  };
  return RunMethod<Self>(*this, "The connection manager", kMethods, member, kind, arguments);
}

qorcred::Value ConnectionManagerObject::Ping(qorcred::Arguments) {
  ++pings_;
  return {};
}

}  // namespace qorhost
