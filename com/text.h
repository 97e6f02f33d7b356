// Texts across the component's boundary: UTF-16 outside, UTF-8 inside.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace qorcred::com {

/// UTF-8 to UTF-16. A byte that is not UTF-8 becomes U+FFFD.
[[nodiscard]] std::wstring ToWide(std::string_view text);

/// UTF-16 to UTF-8. A lone surrogate becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

/// A text in the automation allocator, to be freed with SysFreeString() or handed over.
/// Raises kOutOfMemory.
[[nodiscard]] BSTR NewBstr(std::string_view text);

/// The text of `text`, which may be null: "". Zeros inside belong to it.
[[nodiscard]] std::string FromBstr(BSTR text);

/// Whether FromBstr(`text`) is `other`.
[[nodiscard]] bool SameText(BSTR text, std::string_view other);

}  // namespace qorcred::com
