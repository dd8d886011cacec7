#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"

#include <algorithm>
#include <utility>

namespace quillo {

AdvertisedAttributeNames::AdvertisedAttributeNames(std::vector<std::string> names) : names_(std::move(names)) {
  if (!std::ranges::is_sorted(names_)) std::ranges::sort(names_);
}

bool AdvertisedAttributeNames::contains(std::string_view name) const {
  return std::ranges::binary_search(names_, name);
}

namespace AccessibilityCapturePolicy {

static_assert(std::ranges::is_sorted(usefulAttributeNames));
static_assert(std::ranges::is_sorted(attributesSafeForProtectedElements));

bool isDocumentRole(std::string_view role) {
  return std::ranges::count(documentRoles, role) > 0;
}

bool isStructuralAttribute(std::string_view name) {
  return std::ranges::count(structuralAttributes, name) > 0;
}

bool isSingleLineAttribute(std::string_view name, std::string_view role) {
  return name == "AXRoleDescription" || (name == "AXTitle" && role == "AXWindow");
}

std::vector<std::string_view> inspectionAttributeNames(const AdvertisedAttributeNames& advertised, bool isProtected,
                                                       bool isDocument, bool defersTextFallback) {
  std::vector<std::string_view> names;
  names.reserve(usefulAttributeNames.size() + geometryAttributes.size());
  for (const std::string_view name : usefulAttributeNames) {
    const bool isTextReadElsewhere =
        (isDocument || defersTextFallback) && std::ranges::count(deferredTextAttributes, name) > 0;
    const bool isWithheld = isProtected && !std::ranges::binary_search(attributesSafeForProtectedElements, name);
    if (!isTextReadElsewhere && !isWithheld && advertised.contains(name)) names.push_back(name);
  }
  names.insert(names.end(), geometryAttributes.begin(), geometryAttributes.end());
  return names;
}

std::vector<std::string_view> deferredTextAttributeNames(const AdvertisedAttributeNames& advertised) {
  std::vector<std::string_view> names;
  for (const std::string_view name : deferredTextAttributes) {
    if (advertised.contains(name)) names.push_back(name);
  }
  return names;
}

}  // namespace AccessibilityCapturePolicy
}  // namespace quillo
