#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct xcb_connection_t;

namespace quillo {

/// Frees what the X11 library allocated.
struct X11Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using X11Reply = std::unique_ptr<T, X11Free>;

/// The atoms that the window list speaks in, interned in one round trip.
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
  /// Null when the display ($DISPLAY) cannot be opened.
  static std::unique_ptr<X11Connection> open();

  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;
  ~X11Connection();

  xcb_connection_t* get() const { return connection_; }
  std::uint32_t root() const { return root_; }
  std::uint32_t atom(X11Atom name) const;

  /// Whether the display has gone away.
  bool isBroken() const;

 private:
  X11Connection(xcb_connection_t* connection, std::uint32_t root);

  xcb_connection_t* connection_;
  std::uint32_t root_;
  std::vector<std::uint32_t> atoms_;
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

}  // namespace quillo
