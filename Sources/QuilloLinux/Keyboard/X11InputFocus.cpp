#include "QuilloLinux/Keyboard/X11InputFocus.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace quillo {
namespace {

/// Where Control+V belongs to the program inside and Control+Shift+V pastes: the names in lower case.
constexpr std::string_view terminalNames =
    "|alacritty|aterm|black box|com.gexperts.tilix|com.mitchellh.ghostty|com.raggesilver.blackbox|"
    "contour|cool-retro-term|deepin-terminal|eterm|foot|ghostty|gnome-terminal|gnome-terminal-server|"
    "guake|hyper|kgx|kitty|konsole|lxterminal|mate-terminal|mlterm|org.codeberg.dnkl.foot|"
    "org.gnome.console|org.gnome.ptyxis|org.gnome.terminal|org.kde.konsole|org.wezfurlong.wezterm|"
    "pantheon-terminal|ptyxis|qterminal|rio|roxterm|rxvt|sakura|st|st-256color|terminator|"
    "terminology|tilda|tilix|urxvt|uxterm|wezterm|x-terminal-emulator|xfce4-terminal|xterm|yakuake|";

std::uint32_t firstWord(const std::vector<std::uint32_t>& words) {
  return words.empty() ? 0 : words[0];
}

bool tellsActiveWindow(const X11Connection& connection) {
  constexpr std::array<std::string_view, 1> names = {"_NET_SUPPORTED"};
  const std::uint32_t property = internAtoms(connection.get(), names).front();
  const auto supported = X11PropertyRequest(connection, connection.root(), property).words();
  return std::ranges::count(supported, connection.atom(X11Atom::netActiveWindow)) > 0;
}

/// Whether the window is the other one or lies in it, as one of another process may.
bool isInside(const X11Connection& connection, std::uint32_t window, std::uint32_t other) {
  while (window != other && window != connection.root()) {
    const auto tree = awaitReply<xcb_query_tree_reply_t>(connection.get(), xcb_query_tree(connection.get(), window));
    if (!tree || tree->parent == XCB_WINDOW_NONE) return false;
    window = tree->parent;
  }
  return window == other;
}

}  // namespace

bool isTerminalClass(std::string_view windowClass) {
  while (!windowClass.empty()) {
    const std::size_t end = std::min(windowClass.find('\0'), windowClass.size());
    std::string name = "|";
    for (const unsigned char letter : windowClass.substr(0, end)) name += static_cast<char>(std::tolower(letter));
    if (name.size() > 1 && terminalNames.find(name + "|") != std::string_view::npos) return true;
    windowClass.remove_prefix(std::min(end + 1, windowClass.size()));
  }
  return false;
}

std::optional<InputFocus> X11InputFocus::inputFocus() {
  if (!connection_ || connection_->isBroken()) connection_ = X11Connection::open();
  if (!connection_) return std::nullopt;
  const X11Connection& connection = *connection_;

  const xcb_get_input_focus_cookie_t cookie = xcb_get_input_focus(connection.get());
  X11PropertyRequest active(connection, connection.root(), connection.atom(X11Atom::netActiveWindow));
  const auto reply = awaitReply<xcb_get_input_focus_reply_t>(connection.get(), cookie);
  const std::vector<std::uint32_t> activeWords = active.words();
  if (!reply || reply->focus == XCB_INPUT_FOCUS_NONE || reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT ||
      reply->focus == connection.root()) {
    return std::nullopt;
  }
  std::uint32_t window = firstWord(activeWords);
  if (window == 0) {
    // A window manager that tells which window is active keeps the focus on one of its own when none is.
    if (tellsActiveWindow(connection)) return std::nullopt;
    window = reply->focus;
  }

  X11ProcessRequest process(connection, window);
  X11ProcessRequest focusedProcess(connection, reply->focus);
  X11PropertyRequest windowClass(connection, window, XCB_ATOM_WM_CLASS);
  const auto processIdentifier = process.processIdentifier();
  const std::string name = windowClass.bytes();
  if (!processIdentifier) return std::nullopt;
  // Of a window that is gone the property may still tell, and its number may be somebody else's by now.
  if (focusedProcess.processIdentifier() != processIdentifier && !isInside(connection, reply->focus, window)) {
    return std::nullopt;
  }
  return InputFocus{
      .window = reply->focus, .processIdentifier = *processIdentifier, .isTerminal = isTerminalClass(name)};
}

}  // namespace quillo
