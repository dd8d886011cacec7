#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <filesystem>
#include <functional>

namespace quillo {

/// Tells when the library's directory has changed, by whomever: once for changes that come together. A directory that
/// does not exist yet is waited for in the nearest one above that does. The manifest of the selected bundle is
/// followed too, since editing it does not touch the directory.
class LibraryWatcher : public QObject {
 public:
  LibraryWatcher(std::filesystem::path library, std::function<void()> changed);

  /// Empty for none.
  void followBundle(const std::filesystem::path& bundle);

 private:
  void watch();

  QString library_;
  QString bundle_;
  std::function<void()> changed_;
  QFileSystemWatcher watcher_;
  QTimer settling_;
};

}  // namespace quillo
