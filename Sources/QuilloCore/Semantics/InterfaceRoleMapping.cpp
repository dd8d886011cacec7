#include "QuilloCore/Semantics/InterfaceRoleMapping.h"

#include <algorithm>
#include <array>

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

struct RoleRow {
  std::string_view accessibilityRole;
  std::string_view subrole;  // empty: any
  InterfaceSemanticRole role;
};

// Sorted by accessibility role; within one role the refinements come before the row for any subrole.
constexpr auto rows = std::to_array<RoleRow>({
    {"AXApplication", "", application},
    {"AXBrowser", "", browser},
    {"AXButton", "AXDisclosureTriangle", disclosure},
    {"AXButton", "", button},
    {"AXCell", "", cell},
    {"AXCheckBox", "", checkbox},
    {"AXColumn", "", column},
    {"AXComboBox", "", comboBox},
    {"AXDisclosureTriangle", "", disclosure},
    {"AXDocument", "", document},
    {"AXGenericElement", "", group},
    {"AXGroup", "", group},
    {"AXHeading", "", heading},
    {"AXIcon", "", icon},
    {"AXImage", "", image},
    {"AXIncrementor", "", stepper},
    {"AXLandmarkNavigation", "", navigation},
    {"AXLayoutArea", "", group},
    {"AXLink", "", link},
    {"AXList", "", list},
    {"AXListItem", "", listItem},
    {"AXMenu", "", menu},
    {"AXMenuBar", "", menuBar},
    {"AXMenuItem", "", menuItem},
    {"AXNavigation", "", navigation},
    {"AXOutline", "", tree},
    {"AXOutlineRow", "", treeItem},
    {"AXPopUpButton", "", popUpButton},
    {"AXProgressIndicator", "", progressIndicator},
    {"AXRadioButton", "", radioButton},
    {"AXRadioGroup", "", tabGroup},
    {"AXRow", "", row},
    {"AXScrollArea", "", scrollArea},
    {"AXScrollBar", "", scrollBar},
    {"AXSearchField", "", searchField},
    {"AXSlider", "", slider},
    {"AXSplitGroup", "", splitGroup},
    {"AXStaticText", "", text},
    {"AXSwitch", "", switchControl},
    {"AXTab", "", tab},
    {"AXTabGroup", "", tabGroup},
    {"AXTable", "", table},
    {"AXTextArea", "", textArea},
    {"AXTextField", "AXSearchField", searchField},
    {"AXTextField", "", textField},
    {"AXToolbar", "", toolbar},
    {"AXValueIndicator", "", valueIndicator},
    {"AXWebArea", "", webArea},
    {"AXWindow", "AXDialog", dialog},
    {"AXWindow", "AXSystemDialog", dialog},
    {"AXWindow", "AXSheet", sheet},
    {"AXWindow", "", window},
});

static_assert(std::ranges::is_sorted(rows, {}, &RoleRow::accessibilityRole));

}  // namespace

InterfaceSemanticRole semanticRole(std::string_view accessibilityRole, const RareOptional<std::string>& subrole) {
  for (const RoleRow& row : std::ranges::equal_range(rows, accessibilityRole, {}, &RoleRow::accessibilityRole)) {
    if (row.subrole.empty() || (subrole && row.subrole == *subrole)) return row.role;
  }
  return unknown;
}

}  // namespace quillo
