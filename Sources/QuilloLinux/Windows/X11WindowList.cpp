#include "QuilloLinux/Windows/X11WindowList.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string>
#include <utility>

#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {
namespace {

constexpr std::int64_t ordinaryLayer = 0;
constexpr std::int64_t shellLayer = 1;
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;

/// Everything that is asked about one window, sent before any answer is awaited.
struct WindowRequests {
  WindowRequests(const X11Connection& connection, std::uint32_t window_)
      : window(window_),
        geometry(xcb_get_geometry(connection.get(), window_)),
        position(xcb_translate_coordinates(connection.get(), window_, connection.root(), 0, 0)),
        attributes(xcb_get_window_attributes(connection.get(), window_)),
        process(connection, window_),
        name(connection, window_, connection.atom(X11Atom::netWMName)),
        legacyName(connection, window_, XCB_ATOM_WM_NAME),
        types(connection, window_, connection.atom(X11Atom::netWMWindowType)),
        states(connection, window_, connection.atom(X11Atom::netWMState)),
        desktop(connection, window_, connection.atom(X11Atom::netWMDesktop)),
        opacity(connection, window_, connection.atom(X11Atom::netWMOpacity)),
        frameExtents(connection, window_, connection.atom(X11Atom::netFrameExtents)),
        shadowExtents(connection, window_, connection.atom(X11Atom::gtkFrameExtents)) {}

  std::uint32_t window;
  xcb_get_geometry_cookie_t geometry;
  xcb_translate_coordinates_cookie_t position;
  xcb_get_window_attributes_cookie_t attributes;
  X11ProcessRequest process;
  X11PropertyRequest name;
  X11PropertyRequest legacyName;
  X11PropertyRequest types;
  X11PropertyRequest states;
  X11PropertyRequest desktop;
  X11PropertyRequest opacity;
  X11PropertyRequest frameExtents;
  X11PropertyRequest shadowExtents;
};

/// WM_NAME is Latin-1 unless it says otherwise; what is valid UTF-8 is taken as such, as most programs write it.
std::string decodeLegacyName(const std::string& bytes) {
  if (!findInvalidUtf8(bytes)) return bytes;
  std::string text;
  for (const char c : bytes) appendCodePoint(text, static_cast<unsigned char>(c));
  return text;
}

std::optional<std::string> titleOf(WindowRequests& requests) {
  std::string title = bringingToOneLine(replacingInvalidUtf8(requests.name.bytes()));
  if (title.empty()) title = bringingToOneLine(decodeLegacyName(requests.legacyName.bytes()));
  return title.empty() ? std::nullopt : std::optional(std::move(title));
}

/// Left, right, top and bottom.
ArtifactRect grownBy(const ArtifactRect& rect, const std::vector<std::uint32_t>& edges, double sign) {
  const auto left = sign * edges[0];
  const auto right = sign * edges[1];
  const auto top = sign * edges[2];
  const auto bottom = sign * edges[3];
  return {
      .x = rect.x - left, .y = rect.y - top, .width = rect.width + left + right, .height = rect.height + top + bottom};
}

bool anyEdge(const std::vector<std::uint32_t>& edges) {
  return edges.size() == 4 && std::ranges::any_of(edges, [](std::uint32_t edge) { return edge != 0; });
}

std::optional<WindowListEntry> entryOf(const X11Connection& connection, WindowRequests& requests,
                                       std::optional<std::uint32_t> currentDesktop) {
  const auto geometry = awaitReply<xcb_get_geometry_reply_t>(connection.get(), requests.geometry);
  const auto position = awaitReply<xcb_translate_coordinates_reply_t>(connection.get(), requests.position);
  const auto attributes = awaitReply<xcb_get_window_attributes_reply_t>(connection.get(), requests.attributes);
  const auto pid = requests.process.processIdentifier();
  if (!geometry || !position || !attributes || !pid) return std::nullopt;

  const auto types = requests.types.words();
  const auto states = requests.states.words();
  const auto hasType = [&](X11Atom type) { return std::ranges::count(types, connection.atom(type)) > 0; };
  const auto hasState = [&](X11Atom state) { return std::ranges::count(states, connection.atom(state)) > 0; };
  const auto desktop = requests.desktop.words();
  const bool isOnDesktop =
      desktop.empty() || !currentDesktop || desktop[0] == allDesktops || desktop[0] == *currentDesktop;

  WindowListEntry entry;
  entry.windowID = requests.window;
  entry.processIdentifier = *pid;
  const bool isOfShell = hasType(X11Atom::netWMWindowTypeDesktop) || hasType(X11Atom::netWMWindowTypeDock) ||
                         hasType(X11Atom::netWMWindowTypeNotification);
  entry.layer = isOfShell ? shellLayer : ordinaryLayer;
  entry.bounds = {.x = static_cast<double>(position->dst_x),
                  .y = static_cast<double>(position->dst_y),
                  .width = static_cast<double>(geometry->width),
                  .height = static_cast<double>(geometry->height)};
  entry.isOnScreen =
      attributes->map_state == XCB_MAP_STATE_VIEWABLE && !hasState(X11Atom::netWMStateHidden) && isOnDesktop;
  entry.title = titleOf(requests);
  if (const auto opacity = requests.opacity.words(); !opacity.empty()) {
    entry.alpha = static_cast<double>(opacity[0]) / static_cast<double>(UINT32_MAX);
  }
  if (const auto decoration = requests.frameExtents.words(); anyEdge(decoration)) {
    entry.equivalentBounds.push_back(grownBy(entry.bounds, decoration, 1));
  }
  if (const auto shadow = requests.shadowExtents.words(); anyEdge(shadow)) {
    entry.equivalentBounds.push_back(grownBy(entry.bounds, shadow, -1));
  }
  return entry;
}

}  // namespace

std::vector<WindowListEntry> X11WindowList::onScreenFrontToBack() {
  const auto connection = X11Connection::open();
  if (!connection) throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::WindowListUnavailable{});
  X11PropertyRequest stackingRequest(*connection, connection->root(), connection->atom(X11Atom::netClientListStacking));
  X11PropertyRequest desktopRequest(*connection, connection->root(), connection->atom(X11Atom::netCurrentDesktop));
  const std::vector<std::uint32_t> bottomToTop = stackingRequest.words();
  const std::vector<std::uint32_t> desktop = desktopRequest.words();
  const auto currentDesktop = desktop.empty() ? std::nullopt : std::optional(desktop[0]);

  std::vector<WindowRequests> requests;
  requests.reserve(bottomToTop.size());
  for (const std::uint32_t window : std::views::reverse(bottomToTop)) requests.emplace_back(*connection, window);
  std::vector<WindowListEntry> entries;
  for (WindowRequests& request : requests) {
    auto entry = entryOf(*connection, request, currentDesktop);
    if (entry && entry->isOnScreen) entries.push_back(std::move(*entry));
  }
  if (connection->isBroken()) {
    throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::WindowListUnavailable{});
  }
  return entries;
}

}  // namespace quillo
