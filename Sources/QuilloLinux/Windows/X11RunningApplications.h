#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "QuilloCore/Capture/RunningApplicationsProviding.h"

namespace quillo {

/// What the desktop calls an application, found by the class of its windows.
struct ApplicationIdentity {
  std::optional<std::string> localizedName;
  std::optional<std::string> bundleIdentifier;
};
using ApplicationIdentityLookup = std::function<ApplicationIdentity(const std::string& windowClass)>;

/// The applications that show windows on the display. A window's class stands in for what the desktop does not know.
class X11RunningApplications final : public RunningApplicationsProviding {
 public:
  explicit X11RunningApplications(ApplicationIdentityLookup lookup) : lookup_(std::move(lookup)) {}

  std::optional<RunningApplication> frontmostApplication() override;
  std::optional<RunningApplication> application(std::int32_t processIdentifier) override;

  /// The number of the active window; 0 when there is none.
  static std::uint32_t activeWindow();

 private:
  ApplicationIdentityLookup lookup_;
};

}  // namespace quillo
