#pragma once

#include <cstdint>
#include <string>

namespace quillo {

/// Why a call into another application gave no value. The numbers are those that captures and their texts name; an
/// adapter translates its platform's errors to them at the first line that they cross.
enum class AccessibilityErrorCode : std::int32_t {
  success = 0,
  failure = -25200,
  illegalArgument = -25201,
  invalidUIElement = -25202,
  invalidUIElementObserver = -25203,
  cannotComplete = -25204,
  attributeUnsupported = -25205,
  actionUnsupported = -25206,
  notificationUnsupported = -25207,
  notImplemented = -25208,
  notificationAlreadyRegistered = -25209,
  notificationNotRegistered = -25210,
  apiDisabled = -25211,
  noValue = -25212,
  parameterizedAttributeUnsupported = -25213,
  notEnoughPrecision = -25214,
};

/// "AXCannotComplete"; a number that is not listed is "AXError" and the number.
std::string errorCodeName(AccessibilityErrorCode code);

}  // namespace quillo
