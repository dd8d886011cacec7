#include "QuilloApp/Library/MessagePage.h"

#include <QVBoxLayout>

#include "QuilloApp/Interface/Symbols.h"

namespace quillo {
namespace {

constexpr int unit = 8;

QLabel* centredLabel(QWidget* parent, const char* objectName) {
  auto* label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(objectName));
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

MessagePage::MessagePage(QWidget* parent)
    : QWidget(parent),
      symbol_(centredLabel(this, "messageSymbol")),
      title_(centredLabel(this, "messageTitle")),
      text_(centredLabel(this, "messageText")),
      retry_(new QPushButton(tr("&Try Again"), this)),
      discard_(new QPushButton(symbolIcon("trash"), tr("Move to &Trash"), this)) {
  setObjectName(QStringLiteral("message"));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  large.setBold(true);
  title_->setFont(large);
  retry_->setObjectName(QStringLiteral("retry"));
  discard_->setObjectName(QStringLiteral("discard"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6 * unit, 4 * unit, 6 * unit, 4 * unit);
  layout->setSpacing(2 * unit);
  layout->addStretch(2);
  for (QLabel* label : {symbol_, title_, text_}) layout->addWidget(label);
  for (QPushButton* button : {retry_, discard_}) layout->addWidget(button, 0, Qt::AlignCenter);
  layout->addStretch(3);
  connect(retry_, &QPushButton::clicked, this, &MessagePage::retryRequested);
  connect(discard_, &QPushButton::clicked, this, &MessagePage::discardRequested);
}

void MessagePage::show(const Message& message) {
  const QIcon icon = message.isTrouble ? symbolIcon("exclamationmark.triangle") : applicationIcon();
  symbol_->setPixmap(icon.pixmap(8 * unit));
  symbol_->setAccessibleName(message.isTrouble ? tr("Problem") : tr("Quillo"));
  title_->setText(message.title);
  text_->setText(message.text);
  retry_->setVisible(message.way == Way::retry);
  discard_->setVisible(message.way == Way::discard);
}

}  // namespace quillo
