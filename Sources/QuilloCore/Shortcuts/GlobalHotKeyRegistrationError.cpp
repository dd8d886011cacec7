#include "QuilloCore/Shortcuts/GlobalHotKeyRegistrationError.h"

#include <fmt/format.h>

#include <utility>

namespace quillo {
namespace {

struct Description {
  std::string operator()(const GlobalHotKeyRegistrationError::InvalidConfiguration& error) const {
    return error.message;
  }
  std::string operator()(const GlobalHotKeyRegistrationError::EventHandlerInstallationFailed& error) const {
    return fmt::format("Quillo could not install its keyboard handler (OSStatus {}).", error.status);
  }
  std::string operator()(const GlobalHotKeyRegistrationError::HotKeyRegistrationFailed& error) const {
    return fmt::format("Quillo could not reserve the {} shortcut (OSStatus {}).", error.action, error.status);
  }
  std::string operator()(const GlobalHotKeyRegistrationError::AlreadyRegistered&) const {
    return "Quillo's keyboard shortcuts are already registered.";
  }
};

}  // namespace

GlobalHotKeyRegistrationError::GlobalHotKeyRegistrationError(Case value)
    : value_(std::move(value)), description_(std::visit(Description(), value_)) {}

std::string GlobalHotKeyRegistrationError::recoverySuggestion() const {
  const auto* failure = std::get_if<HotKeyRegistrationFailed>(&value_);
  if (failure == nullptr) return {};
  switch (failure->status) {
    case hotKeyIsTaken: return "Another program uses this shortcut. Choose a different one, or free it there.";
    case hotKeyIsMissing: return "The keyboard has no such key. Choose a different shortcut.";
    default: return {};
  }
}

}  // namespace quillo
