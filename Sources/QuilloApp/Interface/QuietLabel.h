#pragma once

#include <QLabel>

namespace quillo {

/// A label that stands back behind the main text, also when the palette changes. Shows plain text.
class QuietLabel : public QLabel {
 public:
  QuietLabel(const QString& objectName, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void followPalette();
};

}  // namespace quillo
