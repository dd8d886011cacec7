#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// A cell that stands directly in its table, because the toolkit gives no rows.
struct AtspiLooseCell {
  std::uint64_t token = 0;
  std::optional<std::int32_t> row;  ///< as the application says
  std::optional<ArtifactRect> frame;
  bool isColumnHeader = false;

  friend bool operator==(const AtspiLooseCell&, const AtspiLooseCell&) = default;
};

/// Puts loose cells into rows, in their order: by the row that the application names, else by equal vertical position.
/// Column headers form a row of their own. Every cell is in exactly one row.
std::vector<std::vector<std::uint64_t>> makeRows(std::span<const AtspiLooseCell> cells);

}  // namespace quillo
