// The credential screen and the screen that creates tenants with credentials, without windows.
#pragma once

#include <memory>
#include <string_view>

#include "frame/value.h"
#include "host/screens/screen_model.h"

namespace qorhost {

/// What the pickers show unless told otherwise: 1 January 2000.
inline constexpr qorcred::Date kDefaultShownDay{36526.0};

/// The credential screen as it opens: empty lists and boxes, optButtonDefault chosen, no dates
/// chosen (the pickers show `today`), facility codes displayed, everything visible and enabled.
[[nodiscard]] std::shared_ptr<ScreenModel> MakeCredentialScreen(
    qorcred::Date today = kDefaultShownDay);

/// The same with the name of the tenant-creating screen.
[[nodiscard]] std::shared_ptr<ScreenModel> MakeTenantCreatingScreen(
    qorcred::Date today = kDefaultShownDay);

}  // namespace qorhost
