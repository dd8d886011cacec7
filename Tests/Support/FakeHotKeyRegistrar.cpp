#include "Tests/Support/FakeHotKeyRegistrar.h"

#include <fmt/format.h>

#include <algorithm>

namespace quillo::test {
namespace {

/// Labels are for people; a keyboard knows keys.
bool isSameCombination(const QuilloHotKey& a, const QuilloHotKey& b) {
  return a.keyCode == b.keyCode && a.modifiers == b.modifiers;
}

}  // namespace

HotKeyStatus FakeHotKeyRegistrar::installHandler(Handler handler) {
  log.emplace_back("install");
  if (handlerStatus == hotKeySucceeded) handler_ = std::move(handler);
  return handlerStatus;
}

void FakeHotKeyRegistrar::removeHandler() {
  log.emplace_back("remove");
  handler_.reset();
  reserved_.clear();
}

HotKeyRegistration FakeHotKeyRegistrar::registerHotKey(const QuilloHotKey& hotKey, HotKeyIdentity identity) {
  log.push_back(fmt::format("register {} as {}", hotKey.displayString(), identity.id));
  if (!handler_) return {hotKeyDisplayIsUnavailable, std::nullopt};
  const auto isTaken = [&](const QuilloHotKey& taken) { return isSameCombination(taken, hotKey); };
  if (std::ranges::any_of(takenElsewhere, isTaken) || std::ranges::any_of(reservedHotKeys(), isTaken))
    return {hotKeyIsTaken, std::nullopt};
  if (!givesReferences) return {};
  reserved_[++lastReference_] = {hotKey, identity};
  return {hotKeySucceeded, lastReference_};
}

void FakeHotKeyRegistrar::unregisterHotKey(HotKeyReference reference) {
  const auto found = reserved_.find(reference);
  if (found == reserved_.end()) return;
  log.push_back(fmt::format("unregister {}", found->second.hotKey.displayString()));
  reserved_.erase(found);
}

void FakeHotKeyRegistrar::press(const QuilloHotKey& hotKey) {
  for (const auto& [reference, reserved] : reserved_) {
    if (!isSameCombination(reserved.hotKey, hotKey)) continue;
    release(reserved.identity);
    return;
  }
}

void FakeHotKeyRegistrar::release(HotKeyIdentity identity) {
  const auto handler = handler_;
  if (handler) handler->released(identity);
}

void FakeHotKeyRegistrar::lose(std::optional<HotKeyIdentity> identity, HotKeyStatus status) {
  const auto handler = handler_;
  if (handler) handler->lost(identity, status);
}

std::vector<QuilloHotKey> FakeHotKeyRegistrar::reservedHotKeys() const {
  std::vector<QuilloHotKey> hotKeys;
  hotKeys.reserve(reserved_.size());
  for (const auto& [reference, reserved] : reserved_) hotKeys.push_back(reserved.hotKey);
  return hotKeys;
}

}  // namespace quillo::test
