#include "QuilloApp/Setup/SetupWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Model/QuilloUpdateController.h"
#include "QuilloApp/Setup/GuidePane.h"
#include "QuilloApp/Setup/SettingsPane.h"
#include "QuilloApp/Setup/SetupLayout.h"

namespace quillo {
namespace {

using setup::unit;

/// Permissions change behind our back and nobody tells; this is how long an open window may lag.
constexpr std::chrono::seconds recheckInterval{2};

}  // namespace

SetupWindow::SetupWindow(QuilloModel& model, TaskGroup& tasks)
    : model_(model), tasks_(tasks), settings_(makeSettingsPage(tasks)) {
  setObjectName(QStringLiteral("setup"));
  setWindowIcon(applicationIcon());
  setMinimumWidth(64 * unit);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 2 * unit);
  layout->addWidget(settings_);

  recheck_.setInterval(recheckInterval);
  connect(&recheck_, &QTimer::timeout, this, [this] { model_.recheckCapturePermissions(); });
}

QWidget* SetupWindow::makeSettingsPage(TaskGroup& tasks) {
  auto* page = new QWidget(this);
  const auto makeButton = [&](const QString& objectName, const QString& text) {
    auto* button = new QPushButton(text, page);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    return button;
  };
  auto* recheck = makeButton(QStringLiteral("recheck"), tr("&Recheck"));
  recheck->setIcon(symbolIcon("arrow.clockwise"));
  connect(recheck, &QPushButton::clicked, this, [this] { refresh(); });
  auto* guide = makeButton(QStringLiteral("openGuide"), tr("Show &Guide"));
  connect(guide, &QPushButton::clicked, this, &SetupWindow::showGuide);
  auto* done = makeButton(QStringLiteral("done"), tr("&Done"));
  done->setDefault(true);
  connect(done, &QPushButton::clicked, this, &SetupWindow::close);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(unit);
  buttons->addWidget(recheck);
  buttons->addWidget(guide);
  buttons->addStretch();
  buttons->addWidget(done);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins({});
  layout->setSpacing(2 * unit);
  layout->addWidget(new SettingsPane(model_, tasks, page), 1);
  layout->addLayout(buttons);
  return page;
}

QWidget* SetupWindow::makeGuidePage() {
  auto* guide = new GuidePane(model_, tasks_, this);
  connect(guide, &GuidePane::skipped, this, &SetupWindow::close);
  connect(guide, &GuidePane::finished, this, &SetupWindow::complete);
  connect(guide, &GuidePane::attentionWanted, this, [this] {
    raise();
    activateWindow();
  });
  return guide;
}

void SetupWindow::showSettings() {
  setWindowTitle(tr("Setup & Shortcuts"));
  if (guide_ != nullptr) {
    guide_->hide();
    std::exchange(guide_, nullptr)->deleteLater();
  }
  settings_->show();
  adjustSize();
}

void SetupWindow::showGuide() {
  setWindowTitle(tr("Welcome to Quillo"));
  if (guide_ == nullptr) {
    guide_ = makeGuidePage();
    layout()->addWidget(guide_);
  }
  settings_->hide();
  guide_->show();
  adjustSize();
}

void SetupWindow::complete() {
  model_.completeOnboarding();
  close();
}

void SetupWindow::refresh() {
  model_.refreshSettings();
  model_.updates().lookAgain();
}

void SetupWindow::present() {
  if (!isVisible()) model_.isOnboardingCompleted() ? showSettings() : showGuide();
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
  if (!event->spontaneous()) showSettings();  // which ends the guide and its practice window
  QDialog::hideEvent(event);
}

bool SetupWindow::event(QEvent* event) {
  const bool isHandled = QDialog::event(event);
  if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) growToFit();
  return isHandled;
}

void SetupWindow::growToFit() {
  // The toolkit makes no window higher for a text that has come to need more lines.
  const int needed = layout()->totalHeightForWidth(width());
  if (height() < needed) resize(width(), needed);
}

void SetupWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) model_.refreshSettings();
  QDialog::changeEvent(event);
}

}  // namespace quillo
