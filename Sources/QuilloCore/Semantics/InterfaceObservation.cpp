#include "QuilloCore/Semantics/InterfaceObservation.h"

#include <algorithm>

namespace quillo {

const InterfaceElement* InterfaceObservation::element(std::string_view id) const {
  const auto found = std::ranges::find(elements, id, &InterfaceElement::id);
  return found == elements.end() ? nullptr : &*found;
}

}  // namespace quillo
