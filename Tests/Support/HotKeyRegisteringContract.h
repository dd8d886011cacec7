#pragma once

#include <functional>

#include "QuilloCore/Shortcuts/HotKeyRegistering.h"

namespace quillo::test {

/// A session in which the contract can be tried.
struct HotKeySession {
  HotKeyRegistering& registrar;
  /// Presses and releases the combination, and returns when the handler has been called for it.
  std::function<void(const QuilloHotKey&)> press;
  /// Another program reserves the combination, or gives it back.
  std::function<void(const QuilloHotKey&)> reserveElsewhere;
  std::function<void(const QuilloHotKey&)> giveBackElsewhere;
};

/// What every platform's reservation of key combinations has to do.
void expectHotKeyRegisteringContract(const HotKeySession& session);

}  // namespace quillo::test
