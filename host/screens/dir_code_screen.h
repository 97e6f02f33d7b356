// The directory-code screen and the screen of the link to a unit, without windows.
#pragma once

#include <memory>
#include <string>

#include "frame/value.h"
#include "host/screens/screen_model.h"

namespace qorhost {

/// The directory-code screen as it opens: empty lists and boxes, nothing checked, no dates chosen
/// (the pickers show `today`), everything visible and enabled.
[[nodiscard]] std::shared_ptr<ScreenModel> MakeDirectoryCodeScreen(qorcred::Date today);

/// The screen of a link whose handshake told `firmware`.
[[nodiscard]] std::shared_ptr<ScreenModel> MakeConnectionScreen(std::string firmware);

}  // namespace qorhost
