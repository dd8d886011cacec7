#pragma once

#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/WindowImageCapturing.h"
#include "Tests/Support/Gate.h"

namespace quillo::test {

/// A display with one window, that fails or waits on demand and records what it was asked.
struct FakeWindowImages final : WindowImageCapturing {
  explicit FakeWindowImages(CapturedWindowMetadata window) : windows{std::move(window)} {}

  bool allowed = true;
  std::vector<CapturedWindowMetadata> windows;
  std::optional<BitmapImage> picture = BitmapImage{.width = 2, .height = 1, .pixels = {1, 2, 3, 255, 4, 5, 6, 255}};
  std::string failsIn;
  std::string waitsIn;
  Gate waits;
  Gate mayGoOn;
  std::string calls;  ///< that several threads may make
  std::mutex lock;

  void enter(const std::string& name) {
    {
      const std::scoped_lock guard(lock);
      calls += name + " ";
    }
    if (waitsIn == name) {
      waits.open();
      mayGoOn.pass();
    }
    if (failsIn == name) throw std::runtime_error("the display is gone");
  }
  bool isAllowed() override {
    enter("allowed");
    return allowed;
  }
  void prepare(std::uint32_t /*windowID*/) override { enter("prepare"); }
  std::vector<CapturedWindowMetadata> capturableWindows() override {
    enter("list");
    return windows;
  }
  std::optional<BitmapImage> image(std::uint32_t /*windowID*/) override {
    enter("image");
    return picture;
  }
};

}  // namespace quillo::test
