#include "QuilloLinux/X11/X11Reply.h"

#include <poll.h>
#include <sys/socket.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <cerrno>
#include <chrono>

namespace quillo {
namespace {

using Clock = std::chrono::steady_clock;

/// A display that is alive may be held for a while, by a window manager that grabs it or by a machine that swaps.
constexpr auto patience = std::chrono::seconds(3);

/// Whether something can be read before the deadline.
bool awaitInput(xcb_connection_t* connection, Clock::time_point deadline) {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd waiting{.fd = xcb_get_file_descriptor(connection), .events = POLLIN, .revents = 0};
    const int ready = ::poll(&waiting, 1, left > 0 ? static_cast<int>(left) : 0);
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

/// The library notices the end of the connection when it next reads or writes.
void cutOff(xcb_connection_t* connection) {
  ::shutdown(xcb_get_file_descriptor(connection), SHUT_RDWR);
  xcb_flush(connection);
}

}  // namespace

void* awaitUntypedReply(xcb_connection_t* connection, unsigned sequence) {
  xcb_flush(connection);
  const auto deadline = Clock::now() + patience;
  while (true) {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(connection, sequence, &reply, &error) != 0) {
      std::free(error);
      return reply;
    }
    if (awaitInput(connection, deadline)) continue;
    cutOff(connection);
    return nullptr;
  }
}

bool awaitDisplay(xcb_connection_t* connection) {
  return awaitReply<xcb_get_input_focus_reply_t>(connection, xcb_get_input_focus(connection)) != nullptr;
}

unsigned char awaitCheck(xcb_connection_t* connection, unsigned sequence) {
  // Once a later request is answered the library knows of this one and need not wait.
  if (!awaitDisplay(connection)) return 0;
  const X11Reply<xcb_generic_error_t> error(xcb_request_check(connection, {sequence}));
  return error ? error->error_code : 0;
}

X11Extension awaitExtension(xcb_connection_t* connection, xcb_extension_t* extension) {
  xcb_prefetch_extension_data(connection, extension);
  if (!awaitDisplay(connection)) return {};
  const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection, extension);
  if (data == nullptr) return {};
  return {.isPresent = data->present != 0, .firstEvent = data->first_event};
}

}  // namespace quillo
