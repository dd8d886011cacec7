#include "QuilloCore/Clipboard/PasteboardSnapshot.h"

#include <algorithm>

namespace quillo {

std::vector<std::string> PasteboardSnapshot::Item::uncapturedTypes() const {
  std::vector<std::string> uncaptured;
  for (const std::string& type : advertisedTypes) {
    const bool isCaptured =
        std::ranges::find(representations, type, &PasteboardRepresentation::type) != representations.end();
    if (!isCaptured && std::ranges::find(uncaptured, type) == uncaptured.end()) uncaptured.push_back(type);
  }
  return uncaptured;
}

bool PasteboardSnapshot::isComplete() const {
  return unrepresentedTopLevelTypes.empty() &&
         std::ranges::all_of(items, [](const Item& item) { return item.uncapturedTypes().empty(); });
}

}  // namespace quillo
