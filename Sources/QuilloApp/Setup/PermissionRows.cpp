#include "QuilloApp/Setup/PermissionRows.h"

#include <QEvent>
#include <QGridLayout>
#include <QPointer>

#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/TextLabel.h"
#include "QuilloApp/Setup/SetupLayout.h"

namespace quillo {

using setup::unit;

PermissionRows::PermissionRows(QuilloModel& model, TaskGroup& tasks, QWidget* parent)
    : QWidget(parent), model_(model), tasks_(tasks) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins({});
  grid->setHorizontalSpacing(unit);
  grid->setVerticalSpacing(unit / 2);
  grid->setColumnStretch(1, 1);
  rows_ = {makeRow(*grid, ContextCapturePermission::screenRecording),
           makeRow(*grid, ContextCapturePermission::accessibility)};
  observation_ = model_.observe([this](QuilloModelChanges changes) {
    if (changes.contains(QuilloModelField::capturePermissionState)) update();
  });
  update();
}

PermissionRows::Row PermissionRows::makeRow(QGridLayout& grid, ContextCapturePermission permission) {
  const bool isAccessibility = permission == ContextCapturePermission::accessibility;
  const QString id = isAccessibility ? QStringLiteral("accessibility") : QStringLiteral("screenRecording");
  const Row row{.permission = permission,
                .symbol = new QLabel(this),
                .text = new TextLabel(this),
                .advice = setup::makeQuietParagraph(this, id + QStringLiteral("Advice")),
                .button = new QPushButton(isAccessibility ? tr("&Allow…") : tr("&Explain…"), this)};
  const QString name = messageText(displayName(permission));
  row.symbol->setFixedSize(3 * unit, 3 * unit);
  row.text->setObjectName(id + QStringLiteral("State"));
  row.button->setObjectName(id + QStringLiteral("Button"));
  row.button->setAccessibleName(isAccessibility ? tr("Allow %1").arg(name) : tr("Explain %1").arg(name));
  row.button->setAutoDefault(false);
  row.advice->hide();
  connect(row.button, &QPushButton::clicked, this, [this, permission] { request(permission); });
  const int line = grid.rowCount();
  grid.addWidget(row.symbol, line, 0);
  grid.addWidget(row.text, line, 1);
  grid.addWidget(row.button, line, 2);
  grid.addWidget(row.advice, line + 1, 1, 1, 2);
  return row;
}

void PermissionRows::request(ContextCapturePermission permission) {
  tasks_.start([self = QPointer(this), permission]() { return self->ask(permission); });
}

Task<> PermissionRows::ask(ContextCapturePermission permission) {
  const QPointer self(this);
  Task<bool> requesting = model_.requestCapturePermission(permission);
  const bool isGranted = co_await std::move(requesting);
  if (!self || isGranted) co_return;
  const bool isAccessibility = permission == ContextCapturePermission::accessibility;
  setup::setOptionalText(
      *rows_[isAccessibility ? 1 : 0].advice,
      isAccessibility ? tr("The accessibility bus does not answer. Install the package “at-spi2-core”, log out and in "
                           "again, then choose Recheck.")
                      : tr("This display does not let Quillo read the pixels of windows. Log in to an X11 session "
                           "(many login screens offer it as “Xorg”), then choose Recheck."));
}

void PermissionRows::show(Row& row, bool isGranted) {
  const QString name = messageText(displayName(row.permission));
  row.symbol->setPixmap(
      symbolIcon(isGranted ? "checkmark.shield" : "exclamationmark.shield").pixmap(QSize(20, 20), devicePixelRatioF()));
  row.symbol->setAccessibleName(isGranted ? tr("Allowed") : tr("Not allowed"));
  row.text->setText(isGranted ? tr("%1: Allowed").arg(name) : tr("%1: Not allowed yet").arg(name));
  row.button->setVisible(!isGranted);
  if (isGranted) setup::setOptionalText(*row.advice, {});
}

void PermissionRows::update() {
  const ContextCapturePermissionState& state = model_.state().capturePermissionState;
  show(rows_[0], state.screenRecordingGranted);
  show(rows_[1], state.accessibilityGranted);
}

void PermissionRows::changeEvent(QEvent* event) {
  // The symbols are drawn in the palette's colour.
  if (event->type() == QEvent::PaletteChange) update();
  QWidget::changeEvent(event);
}

}  // namespace quillo
