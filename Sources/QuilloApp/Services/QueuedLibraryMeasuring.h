#pragma once

#include <filesystem>
#include <utility>

#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloCore/Concurrency/SerialQueue.h"

namespace quillo {

/// Counts the library on a queue of its own: thousands of bundles take their time.
class QueuedLibraryMeasuring final : public LibraryMeasuring {
 public:
  explicit QueuedLibraryMeasuring(std::filesystem::path libraryPath) : libraryPath_(std::move(libraryPath)) {}

  std::filesystem::path libraryPath() const override { return libraryPath_; }
  Task<LibraryUsage> measure() override {
    return queue_.run([path = libraryPath_] { return measureLibraryUsage(path); });
  }

 private:
  std::filesystem::path libraryPath_;
  SerialQueue queue_{"org.quillo.Quillo.library-size"};
};

}  // namespace quillo
