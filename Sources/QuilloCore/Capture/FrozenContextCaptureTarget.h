#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Capture/RunningApplicationsProviding.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Capture/WindowListProviding.h"
#include "QuilloCore/Support/Date.h"

namespace quillo {

/// The window that the user was looking at at the moment of the shortcut. Later changes of the focus do not touch it.
struct FrozenContextCaptureTarget {
  std::int32_t processIdentifier = 0;
  std::string applicationName;
  std::optional<std::string> bundleIdentifier;
  std::uint32_t windowID = 0;
  ArtifactRect windowFrame;
  std::optional<std::string> windowTitle;
  Date frozenAt;
  std::vector<ArtifactRect> equivalentFrames;  ///< as in WindowCaptureTarget

  friend bool operator==(const FrozenContextCaptureTarget&, const FrozenContextCaptureTarget&) = default;
};

/// Freezes a window of the list. An application without a name is called "Application"; names are one line.
FrozenContextCaptureTarget freeze(const WindowListEntry& window, const RunningApplication& application, Date now);

WindowCaptureTarget makeWindowCaptureTarget(const FrozenContextCaptureTarget& target);

}  // namespace quillo
