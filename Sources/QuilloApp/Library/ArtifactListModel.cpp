#include "QuilloApp/Library/ArtifactListModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "QuilloApp/Interface/Thumbnails.h"

namespace quillo {

ArtifactListModel::ArtifactListModel(Thumbnails& thumbnails, QObject* parent)
    : QAbstractListModel(parent), thumbnails_(thumbnails) {
  connect(&thumbnails, &Thumbnails::loaded, this, &ArtifactListModel::thumbnailLoaded);
}

void ArtifactListModel::setRows(std::vector<LibraryRow> rows, const QLocale& locale) {
  locale_ = locale;
  // What stands first and last stays; what is between is taken out and put in, and in the usual case that is one row.
  const auto isSame = [](const LibraryRow& a, const LibraryRow& b) {
    return a.id == b.id && (!a.isDay() || a.title == b.title);
  };
  const auto difference = std::ranges::mismatch(rows_, rows, isSame);
  const auto first = std::distance(rows_.begin(), difference.in1);
  auto oldEnd = static_cast<std::ptrdiff_t>(rows_.size());
  auto newEnd = static_cast<std::ptrdiff_t>(rows.size());
  while (oldEnd > first && newEnd > first &&
         isSame(rows_[static_cast<std::size_t>(oldEnd - 1)], rows[static_cast<std::size_t>(newEnd - 1)])) {
    --oldEnd;
    --newEnd;
  }
  if (oldEnd > first) {
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(oldEnd - 1));
    rows_.erase(rows_.begin() + first, rows_.begin() + oldEnd);
    endRemoveRows();
  }
  if (newEnd > first) {
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(newEnd - 1));
    rows_.insert(rows_.begin() + first, rows.begin() + first, rows.begin() + newEnd);
    endInsertRows();
  }
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row] == rows[row]) continue;
    rows_[row] = std::move(rows[row]);
    const QModelIndex changed = index(static_cast<int>(row));
    Q_EMIT dataChanged(changed, changed);
  }
}

std::optional<UUID> ArtifactListModel::idAt(const QModelIndex& index) const {
  return index.isValid() ? rows_[static_cast<std::size_t>(index.row())].id : std::nullopt;
}

QModelIndex ArtifactListModel::indexOf(const UUID& id) const {
  const auto found = std::ranges::find(rows_, std::optional(id), &LibraryRow::id);
  return found == rows_.end() ? QModelIndex() : index(static_cast<int>(std::distance(rows_.begin(), found)));
}

QString ArtifactListModel::screenshotPathAt(const QModelIndex& index) const {
  return index.isValid() ? rows_[static_cast<std::size_t>(index.row())].screenshotPath : QString();
}

int ArtifactListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ArtifactListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const LibraryRow& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole: return row.title;
    case Qt::ToolTipRole:
      return row.isDay()
                 ? QVariant()
                 : tr("%1 (%2)").arg(row.title, conditionInWords(row.condition)) + QLatin1Char('\n') + row.application;
    case Qt::AccessibleTextRole:
      return row.isDay() ? row.title
                         : tr("%1, %2, %3, %4")
                               .arg(row.title, row.application, timeInWords(row.date, locale_),
                                    conditionInWords(row.condition));
    case Qt::DecorationRole:
      return row.screenshotPath.isEmpty() ? QVariant()
                                          : QVariant(thumbnails_.image(row.screenshotPath, thumbnailPixels));
    case applicationRole: return row.application;
    case timeRole: return timeInWords(row.date, locale_);
    case isDayRole: return row.isDay();
    case conditionRole: return static_cast<int>(row.condition);
    default: return {};
  }
}

Qt::ItemFlags ArtifactListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  if (rows_[static_cast<std::size_t>(index.row())].isDay()) return Qt::ItemNeverHasChildren;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

void ArtifactListModel::thumbnailLoaded(const QString& path) {
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row].screenshotPath != path) continue;
    const QModelIndex changed = index(static_cast<int>(row));
    Q_EMIT dataChanged(changed, changed, {Qt::DecorationRole});
  }
}

}  // namespace quillo
