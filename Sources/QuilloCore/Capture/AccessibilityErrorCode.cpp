#include "QuilloCore/Capture/AccessibilityErrorCode.h"

#include <fmt/format.h>

#include <utility>

namespace quillo {

std::string errorCodeName(AccessibilityErrorCode code) {
  switch (code) {
    case AccessibilityErrorCode::success: return "AXSuccess";
    case AccessibilityErrorCode::failure: return "AXFailure";
    case AccessibilityErrorCode::illegalArgument: return "AXIllegalArgument";
    case AccessibilityErrorCode::invalidUIElement: return "AXInvalidUIElement";
    case AccessibilityErrorCode::invalidUIElementObserver: return "AXInvalidUIElementObserver";
    case AccessibilityErrorCode::cannotComplete: return "AXCannotComplete";
    case AccessibilityErrorCode::attributeUnsupported: return "AXAttributeUnsupported";
    case AccessibilityErrorCode::actionUnsupported: return "AXActionUnsupported";
    case AccessibilityErrorCode::notificationUnsupported: return "AXNotificationUnsupported";
    case AccessibilityErrorCode::notImplemented: return "AXNotImplemented";
    case AccessibilityErrorCode::notificationAlreadyRegistered: return "AXNotificationAlreadyRegistered";
    case AccessibilityErrorCode::notificationNotRegistered: return "AXNotificationNotRegistered";
    case AccessibilityErrorCode::apiDisabled: return "AXAPIDisabled";
    case AccessibilityErrorCode::noValue: return "AXNoValue";
    case AccessibilityErrorCode::parameterizedAttributeUnsupported: return "AXParameterizedAttributeUnsupported";
    case AccessibilityErrorCode::notEnoughPrecision: return "AXNotEnoughPrecision";
  }
  return fmt::format("AXError{}", std::to_underlying(code));
}

}  // namespace quillo
