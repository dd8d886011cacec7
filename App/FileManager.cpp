#include "FileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QUrl>

namespace quillo {

void FileManager::reveal(const std::filesystem::path& bundlePath) {
  const QUrl bundle = QUrl::fromLocalFile(QString::fromStdString(bundlePath.string()));
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
  call << QStringList{bundle.toString()} << QString();
  auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, bundle] {
    if (watcher->isError()) QDesktopServices::openUrl(bundle);
    watcher->deleteLater();
  });
}

}  // namespace quillo
