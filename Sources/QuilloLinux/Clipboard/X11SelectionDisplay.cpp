#include "QuilloLinux/Clipboard/X11SelectionDisplay.h"

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "QuilloCore/Clipboard/PasteboardError.h"

namespace quillo {
namespace {

// In the order of the accessors.
constexpr std::array<std::string_view, 10> protocolNames = {
    "CLIPBOARD", "CLIPBOARD_MANAGER", "TARGETS",      "TIMESTAMP",        "MULTIPLE",
    "INCR",      "ATOM_PAIR",         "SAVE_TARGETS", "QUILLO_SELECTION", "QUILLO_TIME"};

/// Large transfers are cut so. Measured: pieces of half and of four times the size take longer in all, the first for
/// their round trips, the second for the display's memory.
constexpr std::size_t preferredChunkSize = 1024UL * 1024;

}  // namespace

std::vector<std::uint32_t> X11Property::words() const {
  std::vector<std::uint32_t> words(format == 32 ? data.size() / sizeof(std::uint32_t) : 0);
  if (!words.empty()) std::memcpy(words.data(), data.data(), words.size() * sizeof(std::uint32_t));
  return words;
}

X11SelectionDisplay::X11SelectionDisplay() : connection_(X11Connection::open()) {
  if (!connection_) throw PasteboardError(PasteboardError::DisplayUnavailable{});
  const X11Extension extension = awaitExtension(get(), &xcb_xfixes_id);
  if (!extension.isPresent) throw PasteboardError(PasteboardError::MissingExtension{"XFIXES"});
  firstExtensionEvent_ = extension.firstEvent;
  constexpr std::uint32_t major = 5;
  const auto version = awaitReply<xcb_xfixes_query_version_reply_t>(get(), xcb_xfixes_query_version(get(), major, 0));
  if (!version) throw PasteboardError(PasteboardError::DisplayLost{});
  atoms_ = internAtoms(get(), protocolNames);
  chunkSize_ = std::min(preferredChunkSize, std::size_t{xcb_get_maximum_request_length(get())});

  window_ = makeWindow();
  xcb_xfixes_select_selection_input(get(), window_, clipboard(),
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  if (isLost()) throw PasteboardError(PasteboardError::DisplayLost{});
}

X11SelectionDisplay::~X11SelectionDisplay() = default;

std::vector<std::uint32_t> X11SelectionDisplay::atomsOf(std::span<const std::string> names) {
  std::vector<std::string_view> unknown;
  for (const std::string& name : names) {
    if (!atomsByName_.contains(name)) unknown.push_back(name);
  }
  const std::vector<std::uint32_t> interned = internAtoms(get(), unknown);
  for (std::size_t i = 0; i < unknown.size(); ++i) {
    atomsByName_.emplace(unknown[i], interned[i]);
    namesByAtom_.emplace(interned[i], unknown[i]);
  }
  std::vector<std::uint32_t> atoms;
  for (const std::string& name : names) atoms.push_back(atomsByName_.at(name));
  return atoms;
}

std::vector<std::string> X11SelectionDisplay::namesOf(std::span<const std::uint32_t> atoms) {
  std::vector<std::pair<std::uint32_t, xcb_get_atom_name_cookie_t>> asked;
  for (const std::uint32_t atom : atoms) {
    if (atom != XCB_ATOM_NONE && !namesByAtom_.contains(atom)) asked.emplace_back(atom, xcb_get_atom_name(get(), atom));
  }
  for (const auto& [atom, cookie] : asked) {
    const auto reply = awaitReply<xcb_get_atom_name_reply_t>(get(), cookie);
    if (!reply) continue;
    const std::string name(xcb_get_atom_name_name(reply.get()),
                           static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
    atomsByName_.emplace(name, atom);
    namesByAtom_.emplace(atom, name);
  }
  std::vector<std::string> names;
  for (const std::uint32_t atom : atoms) {
    const auto found = namesByAtom_.find(atom);
    names.push_back(found == namesByAtom_.end() ? std::string() : found->second);
  }
  return names;
}

std::uint32_t X11SelectionDisplay::makeWindow() const {
  const std::uint32_t window = xcb_generate_id(get());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(get(), XCB_COPY_FROM_PARENT, window, connection_->root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

void X11SelectionDisplay::destroyWindow(std::uint32_t window) const {
  xcb_destroy_window(get(), window);
}

X11Property X11SelectionDisplay::property(std::uint32_t window, std::uint32_t property, std::size_t maximumBytes,
                                          X11PropertyReading reading) const {
  const auto words = static_cast<std::uint32_t>(maximumBytes / sizeof(std::uint32_t) + 1);
  const auto cookie = xcb_get_property(get(), reading == X11PropertyReading::remove ? 1 : 0, window, property,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, words);
  const auto reply = awaitReply<xcb_get_property_reply_t>(get(), cookie);
  X11Property result;
  if (!reply) return result;
  result.type = reply->type;
  result.format = reply->format;
  result.isCut = reply->bytes_after > 0;
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  if (length > 0) result.data.assign(static_cast<const char*>(xcb_get_property_value(reply.get())), length);
  return result;
}

void X11SelectionDisplay::setProperty(std::uint32_t window, std::uint32_t property, std::uint32_t type,
                                      std::uint8_t format, std::string_view data) const {
  xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, property, type, format,
                      static_cast<std::uint32_t>(data.size() / (format / 8U)), data.data());
}

void X11SelectionDisplay::setAtoms(std::uint32_t window, std::uint32_t property,
                                   std::span<const std::uint32_t> atoms) const {
  xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

std::uint32_t X11SelectionDisplay::ownerOf(std::uint32_t selection) const {
  const auto reply = awaitReply<xcb_get_selection_owner_reply_t>(get(), xcb_get_selection_owner(get(), selection));
  return reply ? reply->owner : XCB_WINDOW_NONE;
}

}  // namespace quillo
