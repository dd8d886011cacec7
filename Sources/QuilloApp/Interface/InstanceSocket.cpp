#include "QuilloApp/Interface/InstanceSocket.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

namespace quillo {
namespace {

constexpr std::string_view accepted = "accepted";

/// Nothing when the path is longer than a socket's may be.
std::optional<sockaddr_un> addressOf(const std::filesystem::path& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string& text = path.native();
  if (text.size() >= sizeof address.sun_path) return std::nullopt;
  std::memcpy(address.sun_path, text.c_str(), text.size() + 1);
  return address;
}

/// Every request is one packet, and so is its answer.
int makeSocket() {
  return ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

const sockaddr* generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

void send(int connection, std::string_view text) {
  ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
}

/// Empty when nothing is there.
std::string receive(int connection) {
  std::array<char, 32> packet{};
  const auto count = ::recv(connection, packet.data(), packet.size(), 0);
  return {packet.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

}  // namespace

InstanceSocket::InstanceSocket(std::filesystem::path path, QObject* parent) : QObject(parent), path_(std::move(path)) {}

InstanceSocket::~InstanceSocket() {
  notifier_.reset();
  if (socket_ >= 0) {
    ::unlink((path_.native() + ".socket").c_str());
    ::close(socket_);
  }
  // The lock's file stays: whoever removed it might remove it from under one who has just opened it.
  if (lock_ >= 0) ::close(lock_);
}

InstanceSocket::Outcome InstanceSocket::claim(LaunchRequest request, int answerTimeout) {
  constexpr mode_t ownerOnly = 0600;
  lock_ = ::open((path_.native() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, ownerOnly);
  if (lock_ < 0) return Outcome::unavailable;
  if (::flock(lock_, LOCK_EX | LOCK_NB) == 0) return listen() ? Outcome::first : Outcome::unavailable;
  const bool isHeld = errno == EWOULDBLOCK;
  ::close(std::exchange(lock_, -1));
  if (!isHeld) return Outcome::unavailable;
  return request == LaunchRequest::background ? Outcome::handedOver : handOver(request, answerTimeout);
}

bool InstanceSocket::listen() {
  const std::string path = path_.native() + ".socket";
  const auto address = addressOf(path);
  if (!address) return false;
  ::unlink(path.c_str());  // of one that was killed
  socket_ = makeSocket();
  constexpr int backlog = 8;
  if (socket_ < 0 || ::bind(socket_, generic(*address), sizeof *address) != 0 || ::listen(socket_, backlog) != 0)
    return false;
  notifier_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { accept(); });
  return true;
}

void InstanceSocket::accept() {
  const int connection = ::accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (connection < 0) return;
  auto* arrival = new QSocketNotifier(connection, QSocketNotifier::Read, this);
  connect(arrival, &QSocketNotifier::activated, this, [this, arrival, connection] {
    arrival->setEnabled(false);
    arrival->deleteLater();
    read(connection);
    ::close(connection);
  });
}

void InstanceSocket::read(int connection) {
  const auto request = launchRequest(receive(connection));
  if (!request) return;
  send(connection, accepted);
  Q_EMIT requested(*request);
}

InstanceSocket::Outcome InstanceSocket::handOver(LaunchRequest request, int answerTimeout) const {
  const auto address = addressOf(path_.native() + ".socket");
  const int connection = makeSocket();
  if (!address || connection < 0) return Outcome::unanswered;
  // Whoever has just taken the lock may not listen yet.
  constexpr int interval = 20;
  int remaining = answerTimeout;
  while (::connect(connection, generic(*address), sizeof *address) != 0 && remaining > 0) {
    remaining -= interval;
    ::poll(nullptr, 0, interval);
  }
  send(connection, launchRequestName(request));
  pollfd awaited{connection, POLLIN, 0};
  const bool isAnswered = ::poll(&awaited, 1, std::max(remaining, 0)) > 0 && receive(connection) == accepted;
  ::close(connection);
  return isAnswered ? Outcome::handedOver : Outcome::unanswered;
}

}  // namespace quillo
