#include "QuilloCore/Capture/AccessibilityWindowMatcher.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "QuilloCore/Capture/WindowTitle.h"

namespace quillo {
namespace {

using Candidate = AccessibilityWindowCandidate;
using Failure = AccessibilityWindowMatchFailure;
using Candidates = std::vector<const Candidate*>;

enum class TitleEvidence : std::uint8_t { exact, applicationDecoration };

struct Explain {
  std::string operator()(const Failure::SeveralClaimNumber& f) const {
    return fmt::format("Multiple Accessibility windows claimed WindowServer ID {}.", f.windowID);
  }
  std::string operator()(const Failure::NumbersExposed& f) const {
    return fmt::format("Accessibility exposed window IDs {}, but not frozen window {}.",
                       fmt::join(f.windowNumbers, ", "), f.windowID);
  }
  std::string operator()(const Failure::TitleDiffers& f) const {
    const std::string exposed =
        f.exposedTitles.empty() ? "no title" : fmt::format("{}", fmt::join(f.exposedTitles, ", "));
    return fmt::format("The frame-matched Accessibility window did not match frozen title \"{}\" (exposed: {}).",
                       f.frozenTitle, exposed);
  }
  std::string operator()(const Failure::SeveralMatchFrame& f) const {
    return fmt::format(
        "{} unnumbered Accessibility windows matched the frozen frame, so Quillo could not identify one safely.",
        f.count);
  }
  std::string operator()(const Failure::SeveralMatchDimensionsAndTitle& f) const {
    return fmt::format(
        "{} unnumbered Accessibility windows matched the frozen dimensions and title across coordinate spaces, so "
        "Quillo could not identify one safely.",
        f.count);
  }
  std::string operator()(const Failure::NoWindows& /*unused*/) const {
    return "The application exposed no Accessibility windows.";
  }
  std::string operator()(const Failure::NothingMatched& /*unused*/) const {
    return "No unnumbered Accessibility window matched the frozen frame or uniquely matched its dimensions and title "
           "across coordinate spaces.";
  }
};

std::string comparableTitle(const std::optional<std::string>& title) {
  return title ? WindowTitle::normalized(*title) : std::string();
}

std::optional<TitleEvidence> titleEvidence(const WindowCaptureTarget& target, const Candidate& candidate) {
  const std::string frozen = comparableTitle(target.windowTitle);
  const std::string exposed = comparableTitle(candidate.title);
  if (frozen.empty() || exposed.empty()) return std::nullopt;
  if (frozen == exposed) return TitleEvidence::exact;
  const std::string name = target.applicationName.value_or("");
  if (WindowTitle::isDecorated(frozen, exposed, name) || WindowTitle::isDecorated(exposed, frozen, name)) {
    return TitleEvidence::applicationDecoration;
  }
  return std::nullopt;
}

template <class Predicate>
bool anyFrame(const WindowCaptureTarget& target, Predicate predicate) {
  return predicate(target.windowFrame) || std::ranges::any_of(target.equivalentFrames, predicate);
}

bool matchesFrame(const WindowCaptureTarget& target, const Candidate& candidate) {
  return candidate.frame && anyFrame(target, [&](const ArtifactRect& frame) {
           return frame.agrees(*candidate.frame, AccessibilityWindowMatcher::frameTolerance);
         });
}

bool matchesDimensions(const WindowCaptureTarget& target, const Candidate& candidate) {
  return candidate.frame && anyFrame(target, [&](const ArtifactRect& frame) {
           constexpr double tolerance = AccessibilityWindowMatcher::frameTolerance;
           return std::abs(frame.width - candidate.frame->width) <= tolerance &&
                  std::abs(frame.height - candidate.frame->height) <= tolerance;
         });
}

template <class Predicate>
Candidates selecting(const Candidates& candidates, Predicate predicate) {
  Candidates selected;
  std::ranges::copy_if(candidates, std::back_inserter(selected), predicate);
  return selected;
}

std::string note(const WindowCaptureTarget& target, std::string_view missing, std::string_view means) {
  return fmt::format("The target window did not expose {}; Quillo matched frozen window {} using its {}.", missing,
                     target.windowID, means);
}

// The frame of exactly one window agrees: the titles decide.
std::expected<AccessibilityWindowMatch, Failure> matchByFrame(const WindowCaptureTarget& target,
                                                              const Candidate& candidate,
                                                              const Candidates& unnumbered) {
  if (const auto evidence = titleEvidence(target, candidate)) {
    return AccessibilityWindowMatch{
        candidate, note(target, "AXWindowNumber",
                        *evidence == TitleEvidence::exact ? "frame and title"
                                                          : "frame and an equivalent application-decorated title")};
  }
  if (comparableTitle(target.windowTitle).empty() || comparableTitle(candidate.title).empty()) {
    return AccessibilityWindowMatch{candidate,
                                    note(target, "AXWindowNumber or comparable title metadata", "unique frame")};
  }
  // A title may change between freezing and reading. But when another window bears the frozen title, the frozen window
  // has moved and this one stands in its place.
  if (std::ranges::none_of(unnumbered,
                           [&](const Candidate* other) { return titleEvidence(target, *other).has_value(); })) {
    return AccessibilityWindowMatch{
        candidate,
        note(target, "AXWindowNumber", "unique frame despite differing WindowServer and Accessibility titles")};
  }
  std::vector<std::string> exposedTitles;
  for (const Candidate* other : unnumbered) {
    if (!comparableTitle(other->title).empty()) exposedTitles.push_back(*other->title);
  }
  return std::unexpected<Failure>(Failure::TitleDiffers{*target.windowTitle, std::move(exposedTitles)});
}

}  // namespace

std::string AccessibilityWindowMatchFailure::explanation() const {
  return std::visit(Explain{}, value_);
}

std::expected<AccessibilityWindowMatch, AccessibilityWindowMatchFailure> AccessibilityWindowMatcher::match(
    const WindowCaptureTarget& target, std::span<const AccessibilityWindowCandidate> candidates) {
  if (candidates.empty()) return std::unexpected<Failure>(Failure::NoWindows{});

  Candidates all;
  for (const Candidate& candidate : candidates) all.push_back(&candidate);
  const Candidates claiming = selecting(all, [&](const Candidate* c) { return c->windowNumber == target.windowID; });
  if (claiming.size() == 1) return AccessibilityWindowMatch{*claiming.front(), std::nullopt};
  if (claiming.size() > 1) return std::unexpected<Failure>(Failure::SeveralClaimNumber{target.windowID});

  const Candidates unnumbered = selecting(all, [](const Candidate* c) { return !c->windowNumber; });
  if (unnumbered.empty()) {
    std::vector<std::uint32_t> numbers;
    for (const Candidate* candidate : all) numbers.push_back(*candidate->windowNumber);
    std::ranges::sort(numbers);
    return std::unexpected<Failure>(Failure::NumbersExposed{std::move(numbers), target.windowID});
  }

  const Candidates framed = selecting(unnumbered, [&](const Candidate* c) { return matchesFrame(target, *c); });
  if (framed.size() == 1) return matchByFrame(target, *framed.front(), unnumbered);
  if (framed.size() > 1) return std::unexpected<Failure>(Failure::SeveralMatchFrame{std::ssize(framed)});

  const Candidates translated = selecting(unnumbered, [&](const Candidate* c) {
    return matchesDimensions(target, *c) && titleEvidence(target, *c).has_value();
  });
  if (translated.size() == 1) {
    return AccessibilityWindowMatch{
        *translated.front(),
        note(target, "AXWindowNumber",
             "unique dimensions and equivalent title across translated Accessibility and WindowServer coordinate "
             "spaces")};
  }
  if (translated.size() > 1) {
    return std::unexpected<Failure>(Failure::SeveralMatchDimensionsAndTitle{std::ssize(translated)});
  }
  return std::unexpected<Failure>(Failure::NothingMatched{});
}

}  // namespace quillo
