// Controllers by the names of their classes, whose touches go into the program's SurfaceRecord.
#pragma once

#include <memory>
#include <string_view>

#include "frame/host.h"
#include "frame/member_table.h"

namespace qortest {

/// Raises std::runtime_error for a name that no class has. The host must outlive the controller.
[[nodiscard]] std::unique_ptr<qorcred::Controller> MakeNotedController(std::string_view className,
                                                                       qorcred::Host& host);

}  // namespace qortest
