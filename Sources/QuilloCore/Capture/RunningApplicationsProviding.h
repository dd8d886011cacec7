#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillo {

struct RunningApplication {
  std::int32_t processIdentifier = 0;
  std::optional<std::string> localizedName;     ///< one line, as the desktop shows it
  std::optional<std::string> bundleIdentifier;  ///< the desktop entry's id, else the window class
  bool mayBeCaptured = true;                    ///< false for docks, desktops and other parts of the shell

  friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

/// The applications that show windows.
class RunningApplicationsProviding {
 public:
  virtual ~RunningApplicationsProviding() = default;

  /// The application whose window is active; nothing when none is.
  virtual std::optional<RunningApplication> frontmostApplication() = 0;

  /// Nothing when no such process shows a window.
  virtual std::optional<RunningApplication> application(std::int32_t processIdentifier) = 0;
};

}  // namespace quillo
