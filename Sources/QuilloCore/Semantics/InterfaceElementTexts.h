#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// Data that an interface carries in a text: a "data:" URL, or more than 512 characters of base64 alone.
bool isEmbeddedPayload(std::string_view text);

/// Whether the text is worth printing: something of it is visible, and it is no embedded payload.
bool isPrintable(std::string_view text);

/// The string value, when it may be printed; empty otherwise, and for protected elements.
std::string_view printableStringValue(const InterfaceElement& element);

/// The text that names the element on its line; empty without one. Never the content, and never what was typed into a
/// field.
std::string_view primaryText(const InterfaceElement& element);

/// Whether two texts agree but for their white space.
bool agreeButForWhiteSpace(std::string_view first, std::string_view second);

/// Whether the string value is to be printed: it is no repetition of the primary text, nor the beginning of the
/// content.
bool printsStringValue(const InterfaceElement& element, std::string_view primary);

/// A text that is printed below the element's line, under its label.
struct ElementDetail {
  std::string_view label;
  std::string_view text;
};

/// In the order of printing, without repetitions of the line or of one another.
std::vector<ElementDetail> distinctDetails(const InterfaceElement& element, std::string_view primary);

}  // namespace quillo
