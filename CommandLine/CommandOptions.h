#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "QuilloCore/Clipboard/ClipboardComposition.h"

namespace quillo {

struct SnapshotOptions {
  std::optional<std::uint32_t> windowNumber;
};

struct CaptureOptions {
  std::optional<std::uint32_t> windowNumber;
  double delay = 0;  ///< seconds before the window is chosen
  bool printsText = false;
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

/// Starts the application, or opens its library when it runs.
struct AppOptions {
  bool runsInBackground = false;  ///< shows no window
};

struct ListOptions {
  bool printsJson = false;
};

struct ShowOptions {
  std::string artifact;
  bool printsJson = false;
};

struct TextOptions {
  std::string artifact;
};

struct CopyOptions {
  std::string artifact;
  ClipboardComposition composition = ClipboardComposition::singleItem;
  bool runsInBackground = false;
};

struct PasteOptions {
  std::string artifact;
  std::optional<std::int32_t> processIdentifier;  ///< the process that must have the focus; by default whichever has it
  double delay = 0;                               ///< seconds before the destination is chosen
};

struct EditOptions {
  std::string artifact;
  std::optional<std::string> title;
  std::optional<std::string> annotations;
};

struct TrashOptions {
  std::vector<std::string> artifacts;
};

struct CheckOptions {
  std::vector<std::string> artifacts;  ///< all when empty
};

struct EvidenceOptions {
  enum class Direction : std::uint8_t { encode, decode };

  Direction direction = Direction::encode;
  std::string input = "-";
};

/// What one call of the program is asked to do.
using CommandOptions = std::variant<AppOptions, SnapshotOptions, CaptureOptions, ObserveOptions, RenderOptions,
                                    DoctorOptions, ListOptions, ShowOptions, TextOptions, CopyOptions, EditOptions,
                                    TrashOptions, CheckOptions, EvidenceOptions, PasteOptions>;

/// What the parser made of the command line: something to do, or a text to print and the status to end with (help, the
/// version, a mistake).
struct ParsedCommandLine {
  std::optional<CommandOptions> command;
  std::optional<std::string> library;  ///< the directory that the user has named
  std::string output;                  ///< for standard output
  std::string error;                   ///< for standard error
  int exitStatus = 0;
};

ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments);

}  // namespace quillo
