#include "QuilloLinux/Accessibility/AtspiMixedText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr std::string_view childMark = "\uFFFC";

std::vector<std::string> splitAtChildren(std::string_view text) {
  std::vector<std::string> pieces;
  while (true) {
    const std::size_t end = text.find(childMark);
    pieces.emplace_back(trimmingWhiteSpace(text.substr(0, end)));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + childMark.size());
  }
}

}  // namespace

std::vector<std::string> wordsBetweenChildren(const AtspiNodeRecord& record, AtspiToolkit toolkit) {
  if (toolkit != AtspiToolkit::gecko || !record.text || record.is(AtspiState::editable)) return {};
  // A control's words are its name, and a table's are its cells'.
  if (isInteractive(record.role) && record.role != AtspiRole::listItem && record.role != AtspiRole::link) return {};
  // Text that was read in part would put its words before the wrong children.
  if (record.text->text.unit == AtspiTextUnit::codePoint &&
      std::cmp_less(record.text->text.utf16Length, record.text->characterCount)) {
    return {};
  }
  if (record.children.empty() && isTextBlock(record.role)) return {};  // the element itself is the text
  std::vector<std::string> pieces = splitAtChildren(record.text->text.text);
  if (pieces.size() != record.children.size() + 1) return {};
  const std::string name = collapsingWhiteSpace(record.name);
  for (std::string& piece : pieces) {
    if (name.find(collapsingWhiteSpace(piece)) != std::string::npos) piece.clear();
  }
  const bool isWordless = std::ranges::all_of(pieces, [](const std::string& piece) { return piece.empty(); });
  return isWordless ? std::vector<std::string>{} : pieces;
}

}  // namespace quillo
