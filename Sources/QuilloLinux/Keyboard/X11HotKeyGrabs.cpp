#include "QuilloLinux/Keyboard/X11HotKeyGrabs.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <optional>

#include "QuilloLinux/Keyboard/X11KeyCodes.h"
#include "QuilloLinux/Keyboard/X11KeyboardState.h"
#include "QuilloLinux/Keyboard/XkbProtocol.h"

namespace quillo {
namespace {

/// Modifiers in an event's state; above them are pointer buttons and the active layout.
constexpr unsigned modifierBits = 0xFF;

std::uint8_t eventType(const xcb_generic_event_t& event) {
  return event.response_type & 0x7FU;
}

/// While a key is held it shall repeat as presses alone, so that a release is a release.
void askForTrueReleases(xcb_connection_t* connection) {
  constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  const auto cookie = xcb_xkb_per_client_flags_unchecked(connection, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0);
  xcb_discard_reply(connection, cookie.sequence);
}

void askForKeyboardChanges(xcb_connection_t* connection) {
  constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
  xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
}

}  // namespace

std::unique_ptr<X11HotKeyGrabs> X11HotKeyGrabs::open() {
  auto connection = connectToKeyboard();
  if (!connection) return nullptr;
  askForTrueReleases(connection->get());
  askForKeyboardChanges(connection->get());
  const auto masks = readModifierMasks(*connection);
  if (!masks) return nullptr;
  return std::unique_ptr<X11HotKeyGrabs>(new X11HotKeyGrabs(std::move(connection), *masks));
}

X11HotKeyGrabs::X11HotKeyGrabs(std::unique_ptr<X11Connection> connection, X11ModifierMasks masks)
    : connection_(std::move(connection)),
      keyboardEvent_(awaitExtension(connection_->get(), &xcb_xkb_id).firstEvent),
      masks_(masks) {}

HotKeyStatus X11HotKeyGrabs::grab(const QuilloHotKey& hotKey, HotKeyIdentity identity, HotKeyReference reference) {
  Grab grab{.hotKey = hotKey, .identity = identity};
  // The display would let the later of two grabs of one program replace the earlier.
  const auto keyCode = x11KeyCode(hotKey.keyCode);
  const auto mask = masks_.maskOf(hotKey.modifiers);
  if (keyCode && mask && find(*keyCode, *mask) != nullptr) return hotKeyIsTaken;
  const HotKeyStatus status = grabVariants(grab);
  if (status == hotKeySucceeded) grabs_[reference] = std::move(grab);
  return status;
}

HotKeyStatus X11HotKeyGrabs::grabVariants(Grab& grab) {
  const auto keyCode = x11KeyCode(grab.hotKey.keyCode);
  const auto mask = masks_.maskOf(grab.hotKey.modifiers);
  if (!keyCode || !mask) return hotKeyIsMissing;
  grab.keyCode = *keyCode;
  grab.mask = *mask;
  grab.variants.clear();
  for (const std::uint16_t locks : masks_.lockCombinations()) grab.variants.push_back(*mask | locks);

  xcb_connection_t* connection = connection_->get();
  std::vector<xcb_void_cookie_t> cookies;
  cookies.reserve(grab.variants.size());
  for (const std::uint16_t variant : grab.variants) {
    cookies.push_back(xcb_grab_key_checked(connection, 0, connection_->root(), variant, *keyCode, XCB_GRAB_MODE_ASYNC,
                                           XCB_GRAB_MODE_ASYNC));
  }
  HotKeyStatus status = hotKeySucceeded;
  for (const auto cookie : cookies) {
    const unsigned char error = awaitCheck(connection, cookie.sequence);
    if (status == hotKeySucceeded && error != 0) status = error;
  }
  if (isBroken()) return hotKeyDisplayIsUnavailable;
  if (status != hotKeySucceeded) releaseVariants(grab.keyCode, grab.variants);
  return status;
}

void X11HotKeyGrabs::releaseVariants(std::uint8_t keyCode, const std::vector<std::uint16_t>& variants) {
  xcb_connection_t* connection = connection_->get();
  for (const std::uint16_t variant : variants) xcb_ungrab_key(connection, keyCode, connection_->root(), variant);
  awaitDisplay(connection);
}

void X11HotKeyGrabs::release(HotKeyReference reference) {
  const auto found = grabs_.find(reference);
  if (found == grabs_.end()) return;
  releaseVariants(found->second.keyCode, found->second.variants);
  forgetPress(found->second.identity);
  grabs_.erase(found);
}

void X11HotKeyGrabs::releaseAll() {
  while (!grabs_.empty()) release(grabs_.begin()->first);
}

X11HotKeyGrabs::Events X11HotKeyGrabs::takeEvents() {
  Events events;
  bool hasKeyboardChanged = false;
  const auto takeOne = [&] {
    const X11Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection_->get()));
    if (!event) return false;
    const std::uint8_t type = eventType(*event);
    if (type == XCB_KEY_PRESS) {
      const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
      if (const Grab* grab = find(press->detail, press->state)) pressed_[press->detail] = grab->identity;
    } else if (type == XCB_KEY_RELEASE) {
      // By the key alone: the modifiers may have been let go before it.
      const auto found = pressed_.find(reinterpret_cast<const xcb_key_release_event_t*>(event.get())->detail);
      if (found != pressed_.end()) {
        events.released.push_back(found->second);
        pressed_.erase(found);
      }
    } else if (type == keyboardEvent_ || type == XCB_MAPPING_NOTIFY) {
      hasKeyboardChanged = true;
    }
    return true;
  };
  // Grabbing again reads events, too; and a change of layout is told in many of them.
  do {
    hasKeyboardChanged = false;
    while (takeOne()) continue;
    if (hasKeyboardChanged) followKeyboard(events);
  } while (hasKeyboardChanged);
  return events;
}

void X11HotKeyGrabs::followKeyboard(Events& events) {
  const auto masks = readModifierMasks(*connection_);
  if (!masks || *masks == masks_) return;
  masks_ = *masks;
  std::vector<HotKeyReference> failed;
  for (auto& [reference, grab] : grabs_) {
    // The new variants come before the old ones go, so that the shortcut works all the time.
    std::vector<std::uint16_t> old = grab.variants;
    const HotKeyStatus status = grabVariants(grab);
    if (status == hotKeySucceeded) {
      std::erase_if(
          old, [&](std::uint16_t variant) { return std::ranges::find(grab.variants, variant) != grab.variants.end(); });
    } else {
      forgetPress(grab.identity);
      events.lost.emplace_back(grab.identity, status);
      failed.push_back(reference);
    }
    releaseVariants(grab.keyCode, old);
  }
  for (const HotKeyReference reference : failed) grabs_.erase(reference);
}

void X11HotKeyGrabs::forgetPress(HotKeyIdentity identity) {
  std::erase_if(pressed_, [&](const auto& press) { return press.second == identity; });
}

const X11HotKeyGrabs::Grab* X11HotKeyGrabs::find(std::uint8_t keyCode, std::uint16_t state) const {
  const unsigned mask = state & modifierBits & ~static_cast<unsigned>(masks_.locks());
  for (const auto& [reference, grab] : grabs_) {
    if (grab.keyCode == keyCode && grab.mask == mask) return &grab;
  }
  return nullptr;
}

int X11HotKeyGrabs::descriptor() const {
  return xcb_get_file_descriptor(connection_->get());
}

}  // namespace quillo
