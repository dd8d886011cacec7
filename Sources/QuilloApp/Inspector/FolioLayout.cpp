#include "QuilloApp/Inspector/FolioLayout.h"

#include <QPushButton>

#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/TextLabel.h"

namespace quillo::folio {

QLabel* makeHeading(QWidget* field, const QString& text) {
  auto* label = new TextLabel(field->parentWidget(), text);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  label->setBuddy(field);
  return label;
}

QToolButton* makeToolButton(QWidget* parent, const QString& objectName, const QString& text,
                            const QString& accessibleName) {
  auto* button = new QToolButton(parent);
  button->setObjectName(objectName);
  button->setText(text);
  button->setAccessibleName(accessibleName);
  button->setToolTip(accessibleName);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

QPushButton* makeButton(QWidget* parent, const QString& objectName, const QString& text, std::string_view symbol) {
  auto* button = new QPushButton(symbolIcon(symbol), text, parent);
  button->setObjectName(objectName);
  button->setAutoDefault(false);
  return button;
}

}  // namespace quillo::folio
