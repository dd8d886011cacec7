#include "QuilloLinux/Keyboard/X11KeyboardState.h"

#include <xcb/xcb.h>

#include "QuilloLinux/Keyboard/XkbProtocol.h"

namespace quillo {

std::unique_ptr<X11Connection> connectToKeyboard() {
  auto connection = X11Connection::open();
  if (!connection) return nullptr;
  if (!awaitExtension(connection->get(), &xcb_xkb_id).isPresent) return nullptr;
  const auto reply = awaitReply<xcb_xkb_use_extension_reply_t>(
      connection->get(), xcb_xkb_use_extension(connection->get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION));
  return reply && reply->supported != 0 ? std::move(connection) : nullptr;
}

std::optional<X11KeyboardState> readKeyboardState(const X11Connection& connection) {
  const auto reply = awaitReply<xcb_xkb_get_state_reply_t>(
      connection.get(), xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD));
  if (!reply) return std::nullopt;
  return X11KeyboardState{
      .base = reply->baseMods, .latched = reply->latchedMods, .locked = reply->lockedMods, .group = reply->group};
}

}  // namespace quillo
