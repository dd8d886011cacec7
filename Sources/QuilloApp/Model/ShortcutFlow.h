#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>

#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"

namespace quillo {

/// Keeps the two global shortcuts registered.
class ShortcutFlow {
 public:
  static constexpr double firstRetryDelay = 2;     ///< seconds; each further one is twice as long …
  static constexpr double longestRetryDelay = 60;  ///< … up to this

  struct Handlers {
    std::function<void()> capture;
    std::function<void(std::optional<std::int32_t> processIdentifier)> paste;
  };

  ShortcutFlow(ModelContext& context, Handlers handlers);

  void start();
  std::expected<void, GlobalHotKeyRegistrationError> updateHotKeyConfiguration(
      const QuilloHotKeyConfiguration& configuration);
  void beginHotKeyRecording();
  void endHotKeyRecording();

 private:
  using Result = std::expected<void, GlobalHotKeyRegistrationError>;

  Result tryToRegister(const QuilloHotKeyConfiguration& configuration);
  /// Registers the current pair; a failure is stored, and tried again later.
  bool registerHotKeys();
  void lose(const GlobalHotKeyRegistrationError& error);
  void scheduleHotKeyRegistrationRetry(const GlobalHotKeyRegistrationError& error);
  void stopRetrying();
  Task<> retry(double delay, std::uint64_t number);

  ModelContext& context_;
  Handlers handlers_;
  bool isRecording_ = false;
  double nextRetryDelay_ = firstRetryDelay;
  std::uint64_t retryNumber_ = 0;  // of the retry that counts
  TaskHandle hotKeyRegistrationRetryTask_;
};

}  // namespace quillo
