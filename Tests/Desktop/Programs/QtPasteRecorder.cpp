// A Qt editor that writes down what is pasted into it, as paste-recorder.py does.

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QMimeData>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QWidget>

namespace {

void record(const QString& line) {
  QFile file(QCoreApplication::arguments().at(1));
  if (file.open(QIODevice::Append)) file.write(line.toUtf8() + '\n');
}

class Editor : public QTextEdit {
 public:
  using QTextEdit::QTextEdit;

 protected:
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return source->hasImage() || QTextEdit::canInsertFromMimeData(source);
  }
  void insertFromMimeData(const QMimeData* source) override {
    if (source->hasImage()) {
      const auto image = qvariant_cast<QImage>(source->imageData());
      record(QString("image %1x%2").arg(image.width()).arg(image.height()));
      return;
    }
    insertPlainText(source->text());
    const QByteArray array = QJsonDocument(QJsonArray{toPlainText()}).toJson(QJsonDocument::Compact);
    record("text " + QString::fromUtf8(array.mid(1, array.size() - 2)));
  }
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  window.setWindowTitle("Recorder");
  auto* layout = new QVBoxLayout(&window);
  auto* editor = new Editor(&window);
  auto* other = new QLineEdit(&window);
  layout->addWidget(editor);
  layout->addWidget(other);
  editor->setFocus();
  window.resize(400, 300);
  window.show();
  return QApplication::exec();
}
