#pragma once

#include <memory>
#include <mutex>

#include "QuilloCore/Capture/WindowImageCapturing.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"

namespace quillo {

class X11WindowPixels;

/// Pictures of single windows through the Composite extension, which gives a window pixels of its own, so that covering
/// windows are never in them, with or without a compositor.
class X11WindowImage final : public WindowImageCapturing {
 public:
  explicit X11WindowImage(ApplicationIdentityLookup lookup);
  ~X11WindowImage() override;

  bool isAllowed() override;
  void prepare(std::uint32_t windowID) override;
  std::vector<CapturedWindowMetadata> capturableWindows() override;
  std::optional<BitmapImage> image(std::uint32_t windowID) override;

 private:
  ApplicationIdentityLookup lookup_;
  std::mutex lock_;
  std::unique_ptr<X11WindowPixels> prepared_;
};

}  // namespace quillo
