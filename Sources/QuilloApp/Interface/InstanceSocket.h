#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "QuilloApp/Interface/LaunchRequest.h"

namespace quillo {

/// Keeps the application to one instance for each lock file: the first holds the lock as long as it lives, however it
/// ends, and listens on a socket beside it; each later one hands its request over there.
class InstanceSocket : public QObject {
  Q_OBJECT

 public:
  enum class Outcome : std::uint8_t {
    first,
    handedOver,
    unanswered,   ///< the first instance does not answer
    unavailable,  ///< there is no place for the files
  };

  /// `path` without the endings of lock and socket. Its directory is the user's own.
  explicit InstanceSocket(std::filesystem::path path, QObject* parent = nullptr);
  InstanceSocket(const InstanceSocket&) = delete;
  InstanceSocket& operator=(const InstanceSocket&) = delete;
  ~InstanceSocket() override;

  /// Takes the lock, or hands the request to whoever has it and waits `answerTimeout` milliseconds at most.
  Outcome claim(LaunchRequest request, int answerTimeout);

 Q_SIGNALS:
  void requested(quillo::LaunchRequest request);

 private:
  Outcome handOver(LaunchRequest request, int answerTimeout) const;
  bool listen();
  void accept();
  void read(int connection);

  std::filesystem::path path_;
  int lock_ = -1;
  int socket_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace quillo
