// Whether an operation only tells what it would do.
#pragma once

namespace qorhost {

enum class Trial : bool { kNo, kYes };

}  // namespace qorhost
