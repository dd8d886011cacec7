#include "QuilloApp/Inspector/LedgerWords.h"

#include <QCoreApplication>
#include <utility>

#include "QuilloCore/Semantics/InterfaceRoleNames.h"
#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Support/GraphemeClusters.h"

namespace quillo {
namespace {

QString word(const char* text) {
  return QCoreApplication::translate("quillo::Ledger", text);
}

}  // namespace

QString roleWord(InterfaceSemanticRole role) {
  return word(std::string(roleName(role)).c_str());
}

QStringList ledgerStateWords(const InterfaceElement& element) {
  QStringList words;
  if (element.isProtected) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "protected, its text was not read"));
  if (element.visibility == InterfaceVisibility::hidden) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "hidden"));
  if (element.visibility == InterfaceVisibility::offscreen)
    words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "scrolled out of sight"));
  const InterfaceElementState& state = element.state;
  const auto add = [&](const std::optional<bool>& value, const char* ifTrue, const char* ifFalse = nullptr) {
    const char* text = value.value_or(false) ? ifTrue : ifFalse;
    if (value && text != nullptr) words << word(text);
  };
  add(state.focused, QT_TRANSLATE_NOOP("quillo::Ledger", "focused"));
  add(state.selected, QT_TRANSLATE_NOOP("quillo::Ledger", "selected"));
  add(state.enabled, nullptr, QT_TRANSLATE_NOOP("quillo::Ledger", "disabled"));
  add(state.expanded, QT_TRANSLATE_NOOP("quillo::Ledger", "expanded"),
      QT_TRANSLATE_NOOP("quillo::Ledger", "collapsed"));
  if (state.checked == InterfaceCheckState::on) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "checked"));
  if (state.checked == InterfaceCheckState::off) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "not checked"));
  if (state.checked == InterfaceCheckState::mixed) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "partly checked"));
  add(state.required, QT_TRANSLATE_NOOP("quillo::Ledger", "required"));
  add(state.modal, QT_TRANSLATE_NOOP("quillo::Ledger", "modal"));
  add(state.visited, QT_TRANSLATE_NOOP("quillo::Ledger", "visited"));
  add(state.busy, QT_TRANSLATE_NOOP("quillo::Ledger", "busy"));
  add(state.invalid, QT_TRANSLATE_NOOP("quillo::Ledger", "invalid"));
  add(state.edited, QT_TRANSLATE_NOOP("quillo::Ledger", "edited"));
  return words;
}

QString shownText(std::string_view text) {
  const std::string_view prefix = graphemeClusterPrefix(text, longestShownText);
  const QString shown = QString::fromStdString(onOneLine(prefix)).simplified();
  return prefix.size() == text.size() ? shown : shown + QStringLiteral("…");
}

QString ledgerLineWords(const AccessibilityLedger& ledger, std::int32_t number) {
  const AccessibilityLedger::Line& line = ledger.line(number);
  QString words = roleWord(line.element->role);
  if (const QString name = shownText(ledger.name(number)); !name.isEmpty()) words += QLatin1Char(' ') + name;
  if (!line.value.empty()) words += QStringLiteral(": ") + shownText(line.value);
  for (const QString& state : ledgerStateWords(*line.element)) words += QStringLiteral(", ") + state;
  return words;
}

}  // namespace quillo
