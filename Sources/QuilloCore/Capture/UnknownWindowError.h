#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace quillo {

/// Somebody named a window by its number, and no such window is on the screen.
class UnknownWindowError : public std::exception {
 public:
  explicit UnknownWindowError(std::uint32_t windowID)
      : windowID_(windowID),
        description_("No window with the number " + std::to_string(windowID) + " is on the screen.") {}

  std::uint32_t windowID() const { return windowID_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const UnknownWindowError& a, const UnknownWindowError& b) {
    return a.windowID_ == b.windowID_;
  }

 private:
  std::uint32_t windowID_;
  std::string description_;
};

}  // namespace quillo
