#include "QuilloLinux/X11/DisplayHandshake.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include "QuilloLinux/X11/X11Connection.h"

namespace quillo::test {
namespace {

/// A display server that listens under a number that nobody uses, and answers nothing by itself.
class SilentDisplay {
 public:
  SilentDisplay() : listener_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    for (number_ = 7000; number_ < 7100; ++number_) {
      const std::string path = "/tmp/.X11-unix/X" + std::to_string(number_);
      std::memcpy(address.sun_path + 1, path.data(), path.size());
      const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size() + 1);
      if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), length) == 0) break;
    }
    EXPECT_EQ(::listen(listener_, 4), 0);
    ::setenv("DISPLAY", (":" + std::to_string(number_)).c_str(), 1);
  }
  SilentDisplay(const SilentDisplay&) = delete;
  SilentDisplay& operator=(const SilentDisplay&) = delete;
  ~SilentDisplay() {
    for (const int connection : greeted_) ::close(connection);
    ::close(listener_);
  }

  /// Takes two connections, greets each as a display with one screen does, and answers nothing more.
  void greetTwice() {
    struct {
      xcb_setup_t setup;
      xcb_screen_t screen;
    } greeting{};
    greeting.setup.status = 1;
    greeting.setup.protocol_major_version = X_PROTOCOL;
    greeting.setup.length = (sizeof greeting - 8) / 4;
    greeting.setup.resource_id_mask = 0xFFFF;
    greeting.setup.maximum_request_length = 0xFFFF;
    greeting.setup.roots_len = 1;
    for (int& connection : greeted_) {
      connection = ::accept(listener_, nullptr, nullptr);
      char request[12];
      EXPECT_EQ(::recv(connection, request, sizeof request, MSG_WAITALL), 12);
      EXPECT_EQ(::send(connection, &greeting, sizeof greeting, MSG_NOSIGNAL), static_cast<ssize_t>(sizeof greeting));
    }
  }

  /// Takes one connection, reads its first request whole and answers with `reply` (or hangs up, when it is empty).
  void answerOnce(const std::string& reply) const {
    const int connection = ::accept(listener_, nullptr, nullptr);
    char request[12];
    EXPECT_EQ(::recv(connection, request, sizeof request, MSG_WAITALL), 12);
    if (!reply.empty()) EXPECT_EQ(::send(connection, reply.data(), reply.size(), MSG_NOSIGNAL), std::ssize(reply));
    ::close(connection);
  }

 private:
  int listener_;
  int number_ = 0;
  std::array<int, 2> greeted_{-1, -1};
};

TEST(DisplayHandshake, serverThatIsStoppedDoesNotAnswer) {
  const SilentDisplay display;
  EXPECT_FALSE(displayAnswers(0.05));
}

TEST(DisplayHandshake, serverOverTheNetworkIsAskedToo) {
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const auto bind = [&](int display) {
    address.sin_port = htons(static_cast<std::uint16_t>(6000 + display));
    return ::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  };
  int display = 7000;
  while (!bind(display)) ASSERT_LT(++display, 7100);
  ::setenv("DISPLAY", ("127.0.0.1:" + std::to_string(display)).c_str(), 1);
  EXPECT_TRUE(displayAnswers(10)) << "a refused connection is the library's affair";
  ASSERT_EQ(::listen(listener, 4), 0);
  EXPECT_FALSE(displayAnswers(0.05));
  ::close(listener);
}

TEST(DisplayHandshake, refusalIsAnAnswer) {
  const SilentDisplay display;
  for (const std::string& reply : {std::string("\0\1\v", 3), std::string()}) {
    std::thread server([&] { display.answerOnce(reply); });
    EXPECT_TRUE(displayAnswers(10));
    server.join();
  }
}

TEST(X11Connection, displayThatStopsAfterItsGreetingIsGivenUp) {
  SilentDisplay display;
  std::thread server([&] { display.greetTwice(); });
  EXPECT_EQ(X11Connection::open(), nullptr);
  server.join();
}

TEST(DisplayHandshake, whatCannotBeConnectedToIsLeftToTheLibrary) {
  for (const char* other : {":6999", "", "no display", "elsewhere.invalid:0"}) {
    ::setenv("DISPLAY", other, 1);
    EXPECT_TRUE(displayAnswers(0.05)) << other;
  }
}

}  // namespace
}  // namespace quillo::test
