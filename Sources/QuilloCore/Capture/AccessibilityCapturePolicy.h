#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// The names of the attributes that one element offers.
class AdvertisedAttributeNames {
 public:
  AdvertisedAttributeNames() = default;
  explicit AdvertisedAttributeNames(std::vector<std::string> names);

  bool contains(std::string_view name) const;

 private:
  std::vector<std::string> names_;  // ascending
};

/// Which attributes a capture reads.
namespace AccessibilityCapturePolicy {

/// Elements that are documents for text purposes.
inline constexpr std::array<std::string_view, 2> documentRoles = {"AXDocument", "AXWebArea"};

/// Where an element's members stand, in the order in which they are gathered.
inline constexpr std::array<std::string_view, 8> structuralAttributes = {
    "AXChildren", "AXContents", "AXRows",     "AXVisibleRows",
    "AXColumns",  "AXTabs",     "AXSections", "AXChildrenInNavigationOrder"};

/// In ascending order of their code units (capitals before small letters).
inline constexpr std::array<std::string_view, 45> usefulAttributeNames = {"AXARIABusy",
                                                                          "AXARIAColumnCount",
                                                                          "AXARIACurrent",
                                                                          "AXARIAPosInSet",
                                                                          "AXARIARowCount",
                                                                          "AXARIASetSize",
                                                                          "AXAccessKey",
                                                                          "AXChecked",
                                                                          "AXDOMClassList",
                                                                          "AXDOMIdentifier",
                                                                          "AXDescription",
                                                                          "AXDisclosureLevel",
                                                                          "AXDocument",
                                                                          "AXEdited",
                                                                          "AXEnabled",
                                                                          "AXExpanded",
                                                                          "AXFilename",
                                                                          "AXFocused",
                                                                          "AXHasPopup",
                                                                          "AXHeadingLevel",
                                                                          "AXHelp",
                                                                          "AXHidden",
                                                                          "AXIdentifier",
                                                                          "AXIndex",
                                                                          "AXInvalid",
                                                                          "AXIsOffscreen",
                                                                          "AXLabel",
                                                                          "AXModal",
                                                                          "AXNumberOfCharacters",
                                                                          "AXOffscreen",
                                                                          "AXOrientation",
                                                                          "AXPlaceholderValue",
                                                                          "AXRequired",
                                                                          "AXRoleDescription",
                                                                          "AXSelected",
                                                                          "AXSelectedText",
                                                                          "AXSelectedTextRange",
                                                                          "AXSortDirection",
                                                                          "AXTitle",
                                                                          "AXURL",
                                                                          "AXValue",
                                                                          "AXValueDescription",
                                                                          "AXVisible",
                                                                          "AXVisibleCharacterRange",
                                                                          "AXVisited"};

/// The only useful attributes that are read from an element with protected content.
inline constexpr std::array<std::string_view, 11> attributesSafeForProtectedElements = {
    "AXDisclosureLevel", "AXEnabled",     "AXExpanded", "AXFocused",  "AXHeadingLevel", "AXIndex",
    "AXModal",           "AXOrientation", "AXRequired", "AXSelected", "AXSortDirection"};

/// Read last, from every element, whether it advertises them or not.
inline constexpr std::array<std::string_view, 2> geometryAttributes = {"AXPosition", "AXSize"};

/// Left to the reading of whole texts, where there is one.
inline constexpr std::array<std::string_view, 2> deferredTextAttributes = {"AXValue", "AXSelectedText"};

bool isDocumentRole(std::string_view role);
bool isStructuralAttribute(std::string_view name);

/// Attributes that are one line by nature, whatever the application sends: a role description always, and the title of
/// a window.
bool isSingleLineAttribute(std::string_view name, std::string_view role);

/// The attributes to read from an element, in order.
std::vector<std::string_view> inspectionAttributeNames(const AdvertisedAttributeNames& advertised, bool isProtected,
                                                       bool isDocument, bool defersTextFallback);

/// Those of the deferred text attributes that the element advertises.
std::vector<std::string_view> deferredTextAttributeNames(const AdvertisedAttributeNames& advertised);

}  // namespace AccessibilityCapturePolicy
}  // namespace quillo
