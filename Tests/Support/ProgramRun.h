#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace quillo::test {

/// What a program left behind.
struct ProgramRun {
  int exitStatus = -1;  ///< 128 and the signal's number when one ended it
  std::string output;
  std::string error;

  friend bool operator==(const ProgramRun&, const ProgramRun&) = default;
};

/// Runs a program to its end; `environment` is added to ours.
ProgramRun runProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::string& input = {},
                      const std::vector<std::pair<std::string, std::string>>& environment = {});

void PrintTo(const ProgramRun& run, std::ostream* stream);

}  // namespace quillo::test
