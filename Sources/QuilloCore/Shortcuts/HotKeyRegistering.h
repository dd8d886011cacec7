#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"

namespace quillo {

/// The platform's answer: 0 when it did what was asked, else the number of its error.
using HotKeyStatus = std::int32_t;

inline constexpr HotKeyStatus hotKeySucceeded = 0;
/// The keyboard has no such key or modifier.
inline constexpr HotKeyStatus hotKeyIsMissing = 2;
/// The combination is reserved already, mostly by another program.
inline constexpr HotKeyStatus hotKeyIsTaken = 10;
/// There is no display server, or it has gone away.
inline constexpr HotKeyStatus hotKeyDisplayIsUnavailable = -1;

/// Which shortcut an event is about: whose it is, and its number among them.
struct HotKeyIdentity {
  std::uint32_t signature = 0;
  std::uint32_t id = 0;

  friend bool operator==(const HotKeyIdentity&, const HotKeyIdentity&) = default;
};

using HotKeyReference = std::uint64_t;

/// A registration; without a reference it failed.
struct HotKeyRegistration {
  HotKeyStatus status = hotKeySucceeded;
  std::optional<HotKeyReference> reference;

  friend bool operator==(const HotKeyRegistration&, const HotKeyRegistration&) = default;
};

/// Reserves key combinations in the whole session. Used by one thread, which is also the one that the functions of the
/// handler are called on, never from within a function of this class. None is called after `removeHandler`.
class HotKeyRegistering {
 public:
  struct Handler {
    /// The key of a registered combination has been released. Once for each press, however long it was held.
    std::function<void(HotKeyIdentity)> released;
    /// A registration no longer works, because the keyboard has changed; without an identity, none does.
    std::function<void(std::optional<HotKeyIdentity>, HotKeyStatus)> lost;
  };

  virtual ~HotKeyRegistering() = default;

  /// To be called before the first registration, and again only after `removeHandler`.
  virtual HotKeyStatus installHandler(Handler handler) = 0;
  /// Takes back what is still registered. That no handler is installed is no failure.
  virtual void removeHandler() = 0;

  virtual HotKeyRegistration registerHotKey(const QuilloHotKey& hotKey, HotKeyIdentity identity) = 0;
  virtual void unregisterHotKey(HotKeyReference reference) = 0;
};

}  // namespace quillo
