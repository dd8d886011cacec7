#include "QuilloCore/Capture/AccessibilityAreaCoverage.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillo::AccessibilityAreaCoverage {
namespace {

constexpr std::ptrdiff_t gridSize = 48;            // cells along each side of the window
constexpr std::ptrdiff_t explainedNeighbours = 3;  // cells around an element that count as its surroundings
constexpr double warnedShare = 0.4;

// Of these the frame says only that something is there.
constexpr std::array<std::string_view, 17> containerRoles = {
    "AXApplication", "AXWindow",     "AXGroup",   "AXUnknown",  "AXScrollArea",        "AXSplitGroup",
    "AXLayoutArea",  "AXLayoutItem", "AXWebArea", "AXDocument", "AXTabGroup",          "AXToolbar",
    "AXRadioGroup",  "AXDrawer",     "AXSheet",   "AXSplitter", "AXLandmarkNavigation"};

// In these blank space behind the content is ordinary.
constexpr std::array<std::string_view, 3> flowingRoles = {"AXWebArea", "AXDocument", "AXScrollArea"};

constexpr std::array<std::string_view, 2> ownTexts = {"AXFullText", "AXValue"};

enum class Explanation : std::uint8_t {
  none,
  content,  // says what stands there and around it
  flow,     // says that what is blank there is blank
  hollow,   // a container without content: whatever is drawn there is not described
};

bool isTrue(const AccessibilityAttributeValue* value) {
  const bool* flag = value == nullptr ? nullptr : std::get_if<bool>(value);
  return flag != nullptr && *flag;
}

bool hasOwnText(const AccessibilityNode& node) {
  return std::ranges::any_of(ownTexts, [&](std::string_view name) {
    const auto* value = node.attribute(name);
    return value != nullptr && std::holds_alternative<std::string>(*value);
  });
}

Explanation explanationOf(const AccessibilityNode& node) {
  if (isTrue(node.attribute("AXHidden"))) return Explanation::none;
  const bool isContainer = std::ranges::count(containerRoles, node.role) > 0;
  if (!isContainer || hasOwnText(node)) return Explanation::content;
  if (node.childIDs.empty()) return Explanation::hollow;
  return std::ranges::count(flowingRoles, node.role) > 0 ? Explanation::flow : Explanation::none;
}

class Grid {
 public:
  explicit Grid(const ArtifactRect& window) : window_(window) {}

  void add(Explanation explanation, const ArtifactRect& frame) {
    if (explanation == Explanation::none) return;
    if (!frame.isFinite() || frame.width <= 0 || frame.height <= 0 || !frame.overlaps(window_)) return;
    const std::ptrdiff_t margin = explanation == Explanation::content ? explainedNeighbours : 0;
    const std::ptrdiff_t left = cell(frame.minX() - window_.x, window_.width, -margin);
    const std::ptrdiff_t right = cell(frame.maxX() - window_.x, window_.width, margin);
    const std::ptrdiff_t top = cell(frame.minY() - window_.y, window_.height, -margin);
    const std::ptrdiff_t bottom = cell(frame.maxY() - window_.y, window_.height, margin);
    const auto bit = static_cast<std::uint8_t>(1U << static_cast<unsigned>(explanation));
    for (std::ptrdiff_t row = top; row <= bottom; ++row) {
      for (std::ptrdiff_t column = left; column <= right; ++column) {
        cells_[static_cast<std::size_t>(row * gridSize + column)] |= bit;
      }
    }
  }

  double unexplainedShare() const {
    const auto count = std::ranges::count_if(cells_, [](std::uint8_t cell) {
      const auto has = [&](Explanation e) { return ((cell >> static_cast<unsigned>(e)) & 1U) != 0; };
      return !has(Explanation::content) && (has(Explanation::hollow) || !has(Explanation::flow));
    });
    return static_cast<double>(count) / static_cast<double>(cells_.size());
  }

 private:
  static std::ptrdiff_t cell(double offset, double extent, std::ptrdiff_t margin) {
    const double position = std::floor(offset / extent * static_cast<double>(gridSize)) + static_cast<double>(margin);
    return static_cast<std::ptrdiff_t>(std::clamp(position, 0.0, static_cast<double>(gridSize - 1)));
  }

  ArtifactRect window_;
  std::array<std::uint8_t, static_cast<std::size_t>(gridSize* gridSize)> cells_{};
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
    if (node.frame) grid.add(explanationOf(node), *node.frame);
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
