#include "QuilloLinux/Accessibility/AtspiTableRows.h"

#include <cmath>
#include <compare>
#include <map>

namespace quillo {
namespace {

/// What cells of one row have in common. Headers come before all rows; cells without any place share one row.
struct RowKey {
  enum class Kind : std::uint8_t { header, index, position, unplaced } kind = Kind::unplaced;
  std::int64_t place = 0;

  friend auto operator<=>(const RowKey&, const RowKey&) = default;
};

RowKey keyOf(const AtspiLooseCell& cell) {
  if (cell.isColumnHeader) return {RowKey::Kind::header, 0};
  if (cell.row && *cell.row >= 0) return {RowKey::Kind::index, *cell.row};
  if (cell.frame && cell.frame->isFinite()) {
    return {RowKey::Kind::position, static_cast<std::int64_t>(std::llround(cell.frame->y))};
  }
  return {};
}

}  // namespace

std::vector<std::vector<std::uint64_t>> makeRows(std::span<const AtspiLooseCell> cells) {
  std::map<RowKey, std::size_t> rowOfKey;
  std::vector<std::vector<std::uint64_t>> rows;
  for (const AtspiLooseCell& cell : cells) {
    const auto [entry, isNew] = rowOfKey.try_emplace(keyOf(cell), rows.size());
    if (isNew) rows.emplace_back();
    rows[entry->second].push_back(cell.token);
  }
  return rows;
}

}  // namespace quillo
