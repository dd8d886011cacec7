#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/AccessibilityErrorCode.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloLinux/Accessibility/AtspiRoles.h"
#include "QuilloLinux/Accessibility/AtspiTextUnits.h"

namespace quillo {

enum class AtspiToolkit : std::uint8_t { other, gtk3, gtk4, qt, chromium, gecko };

/// What an application tells of its own text.
struct AtspiNodeText {
  std::int64_t characterCount = 0;  ///< as the application says, in its own units
  AtspiText text;                   ///< what it handed out; of a very long text only the beginning
  std::optional<std::pair<std::int32_t, std::int32_t>> selection;  ///< in its own units
  std::optional<std::int32_t> caret;
};

/// Everything that was read of one accessible object.
struct AtspiNodeRecord {
  AccessibilityErrorCode error = AccessibilityErrorCode::success;  ///< why nothing could be read
  AtspiRole role = AtspiRole::unknown;
  std::uint64_t states = 0;
  std::string name;
  std::string description;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<std::string> interfaces;  ///< without the common prefix: "Text", "Value"
  std::vector<std::uint64_t> children;  ///< tokens
  AccessibilityErrorCode childrenError = AccessibilityErrorCode::success;
  bool hasTooManyChildren = false;      ///< a sheet of millions of cells, none of which were asked for
  std::optional<ArtifactRect> extents;  ///< as the application gave them
  std::optional<AtspiNodeText> text;
  std::vector<std::string> actions;
  std::optional<double> value;
  std::optional<std::string> labelledBy;  ///< the name of the first object that labels this one
  std::optional<std::string> choice;      ///< the name of the option that a closed list of options shows
  std::optional<std::string> uri;         ///< of a link
  std::vector<std::pair<std::string, std::string>> documentAttributes;
  std::optional<std::int32_t> tableRow;  ///< of a cell, from 0
  bool isToggle = false;                 ///< a cell that is switched on and off, though its states do not say so

  bool is(unsigned state) const { return ((states >> state) & 1U) != 0; }

  bool hasInterface(std::string_view interface) const {
    for (const std::string& candidate : interfaces) {
      if (candidate == interface) return true;
    }
    return false;
  }

  /// The value of an object attribute, or null.
  const std::string* attribute(std::string_view key) const {
    for (const auto& [candidate, found] : attributes) {
      if (candidate == key) return &found;
    }
    return nullptr;
  }
};

}  // namespace quillo
