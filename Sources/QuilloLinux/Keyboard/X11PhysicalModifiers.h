#pragma once

#include <memory>

#include "QuilloCore/Paste/PhysicalModifierFlagsProviding.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// The modifier keys that are down at the display's keyboard. Connects when it is first asked, and anew when the
/// display has gone away. Used by one thread.
class X11PhysicalModifiers final : public PhysicalModifierFlagsProviding {
 public:
  PhysicalModifierFlags physicalModifierFlags() override;

 private:
  std::unique_ptr<X11Connection> connection_;
};

}  // namespace quillo
