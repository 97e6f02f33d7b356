// qorCommn.clsConnectionManager: the link to a unit, which is always up and has no other end.
#pragma once

#include <cstdint>

#include "frame/object.h"

namespace qorhost {

/// Late-bound member: pbPing tells the unit that the link is still in use.
class ConnectionManagerObject final : public qorcred::Object {
 public:
  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

  [[nodiscard]] std::int64_t pings() const { return pings_; }

 private:
  qorcred::Value Ping(qorcred::Arguments arguments);

  std::int64_t pings_ = 0;
};

}  // namespace qorhost
