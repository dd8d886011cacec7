#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuilloCore/Support/Date.h"

namespace quillo {

/// What is known of updates, and what is being done about them.
struct SoftwareUpdateState {
  enum class Phase : std::uint8_t {
    looking,      ///< for the package that the program belongs to
    unavailable,  ///< there is no one to ask; `message` says why
    ready,        ///< nothing has been asked yet
    checking,
    upToDate,
    available,
    downloading,
    downloaded,
    installing,
    installed,  ///< and is used from the next start on
    failed,     ///< `message` says how
  };

  Phase phase = Phase::looking;
  std::string message;
  std::string newVersion;  ///< from `available` on
  bool checksAutomatically = true;
  bool downloadsAutomatically = false;
  std::optional<Date> lastCheck;  ///< the last that was answered

  bool isBusy() const {
    return phase == Phase::looking || phase == Phase::checking || phase == Phase::downloading ||
           phase == Phase::installing;
  }
  bool canCheck() const { return !isBusy() && phase != Phase::unavailable; }

  friend bool operator==(const SoftwareUpdateState&, const SoftwareUpdateState&) = default;
};

}  // namespace quillo
