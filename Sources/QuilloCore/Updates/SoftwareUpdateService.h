#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// A package as the system's package manager knows it.
struct SoftwarePackage {
  std::string identifier;  ///< for the service alone
  std::string name;
  std::string architecture;
  std::string version;

  friend bool operator==(const SoftwarePackage&, const SoftwarePackage&) = default;
};

/// Whether somebody waits for the answer and can be asked for a password.
enum class UpdateAttendance : std::uint8_t { user, unattended };

/// The system's own package manager. Begun on the main thread, which it never blocks; each operation has a deadline and
/// ends soon after it is cancelled. Every function throws SoftwareUpdateError.
class SoftwareUpdateService {
 public:
  virtual ~SoftwareUpdateService() = default;

  /// The package that the running program belongs to.
  virtual Task<SoftwarePackage> installedPackage() = 0;

  /// Has the package lists read again, from the network where they lie there, and looks for a later version.
  virtual Task<std::optional<SoftwarePackage>> findUpdate(SoftwarePackage installed, UpdateAttendance attendance) = 0;

  virtual Task<> download(SoftwarePackage update, UpdateAttendance attendance) = 0;

  /// Downloads as well, where that has not been done.
  virtual Task<> install(SoftwarePackage update, UpdateAttendance attendance) = 0;
};

}  // namespace quillo
