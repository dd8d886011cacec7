#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"

#include <memory>
#include <utility>

#include "QuilloCore/Capture/AccessibilityWindowIdentity.h"

namespace quillo {

FocusedAccessibilityWindowHintReader::FocusedAccessibilityWindowHintReader(AccessibilityInterface& interface,
                                                                           UptimeProvider uptimeProvider)
    : interface_(interface), uptimeProvider_(std::move(uptimeProvider)) {}

std::optional<FocusedAccessibilityWindowHint> FocusedAccessibilityWindowHintReader::read(
    std::int32_t processIdentifier) {
  if (processIdentifier < 1 || !interface_.isProcessTrusted(AccessibilityTrustPrompt::silent)) return std::nullopt;
  const auto control = std::make_shared<AccessibilityCaptureControl>(readingTimeout, uptimeProvider_);
  WindowCaptureTarget target;
  target.processIdentifier = processIdentifier;
  const auto session = interface_.makeSession(target, control);

  const auto application = session->applicationElement(processIdentifier);
  if (!application || control->stopReason()) return std::nullopt;
  session->setMessagingTimeout(*application, messagingTimeout);
  const auto focused = session->attributeValue(*application, "AXFocusedWindow");
  const auto* window = valueIf<AccessibilityElement>(focused);
  if (window == nullptr || control->stopReason()) return std::nullopt;
  session->setMessagingTimeout(*window, messagingTimeout);
  const auto values = session->multipleAttributeValues(*window, AccessibilityWindowIdentity::attributes);
  if (!values || control->stopReason()) return std::nullopt;
  return AccessibilityWindowIdentity::from(*values);
}

}  // namespace quillo
