#include "QuilloCore/Capture/AccessibilityWindowIdentity.h"

#include <utility>

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {

AccessibilityWindowIdentity AccessibilityWindowIdentity::from(const AccessibilityValues& values) {
  AccessibilityWindowIdentity identity;
  if (values.size() != attributes.size()) return identity;
  const auto* number = valueIf<std::int64_t>(values[0]);
  if (number != nullptr && *number > 0 && std::in_range<std::uint32_t>(*number)) {
    identity.windowNumber = static_cast<std::uint32_t>(*number);
  }
  identity.frame = frameFrom(values[1], values[2]);
  if (const auto* title = valueIf<std::string>(values[3])) identity.title = bringingToOneLine(*title);
  return identity;
}

}  // namespace quillo
