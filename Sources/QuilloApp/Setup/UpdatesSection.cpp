#include "QuilloApp/Setup/UpdatesSection.h"

#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <chrono>

#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Model/QuilloUpdateController.h"
#include "QuilloApp/Setup/SetupLayout.h"

namespace quillo {
namespace {

using setup::qString;
using setup::unit;
using Phase = SoftwareUpdateState::Phase;

QCheckBox* makeSwitch(QWidget* parent, const QString& objectName, const QString& text) {
  auto* box = new QCheckBox(text, parent);
  box->setObjectName(objectName);
  return box;
}

QPushButton* makeButton(QWidget* parent, const QString& objectName, const QString& text = {}) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(objectName);
  button->setAutoDefault(false);
  return button;
}

void setQuietly(QCheckBox& box, bool isOn) {
  const QSignalBlocker quietly(&box);
  box.setChecked(isOn);
}

}  // namespace

UpdatesSection::UpdatesSection(QuilloModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      status_(setup::makeParagraph(this, QStringLiteral("updateStatus"))),
      lastCheck_(setup::makeQuietParagraph(this, QStringLiteral("lastUpdateCheck"))),
      check_(makeButton(this, QStringLiteral("checkForUpdates"), tr("Check for &Updates…"))),
      action_(makeButton(this, QStringLiteral("updateAction"))),
      checksAutomatically_(
          makeSwitch(this, QStringLiteral("checksAutomatically"), tr("Check for updates auto&matically"))),
      downloadsAutomatically_(
          makeSwitch(this, QStringLiteral("downloadsAutomatically"), tr("Do&wnload updates automatically"))) {
  connect(check_, &QPushButton::clicked, this, [this] { model_.updates().checkForUpdates(); });
  connect(action_, &QPushButton::clicked, this, &UpdatesSection::act);
  connect(checksAutomatically_, &QCheckBox::toggled, this,
          [this](bool isOn) { model_.updates().setChecksAutomatically(isOn); });
  connect(downloadsAutomatically_, &QCheckBox::toggled, this,
          [this](bool isOn) { model_.updates().setDownloadsAutomatically(isOn); });

  auto* texts = new QVBoxLayout;
  texts->setSpacing(unit / 2);
  texts->addWidget(status_);
  texts->addWidget(lastCheck_);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(unit);
  buttons->addWidget(action_);
  buttons->addWidget(check_);
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins({});
  layout->setHorizontalSpacing(2 * unit);
  layout->setVerticalSpacing(unit);
  layout->setColumnStretch(0, 1);
  layout->addLayout(texts, 0, 0);
  layout->addLayout(buttons, 0, 1, Qt::AlignTop);
  layout->addWidget(checksAutomatically_, 1, 0, 1, 2);
  layout->addWidget(downloadsAutomatically_, 2, 0, 1, 2);

  observation_ = model_.observe([this](QuilloModelChanges changes) {
    if (changes.contains(QuilloModelField::softwareUpdates)) update();
  });
  update();
}

void UpdatesSection::act() {
  switch (model_.state().softwareUpdates.phase) {
    case Phase::available: return model_.updates().download();
    case Phase::downloaded: return model_.updates().install();
    default: return model_.updates().cancel();
  }
}

QString UpdatesSection::statusText() const {
  const SoftwareUpdateState& state = model_.state().softwareUpdates;
  const QString version = qString(state.newVersion);
  switch (state.phase) {
    case Phase::looking: return tr("Asking the system's package manager…");
    case Phase::unavailable:
    case Phase::failed: return messageText(state.message);
    case Phase::ready: return tr("Updates come from the system's package manager.");
    case Phase::checking: return tr("Checking for updates…");
    case Phase::upToDate: return tr("Quillo is up to date.");
    case Phase::available: return tr("Quillo %1 is available.").arg(version);
    case Phase::downloading: return tr("Downloading Quillo %1…").arg(version);
    case Phase::downloaded: return tr("Quillo %1 is downloaded and can be installed.").arg(version);
    case Phase::installing: return tr("Installing Quillo %1…").arg(version);
    case Phase::installed: return tr("Quillo %1 is installed. It is used from the next start on.").arg(version);
  }
  return {};
}

QString UpdatesSection::lastCheckText() const {
  const auto& date = model_.state().softwareUpdates.lastCheck;
  if (!date) return tr("Not checked yet");
  const auto seconds = std::chrono::floor<std::chrono::seconds>(*date).time_since_epoch().count();
  return tr("Last checked %1").arg(locale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat));
}

void UpdatesSection::update() {
  const SoftwareUpdateState& state = model_.state().softwareUpdates;
  const bool isAvailable = state.phase != Phase::unavailable;
  status_->setText(statusText());
  setup::setOptionalText(*lastCheck_, isAvailable ? lastCheckText() : QString());
  check_->setEnabled(state.canCheck());
  setQuietly(*checksAutomatically_, state.checksAutomatically);
  setQuietly(*downloadsAutomatically_, state.downloadsAutomatically);
  checksAutomatically_->setEnabled(isAvailable);
  downloadsAutomatically_->setEnabled(isAvailable);

  const bool canStop = state.phase == Phase::checking || state.phase == Phase::downloading;
  action_->setVisible(canStop || state.phase == Phase::available || state.phase == Phase::downloaded);
  action_->setText(canStop ? tr("S&top") : state.phase == Phase::available ? tr("Down&load") : tr("&Install"));
}

}  // namespace quillo
