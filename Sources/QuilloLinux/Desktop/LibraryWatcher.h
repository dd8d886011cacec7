#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// Tells that the library's directory has changed: a bundle has come or gone, or a manifest was replaced, by whatever
/// process, this one included. Changes that follow one another closely are told together. A directory that does not
/// exist yet is waited for.
///
/// A thread sleeps until the kernel has something to tell. Where the kernel refuses to watch (it has a limit), changes
/// there go unnoticed.
class LibraryWatcher {
 public:
  /// `onChange` is called on the executor, on whose thread the watcher also has to end; never after its end.
  LibraryWatcher(std::filesystem::path libraryPath, const TaskExecutor& executor, std::function<void()> onChange);
  LibraryWatcher(const LibraryWatcher&) = delete;
  LibraryWatcher& operator=(const LibraryWatcher&) = delete;
  ~LibraryWatcher();

 private:
  class Watch;

  std::shared_ptr<std::function<void()>> onChange_;
  std::unique_ptr<Watch> watch_;
  std::thread thread_;
};

}  // namespace quillo
