#pragma once

#include <QAbstractListModel>
#include <vector>

#include "QuilloApp/Library/LibraryRows.h"

namespace quillo {

class Thumbnails;

/// The library's rows as the list view wants them. Days cannot be selected.
class ArtifactListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { applicationRole = Qt::UserRole, timeRole, isDayRole, conditionRole };
  static constexpr int thumbnailPixels = 192;  ///< of the longer side

  explicit ArtifactListModel(Thumbnails& thumbnails, QObject* parent = nullptr);

  /// Tells the view only what differs. Times are told in the locale's words.
  void setRows(std::vector<LibraryRow> rows, const QLocale& locale = QLocale());

  std::optional<UUID> idAt(const QModelIndex& index) const;
  /// Where nothing was captured yet, or nothing is found.
  bool isEmpty() const { return rows_.empty(); }
  QString screenshotPathAt(const QModelIndex& index) const;
  QModelIndex indexOf(const UUID& id) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void thumbnailLoaded(const QString& path);

  Thumbnails& thumbnails_;
  std::vector<LibraryRow> rows_;
  QLocale locale_;
};

}  // namespace quillo
