#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

namespace quillo {

/// Whether the desktop has a place for a tray icon: a host on the session's bus, which may come and go, or a tray of
/// the older kind on the display.
class TrayHost : public QObject {
  Q_OBJECT

 public:
  explicit TrayHost(QObject* parent = nullptr);

  bool isPresent() const { return isOnBus_ || isOnDisplay_; }

 Q_SIGNALS:
  /// Also when one host has taken another's place.
  void changed();

 private:
  void askBus();

  QDBusServiceWatcher watcher_;
  bool isOnBus_ = false;
  bool isOnDisplay_ = false;
};

}  // namespace quillo
