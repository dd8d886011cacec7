#pragma once

#include <cstdint>
#include <string_view>

namespace quillo {

/// The accessibility bus's roles that the adapter tells apart, by the bus's own numbers.
enum class AtspiRole : std::uint32_t {
  alert = 2,
  checkBox = 7,
  checkMenuItem = 8,
  columnHeader = 10,
  comboBox = 11,
  dialog = 16,
  fileChooser = 19,
  filler = 20,
  frame = 23,
  icon = 26,
  image = 27,
  internalFrame = 28,
  label = 29,
  layeredPane = 30,
  list = 31,
  listItem = 32,
  menu = 33,
  menuBar = 34,
  menuItem = 35,
  pageTab = 37,
  pageTabList = 38,
  panel = 39,
  passwordText = 40,
  popupMenu = 41,
  progressBar = 42,
  pushButton = 43,
  radioButton = 44,
  radioMenuItem = 45,
  rowHeader = 47,
  scrollBar = 48,
  scrollPane = 49,
  slider = 51,
  spinButton = 52,
  splitPane = 53,
  statusBar = 54,
  table = 55,
  tableCell = 56,
  tableColumnHeader = 57,
  tableRowHeader = 58,
  tearoffMenuItem = 59,
  terminal = 60,
  text = 61,
  toggleButton = 62,
  toolBar = 63,
  toolTip = 64,
  tree = 65,
  treeTable = 66,
  unknown = 67,
  viewport = 68,
  window = 69,
  header = 71,
  footer = 72,
  paragraph = 73,
  application = 75,
  autocomplete = 76,
  entry = 79,
  caption = 81,
  documentFrame = 82,
  heading = 83,
  page = 84,
  section = 85,
  form = 87,
  link = 88,
  tableRow = 90,
  treeItem = 91,
  documentSpreadsheet = 92,
  documentPresentation = 93,
  documentText = 94,
  documentWeb = 95,
  documentEmail = 96,
  comment = 97,
  listBox = 98,
  grouping = 99,
  notification = 101,
  infoBar = 102,
  levelBar = 103,
  titleBar = 104,
  blockQuote = 105,
  definition = 108,
  article = 109,
  landmark = 110,
  log = 111,
  marquee = 112,
  math = 113,
  timer = 115,
  staticText = 116,
  descriptionList = 121,
  descriptionTerm = 122,
  descriptionValue = 123,
  footnote = 124,
  pushButtonMenu = 129,
};

/// Bit positions in a state set.
namespace AtspiState {
inline constexpr unsigned active = 1;
inline constexpr unsigned busy = 3;
inline constexpr unsigned checked = 4;
inline constexpr unsigned editable = 7;
inline constexpr unsigned expandable = 9;
inline constexpr unsigned expanded = 10;
inline constexpr unsigned focusable = 11;
inline constexpr unsigned focused = 12;
inline constexpr unsigned horizontal = 14;
inline constexpr unsigned modal = 16;
inline constexpr unsigned multiLine = 17;
inline constexpr unsigned pressed = 20;
inline constexpr unsigned selectable = 22;
inline constexpr unsigned selected = 23;
inline constexpr unsigned sensitive = 24;
inline constexpr unsigned showing = 25;
inline constexpr unsigned vertical = 29;
inline constexpr unsigned visible = 30;
inline constexpr unsigned managesDescendants = 31;
inline constexpr unsigned indeterminate = 32;
inline constexpr unsigned required = 33;
inline constexpr unsigned invalidEntry = 36;
inline constexpr unsigned visited = 40;
inline constexpr unsigned checkable = 41;
inline constexpr unsigned hasPopup = 42;
}  // namespace AtspiState

/// The accessibility role and subrole that a role of the bus stands for; the subrole may be empty. What depends on more
/// than the role (editors, switches, navigation landmarks) is refined by AtspiAttributeMapping.
struct AtspiRoleNames {
  std::string_view role;
  std::string_view subrole;
};
AtspiRoleNames roleNames(AtspiRole role);

bool isTopLevelWindow(AtspiRole role);
bool isTable(AtspiRole role);
bool isColumnHeader(AtspiRole role);
bool isTableCell(AtspiRole role);  ///< headers included

/// Roles that one acts on: their actions are read and whether they are enabled is told.
bool isInteractive(AtspiRole role);
/// Roles whose text stands in the Text interface and not in the name.
bool mayHoldText(AtspiRole role);
bool hasRangeValue(AtspiRole role);
/// Roles that are nothing but a text when they have no children.
bool isTextBlock(AtspiRole role);
bool isDocument(AtspiRole role);

}  // namespace quillo
