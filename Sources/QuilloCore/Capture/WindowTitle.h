#pragma once

#include <array>
#include <string>
#include <string_view>

namespace quillo {

/// How two sources spell the title of one window.
namespace WindowTitle {

/// What stands between a document and its application.
inline constexpr std::array<std::string_view, 6> separators = {" - ", " \u2013 ", " \u2014 ", ": ", " | ", " \u00B7 "};

/// The title without marks that cannot be seen, each run of white space one blank, none at the ends.
std::string normalized(std::string_view title);

/// Whether `title` is `document` with the application's name before or behind it, any separator between. Both titles
/// are normalised; the name's letter case does not count.
bool isDecorated(std::string_view title, std::string_view document, std::string_view applicationName);

}  // namespace WindowTitle
}  // namespace quillo
