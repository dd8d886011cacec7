#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "QuilloCore/Shortcuts/HotKeyRegistering.h"
#include "QuilloLinux/Keyboard/X11ModifierMasks.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// Key combinations that are grabbed on one connection, whichever lock keys are on, and what the display tells of them.
/// Follows the keyboard when its modifiers change. Used by one thread; its end gives everything back.
class X11HotKeyGrabs {
 public:
  struct Events {
    std::vector<HotKeyIdentity> released;
    /// Combinations that could not be kept when the keyboard changed.
    std::vector<std::pair<HotKeyIdentity, HotKeyStatus>> lost;
  };

  /// Null when there is no display, or one without a keyboard.
  static std::unique_ptr<X11HotKeyGrabs> open();

  /// All variants of the combination are grabbed, or none: then the number of the display's error is returned.
  HotKeyStatus grab(const QuilloHotKey& hotKey, HotKeyIdentity identity, HotKeyReference reference);
  /// When it returns, other programs may have the combination.
  void release(HotKeyReference reference);
  void releaseAll();

  /// What has happened since the last call, without waiting.
  Events takeEvents();

  /// Readable when there may be events.
  int descriptor() const;
  bool isBroken() const { return connection_->isBroken(); }

 private:
  struct Grab {
    QuilloHotKey hotKey;
    HotKeyIdentity identity;
    std::uint8_t keyCode = 0;
    std::uint16_t mask = 0;
    std::vector<std::uint16_t> variants{};  ///< the mask with every combination of the locks
  };

  X11HotKeyGrabs(std::unique_ptr<X11Connection> connection, X11ModifierMasks masks);

  HotKeyStatus grabVariants(Grab& grab);
  void releaseVariants(std::uint8_t keyCode, const std::vector<std::uint16_t>& variants);
  void followKeyboard(Events& events);
  void forgetPress(HotKeyIdentity identity);
  const Grab* find(std::uint8_t keyCode, std::uint16_t state) const;

  std::unique_ptr<X11Connection> connection_;
  std::uint8_t keyboardEvent_;
  X11ModifierMasks masks_;
  std::map<HotKeyReference, Grab> grabs_;
  std::map<std::uint8_t, HotKeyIdentity> pressed_;  ///< by key code
};

}  // namespace quillo
