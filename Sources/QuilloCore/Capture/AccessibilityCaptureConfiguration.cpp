#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"

#include <algorithm>
#include <cmath>

namespace quillo {

AccessibilityCaptureConfiguration AccessibilityCaptureConfiguration::clamped() const {
  constexpr double shortestTimeout = 0.1;
  constexpr double longestMessagingTimeout = 30.0;
  constexpr double longestCaptureTimeout = 120.0;
  const AccessibilityCaptureConfiguration defaults;

  AccessibilityCaptureConfiguration result = *this;
  result.maximumNodeCount = std::max<std::int64_t>(maximumNodeCount, 1);
  result.maximumDepth = std::max<std::int64_t>(maximumDepth, 0);
  result.maximumCharacterCount = std::max<std::int64_t>(maximumCharacterCount, 0);
  result.maximumCharactersPerAttribute = std::max<std::int64_t>(maximumCharactersPerAttribute, 0);
  result.childPageSize = std::max<std::int64_t>(childPageSize, 1);
  result.maximumIssueCount = std::max<std::int64_t>(maximumIssueCount, 0);
  result.messagingTimeout = std::isnan(messagingTimeout)
                                ? shortestTimeout
                                : std::clamp(messagingTimeout, shortestTimeout, longestMessagingTimeout);
  result.captureTimeout = std::isfinite(captureTimeout)
                              ? std::clamp(captureTimeout, shortestTimeout, longestCaptureTimeout)
                              : defaults.captureTimeout;
  return result;
}

}  // namespace quillo
