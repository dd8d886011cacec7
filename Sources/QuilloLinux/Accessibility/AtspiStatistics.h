#pragma once

#include <cstddef>

namespace quillo {

/// What was asked of the target, for those who watch that it stays cheap.
struct AtspiStatistics {
  std::size_t callCount = 0;
  std::size_t largestInFlight = 0;
};

}  // namespace quillo
