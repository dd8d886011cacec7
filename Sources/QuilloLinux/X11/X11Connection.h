#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloLinux/X11/X11Reply.h"

struct xcb_connection_t;

namespace quillo {

/// Connects to the display ($DISPLAY) as xcb_connect does, from any thread: the library that reads the display's
/// authority keeps the file's name in memory that two threads may not share.
xcb_connection_t* connectToDisplay(int* screenNumber = nullptr);

/// The numbers of atoms, interned in one round trip, in the order of their names; 0 for one that could not be had.
std::vector<std::uint32_t> internAtoms(xcb_connection_t* connection, std::span<const std::string_view> names);

/// The atoms that the window list speaks in.
enum class X11Atom : std::uint8_t {
  netActiveWindow,
  netClientListStacking,
  netCurrentDesktop,
  netFrameExtents,
  netWMDesktop,
  netWMName,
  netWMOpacity,
  netWMPid,
  netWMState,
  netWMStateHidden,
  netWMStateSkipTaskbar,
  netWMWindowType,
  netWMWindowTypeDesktop,
  netWMWindowTypeDock,
  netWMWindowTypeNotification,
  gtkFrameExtents,
  utf8String,
};

/// A connection to the display. Errors of single requests are answers, not events, so that a window that vanishes
/// between two requests harms nobody. Used by one thread.
class X11Connection {
 public:
  /// Null when the display ($DISPLAY) cannot be opened, or does not answer within two seconds.
  static std::unique_ptr<X11Connection> open();

  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;
  ~X11Connection();

  xcb_connection_t* get() const { return connection_; }
  std::uint32_t root() const { return root_; }
  std::uint32_t atom(X11Atom name) const;

  /// Whether the display has gone away.
  bool isBroken() const;

  /// Whether the display itself knows the processes behind its connections (X-Resource 1.2).
  bool knowsProcesses() const { return knowsProcesses_; }

 private:
  X11Connection(xcb_connection_t* connection, std::uint32_t root);

  xcb_connection_t* connection_;
  std::uint32_t root_;
  std::vector<std::uint32_t> atoms_;
  bool knowsProcesses_;
};

/// A property that was asked for; asking first and reading later lets many requests share one round trip.
class X11PropertyRequest {
 public:
  X11PropertyRequest(const X11Connection& connection, std::uint32_t window, std::uint32_t property);
  X11PropertyRequest(const X11PropertyRequest&) = delete;
  X11PropertyRequest& operator=(const X11PropertyRequest&) = delete;
  X11PropertyRequest(X11PropertyRequest&& other) noexcept;
  X11PropertyRequest& operator=(X11PropertyRequest&&) = delete;
  ~X11PropertyRequest();

  /// The property's 32-bit items, or its bytes; empty when there is none. One of the two, once.
  std::vector<std::uint32_t> words();
  std::string bytes();

 private:
  std::vector<std::uint8_t> take(std::uint8_t format);

  xcb_connection_t* connection_;
  unsigned sequence_;
};

/// The process behind a window, asked for and read later. What the display saw when the process connected counts; what
/// the window says of itself (_NET_WM_PID) only where the display does not know, as a window may say anything.
class X11ProcessRequest {
 public:
  X11ProcessRequest(const X11Connection& connection, std::uint32_t window);
  X11ProcessRequest(const X11ProcessRequest&) = delete;
  X11ProcessRequest& operator=(const X11ProcessRequest&) = delete;
  X11ProcessRequest(X11ProcessRequest&& other) noexcept;
  X11ProcessRequest& operator=(X11ProcessRequest&&) = delete;
  ~X11ProcessRequest();

  /// Nothing when neither knows. Once.
  std::optional<std::int32_t> processIdentifier();

 private:
  X11PropertyRequest claim_;
  xcb_connection_t* connection_;  ///< null when there is nothing to read from the display
  unsigned sequence_ = 0;
};

}  // namespace quillo
