#include "FolioFixture.h"

#include <QBuffer>
#include <QPainter>
#include <variant>

#include "QuilloCore/Artifacts/ArtifactProjection.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
namespace {

constexpr double pixelsPerPoint = 2;

QString textOf(const AccessibilityNode& node, std::string_view attribute) {
  const auto* value = node.attribute(attribute);
  const auto* text = value != nullptr ? std::get_if<std::string>(value) : nullptr;
  return text != nullptr ? QString::fromStdString(*text) : QString();
}

/// Every frame with its texts, as a window might show them.
std::string drawing(const AccessibilitySnapshot& snapshot) {
  const ArtifactRect window = *snapshot.nodes.front().frame;
  QImage image(QSizeF(window.width * pixelsPerPoint, window.height * pixelsPerPoint).toSize(), QImage::Format_RGB32);
  image.fill(QColor(250, 250, 252));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(pixelsPerPoint, pixelsPerPoint);
  painter.translate(-window.x, -window.y);
  for (const AccessibilityNode& node : snapshot.nodes) {
    if (!node.frame || node.id == 0) continue;
    const QRectF frame(node.frame->x, node.frame->y, node.frame->width, node.frame->height);
    const bool isButton = node.role == "AXButton";
    if (node.role != "AXStaticText" && node.role != "AXGroup") {
      painter.setPen(QColor(190, 194, 204));
      painter.setBrush(isButton ? QColor(52, 101, 164) : QColor(Qt::white));
      painter.drawRoundedRect(frame, 4, 4);
    }
    painter.setPen(isButton ? Qt::white : Qt::black);
    const QString value = textOf(node, "AXValue");
    painter.drawText(frame.adjusted(6, 2, -6, -2), Qt::AlignVCenter | Qt::TextWordWrap,
                     value.isEmpty() ? textOf(node, "AXTitle") : value);
  }
  painter.end();
  QBuffer png;
  image.save(&png, "PNG");
  return png.data().toStdString();
}

}  // namespace

FolioFixture::FolioFixture() {
  pane = std::make_unique<InspectorPane>(*model, tasks);
  pane->resize(784, 680);
  observation = model->observe([this](QuilloModelChanges changes) { pane->update(changes); });
}

FolioFixture::~FolioFixture() {
  observation = {};
  pane.reset();
  await(tasks.whenEmpty());
}

ContextArtifactDraft FolioFixture::draft(std::string_view notation) {
  ContextArtifactDraft made;
  made.accessibilitySnapshot = makeSnapshot(notation);
  const AccessibilityNode& window = made.accessibilitySnapshot.nodes.front();
  made.manifest.id = identifiers.makeUUID();
  made.manifest.createdAt = made.manifest.modifiedAt = wallClock.present;
  made.manifest.title = textOf(window, "AXTitle").toStdString();
  made.manifest.source = {"Mail", std::nullopt, made.manifest.title, window.frame};
  made.screenshotPNG = drawing(made.accessibilitySnapshot);
  made.interfaceObservation = ArtifactProjection::standard().makeObservation(made.accessibilitySnapshot);
  return made;
}

void FolioFixture::pass() {
  loop.runReady();
  application.processEvents();
}

bool FolioFixture::passUntil(const std::function<bool()>& condition) {
  return loop.runUntil([&] {
    application.processEvents();
    return condition();
  });
}

void FolioFixture::open(const UUID& id) {
  pane->show();
  start();
  waitFor(id);
}

void FolioFixture::waitFor(const UUID& id) {
  model->select(id);
  EXPECT_TRUE(passUntil([&] { return state().selectedArtifact && state().selectedArtifact->id() == id; }));
  pass();
  EXPECT_TRUE(passUntil([&] { return tasks.isEmpty(); }));
  pass();
}

}  // namespace quillo::test
