#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"

#include <fmt/format.h>

#include <utility>

#include "QuilloCore/Support/NumberFormatting.h"

namespace quillo {
namespace {

using Error = WindowScreenshotCaptureError;

struct Describe {
  std::string operator()(const Error::InvalidProcessIdentifier& e) const {
    return fmt::format("The capture target has an invalid process identifier ({}).", e.processIdentifier);
  }
  std::string operator()(const Error::InvalidWindowIdentifier& e) const {
    return fmt::format("The capture target has an invalid window identifier ({}).", e.windowID);
  }
  std::string operator()(const Error::ShareableContentUnavailable& e) const {
    return "ScreenCaptureKit could not enumerate captureable windows: " + e.reason;
  }
  std::string operator()(const Error::ShareableContentTimedOut& e) const {
    return fmt::format("ScreenCaptureKit did not enumerate captureable windows within {} seconds.",
                       formatSeconds(e.seconds));
  }
  std::string operator()(const Error::NoSubstantialWindow& e) const {
    return e.applicationName ? fmt::format("No visible captureable window was found for {} (PID {}).",
                                           *e.applicationName, e.processIdentifier)
                             : fmt::format("No visible captureable window was found for PID {}.", e.processIdentifier);
  }
  std::string operator()(const Error::FrozenWindowUnavailable& e) const {
    return fmt::format("The frozen window {} for {} is no longer available to ScreenCaptureKit.", e.windowID,
                       e.applicationName.value_or(fmt::format("PID {}", e.processIdentifier)));
  }
  std::string operator()(const Error::ScreenshotFailed& e) const {
    return fmt::format("ScreenCaptureKit could not capture window {}: {}", e.windowID, e.reason);
  }
  std::string operator()(const Error::ScreenshotTimedOut& e) const {
    return fmt::format("ScreenCaptureKit did not capture window {} within {} seconds.", e.windowID,
                       formatSeconds(e.seconds));
  }
  std::string operator()(const Error::ScreenshotReturnedNoImage& e) const {
    return fmt::format("ScreenCaptureKit returned no image for window {}.", e.windowID);
  }
  std::string operator()(const Error::ScreenRecordingPermissionRequired& /*unused*/) const {
    return "Quillo needs Screen Recording permission before it can capture another app.";
  }
  std::string operator()(const Error::WindowListUnavailable& /*unused*/) const {
    return "The macOS window server did not return a list of visible windows.";
  }
  std::string operator()(const Error::PngDestinationCreationFailed& /*unused*/) const {
    return "Quillo could not create a PNG image destination.";
  }
  std::string operator()(const Error::PngEncodingFailed& /*unused*/) const {
    return "Quillo could not encode the captured window as PNG.";
  }
};

}  // namespace

WindowScreenshotCaptureError::WindowScreenshotCaptureError(Case value)
    : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

std::optional<std::string> WindowScreenshotCaptureError::recoverySuggestion() const {
  if (std::holds_alternative<NoSubstantialWindow>(value_) || std::holds_alternative<FrozenWindowUnavailable>(value_)) {
    return "Bring the window you want to capture to the front and try the capture shortcut again.";
  }
  if (std::holds_alternative<ScreenRecordingPermissionRequired>(value_)) {
    return "Enable Quillo in System Settings > Privacy & Security > Screen & System Audio Recording, then relaunch "
           "Quillo.";
  }
  return std::nullopt;
}

}  // namespace quillo
