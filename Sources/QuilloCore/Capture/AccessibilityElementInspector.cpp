#include "QuilloCore/Capture/AccessibilityElementInspector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <utility>

#include "QuilloCore/Capture/AccessibilityAttributeReading.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr std::array<std::string_view, 3> identityAttributes = {"AXRole", "AXSubrole", "AXContainsProtectedContent"};

std::optional<std::string> oneLine(const AccessibilityResult<AccessibilityValue>& value) {
  const auto* text = valueIf<std::string>(value);
  return text == nullptr ? std::nullopt : std::optional(bringingToOneLine(*text));
}

bool isUnreadable(const AccessibilityResult<AccessibilityValue>& value) {
  return !value && !meansAbsence(value.error());
}

const AccessibilityAttributeValue* find(const std::vector<AccessibilityAttribute>& attributes, std::string_view name) {
  const auto found = std::ranges::find(attributes, name, &AccessibilityAttribute::name);
  return found == attributes.end() ? nullptr : &found->value;
}

}  // namespace

AccessibilityElementInspection AccessibilityElementInspector::inspect(AccessibilityElement element, std::int64_t nodeID,
                                                                      bool inheritedProtection) {
  AccessibilityElementInspection inspection;
  if (auto names = session_.attributeNames(element)) {
    inspection.attributeNames = AdvertisedAttributeNames(std::move(*names));
  } else {
    state_.addWarning(names.error(), AccessibilityIssueMessages::couldNotListAttributes, nodeID, std::nullopt);
  }

  const AccessibilityValues identity = readAttributes(session_, state_, element, identityAttributes, nodeID);
  inspection.role = oneLine(identity[0]).value_or("AXUnknown");
  inspection.subrole = oneLine(identity[1]);
  const bool* containsProtectedContent = valueIf<bool>(identity[2]);
  inspection.isProtected = inheritedProtection || (containsProtectedContent != nullptr && *containsProtectedContent) ||
                           inspection.subrole == "AXSecureTextField";

  // Of an element that did not say whether it holds a password no text is asked for either.
  const bool isProtectionKnown = !isUnreadable(identity[1]) && !isUnreadable(identity[2]);
  if (!isProtectionKnown) state_.noteUnverifiedNode(nodeID);
  const bool readsText = !inspection.isProtected && isProtectionKnown;
  const bool isDocument = AccessibilityCapturePolicy::isDocumentRole(inspection.role);
  const bool defersTextFallback =
      readsText && !isDocument && inspection.attributeNames.contains("AXNumberOfCharacters");

  readAttributesInto(inspection, element, nodeID, readsText, defersTextFallback);
  if (defersTextFallback) readFullTextInto(inspection, element, nodeID);
  readActionsInto(inspection, element, nodeID);
  return inspection;
}

void AccessibilityElementInspector::readAttributesInto(AccessibilityElementInspection& inspection,
                                                       AccessibilityElement element, std::int64_t nodeID,
                                                       bool readsText, bool defersTextFallback) {
  const std::vector<std::string_view> names = AccessibilityCapturePolicy::inspectionAttributeNames(
      inspection.attributeNames, !readsText, AccessibilityCapturePolicy::isDocumentRole(inspection.role),
      defersTextFallback);
  AccessibilityValues values = readAttributes(session_, state_, element, names, nodeID);
  // The names end with the position and the size.
  inspection.frame = frameFrom(values[values.size() - 2], values.back());
  inspection.attributes.reserve(values.size() + 2);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values[i]) continue;
    if (auto value = convert(std::move(*values[i]), names[i], inspection, nodeID)) {
      inspection.attributes.push_back({std::string(names[i]), std::move(*value)});
    }
  }
}

void AccessibilityElementInspector::readFullTextInto(AccessibilityElementInspection& inspection,
                                                     AccessibilityElement element, std::int64_t nodeID) {
  const std::size_t issueCountBefore = state_.issues().size();
  if (storeFullText(inspection, element, nodeID)) return;

  const auto names = AccessibilityCapturePolicy::deferredTextAttributeNames(inspection.attributeNames);
  AccessibilityValues values = readAttributes(session_, state_, element, names, nodeID);
  std::optional<std::string_view> retained;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values[i]) continue;
    auto value = convert(std::move(*values[i]), names[i], inspection, nodeID);
    if (!value) continue;
    inspection.attributes.push_back({std::string(names[i]), std::move(*value)});
    if (!retained) retained = names[i];
  }
  if (retained) state_.replaceIncompleteTextReadIssues(issueCountBefore, nodeID, "AXStringForRange", *retained);
}

bool AccessibilityElementInspector::storeFullText(AccessibilityElementInspection& inspection,
                                                  AccessibilityElement element, std::int64_t nodeID) {
  const AccessibilityAttributeValue* count = find(inspection.attributes, "AXNumberOfCharacters");
  const std::int64_t* length = count == nullptr ? nullptr : std::get_if<std::int64_t>(count);
  if (length == nullptr || !textReader_.supportsStringForRange(element, nodeID)) return false;
  auto text = textReader_.copyFullText(element, *length, nodeID);
  if (!text) return false;
  auto kept = state_.store(std::move(*text), nodeID, "AXFullText");
  if (!kept) return false;
  inspection.attributes.push_back({"AXFullText", std::move(*kept)});
  return true;
}

void AccessibilityElementInspector::readActionsInto(AccessibilityElementInspection& inspection,
                                                    AccessibilityElement element, std::int64_t nodeID) {
  auto names = session_.actionNames(element);
  if (!names) {
    if (!meansAbsence(names.error())) {
      state_.addWarning(names.error(), "Could not list actions.", nodeID, std::nullopt);
    }
    return;
  }
  if (names->empty()) return;
  for (std::string& name : *names) name = bringingToOneLine(name);
  std::optional<AccessibilityAttributeValue> value =
      inspection.isProtected ? RedactedValue{} : storeStrings(std::move(*names), "AXActions", nodeID);
  if (value) inspection.attributes.push_back({"AXActions", std::move(*value)});
}

std::optional<AccessibilityAttributeValue> AccessibilityElementInspector::convert(
    AccessibilityValue value, std::string_view name, const AccessibilityElementInspection& inspection,
    std::int64_t nodeID) {
  using Converted = std::optional<AccessibilityAttributeValue>;
  return std::visit(
      [&](auto& payload) -> Converted {
        using Payload = std::remove_cvref_t<decltype(payload)>;
        if constexpr (std::is_same_v<Payload, std::string>) {
          if (inspection.isProtected) return RedactedValue{};
          const bool isTitleOfRoot = nodeID == 0 && name == "AXTitle";
          if (isTitleOfRoot || AccessibilityCapturePolicy::isSingleLineAttribute(name, inspection.role)) {
            payload = bringingToOneLine(payload);
          }
          auto kept = state_.store(std::move(payload), nodeID, name);
          return kept ? Converted(std::move(*kept)) : std::nullopt;
        } else if constexpr (std::is_same_v<Payload, std::vector<std::string>>) {
          if (inspection.isProtected) return RedactedValue{};
          return storeStrings(std::move(payload), name, nodeID);
        } else if constexpr (std::is_same_v<Payload, bool> || std::is_same_v<Payload, std::int64_t> ||
                             std::is_same_v<Payload, ArtifactTextRange>) {
          return payload;
        } else if constexpr (std::is_same_v<Payload, double>) {
          // What is not finite has no place in the formats that a capture is written in.
          return std::isfinite(payload) ? Converted(payload) : std::nullopt;
        } else if constexpr (std::is_same_v<Payload, ArtifactRect>) {
          return payload.isFinite() ? Converted(payload) : std::nullopt;
        } else if constexpr (std::is_same_v<Payload, ArtifactPoint>) {
          return std::isfinite(payload.x) && std::isfinite(payload.y) ? Converted(payload) : std::nullopt;
        } else if constexpr (std::is_same_v<Payload, ArtifactSize>) {
          return std::isfinite(payload.width) && std::isfinite(payload.height) ? Converted(payload) : std::nullopt;
        } else {
          return std::nullopt;
        }
      },
      value);
}

std::optional<AccessibilityAttributeValue> AccessibilityElementInspector::storeStrings(std::vector<std::string> texts,
                                                                                       std::string_view name,
                                                                                       std::int64_t nodeID) {
  std::vector<std::string> kept;
  kept.reserve(texts.size());
  for (std::string& text : texts) {
    if (auto stored = state_.store(std::move(text), nodeID, name)) kept.push_back(std::move(*stored));
  }
  if (kept.empty()) return std::nullopt;
  return kept;
}

}  // namespace quillo
