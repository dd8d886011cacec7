#pragma once

#include "QuilloApp/Interface/TextLabel.h"

namespace quillo {

/// A label that stands back behind the main text, also when the palette changes. Shows plain text.
class QuietLabel : public TextLabel {
 public:
  QuietLabel(const QString& objectName, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void followPalette();
};

}  // namespace quillo
