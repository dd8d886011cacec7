#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// Unicode's White_Space property (which includes line breaks, tabs and no-break spaces).
bool isWhiteSpace(char32_t codePoint);

/// The text without white space at both ends.
std::string_view trimmingWhiteSpace(std::string_view text);

/// Runs of white space become one blank; none is left at the ends.
std::string collapsingWhiteSpace(std::string_view text);

/// The maximal pieces without white space, in order; no piece is empty.
std::vector<std::string_view> splittingAtWhiteSpace(std::string_view text);

/// Every CR LF pair, and then every lone CR, becomes LF.
std::string normalizingLineBreaks(std::string_view text);

/// One line: every run of line breaks (LF, VT, FF, CR, NEL, U+2028, U+2029), tabs and other control characters becomes
/// one blank, and the ends are trimmed. For attributes that are single lines by nature, so that captured text cannot
/// forge lines of ours.
std::string bringingToOneLine(std::string_view text);

}  // namespace quillo
