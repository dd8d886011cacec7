#pragma once

#include <cstdlib>
#include <memory>

struct xcb_connection_t;
struct xcb_extension_t;

namespace quillo {

/// Frees what the X11 library allocated.
struct X11Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using X11Reply = std::unique_ptr<T, X11Free>;

// The library itself waits for a display without end. What follows waits three seconds at most; then the display counts
// as lost: its connection is cut off, and whatever is asked on it afterwards fails at once. Each connection is used by
// one thread.

/// The reply to the request of this number, or null: the request failed, the display is lost or does not answer.
void* awaitUntypedReply(xcb_connection_t* connection, unsigned sequence);

template <class Reply>
X11Reply<Reply> awaitReply(xcb_connection_t* connection, unsigned sequence) {
  return X11Reply<Reply>(static_cast<Reply*>(awaitUntypedReply(connection, sequence)));
}
template <class Reply, class Cookie>
X11Reply<Reply> awaitReply(xcb_connection_t* connection, Cookie cookie)
  requires requires { cookie.sequence; }
{
  return awaitReply<Reply>(connection, cookie.sequence);
}

/// Waits until the display has done all that it was asked to do. False when it is lost or does not answer.
bool awaitDisplay(xcb_connection_t* connection);

/// The error's code of a checked request that answers nothing; 0 when it was carried out, and when the display is lost.
unsigned char awaitCheck(xcb_connection_t* connection, unsigned sequence);

/// What the display says of an extension.
struct X11Extension {
  bool isPresent = false;
  unsigned char firstEvent = 0;
};
X11Extension awaitExtension(xcb_connection_t* connection, xcb_extension_t* extension);

}  // namespace quillo
