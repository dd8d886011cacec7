#pragma once

#include <QPalette>

namespace quillo {

/// The colour of what is said beside the main thing: between the palette's text and its background.
QColor quietTextColor(const QPalette& palette, QPalette::ColorRole text, QPalette::ColorRole background);

}  // namespace quillo
