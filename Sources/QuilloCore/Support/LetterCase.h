#pragma once

#include <string>
#include <string_view>

namespace quillo {

/// Unicode's full lower-casing and upper-casing without regard to language.
std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text);

/// Upper case or title case letter (general category Lu or Lt), lower case letter (Ll), letter, digit or mark.
bool isUppercaseLetter(char32_t codePoint);
bool isLowercaseLetter(char32_t codePoint);
bool isLetterDigitOrMark(char32_t codePoint);
bool isMark(char32_t codePoint);

/// The text with its first code point lower-cased.
std::string lowercasingFirstLetter(std::string_view text);

}  // namespace quillo
