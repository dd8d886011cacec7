#pragma once

#include <memory>

#include "QuilloCore/Concurrency/TaskExecutor.h"
#include "QuilloCore/Shortcuts/HotKeyRegistering.h"

namespace quillo {

/// Global shortcuts as grabs on the display's root window. While a handler is installed there is a connection and a
/// thread that sleeps until the display has something to tell; what it tells is passed on to the executor, which has to
/// run its jobs on the thread that uses this object. Statuses are the display's error codes.
class X11HotKeys final : public HotKeyRegistering {
 public:
  explicit X11HotKeys(TaskExecutor executor);
  X11HotKeys(const X11HotKeys&) = delete;
  X11HotKeys& operator=(const X11HotKeys&) = delete;
  ~X11HotKeys() override;

  HotKeyStatus installHandler(Handler handler) override;
  void removeHandler() override;
  HotKeyRegistration registerHotKey(const QuilloHotKey& hotKey, HotKeyIdentity identity) override;
  void unregisterHotKey(HotKeyReference reference) override;

 private:
  class Listener;

  TaskExecutor executor_;
  std::unique_ptr<Listener> listener_;
  HotKeyReference lastReference_ = 0;
};

}  // namespace quillo
