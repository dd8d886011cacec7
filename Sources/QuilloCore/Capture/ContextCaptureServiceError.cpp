#include "QuilloCore/Capture/ContextCaptureServiceError.h"

#include <fmt/format.h>

#include <utility>

#include "QuilloCore/Support/NumberFormatting.h"

namespace quillo {
namespace {

using Error = ContextCaptureServiceError;

std::string joinedNames(const ContextCapturePermissionState& state) {
  std::string names;
  for (const auto permission : state.missingPermissions()) {
    if (!names.empty()) names += " and ";
    names += displayName(permission);
  }
  return names;
}

struct Describe {
  std::string operator()(const Error::InvalidFrozenTarget& e) const {
    return fmt::format("The frozen capture target has an invalid process identifier ({}).", e.processIdentifier);
  }
  std::string operator()(const Error::InvalidFrozenWindow& e) const {
    return fmt::format("The frozen capture target has an invalid window identifier ({}).", e.windowID);
  }
  std::string operator()(const Error::PermissionsRequired& e) const {
    return fmt::format("Quillo needs {} permission before capturing.", joinedNames(e.state));
  }
  std::string operator()(const Error::Screenshot& e) const { return e.error.errorDescription(); }
  std::string operator()(const Error::Accessibility& e) const { return e.error.errorDescription(); }
  std::string operator()(const Error::ScreenshotWindowMismatch& e) const {
    return fmt::format("Window capture returned window {} from PID {}, not frozen window {} from PID {}.",
                       e.actualWindowID, e.actualProcessIdentifier, e.expectedWindowID, e.expectedProcessIdentifier);
  }
  std::string operator()(const Error::ScreenshotFailure& e) const { return "Window capture failed: " + e.reason; }
  std::string operator()(const Error::AccessibilityFailure& e) const {
    return "Accessibility capture failed: " + e.reason;
  }
  std::string operator()(const Error::ScreenshotTimedOut& e) const {
    return fmt::format("Window capture exceeded its {}-second safety deadline.", formatSeconds(e.seconds));
  }
  std::string operator()(const Error::AccessibilityTimedOut& e) const {
    return fmt::format("Accessibility capture exceeded its {}-second safety deadline.", formatSeconds(e.seconds));
  }
  std::string operator()(const Error::NoFrontmostNonQuilloApplication& /*unused*/) const {
    return "Quillo could not find a frontmost application window to capture.";
  }
};

std::optional<std::string> suggestionFor(const ContextCapturePermissionState& state) {
  if (state.isReady()) return std::nullopt;
  if (state.accessibilityGranted) {
    return WindowScreenshotCaptureError(WindowScreenshotCaptureError::ScreenRecordingPermissionRequired{})
        .recoverySuggestion();
  }
  if (state.screenRecordingGranted) {
    return "Enable Quillo in System Settings > Privacy & Security > Accessibility.";
  }
  return "Enable Quillo in Screen & System Audio Recording and Accessibility under System Settings > Privacy & "
         "Security, then relaunch Quillo.";
}

}  // namespace

ContextCaptureServiceError::ContextCaptureServiceError(Case value)
    : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

std::optional<std::string> ContextCaptureServiceError::recoverySuggestion() const {
  if (const auto* required = std::get_if<PermissionsRequired>(&value_)) return suggestionFor(required->state);
  if (const auto* screenshot = std::get_if<Screenshot>(&value_)) return screenshot->error.recoverySuggestion();
  return std::nullopt;
}

}  // namespace quillo
