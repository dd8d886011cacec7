#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "QuilloCore/Updates/SoftwareUpdateService.h"
#include "QuilloLinux/Updates/CancellationEvent.h"

struct sd_bus;
struct sd_bus_message;

namespace quillo {

/// How long the service may take, in seconds.
struct PackageKitLimits {
  double answer = 25;    ///< to a call, its start included
  double silence = 120;  ///< between two signs of life while it works
};

/// What one transaction is to do: the method, and its arguments (any number of them, then the texts).
struct PackageKitRequest {
  const char* method = nullptr;
  std::variant<std::monostate, std::uint64_t, bool> argument;
  std::optional<std::vector<std::string>> texts;
  UpdateAttendance attendance = UpdateAttendance::unattended;
};

/// One connection to the system bus and the conversation with PackageKit on it. Blocks, so it is used on a thread of
/// its own; every function throws SoftwareUpdateError, and OperationCancelled soon after the event.
class PackageKitConnection {
 public:
  /// An empty address means the system bus.
  PackageKitConnection(const std::string& address, PackageKitLimits limits, const CancellationEvent& cancellation);
  PackageKitConnection(const PackageKitConnection&) = delete;
  PackageKitConnection& operator=(const PackageKitConnection&) = delete;
  ~PackageKitConnection();

  /// Runs one transaction to its end and returns the packages that it names.
  std::vector<SoftwarePackage> run(const PackageKitRequest& request);

 private:
  struct Progress;
  struct CloseBus {
    void operator()(sd_bus* bus) const;
  };

  void open(const std::string& address);
  std::string createTransaction();
  void follow(const std::string& path, Progress& progress);
  void setHints(const std::string& path, UpdateAttendance attendance);
  void begin(const std::string& path, const PackageKitRequest& request);
  /// Sends the call and waits for its answer.
  std::shared_ptr<sd_bus_message> call(sd_bus_message* message);
  void cancelTransaction(const std::string& path);
  /// Handles what comes until the flag is set; `seconds` after the last sign of life it gives up.
  void waitFor(const bool& isDone, double seconds);
  void waitForEvent(std::uint64_t microseconds);

  PackageKitLimits limits_;
  const CancellationEvent& cancellation_;
  std::unique_ptr<sd_bus, CloseBus> bus_;
  bool hasSignOfLife_ = false;
};

}  // namespace quillo
