#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <ranges>
#include <vector>

#include "QuilloLinux/Keyboard/X11KeyLookup.h"
#include "QuilloLinux/Keyboard/X11KeyboardState.h"

namespace quillo {
namespace {

namespace Symbol {
constexpr std::uint32_t latinV = 0x76;
constexpr std::uint32_t insert = 0xFF63;
constexpr std::uint32_t leftShift = 0xFFE1;
constexpr std::uint32_t leftControl = 0xFFE3;
}  // namespace Symbol

/// The keys to press, in this order; released in the opposite one. Empty when the keyboard lacks one.
std::vector<std::uint8_t> keysOf(PasteKeystroke keystroke, const X11KeyLookup& lookup) {
  const auto control = lookup.modifierKey(XCB_MAP_INDEX_CONTROL, Symbol::leftControl);
  const auto shift = lookup.modifierKey(XCB_MAP_INDEX_SHIFT, Symbol::leftShift);
  const auto latinV = lookup.keyFor(Symbol::latinV);
  if (keystroke == PasteKeystroke::controlShiftV) {
    if (control && shift && latinV) return {*control, *shift, *latinV};
    return {};
  }
  if (control && latinV) return {*control, *latinV};
  const auto insert = lookup.keyFor(Symbol::insert);
  if (shift && insert) return {*shift, *insert};
  return {};
}

/// While it lives, the display serves this connection alone.
class DisplayGrab {
 public:
  explicit DisplayGrab(xcb_connection_t* connection) : connection_(connection) { xcb_grab_server(connection_); }
  DisplayGrab(const DisplayGrab&) = delete;
  DisplayGrab& operator=(const DisplayGrab&) = delete;
  ~DisplayGrab() {
    xcb_ungrab_server(connection_);
    xcb_flush(connection_);
  }

 private:
  xcb_connection_t* connection_;
};

}  // namespace

bool X11PasteKeystroke::connect() {
  if (connection_ && !connection_->isBroken()) return true;
  connection_ = connectToKeyboard();
  if (!connection_) return false;
  if (awaitExtension(connection_->get(), &xcb_test_id).isPresent) return true;
  connection_.reset();
  return false;
}

bool X11PasteKeystroke::isAllowed() {
  return connect();
}

PasteKeystrokeOutcome X11PasteKeystroke::send(PasteKeystroke keystroke, std::uint32_t inputFocus) {
  if (!connect()) return PasteKeystrokeOutcome::failed;
  xcb_connection_t* display = connection_->get();
  const DisplayGrab grab(display);
  const auto focusCookie = xcb_get_input_focus(display);
  const auto pressedCookie = xcb_query_keymap(display);
  const auto state = readKeyboardState(*connection_);
  const auto focus = awaitReply<xcb_get_input_focus_reply_t>(display, focusCookie);
  const auto pressed = awaitReply<xcb_query_keymap_reply_t>(display, pressedCookie);
  if (!state || !focus || !pressed) return PasteKeystrokeOutcome::failed;
  if (focus->focus != inputFocus) return PasteKeystrokeOutcome::focusMoved;
  const bool isAnyKeyDown = std::ranges::any_of(pressed->keys, [](std::uint8_t eightKeys) { return eightKeys != 0; });
  if (isAnyKeyDown || (state->latched & nonLockingModifiers) != 0) return PasteKeystrokeOutcome::keysHeld;
  const auto lookup = X11KeyLookup::read(*connection_, state->group);
  const std::vector<std::uint8_t> keys = lookup ? keysOf(keystroke, *lookup) : std::vector<std::uint8_t>{};
  if (keys.empty()) return PasteKeystrokeOutcome::failed;

  const auto act = [&](std::uint8_t type, std::uint8_t key) {
    xcb_test_fake_input(display, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
  };
  for (const std::uint8_t key : keys) act(XCB_KEY_PRESS, key);
  for (const std::uint8_t key : std::views::reverse(keys)) act(XCB_KEY_RELEASE, key);
  // The display's answer to the next question means that it has acted on the keys.
  return awaitDisplay(display) ? PasteKeystrokeOutcome::sent : PasteKeystrokeOutcome::failed;
}

}  // namespace quillo
