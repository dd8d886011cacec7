#include "QuilloLinux/X11/DisplayHandshake.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <bit>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

namespace quillo {
namespace {

using Clock = std::chrono::steady_clock;

struct DisplayAddress {
  std::string host;
  int number = 0;

  bool isLocal() const { return host.empty() || host == "unix"; }
};

/// What the library reads of $DISPLAY; nothing when it can make nothing of it.
std::optional<DisplayAddress> displayAddress() {
  char* host = nullptr;
  int number = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &number, &screen) == 0) return std::nullopt;
  const std::unique_ptr<char, decltype(&std::free)> owned(host, &std::free);
  return DisplayAddress{.host = host, .number = number};
}

class Socket {
 public:
  explicit Socket(int family) : descriptor_(::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  ~Socket() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  int get() const { return descriptor_; }

  bool isReady(short event, Clock::time_point deadline) const {
    while (true) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
      pollfd waiting{.fd = descriptor_, .events = event, .revents = 0};
      const int ready = ::poll(&waiting, 1, left > 0 ? static_cast<int>(left) : 0);
      if (ready >= 0 || errno != EINTR) return ready > 0;
    }
  }

 private:
  int descriptor_;
};

enum class Connecting { connected, refused, stuck };

/// As the library does it: first the abstract address, then the file.
Connecting connectLocally(const Socket& socket, int display) {
  const std::string path = "/tmp/.X11-unix/X" + std::to_string(display);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() + 1 >= sizeof address.sun_path) return Connecting::refused;
  const auto connected = [&](std::size_t offset) {
    std::memset(address.sun_path, 0, sizeof address.sun_path);
    std::memcpy(address.sun_path + offset, path.data(), path.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size() + 1);
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), length) == 0;
  };
  if (connected(1) || connected(0)) return Connecting::connected;
  // One that would block has found the queue of a server that takes none from it.
  return errno == EAGAIN ? Connecting::stuck : Connecting::refused;
}

Connecting connectOverNetwork(const Socket& socket, const addrinfo& address, Clock::time_point deadline) {
  if (::connect(socket.get(), address.ai_addr, address.ai_addrlen) == 0) return Connecting::connected;
  if (errno != EINPROGRESS) return Connecting::refused;
  if (!socket.isReady(POLLOUT, deadline)) return Connecting::stuck;
  int error = 0;
  socklen_t length = sizeof error;
  ::getsockopt(socket.get(), SOL_SOCKET, SO_ERROR, &error, &length);
  return error == 0 ? Connecting::connected : Connecting::refused;
}

/// Sends the beginning of every connection; without an authority it is answered with a refusal, which is an answer.
bool isAnswered(const Socket& socket, Clock::time_point deadline) {
  constexpr std::uint8_t byteOrder = std::endian::native == std::endian::little ? 'l' : 'B';
  xcb_setup_request_t request{};
  request.byte_order = byteOrder;
  request.protocol_major_version = X_PROTOCOL;
  if (::send(socket.get(), &request, sizeof request, MSG_NOSIGNAL) != sizeof request) return true;
  return socket.isReady(POLLIN, deadline);
}

bool localDisplayAnswers(int number, Clock::time_point deadline) {
  const Socket socket(AF_UNIX);
  switch (connectLocally(socket, number)) {
    case Connecting::connected: return isAnswered(socket, deadline);
    case Connecting::refused: return true;
    case Connecting::stuck: return false;
  }
  return true;
}

/// Of several addresses of the host the first that takes the connection is the library's, too.
bool remoteDisplayAnswers(const DisplayAddress& display, Clock::time_point deadline) {
  constexpr int firstPort = 6000;
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string port = std::to_string(firstPort + display.number);
  if (::getaddrinfo(display.host.c_str(), port.c_str(), &hints, &found) != 0) return true;
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> addresses(found, &::freeaddrinfo);
  for (const addrinfo* address = found; address != nullptr; address = address->ai_next) {
    const Socket socket(address->ai_family);
    switch (connectOverNetwork(socket, *address, deadline)) {
      case Connecting::connected: return isAnswered(socket, deadline);
      case Connecting::refused: continue;
      case Connecting::stuck: return false;
    }
  }
  return true;
}

}  // namespace

bool displayAnswers(double seconds) {
  const auto deadline =
      Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  const auto display = displayAddress();
  if (!display) return true;
  return display->isLocal() ? localDisplayAnswers(display->number, deadline) : remoteDisplayAnswers(*display, deadline);
}

}  // namespace quillo
