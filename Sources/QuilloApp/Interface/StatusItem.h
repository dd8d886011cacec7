#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <memory>
#include <vector>

#include "QuilloApp/Interface/TrayHost.h"
#include "QuilloApp/Model/QuilloApplicationDelegate.h"
#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

/// The tray icon and its menu, while the desktop has a place for one.
class StatusItem : public QObject {
  Q_OBJECT

 public:
  /// Both outlive this. `activate` is what a click on the icon does.
  StatusItem(QuilloModel& model, QuilloApplicationDelegate& delegate, std::function<void()> activate);
  ~StatusItem() override;

  bool isShown() const { return icon_ != nullptr; }

 Q_SIGNALS:
  /// The icon has come or gone.
  void shownChanged();

 private:
  void followHost();
  void menuWillOpen();
  void show(const std::vector<StatusMenuEntry>& entries);
  void update(QAction& action, const StatusMenuEntry& entry);

  QuilloModel& model_;
  QuilloApplicationDelegate& delegate_;
  std::function<void()> activate_;
  QMenu menu_;
  std::vector<StatusMenuEntry> entries_;
  TrayHost host_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
