#include "QuilloLinux/Accessibility/AtspiSession.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "QuilloCore/Support/Utf16.h"
#include "QuilloLinux/Accessibility/AtspiRegistry.h"
#include "QuilloLinux/Accessibility/AtspiWindowRecognition.h"

namespace quillo {
namespace {

std::vector<AccessibilityValue> elementPage(std::span<const AccessibilityElement> members, std::int64_t index,
                                            std::int64_t maximumCount) {
  const auto size = static_cast<std::int64_t>(members.size());
  const std::int64_t begin = std::clamp<std::int64_t>(index, 0, size);
  const std::int64_t end = std::clamp<std::int64_t>(begin + std::max<std::int64_t>(maximumCount, 0), begin, size);
  std::vector<AccessibilityValue> page;
  page.reserve(static_cast<std::size_t>(end - begin));
  for (std::int64_t i = begin; i < end; ++i) page.emplace_back(members[static_cast<std::size_t>(i)]);
  return page;
}

}  // namespace

AtspiSession::AtspiSession(std::shared_ptr<AtspiConnections> connections, const WindowCaptureTarget& target,
                           std::shared_ptr<const AccessibilityCaptureControl> control,
                           std::function<void(const AtspiStatistics&)> statisticsObserver)
    : statisticsObserver_(std::move(statisticsObserver)),
      connections_(std::move(connections)),
      bus_(connections_->borrow()),
      target_(target),
      control_(std::move(control)) {
  if (!bus_) return;
  reader_.emplace(*bus_, objects_, *control_);
  elements_.emplace(*bus_, objects_, *reader_, target_, *control_);
}

AtspiSession::~AtspiSession() {
  if (statisticsObserver_ && bus_) statisticsObserver_(bus_->statistics());
  application_.reset();
  elements_.reset();
  reader_.reset();
  connections_->giveBack(std::move(bus_));
}

AccessibilityResult<AccessibilityElement> AtspiSession::applicationElement(std::int32_t processIdentifier) {
  if (!bus_) return std::unexpected(AccessibilityErrorCode::apiDisabled);
  if (!application_) {
    auto roots = connections_->recentRoots(processIdentifier);
    if (!roots) {
      roots = rootsOfProcess(*bus_, *control_, processIdentifier);
      if (!roots->empty()) connections_->rememberRoots(processIdentifier, *roots);
    }
    if (!roots->empty()) application_.emplace(*bus_, objects_, *reader_, *control_, *roots);
  }
  if (!application_) return std::unexpected(AccessibilityErrorCode::invalidUIElement);
  return AccessibilityElement{application_->token()};
}

AccessibilityResult<std::int32_t> AtspiSession::processIdentifier(AccessibilityElement element) {
  if (!application_) return std::unexpected(AccessibilityErrorCode::invalidUIElement);
  if (AtspiElements::isMadeUp(element)) return target_.processIdentifier;
  // The bus's daemon knows the process behind the connection; of any other element it is enough that it is there.
  AccessibilityResult<std::int32_t> answer = std::unexpected(AccessibilityErrorCode::invalidUIElement);
  if (isApplication(element)) {
    bus_->call(makeProcessCall(objects_[element.token].busName,
                               [&](const AtspiReply& reply) {
                                 if (const auto process = reply.uint32()) answer = static_cast<std::int32_t>(*process);
                               }),
               *control_);
  } else {
    bus_->call({objects_[element.token],
                "org.a11y.atspi.Accessible",
                "GetRole",
                {},
                [&](const AtspiReply& reply) {
                  if (reply.isError()) {
                    answer = std::unexpected(reply.error());
                  } else {
                    answer = target_.processIdentifier;
                  }
                }},
               *control_);
  }
  return answer;
}

void AtspiSession::setMessagingTimeout(AccessibilityElement /*element*/, double seconds) {
  if (bus_) bus_->setTimeout(seconds);
}

bool AtspiSession::isApplication(AccessibilityElement element) const {
  return application_ && element.token == application_->token();
}

AccessibilityResult<const AtspiMappedElement*> AtspiSession::mapped(AccessibilityElement element) {
  if (!elements_) return std::unexpected(AccessibilityErrorCode::apiDisabled);
  return elements_->element(element);
}

AccessibilityResult<const std::vector<AccessibilityElement>*> AtspiSession::children(AccessibilityElement element) {
  if (!elements_) return std::unexpected(AccessibilityErrorCode::apiDisabled);
  return elements_->children(element);
}

AccessibilityResult<AccessibilityValue> AtspiSession::applicationValue(std::string_view name) {
  const auto elementOrNothing = [](std::optional<std::uint64_t> token) -> AccessibilityResult<AccessibilityValue> {
    if (!token) return std::unexpected(AccessibilityErrorCode::noValue);
    return AccessibilityElement{*token};
  };
  if (name == "AXFocusedWindow") return elementOrNothing(application_->focusedWindow());
  if (name == "AXFocusedUIElement")
    return elementOrNothing(application_->focusedElement(AtspiElements::readAheadCount));
  if (name == "AXMainWindow") {
    const auto& windows = application_->windows();
    return elementOrNothing(windows.empty() ? std::nullopt : std::optional(windows.front()));
  }
  std::vector<AccessibilityElement> windows;
  for (const std::uint64_t window : application_->windows()) windows.push_back({window});
  return windows;
}

AccessibilityResult<AccessibilityValue> AtspiSession::windowNumber(AccessibilityElement element) {
  if (!recognizedWindow_) {
    std::vector<AccessibilityWindowCandidate> candidates;
    const std::vector<std::uint64_t> windows = application_ ? application_->windows() : std::vector<std::uint64_t>{};
    for (const std::uint64_t window : windows) {
      auto& candidate = candidates.emplace_back();
      const auto found = elements_->element({window});
      if (!found) continue;
      candidate.frame = (*found)->frame();
      const auto* title = (*found)->attribute("AXTitle");
      if (title != nullptr) candidate.title = std::get<std::string>(*title);
    }
    const auto index = recognizeByTitle(candidates, target_);
    recognizedWindow_ = index.transform([&](std::size_t i) { return AccessibilityElement{windows[i]}; });
  }
  if (*recognizedWindow_ != element) return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  return static_cast<std::int64_t>(target_.windowID);
}

AccessibilityResult<std::vector<std::string>> AtspiSession::attributeNames(AccessibilityElement element) {
  const auto found = mapped(element);
  if (!found) return std::unexpected(found.error());
  std::vector<std::string> names;
  names.reserve((*found)->attributes.size() + 1);
  for (const auto& [name, value] : (*found)->attributes) names.push_back(name);
  names.emplace_back("AXChildren");
  return names;
}

AccessibilityResult<AccessibilityValue> AtspiSession::attributeValue(AccessibilityElement element,
                                                                     std::string_view name) {
  if (isApplication(element) &&
      (name == "AXFocusedWindow" || name == "AXMainWindow" || name == "AXWindows" || name == "AXFocusedUIElement")) {
    return applicationValue(name);
  }
  if (name == "AXWindowNumber") return windowNumber(element);
  if (name == "AXChildren") {
    const auto members = children(element);
    if (!members) return std::unexpected(members.error());
    return **members;
  }
  const auto found = mapped(element);
  if (!found) return std::unexpected(found.error());
  const AccessibilityValue* value = (*found)->attribute(name);
  if (value == nullptr) return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  return *value;
}

AccessibilityResult<std::vector<AccessibilityResult<AccessibilityValue>>> AtspiSession::multipleAttributeValues(
    AccessibilityElement element, std::span<const std::string_view> names) {
  std::vector<AccessibilityResult<AccessibilityValue>> values;
  values.reserve(names.size());
  for (const std::string_view name : names) values.push_back(attributeValue(element, name));
  return values;
}

AccessibilityResult<std::int64_t> AtspiSession::attributeValueCount(AccessibilityElement element,
                                                                    std::string_view name) {
  if (isApplication(element) && name == "AXWindows") return std::ssize(application_->windows());
  if (name != "AXChildren") return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  const auto members = children(element);
  if (!members) return std::unexpected(members.error());
  return std::ssize(**members);
}

AccessibilityResult<std::vector<AccessibilityValue>> AtspiSession::attributeValues(AccessibilityElement element,
                                                                                   std::string_view name,
                                                                                   std::int64_t index,
                                                                                   std::int64_t maximumCount) {
  if (isApplication(element) && name == "AXWindows") {
    const auto windows = std::get<std::vector<AccessibilityElement>>(*applicationValue(name));
    return elementPage(windows, index, maximumCount);
  }
  if (name != "AXChildren") return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  const auto members = children(element);
  if (!members) return std::unexpected(members.error());
  return elementPage(**members, index, maximumCount);
}

AccessibilityResult<std::vector<std::string>> AtspiSession::parameterizedAttributeNames(AccessibilityElement element) {
  const auto found = mapped(element);
  if (!found) return std::unexpected(found.error());
  return (*found)->fullText ? std::vector<std::string>{"AXStringForRange"} : std::vector<std::string>{};
}

AccessibilityResult<AccessibilityValue> AtspiSession::parameterizedAttributeValue(AccessibilityElement element,
                                                                                  std::string_view name,
                                                                                  const AccessibilityValue& parameter) {
  const auto found = mapped(element);
  if (!found) return std::unexpected(found.error());
  const auto& text = (*found)->fullText;
  if (!text || name != "AXStringForRange") {
    return std::unexpected(AccessibilityErrorCode::parameterizedAttributeUnsupported);
  }
  const auto* range = std::get_if<ArtifactTextRange>(&parameter);
  if (range == nullptr || range->location < 0 || range->length < 0) {
    return std::unexpected(AccessibilityErrorCode::illegalArgument);
  }
  const Utf16Index index(*text);
  return std::string(index.substring(range->location, range->location + range->length));
}

AccessibilityResult<std::vector<std::string>> AtspiSession::actionNames(AccessibilityElement element) {
  const auto found = mapped(element);
  if (!found) return std::unexpected(found.error());
  return (*found)->actions;
}

void AtspiSession::willRead(std::span<const AccessibilityElement> upcoming) {
  if (!reader_ || upcoming.empty()) return;
  if (!hasReadWindow_) {
    hasReadWindow_ = true;
    if (application_) application_->prepareTree();
    reader_->readTree(upcoming.front().token, AtspiElements::readAheadCount);
  }
  std::vector<std::uint64_t> tokens;
  for (const AccessibilityElement element : upcoming) {
    if (!AtspiElements::isMadeUp(element)) tokens.push_back(element.token);
  }
  reader_->read(tokens);
}

std::vector<std::string> AtspiSession::captureWarnings() {
  std::vector<std::string> warnings;
  if (recognizedWindow_ && *recognizedWindow_) {
    warnings.emplace_back(
        "Several windows of the application stand in the frozen window's place; it was recognised by its title.");
  }
  if (application_ && !application_->isTreeBuilt()) {
    warnings.emplace_back("The application had not built the elements of its page yet; capture it once more.");
  }
  if (elements_) std::ranges::move(elements_->warnings(), std::back_inserter(warnings));
  return warnings;
}

}  // namespace quillo
