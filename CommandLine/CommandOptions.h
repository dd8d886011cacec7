#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace quillo {

struct SnapshotOptions {
  std::optional<std::uint32_t> windowNumber;
};

struct ObserveOptions {
  std::string input = "-";
  bool synthesizesApplicationRoot = true;
  bool infersActions = true;
};

struct RenderOptions {
  std::string input = "-";
};

struct DoctorOptions {};

/// What one call of the program is asked to do.
using CommandOptions = std::variant<SnapshotOptions, ObserveOptions, RenderOptions, DoctorOptions>;

/// What the parser made of the command line: something to do, or a text to print and the status to end with (help, the
/// version, a mistake).
struct ParsedCommandLine {
  std::optional<CommandOptions> command;
  std::string output;  ///< for standard output
  std::string error;   ///< for standard error
  int exitStatus = 0;
};

ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments);

}  // namespace quillo
