#pragma once

#include "QuilloCore/Support/Clocks.h"

namespace quillo::test {

/// A clock that stands still until a test sets it.
class FixedWallClock final : public WallClock {
 public:
  Date present = Date(std::chrono::seconds(1'700'000'000));
  Date now() override { return present; }
};

}  // namespace quillo::test
