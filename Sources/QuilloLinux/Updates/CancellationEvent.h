#pragma once

namespace quillo {

/// Wakes a thread that waits in `poll`, for good. `cancel` may be called from any thread.
class CancellationEvent {
 public:
  /// Throws std::system_error.
  CancellationEvent();
  CancellationEvent(const CancellationEvent&) = delete;
  CancellationEvent& operator=(const CancellationEvent&) = delete;
  ~CancellationEvent();

  void cancel() const;
  bool isCancelled() const;

  /// Readable once it is cancelled.
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

}  // namespace quillo
