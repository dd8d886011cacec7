#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// One window as the application describes it.
struct AccessibilityWindowCandidate {
  std::int64_t index = 0;  ///< position in the application's list
  std::optional<std::uint32_t> windowNumber;
  std::optional<ArtifactRect> frame;
  std::optional<std::string> title;

  friend bool operator==(const AccessibilityWindowCandidate&, const AccessibilityWindowCandidate&) = default;
};

struct AccessibilityWindowMatch {
  AccessibilityWindowCandidate candidate;
  std::optional<std::string> note;  ///< how the window was recognised, when not by its number

  friend bool operator==(const AccessibilityWindowMatch&, const AccessibilityWindowMatch&) = default;
};

/// Why no window could be chosen safely.
class AccessibilityWindowMatchFailure {
 public:
  struct SeveralClaimNumber {
    std::uint32_t windowID = 0;
    friend bool operator==(const SeveralClaimNumber&, const SeveralClaimNumber&) = default;
  };
  struct NumbersExposed {
    std::vector<std::uint32_t> windowNumbers;  ///< ascending
    std::uint32_t windowID = 0;
    friend bool operator==(const NumbersExposed&, const NumbersExposed&) = default;
  };
  struct TitleDiffers {
    std::string frozenTitle;
    std::vector<std::string> exposedTitles;
    friend bool operator==(const TitleDiffers&, const TitleDiffers&) = default;
  };
  struct SeveralMatchFrame {
    std::int64_t count = 0;
    friend bool operator==(const SeveralMatchFrame&, const SeveralMatchFrame&) = default;
  };
  struct SeveralMatchDimensionsAndTitle {
    std::int64_t count = 0;
    friend bool operator==(const SeveralMatchDimensionsAndTitle&, const SeveralMatchDimensionsAndTitle&) = default;
  };
  struct NoWindows {
    friend bool operator==(const NoWindows&, const NoWindows&) = default;
  };
  struct NothingMatched {
    friend bool operator==(const NothingMatched&, const NothingMatched&) = default;
  };
  using Case = std::variant<SeveralClaimNumber, NumbersExposed, TitleDiffers, SeveralMatchFrame,
                            SeveralMatchDimensionsAndTitle, NoWindows, NothingMatched>;

  // Not explicit: a failure is returned by naming its case.
  AccessibilityWindowMatchFailure(Case value)  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)
      : value_(std::move(value)) {}

  const Case& value() const { return value_; }
  std::string explanation() const;

  friend bool operator==(const AccessibilityWindowMatchFailure&, const AccessibilityWindowMatchFailure&) = default;

 private:
  Case value_;
};

/// Finds the frozen window among the application's windows.
namespace AccessibilityWindowMatcher {

/// How far apart, in points, two descriptions of one coordinate may be.
inline constexpr double frameTolerance = 2.0;

std::expected<AccessibilityWindowMatch, AccessibilityWindowMatchFailure> match(
    const WindowCaptureTarget& target, std::span<const AccessibilityWindowCandidate> candidates);

}  // namespace AccessibilityWindowMatcher
}  // namespace quillo
