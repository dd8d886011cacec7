#include "QuilloApp/Interface/Symbols.h"

#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>

// Outside of any namespace, as the toolkit's macro wants it.
static void initializeSymbols() {
  Q_INIT_RESOURCE(Symbols);
}

namespace quillo {
namespace {

/// Draws a symbol whose strokes are "currentColor".
class SymbolEngine final : public QIconEngine {
 public:
  explicit SymbolEngine(QByteArray source) : source_(std::move(source)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
    QByteArray colored = source_;
    colored.replace("currentColor", QGuiApplication::palette().color(group, role).name().toLatin1());
    QSvgRenderer renderer(colored);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(painter, rect);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SymbolEngine(source_); }

 private:
  QByteArray source_;
};

QByteArray readSymbol(const QString& name) {
  initializeSymbols();
  QFile file(QStringLiteral(":/symbols/") + name + QStringLiteral(".svg"));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

QIcon symbolIcon(std::string_view name) {
  QByteArray source = readSymbol(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
  return name.empty() || source.isEmpty() ? QIcon() : QIcon(new SymbolEngine(std::move(source)));
}

QIcon applicationIcon() {
  return QIcon(new SymbolEngine(readSymbol(QStringLiteral("quillo"))));
}

}  // namespace quillo
