#include "QuilloApp/Interface/QuietText.h"

namespace quillo {

QColor quietTextColor(const QPalette& palette, QPalette::ColorRole text, QPalette::ColorRole background) {
  const QColor near = palette.color(QPalette::Active, text);
  const QColor far = palette.color(QPalette::Active, background);
  const auto mix = [](int a, int b) { return (a * 68 + b * 32) / 100; };
  return {mix(near.red(), far.red()), mix(near.green(), far.green()), mix(near.blue(), far.blue())};
}

}  // namespace quillo
