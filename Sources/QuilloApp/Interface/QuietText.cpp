#include "QuilloApp/Interface/QuietText.h"

#include <algorithm>
#include <cmath>

namespace quillo {

namespace {

constexpr double readableContrast = 4.5;
constexpr int quietShare = 68;  ///< percent of the text's colour

/// Of a component from 0 to 1, as the eye takes it.
double linear(double component) {
  return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace

QColor quietTextColor(const QPalette& palette, QPalette::ColorRole text, QPalette::ColorRole background) {
  const QColor near = palette.color(QPalette::Active, text);
  const QColor far = palette.color(QPalette::Active, background);
  const auto mixed = [&](int share) {
    const auto mix = [share](int a, int b) { return (a * share + b * (100 - share)) / 100; };
    return QColor(mix(near.red(), far.red()), mix(near.green(), far.green()), mix(near.blue(), far.blue()));
  };
  int share = quietShare;
  // Nearer to the text where it could not be read else, as on many accents.
  while (share < 100 && contrast(mixed(share), far) < readableContrast) share += 4;
  return mixed(share);
}

}  // namespace quillo
