#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuilloCore/Capture/PictureFingerprint.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// What the display said of the window whose pixels were taken, read apart from what the target was frozen with.
struct CapturedWindowMetadata {
  std::uint32_t windowID = 0;
  std::int32_t processIdentifier = 0;
  std::string applicationName = "Unknown Application";
  std::optional<std::string> bundleIdentifier;
  std::string title;   ///< empty when there is none
  ArtifactRect frame;  ///< screen points
  bool isActive = false;

  friend bool operator==(const CapturedWindowMetadata&, const CapturedWindowMetadata&) = default;
};

/// A window's picture.
struct WindowScreenshotCapture {
  std::string pngData;  ///< the bytes of a PNG file
  std::int64_t pixelWidth = 0;
  std::int64_t pixelHeight = 0;
  CapturedWindowMetadata window;
  PictureFingerprint fingerprint;  ///< of the picture's pixels

  friend bool operator==(const WindowScreenshotCapture&, const WindowScreenshotCapture&) = default;
};

}  // namespace quillo
