#include "QuilloLinux/Windows/X11RunningApplications.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {
namespace {

struct WindowOwner {
  std::int32_t processIdentifier = 0;
  std::string windowClass;
  bool mayBeCaptured = true;
};

/// WM_CLASS holds the instance's name and the class, each ended by a zero byte.
std::string classPart(const std::string& property) {
  const std::size_t separator = property.find('\0');
  if (separator == std::string::npos) return {};
  const std::string rest = property.substr(separator + 1);
  return bringingToOneLine(replacingInvalidUtf8(rest.substr(0, rest.find('\0'))));
}

struct OwnerRequests {
  OwnerRequests(const X11Connection& connection, std::uint32_t window)
      : process(connection, window),
        windowClass(connection, window, XCB_ATOM_WM_CLASS),
        types(connection, window, connection.atom(X11Atom::netWMWindowType)),
        states(connection, window, connection.atom(X11Atom::netWMState)) {}

  X11ProcessRequest process;
  X11PropertyRequest windowClass;
  X11PropertyRequest types;
  X11PropertyRequest states;
};

std::optional<WindowOwner> ownerOf(const X11Connection& connection, OwnerRequests& requests) {
  const auto pid = requests.process.processIdentifier();
  if (!pid) return std::nullopt;
  const auto types = requests.types.words();
  const auto states = requests.states.words();
  const auto isOfType = [&](X11Atom type) { return std::ranges::count(types, connection.atom(type)) > 0; };
  const bool isShell = isOfType(X11Atom::netWMWindowTypeDesktop) || isOfType(X11Atom::netWMWindowTypeDock) ||
                       isOfType(X11Atom::netWMWindowTypeNotification) ||
                       std::ranges::count(states, connection.atom(X11Atom::netWMStateSkipTaskbar)) > 0;
  return WindowOwner{*pid, classPart(requests.windowClass.bytes()), !isShell};
}

std::uint32_t activeWindowOf(const X11Connection& connection) {
  const auto active =
      X11PropertyRequest(connection, connection.root(), connection.atom(X11Atom::netActiveWindow)).words();
  return active.empty() ? 0 : active[0];
}

RunningApplication applicationOf(const WindowOwner& owner, const ApplicationIdentityLookup& lookup) {
  RunningApplication application;
  application.processIdentifier = owner.processIdentifier;
  application.mayBeCaptured = owner.mayBeCaptured;
  if (owner.windowClass.empty()) return application;
  ApplicationIdentity identity = lookup(owner.windowClass);
  application.localizedName = identity.localizedName.value_or(owner.windowClass);
  application.bundleIdentifier = identity.bundleIdentifier.value_or(owner.windowClass);
  return application;
}

}  // namespace

std::uint32_t X11RunningApplications::activeWindow() {
  const auto connection = X11Connection::open();
  return connection ? activeWindowOf(*connection) : 0;
}

std::optional<RunningApplication> X11RunningApplications::frontmostApplication() {
  const auto connection = X11Connection::open();
  const std::uint32_t active = connection ? activeWindowOf(*connection) : 0;
  if (active == 0) return std::nullopt;
  OwnerRequests requests(*connection, active);
  const auto owner = ownerOf(*connection, requests);
  return owner ? std::optional(applicationOf(*owner, lookup_)) : std::nullopt;
}

std::optional<RunningApplication> X11RunningApplications::application(std::int32_t processIdentifier) {
  const auto connection = X11Connection::open();
  if (!connection) return std::nullopt;
  const auto windows =
      X11PropertyRequest(*connection, connection->root(), connection->atom(X11Atom::netClientListStacking)).words();
  std::vector<OwnerRequests> requests;
  requests.reserve(windows.size());
  for (const std::uint32_t window : windows) requests.emplace_back(*connection, window);
  std::optional<WindowOwner> found;
  for (OwnerRequests& request : requests) {
    const auto owner = ownerOf(*connection, request);
    if (!owner || owner->processIdentifier != processIdentifier) continue;
    // One ordinary window makes the application an ordinary one.
    if (!found || (owner->mayBeCaptured && !found->mayBeCaptured)) found = owner;
  }
  return found ? std::optional(applicationOf(*found, lookup_)) : std::nullopt;
}

}  // namespace quillo
