#include "QuilloLinux/Accessibility/AtspiErrors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillo {

AccessibilityErrorCode accessibilityErrorOf(std::string_view dbusErrorName) {
  using enum AccessibilityErrorCode;
  static constexpr std::string_view prefix = "org.freedesktop.DBus.Error.";
  static constexpr auto table = std::to_array<std::pair<std::string_view, AccessibilityErrorCode>>({
      {"AccessDenied", apiDisabled},
      {"Disconnected", invalidUIElement},
      {"Failed", failure},
      {"InvalidArgs", illegalArgument},
      {"NameHasNoOwner", invalidUIElement},
      {"NoReply", cannotComplete},
      {"NotSupported", notImplemented},
      {"ServiceUnknown", invalidUIElement},
      {"TimedOut", cannotComplete},
      {"Timeout", cannotComplete},
      {"UnknownInterface", attributeUnsupported},
      {"UnknownMethod", attributeUnsupported},
      {"UnknownObject", invalidUIElement},
      {"UnknownProperty", attributeUnsupported},
  });
  if (!dbusErrorName.starts_with(prefix)) return failure;
  dbusErrorName.remove_prefix(prefix.size());
  const auto found =
      std::ranges::find(table, dbusErrorName, &std::pair<std::string_view, AccessibilityErrorCode>::first);
  return found == table.end() ? failure : found->second;
}

}  // namespace quillo
