#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "QuilloCore/Capture/AccessibilityAttributeValue.h"
#include "QuilloCore/Semantics/InterfaceSemanticRole.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/RareOptional.h"
#include "QuilloCore/Support/RareRecord.h"

namespace quillo {

enum class InterfaceVisibility : std::uint8_t { visible, offscreen, hidden, unknown };

enum class InterfaceCheckState : std::uint8_t { off, on, mixed };

enum class InterfaceActionSource : std::uint8_t {
  accessibility,  ///< the application listed the action
  inferred,       ///< follows from the role
};

enum class InterfaceIdentifierKind : std::uint8_t { accessibility, dom, accessKey };

struct InterfaceAction {
  std::string name;
  InterfaceActionSource source = InterfaceActionSource::accessibility;

  friend bool operator==(const InterfaceAction&, const InterfaceAction&) = default;
};

/// A name that developers gave the element.
struct InterfaceIdentifier {
  InterfaceIdentifierKind kind = InterfaceIdentifierKind::accessibility;
  std::string value;

  friend bool operator==(const InterfaceIdentifier&, const InterfaceIdentifier&) = default;
};

/// The states that an element can change between; an absent one was not exposed by the application.
struct InterfaceElementState {
  std::optional<bool> enabled;
  std::optional<bool> focused;
  std::optional<bool> selected;
  std::optional<bool> expanded;
  std::optional<InterfaceCheckState> checked;
  std::optional<bool> required;
  std::optional<bool> modal;
  std::optional<bool> visited;
  std::optional<bool> busy;
  std::optional<bool> invalid;
  std::optional<bool> edited;

  bool isEmpty() const { return *this == InterfaceElementState{}; }

  friend bool operator==(const InterfaceElementState&, const InterfaceElementState&) = default;
};

/// What describes an element and does not change while it is used.
struct InterfaceElementProperties {
  RareOptional<std::string> roleDescription;
  RareOptional<std::string> valueDescription;
  std::optional<std::int64_t> headingLevel;
  std::optional<std::int64_t> disclosureLevel;
  std::optional<std::int64_t> index;
  RareOptional<std::string> orientation;
  RareOptional<std::string> current;
  RareOptional<std::string> hasPopup;
  RareOptional<std::string> url;
  RareOptional<std::string> document;
  RareOptional<std::string> filename;
  std::vector<std::string> domClasses;
  std::optional<std::int64_t> positionInSet;
  std::optional<std::int64_t> setSize;
  std::optional<std::int64_t> rowCount;
  std::optional<std::int64_t> columnCount;
  RareOptional<std::string> selectedText;
  std::optional<ArtifactTextRange> selectedTextRange;  ///< UTF-16 code units
  std::optional<ArtifactTextRange> visibleTextRange;   ///< UTF-16 code units
  RareOptional<std::vector<std::string>> columnHeaders;
  RareOptional<std::vector<std::string>> rowValues;  ///< cell texts of a table row, in column order

  bool isEmpty() const { return *this == InterfaceElementProperties{}; }

  friend bool operator==(const InterfaceElementProperties&, const InterfaceElementProperties&) = default;
};

/// One element of a captured interface. There are tens of thousands: what every pass looks at stands together, and what
/// few elements have takes little room in the others.
struct InterfaceElement {
  std::string id;  ///< "element-17", or "application-root" for the synthetic root
  InterfaceSemanticRole role = InterfaceSemanticRole::unknown;
  InterfaceVisibility visibility = InterfaceVisibility::unknown;
  bool isProtected = false;  ///< its text is not carried
  InterfaceElementState state;
  std::optional<std::int64_t> sourceNodeID;  ///< absent for the synthetic root
  std::optional<std::string> parentID;       ///< absent only on the root
  std::vector<std::string> childIDs;         ///< in source order
  std::int64_t depth = 0;
  std::string accessibilityRole;
  RareOptional<std::string> accessibilitySubrole;
  std::optional<std::string> label;
  std::optional<AccessibilityAttributeValue> value;
  RareOptional<std::string> content;  ///< complete text of a document or an editor
  RareOptional<std::string> description;
  RareOptional<std::string> help;
  RareOptional<std::string> placeholder;
  std::vector<InterfaceAction> actions;
  std::optional<ArtifactRect> bounds;
  std::vector<InterfaceIdentifier> identifiers;
  RareRecord<InterfaceElementProperties> properties;

  friend bool operator==(const InterfaceElement&, const InterfaceElement&) = default;
};

template <>
struct EnumerationNames<InterfaceVisibility> {
  static constexpr std::array<std::string_view, 4> names = {"visible", "offscreen", "hidden", "unknown"};
};

template <>
struct EnumerationNames<InterfaceCheckState> {
  static constexpr std::array<std::string_view, 3> names = {"off", "on", "mixed"};
};

template <>
struct EnumerationNames<InterfaceActionSource> {
  static constexpr std::array<std::string_view, 2> names = {"accessibility", "inferred"};
};

template <>
struct EnumerationNames<InterfaceIdentifierKind> {
  static constexpr std::array<std::string_view, 3> names = {"accessibility", "dom", "accessKey"};
};

template <>
struct JsonFields<InterfaceAction> {
  using R = InterfaceAction;
  static constexpr auto table = std::tuple{jsonField("name", &R::name), jsonField("source", &R::source)};
};

template <>
struct JsonFields<InterfaceIdentifier> {
  using R = InterfaceIdentifier;
  static constexpr auto table = std::tuple{jsonField("kind", &R::kind), jsonField("value", &R::value)};
};

template <>
struct JsonFields<InterfaceElementState> {
  using R = InterfaceElementState;
  static constexpr auto table = std::tuple{
      jsonField("enabled", &R::enabled),   jsonField("focused", &R::focused), jsonField("selected", &R::selected),
      jsonField("expanded", &R::expanded), jsonField("checked", &R::checked), jsonField("required", &R::required),
      jsonField("modal", &R::modal),       jsonField("visited", &R::visited), jsonField("busy", &R::busy),
      jsonField("invalid", &R::invalid),   jsonField("edited", &R::edited)};
};

template <>
struct JsonFields<InterfaceElementProperties> {
  using R = InterfaceElementProperties;
  static constexpr auto table = std::tuple{jsonField("roleDescription", &R::roleDescription),
                                           jsonField("valueDescription", &R::valueDescription),
                                           jsonField("headingLevel", &R::headingLevel),
                                           jsonField("disclosureLevel", &R::disclosureLevel),
                                           jsonField("index", &R::index),
                                           jsonField("orientation", &R::orientation),
                                           jsonField("current", &R::current),
                                           jsonField("hasPopup", &R::hasPopup),
                                           jsonField("url", &R::url),
                                           jsonField("document", &R::document),
                                           jsonField("filename", &R::filename),
                                           jsonField("domClasses", &R::domClasses),
                                           jsonField("positionInSet", &R::positionInSet),
                                           jsonField("setSize", &R::setSize),
                                           jsonField("rowCount", &R::rowCount),
                                           jsonField("columnCount", &R::columnCount),
                                           jsonField("selectedText", &R::selectedText),
                                           jsonField("selectedTextRange", &R::selectedTextRange),
                                           jsonField("visibleTextRange", &R::visibleTextRange),
                                           jsonField("columnHeaders", &R::columnHeaders),
                                           jsonField("rowValues", &R::rowValues)};
};

template <>
struct JsonFields<InterfaceElement> {
  using R = InterfaceElement;
  static constexpr auto table = std::tuple{jsonField("id", &R::id),
                                           jsonField("sourceNodeID", &R::sourceNodeID),
                                           jsonField("parentID", &R::parentID),
                                           jsonField("childIDs", &R::childIDs),
                                           jsonField("depth", &R::depth),
                                           jsonField("role", &R::role),
                                           jsonField("accessibilityRole", &R::accessibilityRole),
                                           jsonField("accessibilitySubrole", &R::accessibilitySubrole),
                                           jsonField("label", &R::label),
                                           jsonField("value", &R::value),
                                           jsonField("content", &R::content),
                                           jsonField("description", &R::description),
                                           jsonField("help", &R::help),
                                           jsonField("placeholder", &R::placeholder),
                                           jsonField("state", &R::state),
                                           jsonField("actions", &R::actions),
                                           jsonField("bounds", &R::bounds),
                                           jsonField("visibility", &R::visibility),
                                           jsonField("identifiers", &R::identifiers),
                                           jsonField("properties", &R::properties),
                                           jsonField("isProtected", &R::isProtected)};
};

}  // namespace quillo
