#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

struct xcb_connection_t;

namespace quillo::test {

/// What a window of the test's own is made with.
struct TestWindowOptions {
  ArtifactRect bounds{.x = 100, .y = 100, .width = 300, .height = 200};
  std::string title = "Test window";
  std::string type{};          ///< _NET_WM_WINDOW_TYPE_…; none by default
  std::int64_t pid = -1;       ///< what it claims; this process by default, nothing for 0
  std::uint32_t pixel = 0;     ///< the colour that the display draws it in
  std::uint8_t depth = 0;      ///< the root's by default
  bool isUndecorated = false;  ///< asks the window manager for no frame
  bool isUnmanaged = false;    ///< stands on the desktop itself, without a window manager
  bool isUnpainted = false;    ///< has no colour: what nobody draws stays as it was
};

/// A window of this process on a connection of its own, drawn by the display in one colour.
class TestWindow {
 public:
  explicit TestWindow(const TestWindowOptions& options = {});
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;
  ~TestWindow();

  std::uint32_t id() const { return window_; }

  void setWords(const std::string& property, const std::string& type, const std::vector<std::uint32_t>& words);
  void setText(const std::string& property, const std::string& type, const std::string& text);
  void resize(std::uint32_t width, std::uint32_t height);
  void fill(const ArtifactRect& area, std::uint32_t pixel);
  void unmap();
  void destroy();

  /// Asks the window manager, as a pager does.
  void minimise();
  void moveToDesktop(std::uint32_t desktop);
  void activate();

 private:
  bool isManaged();
  std::uint32_t atom(const std::string& name);
  void ask(const std::string& message, const std::vector<std::uint32_t>& words);
  void sync();

  xcb_connection_t* connection_;
  std::uint32_t root_ = 0;
  std::uint32_t window_ = 0;
};

}  // namespace quillo::test
