#include "TestKeyboard.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "QuilloLinux/Keyboard/X11KeyCodes.h"
#include "QuilloLinux/Keyboard/XkbProtocol.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo::test {
namespace {

constexpr std::array<std::pair<QuilloHotKeyModifiers, std::uint8_t>, 4> modifierKeys = {{
    {QuilloHotKeyModifiers::control, Keys::control},
    {QuilloHotKeyModifiers::option, Keys::alt},
    {QuilloHotKeyModifiers::shift, Keys::shift},
    {QuilloHotKeyModifiers::command, Keys::super},
}};

std::uint32_t rootOf(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

void sync(xcb_connection_t* connection) {
  std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace

TestKeyboard::TestKeyboard() : connection_(connectToDisplay()), root_(rootOf(connection_)) {
  std::free(xcb_xkb_use_extension_reply(
      connection_, xcb_xkb_use_extension(connection_, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
}

TestKeyboard::~TestKeyboard() {
  while (!held_.empty()) release(held_.back());
  constexpr std::uint8_t allModifiers = 0xFF;
  xcb_xkb_latch_lock_state(connection_, XCB_XKB_ID_USE_CORE_KBD, allModifiers, 0, 1, 0, allModifiers, 0, 0);
  sync(connection_);
  xcb_disconnect(connection_);
}

void TestKeyboard::send(std::uint8_t type, std::uint8_t keyCode) {
  xcb_test_fake_input(connection_, type, keyCode, XCB_CURRENT_TIME, root_, 0, 0, 0);
  sync(connection_);
}

void TestKeyboard::press(std::uint8_t keyCode) {
  held_.push_back(keyCode);
  send(XCB_KEY_PRESS, keyCode);
}

void TestKeyboard::release(std::uint8_t keyCode) {
  std::erase(held_, keyCode);
  send(XCB_KEY_RELEASE, keyCode);
}

void TestKeyboard::tap(std::uint8_t keyCode) {
  press(keyCode);
  release(keyCode);
}

void TestKeyboard::type(const QuilloHotKey& hotKey) {
  pressModifiers(hotKey.modifiers);
  tap(x11KeyCode(hotKey.keyCode).value());
  releaseModifiers(hotKey.modifiers);
}

void TestKeyboard::pressModifiers(QuilloHotKeyModifiers modifiers) {
  for (const auto& [modifier, key] : modifierKeys) {
    if (modifiers.contains(modifier)) press(key);
  }
}

void TestKeyboard::releaseModifiers(QuilloHotKeyModifiers modifiers) {
  for (const auto& [modifier, key] : modifierKeys) {
    if (modifiers.contains(modifier)) release(key);
  }
}

bool TestKeyboard::makeNumLock(unsigned modifier) {
  const X11Reply<xcb_get_modifier_mapping_reply_t> now(
      xcb_get_modifier_mapping_reply(connection_, xcb_get_modifier_mapping(connection_), nullptr));
  const std::size_t width = now->keycodes_per_modifier;
  std::vector<std::uint8_t> keys(xcb_get_modifier_mapping_keycodes(now.get()),
                                 xcb_get_modifier_mapping_keycodes(now.get()) + (8 * width));
  std::ranges::replace(keys, Keys::numLock, std::uint8_t{0});
  std::ranges::fill_n(keys.begin() + static_cast<std::ptrdiff_t>(modifier * width), static_cast<std::ptrdiff_t>(width),
                      std::uint8_t{0});
  keys[modifier * width] = Keys::numLock;
  const X11Reply<xcb_set_modifier_mapping_reply_t> reply(xcb_set_modifier_mapping_reply(
      connection_, xcb_set_modifier_mapping(connection_, static_cast<std::uint8_t>(width), keys.data()), nullptr));
  return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
}

void TestKeyboard::setRepeat(std::uint16_t delay, std::uint16_t interval) {
  std::array<std::uint8_t, 32> repeatsPerKey{};
  repeatsPerKey.fill(0xFF);
  constexpr std::uint32_t repeat = XCB_XKB_BOOL_CTRL_REPEAT_KEYS;
  xcb_xkb_set_controls(connection_, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, repeat, repeat, repeat,
                       delay, interval, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, repeatsPerKey.data());
  sync(connection_);
}

OtherProgramsHotKey::OtherProgramsHotKey(const QuilloHotKey& hotKey, unsigned lock) : connection_(connectToDisplay()) {
  unsigned mask = lock;
  if (hotKey.modifiers.contains(QuilloHotKeyModifiers::control)) mask |= XCB_MOD_MASK_CONTROL;
  if (hotKey.modifiers.contains(QuilloHotKeyModifiers::option)) mask |= XCB_MOD_MASK_1;
  if (hotKey.modifiers.contains(QuilloHotKeyModifiers::shift)) mask |= XCB_MOD_MASK_SHIFT;
  if (hotKey.modifiers.contains(QuilloHotKeyModifiers::command)) mask |= XCB_MOD_MASK_4;
  const auto cookie =
      xcb_grab_key_checked(connection_, 0, rootOf(connection_), static_cast<std::uint16_t>(mask),
                           x11KeyCode(hotKey.keyCode).value(), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const X11Reply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
  isGrabbed_ = !error;
}

OtherProgramsHotKey::~OtherProgramsHotKey() {
  xcb_ungrab_key(connection_, XCB_GRAB_ANY, rootOf(connection_), XCB_MOD_MASK_ANY);
  sync(connection_);
  xcb_disconnect(connection_);
}

int OtherProgramsHotKey::eventCount() {
  while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    const unsigned type = event->response_type & 0x7FU;
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) ++eventCount_;
  }
  return eventCount_;
}

}  // namespace quillo::test
