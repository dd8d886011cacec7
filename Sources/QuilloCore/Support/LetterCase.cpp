#include "QuilloCore/Support/LetterCase.h"

#include <unicode/ucasemap.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

struct CloseMap {
  void operator()(UCaseMap* map) const { ucasemap_close(map); }
};

/// Read-only after it is made, so threads may share it.
const UCaseMap* rootCaseMap() {
  static const std::unique_ptr<UCaseMap, CloseMap> map = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCaseMap, CloseMap> made(ucasemap_open("", 0, &status));
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
    return made;
  }();
  return map.get();
}

template <class CaseMapping>
std::string mapped(std::string_view text, CaseMapping mapping) {
  std::string result(text.size() + 16, '\0');
  for (;;) {
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t size = mapping(rootCaseMap(), result.data(), static_cast<std::int32_t>(result.size()),
                                      text.data(), static_cast<std::int32_t>(text.size()), &status);
    const bool isTooSmall = status == U_BUFFER_OVERFLOW_ERROR;
    if (U_FAILURE(status) && !isTooSmall) throw std::runtime_error(u_errorName(status));
    result.resize(static_cast<std::size_t>(size));
    if (!isTooSmall) return result;
  }
}

int8_t category(char32_t codePoint) {
  return u_charType(static_cast<UChar32>(codePoint));
}

}  // namespace

std::string lowercased(std::string_view text) {
  if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
    std::string result(text);
    for (char& c : result) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
  }
  return mapped(text, ucasemap_utf8ToLower);
}

std::string uppercased(std::string_view text) {
  return mapped(text, ucasemap_utf8ToUpper);
}

bool isUppercaseLetter(char32_t codePoint) {
  const auto type = category(codePoint);
  return type == U_UPPERCASE_LETTER || type == U_TITLECASE_LETTER;
}

bool isLowercaseLetter(char32_t codePoint) {
  return category(codePoint) == U_LOWERCASE_LETTER;
}

bool isLetterDigitOrMark(char32_t codePoint) {
  return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & (U_GC_L_MASK | U_GC_ND_MASK | U_GC_M_MASK)) != 0;
}

bool isMark(char32_t codePoint) {
  return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & U_GC_M_MASK) != 0;
}

std::string lowercasingFirstLetter(std::string_view text) {
  if (text.empty()) return {};
  std::size_t position = 0;
  nextCodePoint(text, position);
  return lowercased(text.substr(0, position)).append(text.substr(position));
}

}  // namespace quillo
