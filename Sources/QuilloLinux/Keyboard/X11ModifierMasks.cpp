#include "QuilloLinux/Keyboard/X11ModifierMasks.h"

#include <xcb/xcb.h>

#include <span>

namespace quillo {
namespace {

// The symbols that the keys have on every layout.
constexpr xcb_keysym_t numLockSymbol = 0xFF7F;
constexpr xcb_keysym_t scrollLockSymbol = 0xFF14;
constexpr xcb_keysym_t altLeftSymbol = 0xFFE9;
constexpr xcb_keysym_t altRightSymbol = 0xFFEA;
constexpr xcb_keysym_t superLeftSymbol = 0xFFEB;
constexpr xcb_keysym_t superRightSymbol = 0xFFEC;

void note(X11ModifierMasks& masks, xcb_keysym_t symbol, std::uint16_t mask) {
  switch (symbol) {
    case altLeftSymbol:
    case altRightSymbol: masks.alt |= mask; break;
    case superLeftSymbol:
    case superRightSymbol: masks.super |= mask; break;
    case numLockSymbol: masks.numLock |= mask; break;
    case scrollLockSymbol: masks.scrollLock |= mask; break;
    default: break;
  }
}

/// One modifier's bit where a key stands for several.
std::uint16_t lowestBit(std::uint16_t mask) {
  return static_cast<std::uint16_t>(mask & -mask);
}

}  // namespace

std::optional<std::uint16_t> X11ModifierMasks::maskOf(QuilloHotKeyModifiers modifiers) const {
  std::uint16_t mask = 0;
  if (modifiers.contains(QuilloHotKeyModifiers::control)) mask |= XCB_MOD_MASK_CONTROL;
  if (modifiers.contains(QuilloHotKeyModifiers::shift)) mask |= XCB_MOD_MASK_SHIFT;
  if (modifiers.contains(QuilloHotKeyModifiers::option)) {
    if (alt == 0) return std::nullopt;
    mask |= alt;
  }
  if (modifiers.contains(QuilloHotKeyModifiers::command)) {
    if (super == 0) return std::nullopt;
    mask |= super;
  }
  return mask;
}

std::uint16_t X11ModifierMasks::locks() const {
  // A key that locks on one keyboard and is held on another counts as held.
  const unsigned held = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt | super;
  return static_cast<std::uint16_t>((XCB_MOD_MASK_LOCK | numLock | scrollLock) & ~held);
}

std::vector<std::uint16_t> X11ModifierMasks::lockCombinations() const {
  const unsigned all = locks();
  std::vector<std::uint16_t> combinations;
  // From the full set down through every subset.
  for (unsigned subset = all;; subset = (subset - 1) & all) {
    combinations.push_back(static_cast<std::uint16_t>(subset));
    if (subset == 0) return combinations;
  }
}

std::optional<X11ModifierMasks> readModifierMasks(const X11Connection& connection) {
  const xcb_setup_t* setup = xcb_get_setup(connection.get());
  const auto first = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
  const auto modifiersCookie = xcb_get_modifier_mapping(connection.get());
  const auto symbolsCookie = xcb_get_keyboard_mapping(connection.get(), first, count);
  const auto modifiers = awaitReply<xcb_get_modifier_mapping_reply_t>(connection.get(), modifiersCookie);
  const auto symbols = awaitReply<xcb_get_keyboard_mapping_reply_t>(connection.get(), symbolsCookie);
  if (!modifiers || !symbols) return std::nullopt;

  const std::span allSymbols(xcb_get_keyboard_mapping_keysyms(symbols.get()),
                             static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(symbols.get())));
  const std::span keyCodes(xcb_get_modifier_mapping_keycodes(modifiers.get()),
                           static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers.get())));
  const std::size_t symbolsPerKey = symbols->keysyms_per_keycode;
  const std::size_t keysPerModifier = modifiers->keycodes_per_modifier;
  X11ModifierMasks masks;
  for (std::size_t i = 0; i < keyCodes.size(); ++i) {
    if (keyCodes[i] < first) continue;  // an empty place
    const std::size_t start = (keyCodes[i] - first) * symbolsPerKey;
    if (start + symbolsPerKey > allSymbols.size()) continue;
    const auto mask = static_cast<std::uint16_t>(1U << (i / keysPerModifier));
    for (const xcb_keysym_t symbol : allSymbols.subspan(start, symbolsPerKey)) note(masks, symbol, mask);
  }
  masks.alt = lowestBit(masks.alt);
  masks.super = lowestBit(masks.super);
  return masks;
}

}  // namespace quillo
