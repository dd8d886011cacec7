#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "QuilloApp/Model/QuilloModelState.h"

namespace quillo {

/// How whole a capture is.
enum class CaptureCondition : std::uint8_t { complete, partial, damaged };

/// One line of the library's list: a day, or a capture.
struct LibraryRow {
  std::optional<UUID> id;  ///< nothing for a day
  QString title;           ///< the capture's, or the day in words
  QString application;     ///< of a bundle that cannot be read, the reason
  Date date;               ///< of the capture
  QString screenshotPath;
  CaptureCondition condition = CaptureCondition::complete;

  bool isDay() const { return !id; }

  friend bool operator==(const LibraryRow&, const LibraryRow&) = default;
};

/// The feed by day, newest first: a line for each day before its captures. `shown` are indices into the library.
/// Bundles that cannot be read stand at the day on which they were changed last, and only where nothing is searched
/// for.
std::vector<LibraryRow> libraryRows(const QuilloModelState& state, const std::vector<std::size_t>& shown, QDate today,
                                    const QLocale& locale);

/// The time of day of a capture.
QString timeInWords(Date date, const QLocale& locale);

/// "complete", "partial", "damaged".
QString conditionInWords(CaptureCondition condition);

}  // namespace quillo
