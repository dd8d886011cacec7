#include "QuilloApp/Interface/TrayHost.h"

#include <xcb/xcb.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quillo {
namespace {

QString watcherService() {
  return QStringLiteral("org.kde.StatusNotifierWatcher");
}

template <class T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
  return {reply, &std::free};
}

/// Whether somebody owns the tray's selection on the first screen.
bool hasTraySelection() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return false;
  xcb_connection_t* connection = x11->connection();
  constexpr std::string_view name = "_NET_SYSTEM_TRAY_S0";
  const auto atom = owned(xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
  if (!atom) return false;
  const auto owner =
      owned(xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
  return owner && owner->owner != XCB_NONE;
}

}  // namespace

TrayHost::TrayHost(QObject* parent)
    : QObject(parent),
      watcher_(watcherService(), QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange),
      isOnDisplay_(hasTraySelection()) {
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString& /*service*/, const QString& /*oldOwner*/, const QString& newOwner) {
            isOnBus_ = !newOwner.isEmpty();
            if (!isOnBus_) isOnDisplay_ = hasTraySelection();
            Q_EMIT changed();
          });
  askBus();
}

void TrayHost::askBus() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  isOnBus_ = bus.isConnected() && bus.interface()->isServiceRegistered(watcherService());
}

}  // namespace quillo
