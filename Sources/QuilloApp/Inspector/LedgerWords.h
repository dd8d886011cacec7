#pragma once

#include <QString>
#include <QStringList>

#include "QuilloApp/Inspector/AccessibilityLedger.h"

namespace quillo {

/// The longest part of a captured text that a line shows; a line is one row of a window.
inline constexpr qsizetype longestShownText = 300;

/// A role in the reader's language.
QString roleWord(InterfaceSemanticRole role);

/// What a line says of its element besides the texts: "focused", "checked", …; protected and hidden ones first.
QStringList ledgerStateWords(const AccessibilityLedger::Line& line);

/// The beginning of a captured text, on one line and with nothing that could be mistaken for something else.
QString shownText(std::string_view text);

/// The whole line, as it is read out: "button Reply, focused".
QString ledgerLineWords(const AccessibilityLedger& ledger, std::int32_t number);

}  // namespace quillo
