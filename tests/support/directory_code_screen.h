// The directory-code screen and the screen of the link to the unit, without windows.
#pragma once

#include <memory>
#include <string>

#include "frame/value.h"
#include "host/screens/headless_screen.h"

namespace qortest {

[[nodiscard]] std::shared_ptr<qorhost::HeadlessScreen> MakeDirectoryCodeScreen(qorcred::Date today);
[[nodiscard]] std::shared_ptr<qorhost::HeadlessScreen> MakeConnectionScreen(std::string firmware);

}  // namespace qortest
