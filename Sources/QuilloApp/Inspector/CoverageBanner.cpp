#include "QuilloApp/Inspector/CoverageBanner.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <string_view>

#include "QuilloApp/Inspector/CoverageSummary.h"
#include "QuilloApp/Inspector/FolioLayout.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/TextLabel.h"

namespace quillo {

CoverageBanner::CoverageBanner(QWidget* parent)
    : QWidget(parent),
      symbol_(new QLabel(this)),
      headline_(new TextLabel(this)),
      more_(
          folio::makeToolButton(this, QStringLiteral("coverageMore"), tr("&Details"), tr("Details of what was read"))),
      details_(new QPlainTextEdit(this)) {
  symbol_->setObjectName(QStringLiteral("coverageSymbol"));
  headline_->setObjectName(QStringLiteral("coverage"));
  headline_->setTextFormat(Qt::PlainText);
  headline_->setWordWrap(true);
  more_->setCheckable(true);
  details_->setObjectName(QStringLiteral("coverageDetails"));
  details_->setAccessibleName(tr("What was read and what was left out"));
  details_->setReadOnly(true);
  details_->setTabChangesFocus(true);
  details_->hide();
  connect(more_, &QToolButton::toggled, details_, &QWidget::setVisible);

  auto* line = new QHBoxLayout;
  line->setSpacing(folio::unit);
  line->addWidget(symbol_);
  line->addWidget(headline_, 1);
  line->addWidget(more_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(folio::unit / 2);
  layout->addLayout(line);
  layout->addWidget(details_);
}

void CoverageBanner::setSummary(const CoverageSummary& summary) {
  isPartial_ = summary.isPartial;
  drawSymbol();
  symbol_->setAccessibleName(summary.isPartial ? tr("Partial") : tr("Complete"));
  headline_->setText(summary.headline);
  details_->setPlainText(summary.details.join(QLatin1Char('\n')));
  const auto lines = std::clamp<qsizetype>(summary.details.size(), 2, 5);
  details_->setFixedHeight(static_cast<int>(lines) * details_->fontMetrics().lineSpacing() + 2 * folio::unit);
  more_->setVisible(!summary.details.isEmpty());
  if (summary.details.isEmpty()) more_->setChecked(false);
}

void CoverageBanner::drawSymbol() {
  const std::string_view symbol = isPartial_ ? "exclamationmark.triangle" : "checkmark.circle";
  symbol_->setPixmap(symbolIcon(symbol).pixmap(2 * folio::unit));
}

void CoverageBanner::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) drawSymbol();
  QWidget::changeEvent(event);
}

}  // namespace quillo
