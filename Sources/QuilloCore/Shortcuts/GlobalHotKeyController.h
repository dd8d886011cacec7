#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <vector>

#include "QuilloCore/Shortcuts/GlobalHotKeyRegistrationError.h"
#include "QuilloCore/Shortcuts/HotKeyRegistering.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"

namespace quillo {

class RunningApplicationsProviding;

/// Reserves the two global shortcuts and passes on their activations. Either both are reserved or neither is: what
/// fails leaves nothing behind. Belongs to the main thread, on which it also calls its handlers.
class GlobalHotKeyController {
 public:
  using CaptureHandler = std::function<void()>;
  /// Told the process of the application that was frontmost; nothing when there was none.
  using PasteHandler = std::function<void(std::optional<std::int32_t>)>;
  using LossHandler = std::function<void(const GlobalHotKeyRegistrationError&)>;

  /// What marks an activation as one of ours.
  static constexpr std::uint32_t signature =
      (std::uint32_t{'Q'} << 24U) | (std::uint32_t{'L'} << 16U) | (std::uint32_t{'L'} << 8U) | std::uint32_t{'O'};

  GlobalHotKeyController(HotKeyRegistering& registrar, RunningApplicationsProviding& applications)
      : registrar_(registrar), applications_(applications) {}
  GlobalHotKeyController(const GlobalHotKeyController&) = delete;
  GlobalHotKeyController& operator=(const GlobalHotKeyController&) = delete;
  ~GlobalHotKeyController() { unregisterAll(); }

  /// Reserves the pair in place of what is reserved now. For the pair that is reserved already only the handlers are
  /// replaced. An invalid pair changes nothing.
  std::expected<void, GlobalHotKeyRegistrationError> registerShortcuts(const QuilloHotKeyConfiguration& configuration,
                                                                       CaptureHandler onCapture,
                                                                       PasteHandler onPasteDestination);

  /// Gives both shortcuts back, for example while new ones are being recorded.
  void unregisterAll();

  /// Called when shortcuts that were reserved no longer are, without our doing; none of them is then.
  void whenLost(LossHandler handler) { lossHandler_ = std::move(handler); }

  /// What is reserved now.
  const std::optional<QuilloHotKeyConfiguration>& activeConfiguration() const { return activeConfiguration_; }

 private:
  enum class Action : std::uint8_t { capture = 1, paste = 2 };

  std::expected<void, GlobalHotKeyRegistrationError> reserve(Action action, const QuilloHotKey& hotKey);
  void dispatch(HotKeyIdentity identity);
  void lose(std::optional<HotKeyIdentity> identity, HotKeyStatus status);

  HotKeyRegistering& registrar_;
  RunningApplicationsProviding& applications_;
  bool isHandlerInstalled_ = false;
  std::vector<HotKeyReference> references_;
  CaptureHandler captureHandler_;
  PasteHandler pasteHandler_;
  LossHandler lossHandler_;
  std::optional<QuilloHotKeyConfiguration> activeConfiguration_;
};

}  // namespace quillo
