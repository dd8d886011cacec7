#include "QuilloLinux/Keyboard/X11KeyLookup.h"

#include <xcb/xcb.h>

#include <algorithm>

#include "QuilloLinux/Keyboard/XkbProtocol.h"

namespace quillo {
namespace {

constexpr std::size_t modifierCount = 8;
constexpr unsigned groupCountMask = 0x0F;

}  // namespace

std::optional<X11KeyLookup> X11KeyLookup::read(const X11Connection& connection, std::uint8_t group) {
  const auto symbolsCookie = xcb_xkb_get_map(connection.get(), XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0,
                                             0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const auto modifiersCookie = xcb_get_modifier_mapping(connection.get());
  const auto map = awaitReply<xcb_xkb_get_map_reply_t>(connection.get(), symbolsCookie);
  const auto modifiers = awaitReply<xcb_get_modifier_mapping_reply_t>(connection.get(), modifiersCookie);
  if (!map || !modifiers || (map->present & XCB_XKB_MAP_PART_KEY_SYMS) == 0) return std::nullopt;

  X11KeyLookup lookup;
  lookup.group_ = group;
  xcb_xkb_get_map_map_t parts;
  xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(map.get()), map->nTypes, map->nKeySyms, map->nKeyActions,
                             map->totalActions, map->totalKeyBehaviors, map->virtualMods, map->totalKeyExplicit,
                             map->totalModMapKeys, map->totalVModMapKeys, map->present, &parts);
  auto entry = xcb_xkb_get_map_map_syms_rtrn_iterator(map.get(), &parts);
  for (std::uint8_t code = map->firstKeySym; entry.rem > 0; ++code, xcb_xkb_key_sym_map_next(&entry)) {
    Key& key = lookup.keys_.emplace_back(Key{code, {}});
    const std::uint32_t* symbols = xcb_xkb_key_sym_map_syms(entry.data);
    const std::size_t groupCount = entry.data->groupInfo & groupCountMask;
    const std::size_t levelCount = entry.data->width;
    for (std::size_t i = 0; i < groupCount; ++i) key.symbols.push_back(symbols[i * levelCount]);
  }

  const std::uint8_t* codes = xcb_get_modifier_mapping_keycodes(modifiers.get());
  const std::size_t perModifier = modifiers->keycodes_per_modifier;
  for (std::size_t i = 0; i < modifierCount; ++i) {
    lookup.modifierKeys_.emplace_back(codes + i * perModifier, codes + (i + 1) * perModifier);
    std::erase(lookup.modifierKeys_.back(), 0);
  }
  return lookup;
}

std::optional<std::uint8_t> X11KeyLookup::keyFor(std::uint32_t symbol) const {
  // A key with fewer layouts than the keyboard repeats them.
  const auto inActiveLayout = std::ranges::find_if(keys_, [&](const Key& key) {
    return !key.symbols.empty() && key.symbols[group_ % key.symbols.size()] == symbol;
  });
  if (inActiveLayout != keys_.end()) return inActiveLayout->code;
  const auto inAnyLayout =
      std::ranges::find_if(keys_, [&](const Key& key) { return std::ranges::count(key.symbols, symbol) > 0; });
  return inAnyLayout != keys_.end() ? std::optional(inAnyLayout->code) : std::nullopt;
}

std::optional<std::uint8_t> X11KeyLookup::modifierKey(std::size_t modifier, std::uint32_t preferredSymbol) const {
  const std::vector<std::uint8_t>& codes = modifierKeys_.at(modifier);
  for (const std::uint8_t code : codes) {
    const Key* key = find(code);
    if (key != nullptr && std::ranges::count(key->symbols, preferredSymbol) > 0) return code;
  }
  return codes.empty() ? std::nullopt : std::optional(codes.front());
}

const X11KeyLookup::Key* X11KeyLookup::find(std::uint8_t code) const {
  const auto found = std::ranges::find(keys_, code, &Key::code);
  return found == keys_.end() ? nullptr : &*found;
}

}  // namespace quillo
