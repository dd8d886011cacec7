#include "QuilloLinux/Windows/X11WindowImage.h"

#include <map>
#include <utility>

#include "QuilloLinux/Windows/X11WindowList.h"
#include "QuilloLinux/Windows/X11WindowPixels.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

X11WindowImage::X11WindowImage(ApplicationIdentityLookup lookup) : lookup_(std::move(lookup)) {}

X11WindowImage::~X11WindowImage() = default;

bool X11WindowImage::isAllowed() {
  const auto connection = X11Connection::open();
  return connection && X11WindowPixels::isOffered(*connection);
}

void X11WindowImage::prepare(std::uint32_t windowID) {
  auto pixels = X11WindowPixels::open(windowID);
  const std::scoped_lock guard(lock_);
  prepared_ = std::move(pixels);
}

std::vector<CapturedWindowMetadata> X11WindowImage::capturableWindows() {
  const std::vector<WindowListEntry> entries = X11WindowList().onScreenFrontToBack();
  const std::uint32_t active = X11RunningApplications::activeWindow();
  X11RunningApplications applications(lookup_);
  std::map<std::int32_t, std::optional<RunningApplication>> owners;
  std::vector<CapturedWindowMetadata> windows;
  for (const WindowListEntry& entry : entries) {
    auto [owner, isNew] = owners.try_emplace(entry.processIdentifier);
    if (isNew) owner->second = applications.application(entry.processIdentifier);
    CapturedWindowMetadata window;
    window.windowID = entry.windowID;
    window.processIdentifier = entry.processIdentifier;
    if (owner->second && owner->second->localizedName) window.applicationName = *owner->second->localizedName;
    if (owner->second) window.bundleIdentifier = owner->second->bundleIdentifier;
    window.title = entry.title.value_or("");
    window.frame = entry.bounds;
    window.isActive = entry.windowID == active;
    windows.push_back(std::move(window));
  }
  return windows;
}

std::optional<BitmapImage> X11WindowImage::image(std::uint32_t windowID) {
  std::unique_ptr<X11WindowPixels> pixels;
  {
    const std::scoped_lock guard(lock_);
    if (prepared_ && prepared_->windowID() == windowID) pixels = std::move(prepared_);
  }
  if (!pixels) pixels = X11WindowPixels::open(windowID);
  return pixels ? std::optional(pixels->read()) : std::nullopt;
}

}  // namespace quillo
