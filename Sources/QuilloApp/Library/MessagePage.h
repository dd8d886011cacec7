#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <cstdint>

namespace quillo {

/// Stands in the library where no capture can be shown, and says why and what may be done.
class MessagePage : public QWidget {
  Q_OBJECT

 public:
  enum class Way : std::uint8_t { none, retry, discard };

  struct Message {
    QString title;
    QString text = {};
    bool isTrouble = false;
    Way way = Way::none;
  };

  explicit MessagePage(QWidget* parent = nullptr);

  void show(const Message& message);
  using QWidget::show;

 Q_SIGNALS:
  void retryRequested();
  void discardRequested();

 private:
  QLabel* symbol_;
  QLabel* title_;
  QLabel* text_;
  QPushButton* retry_;
  QPushButton* discard_;
};

}  // namespace quillo
