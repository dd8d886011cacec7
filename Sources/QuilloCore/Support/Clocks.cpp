#include "QuilloCore/Support/Clocks.h"

#include <chrono>

namespace quillo {

std::uint64_t systemUptimeNanoseconds() {
  const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(sinceStart).count());
}

Date SystemWallClock::now() {
  return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

}  // namespace quillo
