#include "QuilloApp/Interface/HeadsUpPanel.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/TextLabel.h"
#include "QuilloCore/Concurrency/PendingResult.h"

namespace quillo {
namespace {

constexpr int unit = 8;
constexpr int panelWidth = 46 * unit;
constexpr QSize pictureSize{12 * unit, 8 * unit};
constexpr int accentWidth = unit / 2;
constexpr QRgb failureColor = 0xFFC8'3A'31;  ///< readable beside light and dark

/// Runs on a worker: reading a large picture takes longer than the main loop may wait.
QImage decodePicture(const std::string& png, qreal scale) {
  const QImage image = QImage::fromData(reinterpret_cast<const uchar*>(png.data()), static_cast<int>(png.size()));
  return image.isNull() ? image : image.scaled(pictureSize * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// The screen that shows most of the rectangle, which is in the display's pixels; without one that of the pointer.
QScreen* screenOf(const std::optional<ArtifactRect>& frame) {
  QScreen* best = QGuiApplication::screenAt(QCursor::pos());
  if (best == nullptr) best = QGuiApplication::primaryScreen();
  if (!frame) return best;
  const QRectF wanted(frame->x, frame->y, frame->width, frame->height);
  qreal bestArea = 0;
  for (QScreen* screen : QGuiApplication::screens()) {
    const QRect points = screen->geometry();
    const QRectF shared = wanted & QRectF(points.topLeft(), QSizeF(points.size()) * screen->devicePixelRatio());
    if (shared.width() * shared.height() > bestArea) {
      bestArea = shared.width() * shared.height();
      best = screen;
    }
  }
  return best;
}

}  // namespace

class HeadsUpPanel::Window final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(quillo::HeadsUpPanel)

 public:
  Window()
      : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                             Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus |
                             Qt::WindowTransparentForInput) {
    setObjectName(QStringLiteral("captureHeadsUpPanel"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(tr("Quillo"));

    picture_.setFixedSize(pictureSize);
    picture_.setAlignment(Qt::AlignCenter);
    QFont bold = font();
    bold.setBold(true);
    title_.setFont(bold);
    title_.setTextFormat(Qt::PlainText);
    detail_.setTextFormat(Qt::PlainText);
    detail_.setWordWrap(true);
    QPalette quiet = detail_.palette();
    quiet.setColor(QPalette::WindowText, quietTextColor(quiet, QPalette::WindowText, QPalette::Window));
    detail_.setPalette(quiet);

    auto* lines = new QVBoxLayout;
    lines->setSpacing(unit / 2);
    lines->addStretch();
    lines->addWidget(&title_);
    lines->addWidget(&detail_);
    lines->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, 2 * unit);
    layout->setSpacing(2 * unit);
    layout->addWidget(&picture_);
    layout->addLayout(lines, 1);
    setFixedWidth(panelWidth);
  }

  void say(const QString& title, const QString& detail, bool titleMayWrap) {
    title_.setWordWrap(titleMayWrap);
    const int width = panelWidth - pictureSize.width() - 6 * unit;
    title_.setText(titleMayWrap ? title : title_.fontMetrics().elidedText(title, Qt::ElideRight, width));
    detail_.setText(detail);
    detail_.setVisible(!detail.isEmpty());
    setAccessibleName(detail.isEmpty() ? title : tr("%1. %2").arg(title, detail));
  }

  void sayThatItIsRead(const QString& title) { say(title, tr("Reading window and interface…"), false); }

  /// Beside what went wrong; the palette's own colour stands beside all else.
  void setIsFailure(bool isFailure) {
    isFailure_ = isFailure;
    update();
  }

  void showSymbol(std::string_view name) { picture_.setPixmap(symbolIcon(name).pixmap(4 * unit)); }

  void showImage(QImage image) {
    image.setDevicePixelRatio(devicePixelRatioF());
    QPixmap pixmap = QPixmap::fromImage(std::move(image));
    // A window of the panel's own colour would have no edge.
    QPainter painter(&pixmap);
    painter.setPen(borderColor());
    painter.drawRect(QRectF(QPointF(), pixmap.deviceIndependentSize()).adjusted(0, 0, -1, -1));
    painter.end();
    picture_.setPixmap(pixmap);
  }

  /// Low on the screen, where it covers little of what one reads.
  void appear(const std::optional<ArtifactRect>& windowFrame) {
    layout()->activate();
    const int height = std::max(layout()->totalHeightForWidth(panelWidth), pictureSize.height() + 4 * unit);
    resize(panelWidth, height);
    const QRect screen = screenOf(windowFrame)->availableGeometry();
    move(screen.center().x() - panelWidth / 2, screen.bottom() - height - 6 * unit);
    const bool wasShown = isVisible();
    show();
    raise();
    // Screen readers read a window of this role when it appears, and its name when that changes. The toolkit tells of
    // the name, but takes a window of this kind for a tip that nobody wants to hear of.
    if (wasShown) return;
    QAccessibleEvent appearance(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appearance);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setPen(borderColor());
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const QRect leading(0, 0, accentWidth, height());
    painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), leading),
                     isFailure_ ? QColor(failureColor) : palette().color(QPalette::Highlight));
  }

 private:
  QColor borderColor() const {
    QColor color = palette().color(QPalette::WindowText);
    color.setAlpha(72);
    return color;
  }

  bool isFailure_ = false;
  QLabel picture_;
  TextLabel title_;
  TextLabel detail_;
};

HeadsUpPanel::HeadsUpPanel(TaskGroup& tasks, std::function<TaskExecutor()> makeWorkerExecutor)
    : tasks_(tasks), makeWorkerExecutor_(std::move(makeWorkerExecutor)) {
  QAccessible::installFactory([](const QString& /*className*/, QObject* object) -> QAccessibleInterface* {
    if (auto* window = dynamic_cast<Window*>(object)) return new QAccessibleWidget(window, QAccessible::AlertMessage);
    return nullptr;
  });
}

HeadsUpPanel::~HeadsUpPanel() = default;

HeadsUpPanel::Window& HeadsUpPanel::window() {
  if (!window_) window_ = std::make_unique<Window>();
  return *window_;
}

void HeadsUpPanel::showProgress(const CaptureNotice& notice) {
  window().sayThatItIsRead(QString::fromStdString(notice.title));
  loadPicture(notice.screenshotPNG);
  window().appear(notice.windowFrame);
}

void HeadsUpPanel::showSuccess(const CaptureNotice& notice) {
  window().say(QString::fromStdString(notice.title), messageText(notice.detail), false);
  loadPicture(notice.screenshotPNG);
  window().appear(notice.windowFrame);
}

void HeadsUpPanel::showFailure(const CaptureFailureNotice& notice) {
  shownPNG_.reset();
  window().showSymbol("exclamationmark.triangle");
  window().setIsFailure(true);
  window().say(messageText(notice.message), messageText(notice.remedy.value_or("")), true);
  window().appear(notice.windowFrame);
}

void HeadsUpPanel::hide() {
  shownPNG_.reset();
  if (window_) window_->hide();
}

void HeadsUpPanel::loadPicture(const std::shared_ptr<const std::string>& png) {
  window().setIsFailure(false);
  if (png == shownPNG_) return;
  shownPNG_ = png;
  window().showSymbol("viewfinder");
  tasks_.start([this, png] { return showPicture(png); });
}

Task<> HeadsUpPanel::showPicture(std::shared_ptr<const std::string> png) {
  auto decoded = std::make_shared<PendingResult<QImage>>();
  const qreal scale = window().devicePixelRatioF();
  makeWorkerExecutor_().queue()->post([decoded, png, scale] { decoded->resolve(decodePicture(*png, scale)); });
  Task<QImage> waiting = waitFor(decoded);
  QImage image = co_await std::move(waiting);
  if (png == shownPNG_ && !image.isNull()) window().showImage(std::move(image));
}

}  // namespace quillo
