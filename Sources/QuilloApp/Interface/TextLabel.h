#pragma once

#include <QLabel>

namespace quillo {

/// A label at the side where the window's lines begin, whichever way its own text runs: a path or a captured title then
/// stays beside its symbol in a window that is laid out from right to left. Centred ones stay centred.
class TextLabel : public QLabel {
 public:
  explicit TextLabel(QWidget* parent = nullptr, const QString& text = {});

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void align(Qt::Alignment vertical);
};

}  // namespace quillo
