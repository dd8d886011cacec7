#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Shortcuts/HotKeyRegistering.h"

namespace quillo::test {

/// A session's key combinations, some of them reserved by other programs. Notes what was asked of it.
class FakeHotKeyRegistrar final : public HotKeyRegistering {
 public:
  HotKeyStatus installHandler(Handler handler) override;
  void removeHandler() override;
  HotKeyRegistration registerHotKey(const QuilloHotKey& hotKey, HotKeyIdentity identity) override;
  void unregisterHotKey(HotKeyReference reference) override;

  /// Presses the combination and lets it go.
  void press(const QuilloHotKey& hotKey);
  /// Calls the handler as if a combination of this identity had been released.
  void release(HotKeyIdentity identity);
  void lose(std::optional<HotKeyIdentity> identity, HotKeyStatus status);

  std::vector<QuilloHotKey> reservedHotKeys() const;
  bool hasHandler() const { return handler_.has_value(); }

  HotKeyStatus handlerStatus = hotKeySucceeded;  ///< what installing a handler answers
  std::vector<QuilloHotKey> takenElsewhere;      ///< by other programs
  bool givesReferences = true;                   ///< false: it says that it succeeded, and gives no reference

  /// "install", "register ⌃⌥C as 1", "unregister ⌃⌥C", "remove".
  std::vector<std::string> log;

 private:
  struct Reserved {
    QuilloHotKey hotKey;
    HotKeyIdentity identity;
  };

  std::optional<Handler> handler_;
  std::map<HotKeyReference, Reserved> reserved_;
  HotKeyReference lastReference_ = 0;
};

}  // namespace quillo::test
