#include "QuilloApp/Setup/SetupLayout.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include "QuilloApp/Interface/QuietText.h"

namespace quillo::setup {
namespace {

class QuietLabel final : public QLabel {
 public:
  using QLabel::QLabel;

  void followPalette() {
    const QPalette desktop = QGuiApplication::palette();
    const QColor color = quietTextColor(desktop, QPalette::WindowText, QPalette::Window);
    if (palette().color(QPalette::WindowText) == color) return;
    QPalette quiet;
    quiet.setColor(QPalette::WindowText, color);
    setPalette(quiet);
  }

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) followPalette();
    QLabel::changeEvent(event);
  }
};

void makeWrapping(QLabel& label, const QString& objectName, const QString& text) {
  label.setObjectName(objectName);
  label.setWordWrap(true);
  label.setTextFormat(Qt::PlainText);
  label.setText(text);
}

}  // namespace

QString qString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* makeHeading(QWidget* parent, const QString& text) {
  auto* label = new QLabel(text, parent);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  return label;
}

QLabel* makeParagraph(QWidget* parent, const QString& objectName, const QString& text) {
  auto* label = new QLabel(parent);
  makeWrapping(*label, objectName, text);
  return label;
}

QLabel* makeQuietParagraph(QWidget* parent, const QString& objectName, const QString& text) {
  auto* label = new QuietLabel(parent);
  makeWrapping(*label, objectName, text);
  label->followPalette();
  return label;
}

void setOptionalText(QLabel& label, const QString& text) {
  label.setText(text);
  label.setVisible(!text.isEmpty());
}

}  // namespace quillo::setup
