#include "QuilloApp/Setup/SettingsPane.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Translations.h"
#include "QuilloApp/Setup/PermissionRows.h"
#include "QuilloApp/Setup/SetupLayout.h"
#include "QuilloApp/Setup/ShortcutRows.h"
#include "QuilloApp/Setup/UpdatesSection.h"

namespace quillo {

using setup::makeHeading;
using setup::unit;

SettingsPane::SettingsPane(QuilloModel& model, TaskGroup& tasks, QWidget* parent)
    : QWidget(parent), model_(model), startsAtLogin_(new QCheckBox(tr("&Start Quillo when I log in"), this)) {
  startsAtLogin_->setObjectName(QStringLiteral("startsAtLogin"));
  connect(startsAtLogin_, &QCheckBox::toggled, this, [this](bool isOn) { model_.setStartsAtLogin(isOn); });

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(unit);
  const auto addSection = [&](const QString& title, QWidget* contents) {
    if (layout->count() > 0) layout->addSpacing(unit);
    layout->addWidget(makeHeading(this, title));
    layout->addWidget(contents);
  };
  addSection(tr("Access"), new PermissionRows(model, tasks, this));
  addSection(tr("Shortcuts"), new ShortcutRows(model, this));
  addSection(tr("Startup"), startsAtLogin_);
  addSection(tr("Captures"), makeStorageRow());
  addSection(tr("Updates"), new UpdatesSection(model, this));
  layout->addStretch();

  observation_ = model_.observe([this](QuilloModelChanges /*changes*/) { update(); });
  update();
}

QWidget* SettingsPane::makeStorageRow() {
  auto* row = new QWidget(this);
  libraryPath_ = setup::makeParagraph(row, QStringLiteral("libraryPath"));
  libraryPath_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  libraryPath_->setAccessibleDescription(tr("Where captures are stored"));
  librarySize_ = setup::makeQuietParagraph(row, QStringLiteral("librarySize"));
  auto* open = new QPushButton(symbolIcon("folder"), tr("&Open Folder"), row);
  open->setObjectName(QStringLiteral("openLibraryFolder"));
  open->setAutoDefault(false);
  connect(open, &QPushButton::clicked, this, [this] { model_.revealLibrary(); });

  auto* texts = new QVBoxLayout;
  texts->setSpacing(unit / 2);
  texts->addWidget(libraryPath_);
  texts->addWidget(librarySize_);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  layout->setSpacing(2 * unit);
  layout->addLayout(texts, 1);
  layout->addWidget(open, 0, Qt::AlignTop);
  return row;
}

void SettingsPane::update() {
  const QuilloModelState& state = model_.state();
  {
    const QSignalBlocker quietly(startsAtLogin_);
    startsAtLogin_->setChecked(state.startsAtLogin);
  }
  QString path = QString::fromStdString(model_.libraryPath().string());
  if (path.startsWith(QDir::homePath() + QLatin1Char('/'))) path.replace(0, QDir::homePath().size(), QLatin1Char('~'));
  libraryPath_->setText(path);
  const auto& usage = state.libraryUsage;
  if (!usage) {
    librarySize_->setText(tr("Counting…"));
    return;
  }
  const QString captures = tr("%L1 captures", nullptr, pluralNumber(usage->captureCount)).arg(usage->captureCount);
  librarySize_->setText(tr("%1 · %2").arg(captures, locale().formattedDataSize(usage->byteCount)));
}

}  // namespace quillo
