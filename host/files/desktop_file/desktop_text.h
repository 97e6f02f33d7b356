// Texts as the pages of desktop database files hold them.
#pragma once

#include <string_view>

#include "host/files/desktop_file/desktop_table.h"

namespace qorhost::desktop_file {

/// Of newer formats: UTF-16, or behind the bytes FF FE a shorter form, in which a zero byte changes
/// between characters of one byte and of two.
[[nodiscard]] DesktopText TextOfUtf16(std::string_view bytes);

/// Whether texts in that code page can be read here.
[[nodiscard]] bool IsKnownCodePage(unsigned codePage);
/// Of the oldest format. The code page must be known.
[[nodiscard]] DesktopText TextOfCodePage(std::string_view bytes, unsigned codePage);

}  // namespace qorhost::desktop_file
