// Owns the clipboard, or prints what is on it. Usage: QtClipboardProgram own-image|own-text|read

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QString>
#include <cstdio>

int main(int argumentCount, char** arguments) {
  QGuiApplication application(argumentCount, arguments);
  QClipboard* clipboard = QGuiApplication::clipboard();
  const QString deed = QString::fromLocal8Bit(arguments[1]);
  if (deed == "read") {
    const QMimeData* data = clipboard->mimeData();
    const QImage image = clipboard->image();
    QJsonObject found;
    found["image"] = image.isNull() ? QJsonValue() : QJsonArray{image.width(), image.height()};
    found["text"] = data->hasText() ? QJsonValue(data->text()) : QJsonValue();
    QStringList types = data->formats();
    types.sort();
    found["types"] = QJsonArray::fromStringList(types);
    std::puts(QJsonDocument(found).toJson(QJsonDocument::Compact).constData());
    return 0;
  }
  if (deed == "own-image") {
    QImage image(1500, 800, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) image.setPixel(x, y, qRgb(x * 3 % 256, y * 5 % 256, (x ^ y) % 256));
    }
    clipboard->setImage(image);
  } else {
    clipboard->setText(QString::fromUtf8("Grüße, 世界 😀\n"));
  }
  return QGuiApplication::exec();
}
