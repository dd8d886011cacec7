#include "QuilloCore/Capture/FrontmostWindowSelector.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "QuilloCore/Capture/WindowIdentityCorrelation.h"

namespace quillo::FrontmostWindowSelector {
namespace {

constexpr double faintestAlpha = 0.01;
constexpr double shortestSide = 24;
constexpr double smallestArea = 576;
constexpr double substantialWidth = 96;
constexpr double substantialHeight = 64;
constexpr double substantialArea = 10'000;
constexpr double frameTolerance = 2.0;

using Entries = std::vector<const WindowListEntry*>;

double area(const WindowListEntry& entry) {
  return entry.bounds.width * entry.bounds.height;
}

bool isCaptureable(const WindowListEntry& entry) {
  return entry.layer == 0 && entry.isOnScreen && entry.sharingState != WindowSharingState::none &&
         entry.alpha > faintestAlpha && entry.bounds.isFinite() && entry.bounds.width >= shortestSide &&
         entry.bounds.height >= shortestSide && area(entry) >= smallestArea;
}

bool isSubstantial(const WindowListEntry& entry) {
  return entry.bounds.width >= substantialWidth && entry.bounds.height >= substantialHeight &&
         area(entry) >= substantialArea;
}

template <class Predicate>
bool anyFrame(const WindowListEntry& entry, Predicate predicate) {
  return predicate(entry.bounds) || std::ranges::any_of(entry.equivalentBounds, predicate);
}

bool agreesWithFrame(const WindowListEntry& entry, const ArtifactRect& frame) {
  return anyFrame(entry, [&](const ArtifactRect& bounds) { return bounds.agrees(frame, frameTolerance); });
}

bool agreesWithDimensions(const WindowListEntry& entry, const ArtifactRect& frame) {
  return anyFrame(entry, [&](const ArtifactRect& bounds) {
    return std::abs(bounds.width - frame.width) <= frameTolerance &&
           std::abs(bounds.height - frame.height) <= frameTolerance;
  });
}

template <class Predicate>
const WindowListEntry* first(const Entries& entries, Predicate predicate) {
  const auto found = std::ranges::find_if(entries, predicate);
  return found == entries.end() ? nullptr : *found;
}

template <class Predicate>
const WindowListEntry* only(const Entries& entries, Predicate predicate) {
  return std::ranges::count_if(entries, predicate) == 1 ? first(entries, predicate) : nullptr;
}

const WindowListEntry* hinted(const Entries& entries, const FocusedAccessibilityWindowHint& hint) {
  if (hint.windowNumber) {
    const auto* entry = first(entries, [&](const auto* e) { return e->windowID == *hint.windowNumber; });
    if (entry != nullptr) return entry;
  }
  if (!hint.frame) return nullptr;
  const auto hasFrame = [&](const WindowListEntry* e) { return agreesWithFrame(*e, *hint.frame); };
  const auto hasTitle = [&](const WindowListEntry* e) {
    return WindowIdentityCorrelation::titlesCorrelate(e->title, hint.title);
  };
  const auto* entry = first(entries, [&](const auto* e) { return hasFrame(e) && hasTitle(e); });
  if (entry == nullptr) entry = only(entries, hasFrame);
  if (entry == nullptr) {
    entry = only(entries, [&](const auto* e) { return agreesWithDimensions(*e, *hint.frame) && hasTitle(e); });
  }
  return entry;
}

}  // namespace

bool isFreezable(const WindowListEntry& entry) {
  return isCaptureable(entry) && area(entry) >= substantialArea;
}

std::optional<WindowListEntry> selectFrozenWindow(std::span<const WindowListEntry> entries,
                                                  std::int32_t processIdentifier) {
  const auto found = std::ranges::find_if(entries, [&](const WindowListEntry& entry) {
    return entry.processIdentifier == processIdentifier && isFreezable(entry);
  });
  return found == entries.end() ? std::nullopt : std::optional(*found);
}

std::optional<WindowListEntry> selectCaptureableWindow(std::span<const WindowListEntry> entries,
                                                       std::int32_t processIdentifier,
                                                       const std::optional<FocusedAccessibilityWindowHint>& hint) {
  Entries candidates;
  for (const WindowListEntry& entry : entries) {
    if (entry.processIdentifier == processIdentifier && isCaptureable(entry)) candidates.push_back(&entry);
  }
  const WindowListEntry* chosen = hint && hint->isUsable() ? hinted(candidates, *hint) : nullptr;
  if (chosen == nullptr) chosen = first(candidates, [](const auto* e) { return isSubstantial(*e); });
  if (chosen == nullptr && !candidates.empty()) chosen = candidates.front();
  return chosen == nullptr ? std::nullopt : std::optional(*chosen);
}

}  // namespace quillo::FrontmostWindowSelector
