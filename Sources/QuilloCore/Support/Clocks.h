#pragma once

#include <cstdint>
#include <functional>

#include "QuilloCore/Support/Date.h"

namespace quillo {

/// Nanoseconds of a monotonic clock since some fixed moment. Injected wherever time decides something, so that tests
/// advance it by hand.
using UptimeProvider = std::function<std::uint64_t()>;

/// The system's monotonic clock.
std::uint64_t systemUptimeNanoseconds();

/// Civil time, for what is shown and stored; never for deadlines.
class WallClock {
 public:
  virtual ~WallClock() = default;
  virtual Date now() = 0;
};

class SystemWallClock final : public WallClock {
 public:
  Date now() override;
};

}  // namespace quillo
