#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "QuilloCore/Support/JsonFields.h"

namespace quillo {

/// What an element is, independent of the toolkit that drew it. Encoded by name.
enum class InterfaceSemanticRole : std::uint8_t {
  application,
  window,
  dialog,
  sheet,
  section,
  group,
  navigation,
  toolbar,
  tabGroup,
  tab,
  document,
  webArea,
  scrollArea,
  heading,
  text,
  textField,
  textArea,
  searchField,
  button,
  disclosure,
  link,
  checkbox,
  radioButton,
  switchControl,
  list,
  listItem,
  table,
  row,
  column,
  cell,
  tree,
  treeItem,
  menuBar,
  menu,
  menuItem,
  comboBox,
  popUpButton,
  slider,
  stepper,
  scrollBar,
  valueIndicator,
  image,
  icon,
  progressIndicator,
  splitGroup,
  browser,
  unknown
};

template <>
struct EnumerationNames<InterfaceSemanticRole> {
  static constexpr std::array<std::string_view, 47> names = {
      "application",    "window",      "dialog",      "sheet",
      "section",        "group",       "navigation",  "toolbar",
      "tabGroup",       "tab",         "document",    "webArea",
      "scrollArea",     "heading",     "text",        "textField",
      "textArea",       "searchField", "button",      "disclosure",
      "link",           "checkbox",    "radioButton", "switchControl",
      "list",           "listItem",    "table",       "row",
      "column",         "cell",        "tree",        "treeItem",
      "menuBar",        "menu",        "menuItem",    "comboBox",
      "popUpButton",    "slider",      "stepper",     "scrollBar",
      "valueIndicator", "image",       "icon",        "progressIndicator",
      "splitGroup",     "browser",     "unknown"};
};

}  // namespace quillo
