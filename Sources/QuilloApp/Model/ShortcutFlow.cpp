#include "QuilloApp/Model/ShortcutFlow.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

#include "QuilloCore/Shortcuts/QuilloHotKeyPreferences.h"

namespace quillo {

using State = QuilloModelState;

ShortcutFlow::ShortcutFlow(ModelContext& context, Handlers handlers)
    : context_(context), handlers_(std::move(handlers)) {
  context_.state.set<&State::hotKeyConfiguration>(QuilloHotKeyPreferences::load(context_.services.preferences));
}

void ShortcutFlow::start() {
  context_.services.hotKeys.whenLost([this](const GlobalHotKeyRegistrationError& error) { lose(error); });
  registerHotKeys();
}

ShortcutFlow::Result ShortcutFlow::tryToRegister(const QuilloHotKeyConfiguration& configuration) {
  return context_.services.hotKeys.registerShortcuts(configuration, handlers_.capture, handlers_.paste);
}

bool ShortcutFlow::registerHotKeys() {
  const Result result = tryToRegister(context_.state->hotKeyConfiguration);
  if (result) {
    stopRetrying();
  } else {
    scheduleHotKeyRegistrationRetry(result.error());
  }
  return result.has_value();
}

ShortcutFlow::Result ShortcutFlow::updateHotKeyConfiguration(const QuilloHotKeyConfiguration& configuration) {
  Result result = tryToRegister(configuration);
  if (!result) {
    // An invalid pair has left the former one alone; for any other it is put back.
    if (!isRecording_ && !context_.services.hotKeys.activeConfiguration()) registerHotKeys();
    return result;
  }
  isRecording_ = false;
  stopRetrying();
  context_.state.set<&State::hotKeyConfiguration>(configuration);
  try {
    QuilloHotKeyPreferences::save(configuration, context_.services.preferences);
    context_.activity.showSuccess("Keyboard shortcuts updated");
  } catch (const std::exception& error) {
    context_.activity.showFailure(std::string("Keyboard shortcuts updated, but not kept: ") + error.what());
  }
  return result;
}

void ShortcutFlow::beginHotKeyRecording() {
  isRecording_ = true;
  stopRetrying();
  context_.services.hotKeys.unregisterAll();
}

void ShortcutFlow::endHotKeyRecording() {
  if (!std::exchange(isRecording_, false)) return;
  registerHotKeys();
}

void ShortcutFlow::lose(const GlobalHotKeyRegistrationError& error) {
  if (!isRecording_) scheduleHotKeyRegistrationRetry(error);
}

void ShortcutFlow::scheduleHotKeyRegistrationRetry(const GlobalHotKeyRegistrationError& error) {
  context_.state.set<&State::hotKeyRegistrationError>(std::optional(error.errorDescription()));
  const double delay = std::exchange(nextRetryDelay_, std::min(nextRetryDelay_ * 2, longestRetryDelay));
  hotKeyRegistrationRetryTask_.cancel();
  const std::uint64_t number = ++retryNumber_;
  hotKeyRegistrationRetryTask_ = context_.tasks.start([this, delay, number] { return retry(delay, number); });
}

void ShortcutFlow::stopRetrying() {
  ++retryNumber_;
  hotKeyRegistrationRetryTask_.cancel();
  nextRetryDelay_ = firstRetryDelay;
  context_.state.set<&State::hotKeyRegistrationError>(std::optional<std::string>());
}

Task<> ShortcutFlow::retry(double delay, std::uint64_t number) {
  Task<> pause = sleepFor(context_.services.clock, delay);
  co_await std::move(pause);
  if (number != retryNumber_) co_return;
  if (registerHotKeys()) context_.activity.showSuccess("Keyboard shortcuts ready");
}

}  // namespace quillo
