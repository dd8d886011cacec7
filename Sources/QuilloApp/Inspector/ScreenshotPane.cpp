#include "QuilloApp/Inspector/ScreenshotPane.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>
#include <cmath>
#include <initializer_list>

#include "QuilloApp/Inspector/FolioLayout.h"
#include "QuilloApp/Inspector/ScreenshotView.h"
#include "QuilloApp/Interface/QuietLabel.h"

namespace quillo {

ScreenshotPane::ScreenshotPane(QWidget* parent)
    : QWidget(parent), view_(new ScreenshotView(this)), zoom_(new QuietLabel(QStringLiteral("zoom"), this)) {
  view_->setObjectName(QStringLiteral("screenshot"));
  view_->setAccessibleName(tr("Screenshot"));
  view_->setToolTip(tr("Plus and minus change the size, 0 shows the whole, 1 its own pixels; drag to move"));
  QLabel* heading = folio::makeHeading(view_, tr("Sc&reenshot"));
  fit_ = folio::makeToolButton(this, QStringLiteral("zoomFit"), tr("Fit"), tr("Show the whole screenshot"));
  whole_ =
      folio::makeToolButton(this, QStringLiteral("zoomWhole"), tr("100%"), tr("Show the screenshot at its own size"));
  smaller_ = folio::makeToolButton(this, QStringLiteral("zoomOut"), QStringLiteral("−"), tr("Smaller screenshot"));
  larger_ = folio::makeToolButton(this, QStringLiteral("zoomIn"), QStringLiteral("+"), tr("Larger screenshot"));
  for (QToolButton* button : {fit_, whole_}) button->setCheckable(true);
  zoom_->setAlignment(Qt::AlignCenter);
  zoom_->setMinimumWidth(zoom_->fontMetrics().horizontalAdvance(QStringLiteral("0000%")));

  auto* bar = new QHBoxLayout;
  bar->setSpacing(folio::unit / 2);
  bar->addWidget(heading, 1);
  for (QWidget* each : std::initializer_list<QWidget*>{smaller_, zoom_, larger_, fit_, whole_}) bar->addWidget(each);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(folio::unit / 2);
  layout->addLayout(bar);
  layout->addWidget(view_, 1);

  connect(fit_, &QToolButton::clicked, this, [this] { view_->setZoom({}); });
  connect(whole_, &QToolButton::clicked, this, [this] { view_->setZoom(1); });
  connect(smaller_, &QToolButton::clicked, view_, [this] { view_->zoomOut(); });
  connect(larger_, &QToolButton::clicked, view_, [this] { view_->zoomIn(); });
  connect(view_, &ScreenshotView::zoomChanged, this, &ScreenshotPane::update);
  update();
}

void ScreenshotPane::update() {
  const bool hasPicture = view_->hasPicture();
  for (QToolButton* each : {fit_, whole_, smaller_, larger_}) each->setEnabled(hasPicture);
  fit_->setChecked(hasPicture && view_->isFitted());
  whole_->setChecked(hasPicture && !view_->isFitted() && std::abs(view_->zoom() - 1) < 0.001);
  const QString percent = QLocale().toString(std::lround(view_->zoom() * 100));
  zoom_->setText(hasPicture ? tr("%1%", "percent").arg(percent) : QString());
}

}  // namespace quillo
