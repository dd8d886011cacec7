#include "QuilloCore/Semantics/InterfaceRoleNames.h"

namespace quillo {

std::string_view roleName(InterfaceSemanticRole role) {
  using enum InterfaceSemanticRole;
  switch (role) {
    case tabGroup: return "tab group";
    case webArea: return "web content";
    case scrollArea: return "scroll area";
    case textField: return "text field";
    case textArea: return "text area";
    case searchField: return "search field";
    case radioButton: return "radio button";
    case switchControl: return "switch";
    case listItem: return "list item";
    case tree: return "outline";
    case treeItem: return "outline row";
    case menuBar: return "menu bar";
    case menuItem: return "menu item";
    case comboBox: return "combo box";
    case popUpButton: return "pop-up button";
    case scrollBar: return "scroll bar";
    case valueIndicator: return "value indicator";
    case progressIndicator: return "progress indicator";
    case splitGroup: return "split group";
    default: return nameOf(role);
  }
}

}  // namespace quillo
