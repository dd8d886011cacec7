#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"

#include <xcb/xcb.h>

#include "QuilloLinux/Keyboard/X11KeyboardState.h"

namespace quillo {

PhysicalModifierFlags X11PhysicalModifiers::physicalModifierFlags() {
  if (!connection_ || connection_->isBroken()) connection_ = connectToKeyboard();
  const auto state = connection_ ? readKeyboardState(*connection_) : std::nullopt;
  if (!state) return {};
  // By convention of every layout: Alt is the first modifier, Super the fourth, and the fifth chooses a key's third
  // level.
  const auto isDown = [&](unsigned mask) { return (state->base & mask) != 0; };
  return {.shift = isDown(XCB_MOD_MASK_SHIFT),
          .control = isDown(XCB_MOD_MASK_CONTROL),
          .option = isDown(XCB_MOD_MASK_1),
          .command = isDown(XCB_MOD_MASK_4),
          .secondaryFunction = isDown(XCB_MOD_MASK_3 | XCB_MOD_MASK_5)};
}

}  // namespace quillo
