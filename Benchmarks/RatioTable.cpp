#include "RatioTable.h"

#include <fmt/format.h>

#include <cstdio>

namespace quillo::bench {

bool RatioTable::ReportContext(const Context& /*context*/) {
  return true;
}

void RatioTable::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
    const double milliseconds = run.real_accumulated_time * 1e3 / static_cast<double>(run.iterations);
    const auto [entry, isNew] = milliseconds_.try_emplace(
        run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args), milliseconds);
    if (!isNew && milliseconds < entry->second) entry->second = milliseconds;
  }
}

void RatioTable::Finalize() {
  fmt::print("{:<44} {:>10} {:<34} {:>10} {:>7}  {}\n", "measured", "ms", "peer", "ms", "ratio", "promised");
  for (const Comparison& comparison : comparisons_) {
    const auto measured = milliseconds_.find(comparison.name);
    const auto peer = milliseconds_.find(comparison.peer);
    if (measured == milliseconds_.end() || peer == milliseconds_.end()) {
      fmt::print(stderr, "no such benchmark: {} or {}\n", comparison.name, comparison.peer);
      continue;
    }
    fmt::print("{:<44} {:>10.2f} {:<34} {:>10.2f} {:>7.2f}  {}\n", comparison.name, measured->second, comparison.peer,
               peer->second, measured->second / peer->second, comparison.limit);
  }
}

}  // namespace quillo::bench
