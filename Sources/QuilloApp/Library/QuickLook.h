#pragma once

#include <QDialog>
#include <QImage>
#include <QPointer>

namespace quillo {

class Thumbnails;

/// The screenshot of one capture as large as the window allows, and never larger than it is. Space and Escape close it;
/// the other keys are the list's.
class QuickLook : public QDialog {
  Q_OBJECT

 public:
  /// Of the longer side; a picture of this size still fits into the cache of pictures.
  static constexpr int maximumPixels = 3400;

  QuickLook(Thumbnails& thumbnails, QWidget* keyReceiver, QWidget* parent);

  void show(const QString& title, const QString& screenshotPath);
  using QDialog::show;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  Thumbnails& thumbnails_;
  QPointer<QWidget> keyReceiver_;
  QString path_;
};

}  // namespace quillo
