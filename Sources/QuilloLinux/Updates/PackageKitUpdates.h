#pragma once

#include <functional>
#include <memory>
#include <string>

#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Updates/SoftwareUpdateService.h"
#include "QuilloLinux/Updates/PackageKitConnection.h"

namespace quillo {

/// Asks PackageKit on the system bus, one operation at a time on a queue of its own. Its end waits for what runs, so
/// that is to be cancelled before.
class PackageKitUpdates final : public SoftwareUpdateService {
 public:
  struct Configuration {
    std::string program;     ///< the path of what runs
    std::string busAddress;  ///< empty for the system bus
    PackageKitLimits limits;
  };

  explicit PackageKitUpdates(Configuration configuration);

  Task<SoftwarePackage> installedPackage() override;
  Task<std::optional<SoftwarePackage>> findUpdate(SoftwarePackage installed, UpdateAttendance attendance) override;
  Task<> download(SoftwarePackage update, UpdateAttendance attendance) override;
  Task<> install(SoftwarePackage update, UpdateAttendance attendance) override;

 private:
  /// Runs `work` with a connection of its own; cancelling the task ends the work as well.
  template <class Work>
  auto converse(Work work) -> Task<std::invoke_result_t<Work&, PackageKitConnection&>>;

  Configuration configuration_;
  SerialQueue queue_{"org.quillo.Quillo.updates"};
};

}  // namespace quillo
