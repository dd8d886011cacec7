#pragma once

#include <cstdint>

namespace quillo {

/// The limits of one capture. The defaults are the application's own.
struct AccessibilityCaptureConfiguration {
  std::int64_t maximumNodeCount = 10'000;                ///< at least 1
  std::int64_t maximumDepth = 64;                        ///< at least 0; the root stands at 0
  std::int64_t maximumCharacterCount = 2'000'000;        ///< user-perceived characters of the whole capture
  std::int64_t maximumCharactersPerAttribute = 500'000;  ///< user-perceived characters of one value
  std::int64_t childPageSize = 256;                      ///< members asked for in one message, at least 1
  std::int64_t maximumIssueCount = 200;
  double messagingTimeout = 3.0;  ///< seconds that one call may take, 0.1 … 30
  double captureTimeout = 15.0;   ///< seconds that the capture may take, 0.1 … 120

  /// The same limits brought into their ranges: a messaging time-out that is no number becomes the smallest, a capture
  /// time-out that is not finite the default.
  AccessibilityCaptureConfiguration clamped() const;

  friend bool operator==(const AccessibilityCaptureConfiguration&, const AccessibilityCaptureConfiguration&) = default;
};

}  // namespace quillo
