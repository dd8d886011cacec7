#include "QuilloCore/Support/JsonErrorLocation.h"

namespace quillo {
JsonError locateJsonError(std::string_view text, std::size_t, std::string_view fallbackReason) {
  return JsonError(JsonError::Malformed{text.size(), std::string(fallbackReason)});
}
}  // namespace quillo
