// Texts from outside inside a page of HTML, where they are text and nothing else.
#pragma once

#include <string>
#include <string_view>

namespace qorhost {

/// The text as VisibleText() shows it, fit to stand in an element or, between double quotes, in an
/// attribute, of HTML and of the SVG in it.
[[nodiscard]] std::string HtmlText(std::string_view text);

/// The same, fit to stand between quotes in a style sheet inside a page.
[[nodiscard]] std::string CssText(std::string_view text);

}  // namespace qorhost
