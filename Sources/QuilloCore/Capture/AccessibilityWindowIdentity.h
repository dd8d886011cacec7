#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Capture/AccessibilityAttributeReading.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// By what a window of an application can be recognised.
struct AccessibilityWindowIdentity {
  std::optional<std::uint32_t> windowNumber;
  std::optional<ArtifactRect> frame;
  std::optional<std::string> title;  ///< one line

  /// Asked for in this order, in one message.
  static constexpr std::array<std::string_view, 4> attributes = {"AXWindowNumber", "AXPosition", "AXSize", "AXTitle"};

  /// Whether a window of another list can be told by it.
  bool isUsable() const { return windowNumber || frame; }

  /// What is missing or wrongly typed stays absent. `values` answer `attributes`, one by one.
  static AccessibilityWindowIdentity from(const AccessibilityValues& values);

  friend bool operator==(const AccessibilityWindowIdentity&, const AccessibilityWindowIdentity&) = default;
};

}  // namespace quillo
