#include "QuilloCore/Capture/AccessibilityAreaCoverage.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

namespace quillo::AccessibilityAreaCoverage {
namespace {

constexpr std::ptrdiff_t gridSize = 48;  // cells along each side of the window
constexpr int explainedNeighbours = 3;   // cells around an element that count as its surroundings
constexpr double warnedShare = 0.4;

// Of these the frame says only that something is there. Without a text of their own they explain nothing.
constexpr std::array<std::string_view, 17> containerRoles = {
    "AXApplication", "AXWindow",     "AXGroup",   "AXUnknown",  "AXScrollArea",        "AXSplitGroup",
    "AXLayoutArea",  "AXLayoutItem", "AXWebArea", "AXDocument", "AXTabGroup",          "AXToolbar",
    "AXRadioGroup",  "AXDrawer",     "AXSheet",   "AXSplitter", "AXLandmarkNavigation"};

constexpr std::array<std::string_view, 2> ownTexts = {"AXFullText", "AXValue"};

bool isTrue(const AccessibilityAttributeValue* value) {
  const bool* flag = value == nullptr ? nullptr : std::get_if<bool>(value);
  return flag != nullptr && *flag;
}

bool explainsItsArea(const AccessibilityNode& node) {
  if (isTrue(node.attribute("AXHidden"))) return false;
  const bool isContainer = std::ranges::find(containerRoles, node.role) != containerRoles.end();
  return !isContainer || std::ranges::any_of(ownTexts, [&](std::string_view name) {
    const auto* value = node.attribute(name);
    return value != nullptr && std::holds_alternative<std::string>(*value);
  });
}

class Grid {
 public:
  explicit Grid(const ArtifactRect& window)
      : window_(window), isExplained_(static_cast<std::size_t>(gridSize * gridSize), false) {}

  void explain(const ArtifactRect& frame) {
    if (!frame.isFinite() || frame.width <= 0 || frame.height <= 0 || !frame.overlaps(window_)) return;
    const int left = cell(frame.minX() - window_.x, window_.width, explainedNeighbours);
    const int right = cell(frame.maxX() - window_.x, window_.width, -explainedNeighbours);
    const int top = cell(frame.minY() - window_.y, window_.height, explainedNeighbours);
    const int bottom = cell(frame.maxY() - window_.y, window_.height, -explainedNeighbours);
    for (std::ptrdiff_t row = top; row <= bottom; ++row) {
      const auto begin = isExplained_.begin() + row * gridSize;
      std::fill(begin + left, begin + right + 1, true);
    }
  }

  double unexplainedShare() const {
    return static_cast<double>(std::ranges::count(isExplained_, false)) / static_cast<double>(isExplained_.size());
  }

 private:
  static int cell(double offset, double extent, int margin) {
    const double position = std::clamp(std::floor(offset / extent * gridSize) - margin, 0.0, gridSize - 1.0);
    return static_cast<int>(position);
  }

  ArtifactRect window_;
  std::vector<bool> isExplained_;
};

bool exposesOnlyItsFrame(const AccessibilitySnapshot& snapshot) {
  // A limit or an error that kept the members away is told elsewhere.
  return snapshot.nodes.size() == 1 && snapshot.truncations.empty() &&
         std::ranges::none_of(snapshot.issues, [](const auto& issue) { return issue.nodeID == 0; });
}

}  // namespace

std::optional<double> unexplainedShare(const AccessibilitySnapshot& snapshot, const ArtifactRect& windowFrame) {
  // The root's own frame counts from the same origin as the frames of the elements.
  const ArtifactRect window = snapshot.nodes.empty() ? windowFrame : snapshot.nodes.front().frame.value_or(windowFrame);
  if (!window.isFinite() || window.width <= 0 || window.height <= 0) return std::nullopt;
  Grid grid(window);
  bool areFramesTold = false;
  for (const auto& node : snapshot.nodes) {
    areFramesTold = areFramesTold || (node.parentID && node.frame);
    if (node.frame && explainsItsArea(node)) grid.explain(*node.frame);
  }
  if (!areFramesTold) return std::nullopt;
  return grid.unexplainedShare();
}

std::optional<std::string> warning(const AccessibilitySnapshot& snapshot, const ArtifactRect& windowFrame) {
  if (exposesOnlyItsFrame(snapshot)) {
    return "The application exposes only the frame of this window, so that nothing inside it could be read. Some "
           "applications describe their windows only when accessibility was switched on before they started: restart "
           "the application and capture again.";
  }
  // What the limits cut would be counted as the application's silence.
  const bool wasCut = std::ranges::any_of(snapshot.truncations, [](const AccessibilityTruncation& truncation) {
    return truncation.reason == AccessibilityTruncationReason::nodeLimit ||
           truncation.reason == AccessibilityTruncationReason::depthLimit;
  });
  const auto share = unexplainedShare(snapshot, windowFrame);
  if (wasCut || !share || *share < warnedShare) return std::nullopt;
  return fmt::format(
      "No element explains about {:.0f}% of the window's area. What the application draws there, if anything, shows "
      "only in the screenshot.",
      *share * 100);
}

}  // namespace quillo::AccessibilityAreaCoverage
