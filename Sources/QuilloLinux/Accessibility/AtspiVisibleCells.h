#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// The part of a sheet that is on the screen.
struct AtspiVisibleCells {
  std::int32_t rowCount = 0;
  std::int32_t columnCount = 0;
  std::vector<AtspiObject> cells;  ///< row by row
};

/// The cells that a table shows, which may have far too many to be read. Found from the cells in two of its corners; at
/// most `maximumCount`, whole rows from the top. Nothing when the application does not tell.
std::optional<AtspiVisibleCells> readVisibleCells(AtspiBus& bus, const AtspiObject& table, const ArtifactRect& extents,
                                                  std::size_t maximumCount, const AccessibilityCaptureControl& control);

}  // namespace quillo
