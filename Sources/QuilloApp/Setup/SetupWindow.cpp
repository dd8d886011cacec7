#include "QuilloApp/Setup/SetupWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <chrono>

#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Model/QuilloUpdateController.h"
#include "QuilloApp/Setup/SettingsPane.h"
#include "QuilloApp/Setup/SetupLayout.h"

namespace quillo {
namespace {

using setup::unit;

/// Permissions change behind our back and nobody tells; this is how long an open window may lag.
constexpr std::chrono::seconds recheckInterval{2};

}  // namespace

SetupWindow::SetupWindow(QuilloModel& model, TaskGroup& tasks) : model_(model) {
  setObjectName(QStringLiteral("setup"));
  setWindowTitle(tr("Setup & Shortcuts"));
  setWindowIcon(applicationIcon());
  setMinimumWidth(64 * unit);

  auto* recheck = new QPushButton(symbolIcon("arrow.clockwise"), tr("&Recheck"), this);
  recheck->setObjectName(QStringLiteral("recheck"));
  recheck->setAutoDefault(false);
  connect(recheck, &QPushButton::clicked, this, [this] { refresh(); });
  auto* done = new QPushButton(tr("&Done"), this);
  done->setObjectName(QStringLiteral("done"));
  done->setDefault(true);
  connect(done, &QPushButton::clicked, this, [this] {
    model_.completeOnboarding();
    close();
  });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(recheck);
  buttons->addStretch();
  buttons->addWidget(done);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 2 * unit);
  layout->setSpacing(2 * unit);
  layout->addWidget(new SettingsPane(model, tasks, this), 1);
  layout->addLayout(buttons);

  recheck_.setInterval(recheckInterval);
  connect(&recheck_, &QTimer::timeout, this, [this] { model_.recheckCapturePermissions(); });
}

void SetupWindow::refresh() {
  model_.refreshSettings();
  model_.updates().lookAgain();
}

void SetupWindow::present() {
  show();
  raise();
  activateWindow();
}

void SetupWindow::closeEvent(QCloseEvent* event) {
  model_.hideOnboarding();
  event->accept();
}

void SetupWindow::showEvent(QShowEvent* event) {
  refresh();
  recheck_.start();
  QDialog::showEvent(event);
}

void SetupWindow::hideEvent(QHideEvent* event) {
  recheck_.stop();
  QDialog::hideEvent(event);
}

void SetupWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) model_.refreshSettings();
  QDialog::changeEvent(event);
}

}  // namespace quillo
