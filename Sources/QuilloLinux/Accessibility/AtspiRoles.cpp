#include "QuilloLinux/Accessibility/AtspiRoles.h"

#include <algorithm>
#include <array>

namespace quillo {
namespace {

using enum AtspiRole;

struct RoleRow {
  AtspiRole role;
  AtspiRoleNames names;
};

// Ascending by role.
constexpr auto rows = std::to_array<RoleRow>({
    {alert, {"AXWindow", "AXDialog"}},
    {checkBox, {"AXCheckBox", ""}},
    {checkMenuItem, {"AXMenuItem", ""}},
    {columnHeader, {"AXCell", "AXColumnHeader"}},
    {comboBox, {"AXPopUpButton", ""}},
    {dialog, {"AXWindow", "AXDialog"}},
    {fileChooser, {"AXWindow", "AXDialog"}},
    {filler, {"AXGroup", ""}},
    {frame, {"AXWindow", ""}},
    {icon, {"AXImage", ""}},
    {image, {"AXImage", ""}},
    {internalFrame, {"AXGroup", ""}},
    {label, {"AXStaticText", ""}},
    {layeredPane, {"AXGroup", ""}},
    {list, {"AXList", ""}},
    {listItem, {"AXListItem", ""}},
    {menu, {"AXMenu", ""}},
    {menuBar, {"AXMenuBar", ""}},
    {menuItem, {"AXMenuItem", ""}},
    {pageTab, {"AXTab", ""}},
    {pageTabList, {"AXTabGroup", ""}},
    {panel, {"AXGroup", ""}},
    {passwordText, {"AXTextField", "AXSecureTextField"}},
    {popupMenu, {"AXMenu", ""}},
    {progressBar, {"AXProgressIndicator", ""}},
    {pushButton, {"AXButton", ""}},
    {radioButton, {"AXRadioButton", ""}},
    {radioMenuItem, {"AXMenuItem", ""}},
    {rowHeader, {"AXCell", "AXRowHeader"}},
    {scrollBar, {"AXScrollBar", ""}},
    {scrollPane, {"AXScrollArea", ""}},
    {slider, {"AXSlider", ""}},
    {spinButton, {"AXIncrementor", ""}},
    {splitPane, {"AXSplitGroup", ""}},
    {statusBar, {"AXGroup", ""}},
    {table, {"AXTable", ""}},
    {tableCell, {"AXCell", ""}},
    {tableColumnHeader, {"AXCell", "AXColumnHeader"}},
    {tableRowHeader, {"AXCell", "AXRowHeader"}},
    {tearoffMenuItem, {"AXMenuItem", ""}},
    {terminal, {"AXTextArea", ""}},
    {text, {"AXTextField", ""}},
    {toggleButton, {"AXCheckBox", ""}},
    {toolBar, {"AXToolbar", ""}},
    {toolTip, {"AXGroup", ""}},
    {tree, {"AXOutline", ""}},
    {treeTable, {"AXTable", ""}},
    {viewport, {"AXGroup", ""}},
    {window, {"AXWindow", ""}},
    {header, {"AXGroup", ""}},
    {footer, {"AXGroup", ""}},
    {paragraph, {"AXGroup", ""}},
    {application, {"AXApplication", ""}},
    {autocomplete, {"AXTextField", ""}},
    {entry, {"AXTextField", ""}},
    {caption, {"AXGroup", ""}},
    {documentFrame, {"AXDocument", ""}},
    {heading, {"AXHeading", ""}},
    {page, {"AXGroup", ""}},
    {section, {"AXGroup", ""}},
    {form, {"AXGroup", ""}},
    {link, {"AXLink", ""}},
    {tableRow, {"AXRow", ""}},
    {treeItem, {"AXOutlineRow", ""}},
    {documentSpreadsheet, {"AXDocument", ""}},
    {documentPresentation, {"AXDocument", ""}},
    {documentText, {"AXDocument", ""}},
    {documentWeb, {"AXWebArea", ""}},
    {documentEmail, {"AXDocument", ""}},
    {comment, {"AXGroup", ""}},
    {listBox, {"AXList", ""}},
    {grouping, {"AXGroup", ""}},
    {notification, {"AXGroup", ""}},
    {infoBar, {"AXGroup", ""}},
    {levelBar, {"AXProgressIndicator", ""}},
    {titleBar, {"AXGroup", ""}},
    {blockQuote, {"AXGroup", ""}},
    {definition, {"AXGroup", ""}},
    {article, {"AXGroup", ""}},
    {landmark, {"AXGroup", ""}},
    {log, {"AXGroup", ""}},
    {marquee, {"AXGroup", ""}},
    {math, {"AXGroup", ""}},
    {timer, {"AXGroup", ""}},
    {staticText, {"AXStaticText", ""}},
    {descriptionList, {"AXList", ""}},
    {descriptionTerm, {"AXGroup", ""}},
    {descriptionValue, {"AXGroup", ""}},
    {footnote, {"AXGroup", ""}},
    {pushButtonMenu, {"AXPopUpButton", ""}},
});

static_assert(std::ranges::is_sorted(rows, {}, &RoleRow::role));

}  // namespace

AtspiRoleNames roleNames(AtspiRole role) {
  const auto found = std::ranges::lower_bound(rows, role, {}, &RoleRow::role);
  return found != rows.end() && found->role == role ? found->names : AtspiRoleNames{"AXUnknown", ""};
}

bool isTopLevelWindow(AtspiRole role) {
  return role == frame || role == window || role == dialog || role == alert || role == fileChooser;
}

bool isTable(AtspiRole role) {
  return role == table || role == treeTable;
}

bool isColumnHeader(AtspiRole role) {
  return role == columnHeader || role == tableColumnHeader;
}

bool isTableCell(AtspiRole role) {
  return role == tableCell || role == rowHeader || role == tableRowHeader || isColumnHeader(role);
}

bool isInteractive(AtspiRole role) {
  switch (role) {
    case checkBox:
    case checkMenuItem:
    case comboBox:
    case entry:
    case autocomplete:
    case link:
    case listItem:
    case menu:
    case menuItem:
    case pageTab:
    case passwordText:
    case pushButton:
    case pushButtonMenu:
    case radioButton:
    case radioMenuItem:
    case slider:
    case spinButton:
    case text:
    case toggleButton:
    case treeItem:
    case columnHeader:
    case tableColumnHeader: return true;
    default: return false;
  }
}

bool isDocument(AtspiRole role) {
  return role == documentFrame || role == documentSpreadsheet || role == documentPresentation || role == documentText ||
         role == documentWeb || role == documentEmail;
}

bool mayHoldText(AtspiRole role) {
  switch (role) {
    case text:
    case entry:
    case autocomplete:
    case terminal:
    case paragraph:
    case section:
    case heading:
    case spinButton:
    case comboBox:
    case caption:
    case blockQuote:
    case tableCell:
    case comment:
    case footnote: return true;
    default: return isDocument(role);
  }
}

bool isTextBlock(AtspiRole role) {
  return role == paragraph || role == section || role == caption || role == blockQuote || role == comment ||
         role == footnote || role == heading || isTableCell(role);
}

bool hasRangeValue(AtspiRole role) {
  return role == slider || role == spinButton || role == progressBar || role == levelBar || role == scrollBar;
}

}  // namespace quillo
