#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"

#include <string>
#include <utility>

#include "QuilloCore/Capture/RunningApplicationsProviding.h"

namespace quillo {

std::expected<void, GlobalHotKeyRegistrationError> GlobalHotKeyController::registerShortcuts(
    const QuilloHotKeyConfiguration& configuration, CaptureHandler onCapture, PasteHandler onPasteDestination) {
  using Error = GlobalHotKeyRegistrationError;
  if (const auto message = configuration.validationMessage())
    return std::unexpected(Error(Error::InvalidConfiguration{std::string(*message)}));

  const bool isRegistered = isHandlerInstalled_ && references_.size() == 2 && activeConfiguration_ == configuration;
  if (!isRegistered) unregisterAll();
  captureHandler_ = std::move(onCapture);
  pasteHandler_ = std::move(onPasteDestination);
  if (isRegistered) return {};

  const HotKeyStatus status = registrar_.installHandler(
      {.released = [this](HotKeyIdentity identity) { dispatch(identity); },
       .lost = [this](std::optional<HotKeyIdentity> identity, HotKeyStatus loss) { lose(identity, loss); }});
  if (status != hotKeySucceeded) {
    unregisterAll();
    return std::unexpected(Error(Error::EventHandlerInstallationFailed{status}));
  }
  isHandlerInstalled_ = true;
  auto reserved = reserve(Action::capture, configuration.capture);
  if (reserved) reserved = reserve(Action::paste, configuration.paste);
  if (!reserved) {
    unregisterAll();
    return reserved;
  }
  activeConfiguration_ = configuration;
  return {};
}

std::expected<void, GlobalHotKeyRegistrationError> GlobalHotKeyController::reserve(Action action,
                                                                                   const QuilloHotKey& hotKey) {
  const HotKeyRegistration made = registrar_.registerHotKey(hotKey, {signature, std::to_underlying(action)});
  if (made.status == hotKeySucceeded && made.reference) {
    references_.push_back(*made.reference);
    return {};
  }
  return std::unexpected(GlobalHotKeyRegistrationError(GlobalHotKeyRegistrationError::HotKeyRegistrationFailed{
      action == Action::capture ? "capture" : "paste", made.status}));
}

void GlobalHotKeyController::unregisterAll() {
  for (const HotKeyReference reference : std::exchange(references_, {})) registrar_.unregisterHotKey(reference);
  if (std::exchange(isHandlerInstalled_, false)) registrar_.removeHandler();
  activeConfiguration_.reset();
}

void GlobalHotKeyController::dispatch(HotKeyIdentity identity) {
  if (identity.signature != signature) return;
  // Copies, because a handler may register others in its own place.
  if (identity.id == std::to_underlying(Action::capture)) {
    if (const CaptureHandler handler = captureHandler_) handler();
  } else if (identity.id == std::to_underlying(Action::paste)) {
    const PasteHandler handler = pasteHandler_;
    if (!handler) return;
    const auto frontmost = applications_.frontmostApplication();
    handler(frontmost ? std::optional(frontmost->processIdentifier) : std::nullopt);
  }
}

void GlobalHotKeyController::lose(std::optional<HotKeyIdentity> identity, HotKeyStatus status) {
  using Error = GlobalHotKeyRegistrationError;
  unregisterAll();
  const LossHandler handler = lossHandler_;
  if (!handler) return;
  if (!identity) return handler(Error(Error::EventHandlerInstallationFailed{status}));
  const bool isCapture = identity->id == std::to_underlying(Action::capture);
  handler(Error(Error::HotKeyRegistrationFailed{isCapture ? "capture" : "paste", status}));
}

}  // namespace quillo
