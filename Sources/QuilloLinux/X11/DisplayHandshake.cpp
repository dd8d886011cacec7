#include "QuilloLinux/X11/DisplayHandshake.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <bit>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace quillo {
namespace {

class Socket {
 public:
  Socket() : descriptor_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  ~Socket() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

/// The local display's number; nothing when the display is no local one.
std::optional<int> localDisplayNumber() {
  char* host = nullptr;
  int display = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) return std::nullopt;
  const bool isLocal = *host == '\0' || std::strcmp(host, "unix") == 0;
  std::free(host);
  return isLocal ? std::optional(display) : std::nullopt;
}

/// As the library does it: first the abstract address, then the file.
bool connectTo(const Socket& socket, int display) {
  const std::string path = "/tmp/.X11-unix/X" + std::to_string(display);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() + 1 >= sizeof address.sun_path) return false;
  const auto connected = [&](std::size_t offset) {
    std::memset(address.sun_path, 0, sizeof address.sun_path);
    std::memcpy(address.sun_path + offset, path.data(), path.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size() + 1);
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), length) == 0;
  };
  return connected(1) || connected(0);
}

}  // namespace

bool displayAnswers(double seconds) {
  const auto display = localDisplayNumber();
  if (!display) return true;
  const Socket socket;
  // A connection that is refused is the library's affair; one that would block has found the queue of a server that
  // takes none from it.
  if (!connectTo(socket, *display)) return errno != EAGAIN;

  // The beginning of every connection; without an authority it is answered with a refusal, which is an answer.
  constexpr std::uint8_t byteOrder = std::endian::native == std::endian::little ? 'l' : 'B';
  xcb_setup_request_t request{};
  request.byte_order = byteOrder;
  request.protocol_major_version = X_PROTOCOL;
  if (::send(socket.get(), &request, sizeof request, MSG_NOSIGNAL) != sizeof request) return true;

  using Clock = std::chrono::steady_clock;
  const auto deadline =
      Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd waiting{.fd = socket.get(), .events = POLLIN, .revents = 0};
    const int ready = ::poll(&waiting, 1, left > 0 ? static_cast<int>(left) : 0);
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

}  // namespace quillo
