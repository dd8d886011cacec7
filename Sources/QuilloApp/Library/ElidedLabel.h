#pragma once

#include <QLabel>

namespace quillo {

/// One line of plain text that is cut with an ellipsis where it does not fit, stands at the side from which the window
/// is read, and never widens what it stands in.
class ElidedLabel : public QLabel {
 public:
  ElidedLabel(const QString& objectName, QWidget* parent);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quillo
