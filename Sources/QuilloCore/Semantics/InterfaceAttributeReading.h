#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// Readings of a node's attributes in the types of the semantic model. Each gives nothing when the attribute is absent
/// or is of a kind that the reading does not accept.

/// The first of the attributes that yields text: line breaks as LF, trimmed, not empty.
std::optional<std::string> readText(const AccessibilityNode& node, std::initializer_list<std::string_view> names);
std::optional<std::string> readText(const AccessibilityNode& node, std::string_view name);

/// The texts of a list attribute, those that are empty left out.
std::vector<std::string> readTexts(const AccessibilityNode& node, std::string_view name);

/// A boolean, an integer (true unless zero), or one of the words that accessibility interfaces use for one.
std::optional<bool> readBoolean(const AccessibilityNode& node, std::string_view name);

/// An integer, or a number without a fraction.
std::optional<std::int64_t> readInteger(const AccessibilityNode& node, std::string_view name);

std::optional<ArtifactTextRange> readRange(const AccessibilityNode& node, std::string_view name);

/// A check state from numbers 0, 1 and 2, from a boolean or from a word.
std::optional<InterfaceCheckState> checkState(const AccessibilityAttributeValue& value);

}  // namespace quillo
