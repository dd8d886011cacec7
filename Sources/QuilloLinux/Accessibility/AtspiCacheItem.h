#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// What an application's own cache tells of one of its objects (org.a11y.atspi.Cache.GetItems, in both of its forms).
struct AtspiCacheItem {
  AtspiObject object;
  AtspiObject parent;
  std::int32_t index = -1;                           ///< among the parent's children
  std::int32_t childCount = -1;                      ///< -1 when the application does not know
  std::optional<std::vector<AtspiObject>> children;  ///< in the older form, which names them
  std::vector<std::string> interfaces;
  std::string name;
  std::uint32_t role = 0;
  std::string description;
  std::uint64_t states = 0;
};

}  // namespace quillo
