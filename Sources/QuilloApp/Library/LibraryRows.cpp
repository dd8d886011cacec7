#include "QuilloApp/Library/LibraryRows.h"

#include <QCoreApplication>
#include <QDateTime>
#include <chrono>
#include <utility>

namespace quillo {
namespace {

struct LibraryRowsText {
  Q_DECLARE_TR_FUNCTIONS(LibraryRows)
};

QDateTime localTime(Date date) {
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(date.time_since_epoch()).count();
  return QDateTime::fromMSecsSinceEpoch(milliseconds);
}

QString dayInWords(QDate day, QDate today, const QLocale& locale) {
  if (day == today) return LibraryRowsText::tr("Today");
  if (day.addDays(1) == today) return LibraryRowsText::tr("Yesterday");
  return locale.toString(
      day, day.year() == today.year() ? LibraryRowsText::tr("dddd, d MMMM") : LibraryRowsText::tr("dddd, d MMMM yyyy"));
}

}  // namespace

std::vector<LibraryRow> libraryRows(const std::vector<StoredArtifact>& artifacts, QDate today, const QLocale& locale) {
  std::vector<LibraryRow> rows;
  QDate shownDay;
  for (const StoredArtifact& artifact : artifacts) {
    const ArtifactManifest& manifest = artifact.manifest;
    const QDateTime created = localTime(manifest.createdAt);
    if (created.date() != shownDay) {
      shownDay = created.date();
      LibraryRow day;
      day.title = dayInWords(shownDay, today, locale);
      rows.push_back(std::move(day));
    }
    rows.push_back({.id = manifest.id,
                    .title = QString::fromStdString(manifest.title).simplified(),
                    .application = QString::fromStdString(manifest.source.applicationName).simplified(),
                    .time = locale.toString(created.time(), QLocale::ShortFormat),
                    .screenshotPath = QString::fromStdString(artifact.screenshotPath().string())});
  }
  return rows;
}

}  // namespace quillo
