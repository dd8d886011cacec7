#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace quillo::bench {

/// One line of a printed table: how long `name` takes, as a multiple of its peer of the same run.
struct Comparison {
  std::string name;
  std::string peer;
  std::string limit;  ///< what is promised, in words; empty when nothing is
};

/// Runs every registered benchmark and prints the comparisons, each with its milliseconds and its ratio.
class RatioTable : public benchmark::BenchmarkReporter {
 public:
  explicit RatioTable(std::vector<Comparison> comparisons) : comparisons_(std::move(comparisons)) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::vector<Comparison> comparisons_;
  std::map<std::string, double> milliseconds_;  // the smallest of each benchmark's runs
};

}  // namespace quillo::bench
