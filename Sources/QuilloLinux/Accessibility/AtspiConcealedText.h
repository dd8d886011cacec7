#pragma once

#include <string_view>

namespace quillo {

/// Entries may show marks in place of their text without saying that they hold a secret, while their text interface
/// hands the secret out. What tells them is the first character as it is shown.

/// Whether the shown character is one of the marks that toolkits put in place of a secret.
bool isConcealingMark(std::string_view shownCharacter);

/// Whether what is shown first differs from how the text begins. Never for an empty text.
bool isConcealed(std::string_view shownCharacter, std::string_view text);

}  // namespace quillo
