#include "QuilloApp/Library/LibraryRows.h"

#include <QCoreApplication>
#include <QDateTime>
#include <algorithm>
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

Date dateOf(const QDateTime& time) {
  return Date(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
}

QString dayInWords(QDate day, QDate today, const QLocale& locale) {
  if (day == today) return LibraryRowsText::tr("Today");
  if (day.addDays(1) == today) return LibraryRowsText::tr("Yesterday");
  return locale.toString(
      day, day.year() == today.year() ? LibraryRowsText::tr("dddd, d MMMM") : LibraryRowsText::tr("dddd, d MMMM yyyy"));
}

CaptureCondition conditionOf(const LibraryCondition& library, const UUID& id) {
  const auto found = library.artifacts.find(id);
  if (found == library.artifacts.end()) return CaptureCondition::complete;
  return found->second.kind == ArtifactCondition::Kind::damaged ? CaptureCondition::damaged : CaptureCondition::partial;
}

/// Puts the days between the captures as they come.
class FeedBuilder {
 public:
  FeedBuilder(QDate today, const QLocale& locale) : today_(today), locale_(locale) {}

  void add(Date date, LibraryRow row) {
    // Asking for the local day of every capture would take longer than everything else.
    if (date < dayBegin_ || date >= dayEnd_) beginDay(localTime(date).date());
    row.date = date;
    rows.push_back(std::move(row));
  }

  std::vector<LibraryRow> rows;

 private:
  void beginDay(QDate day) {
    dayBegin_ = dateOf(day.startOfDay());
    dayEnd_ = dateOf(day.addDays(1).startOfDay());
    LibraryRow row;
    row.title = dayInWords(day, today_, locale_);
    rows.push_back(std::move(row));
  }

  QDate today_;
  const QLocale& locale_;
  Date dayBegin_ = Date::max();
  Date dayEnd_ = Date::min();
};

LibraryRow rowOf(const StoredArtifact& artifact, const LibraryCondition& library) {
  const ArtifactManifest& manifest = artifact.manifest;
  return {.id = manifest.id,
          .title = QString::fromStdString(manifest.title).simplified(),
          .application = QString::fromStdString(manifest.source.applicationName).simplified(),
          .date = {},
          .screenshotPath = QString::fromStdString(artifact.screenshotPath().string()),
          .condition = conditionOf(library, manifest.id)};
}

LibraryRow rowOf(const DamagedBundle& bundle) {
  return {.id = bundle.id,
          .title = LibraryRowsText::tr("Damaged capture"),
          .application = QString::fromStdString(bundle.reason).simplified(),
          .date = {},
          .screenshotPath = {},
          .condition = CaptureCondition::damaged};
}

}  // namespace

std::vector<LibraryRow> libraryRows(const QuilloModelState& state, const std::vector<std::size_t>& shown, QDate today,
                                    const QLocale& locale) {
  const LibraryCondition& library = state.libraryCondition;
  std::vector<DamagedBundle> damaged;
  if (state.searchQuery.empty() && !state.applicationFilter) damaged = library.damagedBundles;
  std::ranges::stable_sort(damaged, std::ranges::greater(), &DamagedBundle::modifiedAt);

  FeedBuilder feed(today, locale);
  feed.rows.reserve(shown.size() + damaged.size());
  auto nextDamaged = damaged.begin();
  const auto addDamagedSince = [&](Date date) {
    for (; nextDamaged != damaged.end() && nextDamaged->modifiedAt >= date; ++nextDamaged)
      feed.add(nextDamaged->modifiedAt, rowOf(*nextDamaged));
  };
  for (const std::size_t index : shown) {
    const StoredArtifact& artifact = state.artifacts[index];
    addDamagedSince(artifact.manifest.createdAt);
    feed.add(artifact.manifest.createdAt, rowOf(artifact, library));
  }
  addDamagedSince(Date::min());
  return std::move(feed.rows);
}

QString timeInWords(Date date, const QLocale& locale) {
  return locale.toString(localTime(date).time(), QLocale::ShortFormat);
}

QString conditionInWords(CaptureCondition condition) {
  switch (condition) {
    case CaptureCondition::complete: return LibraryRowsText::tr("complete");
    case CaptureCondition::partial: return LibraryRowsText::tr("partial");
    case CaptureCondition::damaged: return LibraryRowsText::tr("damaged");
  }
  return {};
}

}  // namespace quillo
