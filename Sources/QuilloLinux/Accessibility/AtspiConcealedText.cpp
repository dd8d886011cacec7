#include "QuilloLinux/Accessibility/AtspiConcealedText.h"

#include <algorithm>
#include <array>

namespace quillo {

bool isConcealingMark(std::string_view shownCharacter) {
  static constexpr auto marks = std::to_array<std::string_view>(
      {"*", "\u2022", "\u2217", "\u25CF", "\u25A0", "\u26AB", "\u2731", "\u273A", "\u2B24"});
  return std::ranges::count(marks, shownCharacter) > 0;
}

bool isConcealed(std::string_view shownCharacter, std::string_view text) {
  return !text.empty() && (shownCharacter.empty() || !text.starts_with(shownCharacter));
}

}  // namespace quillo
