#include "QuilloApp/Interface/LibraryWatcher.h"

#include <QDir>
#include <QFileInfo>
#include <utility>

namespace quillo {
namespace {

constexpr int settlingTime = 150;  ///< milliseconds

/// The path, or the nearest directory above it that exists.
QString nearestExisting(QString path) {
  while (!QFileInfo::exists(path) && path != QDir::rootPath()) path = QFileInfo(path).absolutePath();
  return path;
}

}  // namespace

LibraryWatcher::LibraryWatcher(std::filesystem::path library, std::function<void()> changed)
    : library_(QString::fromStdString(library.string())), changed_(std::move(changed)) {
  settling_.setSingleShot(true);
  settling_.setInterval(settlingTime);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { settling_.start(); });
  connect(&settling_, &QTimer::timeout, this, [this] {
    watch();
    changed_();
  });
  watch();
}

void LibraryWatcher::followBundle(const std::filesystem::path& bundle) {
  bundle_ = QString::fromStdString(bundle.string());
  watch();
}

void LibraryWatcher::watch() {
  QStringList wanted{nearestExisting(library_)};
  if (!bundle_.isEmpty() && QFileInfo::exists(bundle_)) wanted << bundle_;
  const QStringList watched = watcher_.directories();
  for (const QString& path : watched) {
    if (!wanted.contains(path)) watcher_.removePath(path);
  }
  for (const QString& path : wanted) {
    if (!watched.contains(path)) watcher_.addPath(path);
  }
}

}  // namespace quillo
