#pragma once

#include <QIcon>
#include <string_view>

namespace quillo {

/// One of the application's own symbols in the palette's text colour, so that it reads on light and dark; an empty icon
/// when the name is empty or unknown.
QIcon symbolIcon(std::string_view name);

/// The application's own icon, in colours.
QIcon applicationIcon();

}  // namespace quillo
