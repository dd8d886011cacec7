#include "QuilloCore/Semantics/InterfaceAttributeReading.h"

#include <cmath>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

std::optional<std::string> cleanText(const std::string& raw) {
  if (raw.find('\r') == std::string::npos) {
    const std::string_view trimmed = trimmingWhiteSpace(raw);
    return trimmed.empty() ? std::nullopt : std::optional(std::string(trimmed));
  }
  const std::string text = normalizingLineBreaks(raw);
  const std::string_view trimmed = trimmingWhiteSpace(text);
  return trimmed.empty() ? std::nullopt : std::optional(std::string(trimmed));
}

}  // namespace

std::optional<std::string> readText(const AccessibilityNode& node, std::string_view name) {
  const AccessibilityAttributeValue* value = node.attribute(name);
  const auto* text = value == nullptr ? nullptr : std::get_if<std::string>(value);
  return text == nullptr ? std::nullopt : cleanText(*text);
}

std::optional<std::string> readText(const AccessibilityNode& node, std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names) {
    if (auto text = readText(node, name)) return text;
  }
  return std::nullopt;
}

std::vector<std::string> readTexts(const AccessibilityNode& node, std::string_view name) {
  std::vector<std::string> texts;
  const AccessibilityAttributeValue* value = node.attribute(name);
  const auto* list = value == nullptr ? nullptr : std::get_if<std::vector<std::string>>(value);
  if (list == nullptr) return texts;
  for (const std::string& member : *list) {
    if (auto text = cleanText(member)) texts.push_back(std::move(*text));
  }
  return texts;
}

std::optional<bool> readBoolean(const AccessibilityNode& node, std::string_view name) {
  const AccessibilityAttributeValue* value = node.attribute(name);
  if (value == nullptr) return std::nullopt;
  if (const auto* boolean = std::get_if<bool>(value)) return *boolean;
  if (const auto* integer = std::get_if<std::int64_t>(value)) return *integer != 0;
  if (const auto* text = std::get_if<std::string>(value)) {
    const std::string word = lowercased(*text);
    if (word == "true" || word == "busy" || word == "invalid") return true;
    if (word == "false" || word == "valid") return false;
  }
  return std::nullopt;
}

std::optional<std::int64_t> readInteger(const AccessibilityNode& node, std::string_view name) {
  const AccessibilityAttributeValue* value = node.attribute(name);
  if (value == nullptr) return std::nullopt;
  if (const auto* integer = std::get_if<std::int64_t>(value)) return *integer;
  constexpr double exactLimit = 9007199254740992.0;  // beyond it doubles skip integers
  const auto* number = std::get_if<double>(value);
  if (number == nullptr || std::trunc(*number) != *number || std::abs(*number) > exactLimit) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

std::optional<ArtifactTextRange> readRange(const AccessibilityNode& node, std::string_view name) {
  const AccessibilityAttributeValue* value = node.attribute(name);
  const auto* range = value == nullptr ? nullptr : std::get_if<ArtifactTextRange>(value);
  return range == nullptr ? std::nullopt : std::optional(*range);
}

std::optional<InterfaceCheckState> checkState(const AccessibilityAttributeValue& value) {
  using enum InterfaceCheckState;
  if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? on : off;
  std::optional<double> number;
  if (const auto* integer = std::get_if<std::int64_t>(&value)) number = static_cast<double>(*integer);
  if (const auto* real = std::get_if<double>(&value)) number = *real;
  if (number) {
    if (*number == 0) return off;
    if (*number == 1) return on;
    if (*number == 2) return mixed;
    return std::nullopt;
  }
  if (const auto* text = std::get_if<std::string>(&value)) {
    const std::string word = lowercased(*text);
    if (word == "true" || word == "checked" || word == "selected") return on;
    if (word == "false" || word == "no" || word == "unchecked" || word == "unselected") return off;
    if (word == "mixed" || word == "indeterminate") return mixed;
  }
  return std::nullopt;
}

}  // namespace quillo
