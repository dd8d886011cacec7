#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// How captured text is printed among lines of ours, so that it can neither forge a line or a marker nor hide anything.
/// Invisible characters that arrange text stay where they are. What hides or reorders text is shown: control
/// characters, directional overrides, embeddings and isolates that do not end, tags, selectors that select nothing. A
/// run of invisible characters that is too long to arrange anything is replaced by its length.

/// Whether anything can be seen of the text.
bool hasVisibleText(std::string_view text);

/// Whether the text has a character at which some reader would begin a new line.
bool hasLineBreak(std::string_view text);

/// The text in double quotation marks on one line: backslash, quotation mark and line feed escaped as \\, \" and \n,
/// other line breaks and what must be shown as \r or \u{2028}, a long invisible run as \{12 invisible characters}.
std::string quoted(std::string_view text);

/// The text on one line, without quotation marks; what must be shown stands as ⟦U+202E⟧ or ⟦12 invisible characters⟧,
/// and so does the opening bracket of markers itself.
std::string onOneLine(std::string_view text);

/// `onOneLine` when the text is one line and has none of the given ASCII characters, else `quoted`: for names that
/// stand bare between punctuation of ours.
std::string bareOrQuoted(std::string_view text, std::string_view punctuation);

/// Appends the text to the last of `lines`, beginning a new one at each of its line breaks, and showing what must be
/// shown as `onOneLine` does.
void appendBlockText(std::vector<std::string>& lines, std::string_view text);

}  // namespace quillo
