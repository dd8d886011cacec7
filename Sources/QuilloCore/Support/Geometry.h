#pragma once

#include <cmath>
#include <cstdint>
#include <tuple>

#include "QuilloCore/Support/JsonFields.h"

namespace quillo {

/// A point on the screen: points (not pixels), origin at the top left.
struct ArtifactPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const ArtifactPoint&, const ArtifactPoint&) = default;
};

/// A size in screen points.
struct ArtifactSize {
  double width = 0;
  double height = 0;

  friend bool operator==(const ArtifactSize&, const ArtifactSize&) = default;
};

/// A rectangle in screen points, origin at the top left.
struct ArtifactRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  double minX() const { return x; }
  double minY() const { return y; }
  double maxX() const { return x + width; }
  double maxY() const { return y + height; }

  bool isFinite() const {
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(width) && std::isfinite(height);
  }

  /// Strict overlap on both axes; rectangles that only touch do not overlap.
  bool overlaps(const ArtifactRect& other) const {
    return minX() < other.maxX() && other.minX() < maxX() && minY() < other.maxY() && other.minY() < maxY();
  }

  /// Whether each of x, y, width and height differs by at most `tolerance` points.
  bool agrees(const ArtifactRect& other, double tolerance) const {
    return std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(width - other.width) <= tolerance && std::abs(height - other.height) <= tolerance;
  }

  friend bool operator==(const ArtifactRect&, const ArtifactRect&) = default;
};

/// A range of text, counted in UTF-16 code units.
struct ArtifactTextRange {
  std::int64_t location = 0;
  std::int64_t length = 0;

  friend bool operator==(const ArtifactTextRange&, const ArtifactTextRange&) = default;
};

template <>
struct JsonFields<ArtifactPoint> {
  static constexpr auto table = std::tuple{jsonField("x", &ArtifactPoint::x), jsonField("y", &ArtifactPoint::y)};
};

template <>
struct JsonFields<ArtifactSize> {
  static constexpr auto table =
      std::tuple{jsonField("width", &ArtifactSize::width), jsonField("height", &ArtifactSize::height)};
};

template <>
struct JsonFields<ArtifactRect> {
  static constexpr auto table =
      std::tuple{jsonField("x", &ArtifactRect::x), jsonField("y", &ArtifactRect::y),
                 jsonField("width", &ArtifactRect::width), jsonField("height", &ArtifactRect::height)};
};

template <>
struct JsonFields<ArtifactTextRange> {
  static constexpr auto table =
      std::tuple{jsonField("location", &ArtifactTextRange::location), jsonField("length", &ArtifactTextRange::length)};
};

}  // namespace quillo
