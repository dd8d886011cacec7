#include "QuilloApp/Inspector/LedgerWords.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <utility>

#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Support/GraphemeClusters.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;

QString word(const char* text) {
  return QCoreApplication::translate("quillo::Ledger", text);
}

/// The words of the captured text, which is never translated, as what is shown.
constexpr std::array roleWords = std::to_array<std::pair<Role, const char*>>({
    {Role::application, QT_TRANSLATE_NOOP("quillo::Ledger", "application")},
    {Role::window, QT_TRANSLATE_NOOP("quillo::Ledger", "window")},
    {Role::dialog, QT_TRANSLATE_NOOP("quillo::Ledger", "dialog")},
    {Role::sheet, QT_TRANSLATE_NOOP("quillo::Ledger", "sheet")},
    {Role::section, QT_TRANSLATE_NOOP("quillo::Ledger", "section")},
    {Role::group, QT_TRANSLATE_NOOP("quillo::Ledger", "group")},
    {Role::navigation, QT_TRANSLATE_NOOP("quillo::Ledger", "navigation")},
    {Role::toolbar, QT_TRANSLATE_NOOP("quillo::Ledger", "toolbar")},
    {Role::tabGroup, QT_TRANSLATE_NOOP("quillo::Ledger", "tab group")},
    {Role::tab, QT_TRANSLATE_NOOP("quillo::Ledger", "tab")},
    {Role::document, QT_TRANSLATE_NOOP("quillo::Ledger", "document")},
    {Role::webArea, QT_TRANSLATE_NOOP("quillo::Ledger", "web content")},
    {Role::scrollArea, QT_TRANSLATE_NOOP("quillo::Ledger", "scroll area")},
    {Role::heading, QT_TRANSLATE_NOOP("quillo::Ledger", "heading")},
    {Role::text, QT_TRANSLATE_NOOP("quillo::Ledger", "text")},
    {Role::textField, QT_TRANSLATE_NOOP("quillo::Ledger", "text field")},
    {Role::textArea, QT_TRANSLATE_NOOP("quillo::Ledger", "text area")},
    {Role::searchField, QT_TRANSLATE_NOOP("quillo::Ledger", "search field")},
    {Role::button, QT_TRANSLATE_NOOP("quillo::Ledger", "button")},
    {Role::disclosure, QT_TRANSLATE_NOOP("quillo::Ledger", "disclosure")},
    {Role::link, QT_TRANSLATE_NOOP("quillo::Ledger", "link")},
    {Role::checkbox, QT_TRANSLATE_NOOP("quillo::Ledger", "checkbox")},
    {Role::radioButton, QT_TRANSLATE_NOOP("quillo::Ledger", "radio button")},
    {Role::switchControl, QT_TRANSLATE_NOOP("quillo::Ledger", "switch")},
    {Role::list, QT_TRANSLATE_NOOP("quillo::Ledger", "list")},
    {Role::listItem, QT_TRANSLATE_NOOP("quillo::Ledger", "list item")},
    {Role::table, QT_TRANSLATE_NOOP("quillo::Ledger", "table")},
    {Role::row, QT_TRANSLATE_NOOP("quillo::Ledger", "row")},
    {Role::column, QT_TRANSLATE_NOOP("quillo::Ledger", "column")},
    {Role::cell, QT_TRANSLATE_NOOP("quillo::Ledger", "cell")},
    {Role::tree, QT_TRANSLATE_NOOP("quillo::Ledger", "outline")},
    {Role::treeItem, QT_TRANSLATE_NOOP("quillo::Ledger", "outline row")},
    {Role::menuBar, QT_TRANSLATE_NOOP("quillo::Ledger", "menu bar")},
    {Role::menu, QT_TRANSLATE_NOOP("quillo::Ledger", "menu")},
    {Role::menuItem, QT_TRANSLATE_NOOP("quillo::Ledger", "menu item")},
    {Role::comboBox, QT_TRANSLATE_NOOP("quillo::Ledger", "combo box")},
    {Role::popUpButton, QT_TRANSLATE_NOOP("quillo::Ledger", "pop-up button")},
    {Role::slider, QT_TRANSLATE_NOOP("quillo::Ledger", "slider")},
    {Role::stepper, QT_TRANSLATE_NOOP("quillo::Ledger", "stepper")},
    {Role::scrollBar, QT_TRANSLATE_NOOP("quillo::Ledger", "scroll bar")},
    {Role::valueIndicator, QT_TRANSLATE_NOOP("quillo::Ledger", "value indicator")},
    {Role::image, QT_TRANSLATE_NOOP("quillo::Ledger", "image")},
    {Role::icon, QT_TRANSLATE_NOOP("quillo::Ledger", "icon")},
    {Role::progressIndicator, QT_TRANSLATE_NOOP("quillo::Ledger", "progress indicator")},
    {Role::splitGroup, QT_TRANSLATE_NOOP("quillo::Ledger", "split group")},
    {Role::browser, QT_TRANSLATE_NOOP("quillo::Ledger", "browser")},
    {Role::unknown, QT_TRANSLATE_NOOP("quillo::Ledger", "unknown")},
});

}  // namespace

QString roleWord(InterfaceSemanticRole role) {
  const auto* found = std::ranges::find(roleWords, role, &std::pair<Role, const char*>::first);
  return found == roleWords.end() ? QString() : word(found->second);
}

QStringList ledgerStateWords(const AccessibilityLedger::Line& line) {
  const InterfaceElement& element = *line.element;
  QStringList words;
  if (element.isProtected) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "protected, its text was not read"));
  if (element.visibility == InterfaceVisibility::hidden) words << word(QT_TRANSLATE_NOOP("quillo::Ledger", "hidden"));
  if (element.visibility == InterfaceVisibility::offscreen)
    words << word(line.isInClosedMenu ? QT_TRANSLATE_NOOP("quillo::Ledger", "in a closed menu")
                                      : QT_TRANSLATE_NOOP("quillo::Ledger", "scrolled out of sight"));
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
  for (const QString& state : ledgerStateWords(line)) words += QStringLiteral(", ") + state;
  return words;
}

}  // namespace quillo
