#include "QuilloCore/Capture/CheckpointingSession.h"

#include <type_traits>

namespace quillo {

template <class Call>
auto CheckpointingSession::between(Call call) {
  control_.checkpoint();
  if constexpr (std::is_void_v<decltype(call())>) {
    call();
    control_.checkpoint();
  } else {
    auto result = call();
    control_.checkpoint();
    return result;
  }
}

AccessibilityResult<AccessibilityElement> CheckpointingSession::applicationElement(std::int32_t processIdentifier) {
  return between([&] { return session_.applicationElement(processIdentifier); });
}

AccessibilityResult<std::int32_t> CheckpointingSession::processIdentifier(AccessibilityElement element) {
  return between([&] { return session_.processIdentifier(element); });
}

void CheckpointingSession::setMessagingTimeout(AccessibilityElement element, double seconds) {
  between([&] { session_.setMessagingTimeout(element, seconds); });
}

AccessibilityResult<std::vector<std::string>> CheckpointingSession::attributeNames(AccessibilityElement element) {
  return between([&] { return session_.attributeNames(element); });
}

AccessibilityResult<std::vector<AccessibilityResult<AccessibilityValue>>> CheckpointingSession::multipleAttributeValues(
    AccessibilityElement element, std::span<const std::string_view> names) {
  return between([&] { return session_.multipleAttributeValues(element, names); });
}

AccessibilityResult<AccessibilityValue> CheckpointingSession::attributeValue(AccessibilityElement element,
                                                                             std::string_view name) {
  return between([&] { return session_.attributeValue(element, name); });
}

AccessibilityResult<std::int64_t> CheckpointingSession::attributeValueCount(AccessibilityElement element,
                                                                            std::string_view name) {
  return between([&] { return session_.attributeValueCount(element, name); });
}

AccessibilityResult<std::vector<AccessibilityValue>> CheckpointingSession::attributeValues(AccessibilityElement element,
                                                                                           std::string_view name,
                                                                                           std::int64_t index,
                                                                                           std::int64_t maximumCount) {
  return between([&] { return session_.attributeValues(element, name, index, maximumCount); });
}

AccessibilityResult<std::vector<std::string>> CheckpointingSession::parameterizedAttributeNames(
    AccessibilityElement element) {
  return between([&] { return session_.parameterizedAttributeNames(element); });
}

AccessibilityResult<AccessibilityValue> CheckpointingSession::parameterizedAttributeValue(
    AccessibilityElement element, std::string_view name, const AccessibilityValue& parameter) {
  return between([&] { return session_.parameterizedAttributeValue(element, name, parameter); });
}

AccessibilityResult<std::vector<std::string>> CheckpointingSession::actionNames(AccessibilityElement element) {
  return between([&] { return session_.actionNames(element); });
}

void CheckpointingSession::willRead(std::span<const AccessibilityElement> upcoming) {
  between([&] { session_.willRead(upcoming); });
}

std::vector<std::string> CheckpointingSession::captureWarnings() {
  return between([&] { return session_.captureWarnings(); });
}

}  // namespace quillo
