#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "RunningProgram.h"

namespace quillo::test {

/// The program's frontmost window, once it is on the screen; fails the test when none comes.
WindowCaptureTarget awaitWindow(const RunningProgram& program);

/// Reads the window through the accessibility bus in this process. Throws what the capture throws.
AccessibilitySnapshot readWindow(const WindowCaptureTarget& target, double timeout = 15);

/// Reads until the snapshot holds all the texts somewhere (applications draw before they answer, and the frames of a
/// page may come before the page); the last snapshot in any case.
AccessibilitySnapshot readWindowHolding(const RunningProgram& program, const std::vector<std::string>& texts);

/// The snapshot as JSON, where any captured text can be looked for.
std::string allTextOf(const AccessibilitySnapshot& snapshot);

/// The first node of that role (and, when given, with that title), or null.
const AccessibilityNode* findNode(const AccessibilitySnapshot& snapshot, const std::string& role,
                                  const std::optional<std::string>& title = std::nullopt);

/// A string attribute of a node; empty when there is none.
std::string textAttribute(const AccessibilityNode& node, const std::string& name);

/// An editor that shows the text, its window on the bus.
class Editor {
 public:
  explicit Editor(const std::string& text = "Dear reader", const std::string& file = "letter.txt");

  const RunningProgram& program() const { return program_; }
  std::uint32_t window() const { return window_; }

 private:
  RunningProgram program_;
  std::uint32_t window_;
};

}  // namespace quillo::test
