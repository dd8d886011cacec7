#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// How much of a window a capture holds, in plain words.
struct CoverageSummary {
  bool isPartial = false;  ///< a limit cut something off
  QString headline;
  QStringList details;  ///< what was cut, why and how many; what was left out on purpose; what was noted
};

CoverageSummary describeCoverage(const InterfaceObservation& observation, const QLocale& locale);

}  // namespace quillo
