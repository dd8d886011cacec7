#include "QuilloApp/Setup/SetupLayout.h"

#include "QuilloApp/Interface/QuietLabel.h"
#include "QuilloApp/Interface/TextLabel.h"

namespace quillo::setup {
namespace {

QLabel* wrapping(QLabel* label, const QString& text) {
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  return label;
}

}  // namespace

QString qString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* makeHeading(QWidget* parent, const QString& text) {
  auto* label = new TextLabel(parent, text);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  return label;
}

QLabel* makeParagraph(QWidget* parent, const QString& objectName, const QString& text) {
  auto* label = new TextLabel(parent);
  label->setObjectName(objectName);
  return wrapping(label, text);
}

QLabel* makeQuietParagraph(QWidget* parent, const QString& objectName, const QString& text) {
  return wrapping(new QuietLabel(objectName, parent), text);
}

void setOptionalText(QLabel& label, const QString& text) {
  label.setText(text);
  label.setVisible(!text.isEmpty());
}

}  // namespace quillo::setup
