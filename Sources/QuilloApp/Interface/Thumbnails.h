#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>

#include "QuilloCore/Artifacts/ArtifactThumbnailCache.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// Pictures for the widgets: what is there at once, and what is missing as soon as it has been decoded elsewhere.
class Thumbnails : public QObject {
  Q_OBJECT

 public:
  /// The cache outlives this, and `tasks` are ended before it.
  Thumbnails(ArtifactThumbnailCache& cache, TaskGroup& tasks) : cache_(cache), tasks_(tasks) {}

  /// A null image when there is none yet (`loaded` follows when there is one) or none at all.
  QImage image(const QString& path, int maximumPixelDimension);

  /// Where work for the windows is started; ended before this.
  TaskGroup& tasks() const { return tasks_; }

 Q_SIGNALS:
  void loaded(const QString& path);

 private:
  Task<> load(QString path, int maximumPixelDimension);

  struct Picture {
    QImage image;  ///< null when there is none
  };

  ArtifactThumbnailCache& cache_;
  TaskGroup& tasks_;
  QCache<QString, Picture> pictures_{qsizetype{48} * 1024};  ///< cost in KiB
  QSet<QString> requested_;
};

}  // namespace quillo
