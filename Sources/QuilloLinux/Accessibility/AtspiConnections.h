#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"
#include "QuilloLinux/Accessibility/AtspiStatus.h"

namespace quillo {

/// What readings that follow one another need not learn anew: the session's accessibility service, a connection to the
/// bus, and where the application was found a moment ago. From any thread.
class AtspiConnections {
 public:
  /// Asks the session, on a connection that is kept.
  AtspiStatus status();

  /// Switches accessibility on for the session; false when the session does not let us.
  bool enable();

  /// A connection to the accessibility bus for one reading; null when there is none.
  std::unique_ptr<AtspiBus> borrow();

  /// Keeps a connection for the next reading, unless one is kept already or this one still waits for answers.
  void giveBack(std::unique_ptr<AtspiBus> bus);

  /// The roots of a process that were found within the last two seconds. A process that has connected once more since
  /// then would be missing, so they are not kept for longer.
  std::optional<std::vector<AtspiObject>> recentRoots(std::int32_t processIdentifier);
  void rememberRoots(std::int32_t processIdentifier, std::vector<AtspiObject> roots);

 private:
  struct FoundRoots {
    std::int32_t processIdentifier = 0;
    std::vector<AtspiObject> roots;
    std::uint64_t uptimeNanoseconds = 0;
  };

  std::mutex mutex_;
  AtspiSessionBus sessionBus_;
  std::unique_ptr<AtspiBus> idle_;
  std::optional<FoundRoots> found_;
};

}  // namespace quillo
