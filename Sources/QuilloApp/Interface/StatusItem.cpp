#include "QuilloApp/Interface/StatusItem.h"

#include <QAction>
#include <algorithm>
#include <utility>

#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/Symbols.h"

namespace quillo {
namespace {

/// An ampersand would mark the next letter.
QString itemText(const std::string& text) {
  return messageText(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

bool haveSameShape(const std::vector<StatusMenuEntry>& a, const std::vector<StatusMenuEntry>& b) {
  return std::ranges::equal(a, b, {}, &StatusMenuEntry::isSeparator, &StatusMenuEntry::isSeparator);
}

}  // namespace

StatusItem::StatusItem(QuilloModel& model, QuilloApplicationDelegate& delegate, std::function<void()> activate)
    : model_(model), delegate_(delegate), activate_(std::move(activate)) {
  menu_.setObjectName(QStringLiteral("statusMenu"));
  menu_.setAccessibleName(QStringLiteral("Quillo"));
  menu_.setAccessibleDescription(messageText(QuilloApplicationDelegate::statusItemDescription));
  connect(&menu_, &QMenu::aboutToShow, this, &StatusItem::menuWillOpen);
  connect(&host_, &TrayHost::changed, this, &StatusItem::followHost);
  // Hosts on the bus read the menu before they announce that it opens, so it is always there and up to date.
  observation_ =
      model_.observe([this](QuilloModelChanges /*changes*/) { show(rebuildStatusMenu(statusMenuState(model_))); });
  show(rebuildStatusMenu(statusMenuState(model_)));
  followHost();
}

StatusItem::~StatusItem() = default;

void StatusItem::followHost() {
  // A new host knows nothing of an icon that was registered with the one before.
  const bool wasShown = isShown();
  icon_.reset();
  if (host_.isPresent()) {
    icon_ = std::make_unique<QSystemTrayIcon>(applicationIcon());
    icon_->setToolTip(messageText(QuilloApplicationDelegate::statusItemToolTip));
    icon_->setContextMenu(&menu_);
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
      if (reason == QSystemTrayIcon::Trigger) activate_();
    });
    icon_->show();
  }
  if (isShown() != wasShown) Q_EMIT shownChanged();
}

void StatusItem::menuWillOpen() {
  show(delegate_.menuWillOpen());
}

void StatusItem::show(const std::vector<StatusMenuEntry>& entries) {
  if (entries == entries_) return;
  // Items that stay keep their identity, which hosts on the bus hold on to while the menu is open.
  if (!haveSameShape(entries, entries_)) {
    menu_.clear();
    for (const StatusMenuEntry& entry : entries) {
      QAction* action = menu_.addAction(QString());
      action->setSeparator(entry.isSeparator());
    }
  }
  const QList<QAction*> actions = menu_.actions();
  for (std::size_t i = 0; i < entries.size(); ++i) update(*actions[static_cast<qsizetype>(i)], entries[i]);
  entries_ = entries;
}

void StatusItem::update(QAction& action, const StatusMenuEntry& entry) {
  if (entry.isSeparator()) return;
  action.setText(itemText(entry.text));
  action.setIcon(symbolIcon(entry.symbolName));
  action.setIconVisibleInMenu(true);
  action.setEnabled(entry.isEnabled);
  action.disconnect(this);
  if (!entry.action) return;
  connect(&action, &QAction::triggered, this, [this, chosen = *entry.action] { delegate_.perform(chosen); });
}

}  // namespace quillo
