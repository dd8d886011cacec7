#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <optional>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactModels.h"

namespace quillo {

/// One line of the library's list: a day, or an artifact.
struct LibraryRow {
  std::optional<UUID> id;  ///< nothing for a day
  QString title;           ///< the artifact's, or the day in words
  QString application;
  QString time;  ///< of the capture, on that day
  QString screenshotPath;

  bool isDay() const { return !id; }

  friend bool operator==(const LibraryRow&, const LibraryRow&) = default;
};

/// The feed by day, in the order of the artifacts: a line for each day before its artifacts.
std::vector<LibraryRow> libraryRows(const std::vector<StoredArtifact>& artifacts, QDate today, const QLocale& locale);

}  // namespace quillo
