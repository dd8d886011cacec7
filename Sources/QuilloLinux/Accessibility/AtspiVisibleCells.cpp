#include "QuilloLinux/Accessibility/AtspiVisibleCells.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillo {
namespace {

constexpr const char* tableInterface = "org.a11y.atspi.Table";

/// A cell's place, from 0.
struct Place {
  std::int32_t row = 0;
  std::int32_t column = 0;
};

class SheetReading {
 public:
  SheetReading(AtspiBus& bus, const AtspiObject& table, const AccessibilityCaptureControl& control)
      : bus_(bus), table_(table), control_(control) {}

  /// The places of the cells at two points of the screen.
  std::optional<std::pair<Place, Place>> placesAt(ArtifactPoint first, ArtifactPoint last) {
    std::optional<std::int32_t> columns;
    std::array<std::optional<AtspiObject>, 2> cells;
    bus_.queue(
        makeGetCall(table_, tableInterface, "NColumns", [&](const AtspiReply& reply) { columns = reply.int32(); }));
    askAt(first, cells[0]);
    askAt(last, cells[1]);
    bus_.drain(control_);
    if (!columns || *columns < 1 || !cells[0] || !cells[1]) return std::nullopt;
    std::array<std::optional<std::int32_t>, 2> indices;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      bus_.queue(
          {*cells[i], "org.a11y.atspi.Accessible", "GetIndexInParent", {}, [&indices, i](const AtspiReply& reply) {
             indices[i] = reply.int32();
           }});
    }
    bus_.drain(control_);
    if (!indices[0] || !indices[1] || *indices[0] < 0 || *indices[1] < 0) return std::nullopt;
    const auto place = [&](std::int32_t index) { return Place{index / *columns, index % *columns}; };
    return std::pair(place(*indices[0]), place(*indices[1]));
  }

  std::vector<AtspiObject> cells(Place first, std::int32_t rows, std::int32_t columns) {
    std::vector<AtspiObject> found(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (std::size_t i = 0; i < found.size(); ++i) {
      const auto at = static_cast<std::int32_t>(i);
      bus_.queue({table_, tableInterface, "GetAccessibleAt",
                  std::pair(first.row + at / columns, first.column + at % columns),
                  [&found, i](const AtspiReply& reply) { found[i] = reply.object().value_or(AtspiObject{}); }});
    }
    bus_.drain(control_);
    std::erase_if(found, [](const AtspiObject& cell) { return cell.isNull(); });
    return found;
  }

 private:
  void askAt(ArtifactPoint point, std::optional<AtspiObject>& cell) {
    const AtspiScreenPoint at{static_cast<std::int32_t>(point.x), static_cast<std::int32_t>(point.y)};
    bus_.queue({table_, "org.a11y.atspi.Component", "GetAccessibleAtPoint", at, [&cell](const AtspiReply& reply) {
                  cell = reply.object();
                  if (cell && cell->isNull()) cell.reset();
                }});
  }

  AtspiBus& bus_;
  const AtspiObject& table_;
  const AccessibilityCaptureControl& control_;
};

}  // namespace

std::optional<AtspiVisibleCells> readVisibleCells(AtspiBus& bus, const AtspiObject& table, const ArtifactRect& extents,
                                                  std::size_t maximumCount,
                                                  const AccessibilityCaptureControl& control) {
  constexpr double inset = 3;  // past the line around the cell
  if (extents.width <= 2 * inset || extents.height <= 2 * inset) return std::nullopt;
  SheetReading reading(bus, table, control);
  const auto places = reading.placesAt({.x = extents.x + inset, .y = extents.y + inset},
                                       {.x = extents.maxX() - inset, .y = extents.maxY() - inset});
  if (!places) return std::nullopt;
  const auto [first, last] = *places;
  const std::int64_t columns = std::int64_t{last.column} - first.column + 1;
  if (columns < 1 || last.row < first.row || std::cmp_greater(columns, maximumCount)) return std::nullopt;
  const std::int64_t rows =
      std::min(std::int64_t{last.row} - first.row + 1, static_cast<std::int64_t>(maximumCount) / columns);
  AtspiVisibleCells visible{static_cast<std::int32_t>(rows), static_cast<std::int32_t>(columns), {}};
  visible.cells = reading.cells(first, visible.rowCount, visible.columnCount);
  return visible;
}

}  // namespace quillo
