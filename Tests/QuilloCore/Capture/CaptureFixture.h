#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"
#include "Tests/Support/FakeAccessibilityInterface.h"
#include "Tests/Support/FixedWallClock.h"
#include "Tests/Support/SnapshotText.h"

namespace quillo::test {

/// A fake application whose window 7 is captured.
class CaptureTest : public testing::Test {
 protected:
  AccessibilitySnapshot capture() {
    const AccessibilityCaptureConfiguration clamped = limits.clamped();
    control = std::make_shared<AccessibilityCaptureControl>(clamped.captureTimeout, application.uptime());
    return captureAccessibilitySnapshot(application, wallClock, clamped, target, control);
  }

  /// Captures the window of the notation.
  AccessibilitySnapshot capture(std::string_view notation) {
    elements = application.addWindows(notation);
    return capture();
  }

  /// The error of a capture that must fail.
  std::string failure() {
    try {
      capture();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "no failure";
  }

  FakeAccessibilityInterface application;
  FixedWallClock wallClock;
  AccessibilityCaptureConfiguration limits;
  std::shared_ptr<AccessibilityCaptureControl> control;
  std::vector<AccessibilityElement> elements;  // in the order of the notation's lines
  WindowCaptureTarget target{.processIdentifier = FakeAccessibilityInterface::processIdentifier,
                             .applicationName = "Mail",
                             .bundleIdentifier = std::nullopt,
                             .windowID = 7,
                             .windowFrame = {0, 0, 400, 300},
                             .windowTitle = "Inbox",
                             .equivalentFrames = {}};
};

}  // namespace quillo::test
