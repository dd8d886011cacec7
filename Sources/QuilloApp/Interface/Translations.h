#pragma once

#include <QLocale>
#include <concepts>
#include <limits>
#include <utility>

namespace quillo {

/// Has the application object speak the first of the locale's languages that the application knows, else the source
/// language, whose plurals are a translation too. The toolkit's own texts follow. Called once, on the main thread,
/// before any text is made.
void installTranslations(const QLocale& locale = QLocale());

/// A count as the number that chooses a translation's plural.
template <std::integral Count>
int pluralNumber(Count count) {
  constexpr int largest = std::numeric_limits<int>::max();
  return std::cmp_greater(count, largest) ? largest : static_cast<int>(count);
}

}  // namespace quillo
