#include "WindowReading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Windows/X11WindowList.h"

namespace quillo::test {

WindowCaptureTarget awaitWindow(const RunningProgram& program) {
  WindowCaptureTarget target;
  const bool isThere = eventually([&] {
    for (const WindowListEntry& entry : X11WindowList().onScreenFrontToBack()) {
      if (entry.processIdentifier != program.pid()) continue;
      target.processIdentifier = entry.processIdentifier;
      target.windowID = entry.windowID;
      target.windowFrame = entry.bounds;
      target.windowTitle = entry.title;
      target.equivalentFrames = entry.equivalentBounds;
      return true;
    }
    return false;
  });
  EXPECT_TRUE(isThere) << "the program shows no window";
  return target;
}

AccessibilitySnapshot readWindow(const WindowCaptureTarget& target, double timeout) {
  AtspiAccessibilityInterface accessibility;
  X11WindowList windowList;
  SystemWallClock wallClock;
  AccessibilityCaptureConfiguration configuration;
  configuration.captureTimeout = timeout;
  AccessibilityContextCapturer capturer(accessibility, windowList, wallClock, configuration);
  return capturer.captureSynchronously(target, std::make_shared<AccessibilityCaptureControl>(timeout));
}

AccessibilitySnapshot readWindowHolding(const RunningProgram& program, const std::vector<std::string>& texts) {
  AccessibilitySnapshot snapshot;
  std::string lastError;
  eventually([&] {
    try {
      snapshot = readWindow(awaitWindow(program));
      const std::string all = allTextOf(snapshot);
      return std::ranges::all_of(texts, [&](const std::string& text) { return all.find(text) != std::string::npos; });
    } catch (const std::exception& error) {
      lastError = error.what();
      return false;
    }
  });
  EXPECT_FALSE(snapshot.nodes.empty()) << lastError;
  return snapshot;
}

std::string allTextOf(const AccessibilitySnapshot& snapshot) {
  return encodeJson(snapshot, JsonStyle::compact);
}

std::string textAttribute(const AccessibilityNode& node, const std::string& name) {
  const AccessibilityAttributeValue* value = node.attribute(name);
  const auto* text = value == nullptr ? nullptr : std::get_if<std::string>(value);
  return text == nullptr ? "" : *text;
}

Editor::Editor(const std::string& text, const std::string& file) : program_({"mousepad", writeFile(file, text)}) {
  readWindowHolding(program_, {text});
  window_ = awaitWindow(program_).windowID;
}

const AccessibilityNode* findNode(const AccessibilitySnapshot& snapshot, const std::string& role,
                                  const std::optional<std::string>& title) {
  for (const AccessibilityNode& node : snapshot.nodes) {
    if (node.role == role && (!title || textAttribute(node, "AXTitle") == *title)) return &node;
  }
  return nullptr;
}

}  // namespace quillo::test
