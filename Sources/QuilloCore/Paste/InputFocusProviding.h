#pragma once

#include <cstdint>
#include <optional>

namespace quillo {

/// What the display sends keys to.
struct InputFocus {
  std::uint32_t window = 0;
  std::int32_t processIdentifier = 0;
  bool isTerminal = false;

  friend bool operator==(const InputFocus&, const InputFocus&) = default;
};

/// Asks the display, quickly. Used by one thread.
class InputFocusProviding {
 public:
  virtual ~InputFocusProviding() = default;

  /// Nothing when no window has the focus, or there is no display.
  virtual std::optional<InputFocus> inputFocus() = 0;
};

}  // namespace quillo
