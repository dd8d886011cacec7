#include "QuilloCore/Capture/AccessibilityStructureReader.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

namespace quillo {
namespace {

// No list is longer; a larger claim would only overflow the sums of what is left out.
constexpr std::int64_t largestCount = std::int64_t{1} << 40;

std::vector<std::string_view> advertisedStructure(const AdvertisedAttributeNames& advertised) {
  std::vector<std::string_view> attributes;
  for (const std::string_view name : AccessibilityCapturePolicy::structuralAttributes) {
    if (advertised.contains(name)) attributes.push_back(name);
  }
  return attributes;
}

}  // namespace

AccessibilityMembers AccessibilityStructureReader::children(AccessibilityElement element,
                                                            const AdvertisedAttributeNames& advertised,
                                                            std::int64_t maximumCount, std::int64_t nodeID) {
  return distinctMembers(element, advertisedStructure(advertised), maximumCount, nodeID);
}

std::int64_t AccessibilityStructureReader::childCount(AccessibilityElement element,
                                                      const AdvertisedAttributeNames& advertised, std::int64_t nodeID) {
  std::vector<std::string_view> attributes = advertisedStructure(advertised);
  std::int64_t count = 0;
  std::erase_if(attributes, [&](std::string_view attribute) {
    count = elementArray(element, attribute, 0, nodeID).omittedCount;
    return count == 0;
  });
  if (attributes.size() < 2) return attributes.empty() ? 0 : count;
  // Several attributes usually list the same members, so these have to be looked at.
  const auto [members, omitted] = distinctMembers(element, attributes, state_.configuration().maximumNodeCount, nodeID);
  return std::ssize(members) + omitted;
}

AccessibilityMembers AccessibilityStructureReader::distinctMembers(AccessibilityElement element,
                                                                   std::span<const std::string_view> attributes,
                                                                   std::int64_t maximumCount, std::int64_t nodeID) {
  AccessibilityMembers result;
  std::unordered_set<std::uint64_t> seen;
  for (const std::string_view attribute : attributes) {
    AccessibilityMembers found = elementArray(element, attribute, maximumCount, nodeID);
    result.omittedCount += found.omittedCount;
    for (const AccessibilityElement member : found.members) {
      if (seen.insert(member.token).second) result.members.push_back(member);
    }
  }
  return result;
}

AccessibilityMembers AccessibilityStructureReader::elementArray(AccessibilityElement element,
                                                                std::string_view attribute, std::int64_t maximumCount,
                                                                std::optional<std::int64_t> nodeID) {
  const auto count = session_.attributeValueCount(element, attribute);
  if (!count) return wholeArray(element, attribute, maximumCount, nodeID);

  const std::int64_t claimedCount = std::clamp<std::int64_t>(*count, 0, largestCount);
  const std::int64_t requestedCount = std::clamp<std::int64_t>(maximumCount, 0, claimedCount);
  AccessibilityMembers result;
  result.omittedCount = claimedCount - requestedCount;
  readPages(element, attribute, requestedCount, nodeID, result.members);
  return result;
}

AccessibilityMembers AccessibilityStructureReader::wholeArray(AccessibilityElement element, std::string_view attribute,
                                                              std::int64_t maximumCount,
                                                              std::optional<std::int64_t> nodeID) {
  auto value = session_.attributeValue(element, attribute);
  if (!value) {
    if (!meansAbsence(value.error())) {
      addStructuralWarning(errorCodeName(value.error()), "Could not read structural element count.", nodeID, attribute);
    }
    return {};
  }
  AccessibilityMembers result;
  if (auto* members = std::get_if<std::vector<AccessibilityElement>>(&*value)) {
    result.members = std::move(*members);
  } else if (const auto* member = std::get_if<AccessibilityElement>(&*value)) {
    result.members = {*member};
  } else {
    addStructuralWarning("AXUnexpectedStructuralValue",
                         "A structural accessibility attribute returned neither an element nor an element array.",
                         nodeID, attribute);
  }
  const std::int64_t count = std::ssize(result.members);
  const std::int64_t keptCount = std::clamp<std::int64_t>(maximumCount, 0, count);
  result.members.resize(static_cast<std::size_t>(keptCount));
  result.omittedCount = count - keptCount;
  return result;
}

void AccessibilityStructureReader::readPages(AccessibilityElement element, std::string_view attribute,
                                             std::int64_t count, std::optional<std::int64_t> nodeID,
                                             std::vector<AccessibilityElement>& members) {
  const std::int64_t pageSize = state_.configuration().childPageSize;
  for (std::int64_t index = 0; index < count; index += pageSize) {
    const std::int64_t requestedCount = std::min(pageSize, count - index);
    const auto page = session_.attributeValues(element, attribute, index, requestedCount);
    if (!page) {
      addStructuralWarning(errorCodeName(page.error()), "Could not read structural elements.", nodeID, attribute);
      return;
    }
    // A page that brings more than was asked for would repeat the next one.
    const std::size_t usableCount = std::min(page->size(), static_cast<std::size_t>(requestedCount));
    for (std::size_t i = 0; i < usableCount; ++i) {
      if (const auto* member = std::get_if<AccessibilityElement>(&(*page)[i])) {
        members.push_back(*member);
      } else {
        addStructuralWarning(
            "AXUnexpectedStructuralMember",
            "A structural accessibility array contained a value that was not an accessibility element.", nodeID,
            attribute);
      }
    }
  }
}

void AccessibilityStructureReader::addStructuralWarning(std::string_view code, std::string_view message,
                                                        std::optional<std::int64_t> nodeID,
                                                        std::string_view attribute) {
  state_.addIssue(
      {AccessibilityIssueSeverity::warning, std::string(code), std::string(message), nodeID, std::string(attribute)});
}

}  // namespace quillo
