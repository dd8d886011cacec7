#include "QuilloCore/Semantics/InterfaceElementTexts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Support/NumberFormatting.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr std::size_t payloadHeadLength = 300;
constexpr std::size_t longestBase64Word = 512;

bool isBase64Character(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/' || c == '=';
}

std::string_view printable(const auto& text) {
  return text && isPrintable(*text) ? std::string_view(*text) : std::string_view();
}

const std::string* stringValue(const InterfaceElement& element) {
  return element.value ? std::get_if<std::string>(&*element.value) : nullptr;
}

/// Controls whose value is what the user chose or typed, not their name.
bool isNamedApartFromValue(InterfaceSemanticRole role) {
  using enum InterfaceSemanticRole;
  return role == textField || role == textArea || role == searchField || role == comboBox || role == popUpButton ||
         role == slider || role == stepper;
}

/// Whether the description of the value is nothing but its number.
bool repeatsTypedValue(const InterfaceElement& element) {
  const auto& description = element.properties->valueDescription;
  if (!description || !element.value) return false;
  if (const auto* number = std::get_if<double>(&*element.value)) return *description == formatNumber(*number);
  if (const auto* integer = std::get_if<std::int64_t>(&*element.value)) return *description == std::to_string(*integer);
  return false;
}

/// The code point at or behind `position` that is no white space, or one blank for a run of it; leading and trailing
/// runs yield nothing. Moves `position` behind it; U+0000 at the end.
char32_t nextFolded(std::string_view text, std::size_t& position, bool isAtStart) {
  bool isInRun = false;
  while (position < text.size()) {
    std::size_t next = position;
    const char32_t c = nextCodePoint(text, next);
    if (!isWhiteSpace(c)) {
      if (isInRun && !isAtStart) return U' ';
      position = next;
      return c;
    }
    position = next;
    isInRun = true;
  }
  return 0;
}

/// Whether `text`, white space folded, begins with the folded `beginning`.
bool foldedStartsWith(std::string_view text, std::string_view beginning, bool toTheEnd) {
  std::size_t i = 0;
  std::size_t j = 0;
  bool isAtStart = true;
  for (;;) {
    const char32_t expected = nextFolded(beginning, j, isAtStart);
    if (expected == 0 && !toTheEnd) return true;
    const char32_t actual = nextFolded(text, i, isAtStart);
    if (actual != expected) return false;
    if (expected == 0) return true;
    isAtStart = false;
  }
}

}  // namespace

bool isEmbeddedPayload(std::string_view text) {
  if (text.starts_with("data:") && text.substr(0, payloadHeadLength).contains(',')) return true;
  return text.size() > longestBase64Word && std::ranges::all_of(text, isBase64Character);
}

bool isPrintable(std::string_view text) {
  return hasVisibleText(text) && !isEmbeddedPayload(text);
}

std::string_view printableStringValue(const InterfaceElement& element) {
  const std::string* text = stringValue(element);
  return text != nullptr && !element.isProtected && isPrintable(*text) ? std::string_view(*text) : std::string_view();
}

std::string_view primaryText(const InterfaceElement& element) {
  const std::string_view label = printable(element.label);
  const std::string_view description = printable(element.description);
  const std::string_view help = printable(element.help);
  const std::string_view placeholder = printable(element.placeholder);
  const auto first = [](std::array<std::string_view, 5> texts) {
    const auto* found = std::ranges::find_if(texts, [](std::string_view text) { return !text.empty(); });
    return found == texts.end() ? std::string_view() : *found;
  };
  if (element.role == InterfaceSemanticRole::text) {
    return first({printableStringValue(element), label, description, help, placeholder});
  }
  if (isNamedApartFromValue(element.role)) return first({label, description, placeholder, help});
  return first({label, description, printableStringValue(element), help, placeholder});
}

bool agreeButForWhiteSpace(std::string_view first, std::string_view second) {
  return first == second || foldedStartsWith(first, second, true);
}

bool printsStringValue(const InterfaceElement& element, std::string_view primary) {
  const std::string_view value = printableStringValue(element);
  if (value.empty() || agreeButForWhiteSpace(value, primary)) return false;
  return !element.content || !foldedStartsWith(*element.content, value, false);
}

std::vector<ElementDetail> distinctDetails(const InterfaceElement& element, std::string_view primary) {
  std::vector<ElementDetail> details;
  const bool hasValue = printsStringValue(element, primary);
  const std::string_view value = hasValue ? printableStringValue(element) : std::string_view();
  const bool isValueOnLine = hasValue && !hasLineBreak(value);
  const auto add = [&](std::string_view label, std::string_view text) {
    if (text.empty() || agreeButForWhiteSpace(text, primary)) return;
    if (isValueOnLine && agreeButForWhiteSpace(text, value)) return;
    const auto repeats = [&](const ElementDetail& detail) { return agreeButForWhiteSpace(detail.text, text); };
    if (std::ranges::none_of(details, repeats)) details.push_back({label, text});
  };
  add("label", printable(element.label));
  if (hasValue && !isValueOnLine) add("value", value);
  add("description", printable(element.description));
  add("help", printable(element.help));
  add("placeholder", printable(element.placeholder));
  if (!element.isProtected && !repeatsTypedValue(element)) {
    add("value detail", printable(element.properties->valueDescription));
  }
  return details;
}

}  // namespace quillo
