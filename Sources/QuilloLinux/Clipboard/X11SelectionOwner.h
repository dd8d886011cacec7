#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuilloLinux/Clipboard/X11SelectionDisplay.h"
#include "QuilloLinux/Clipboard/X11SelectionForms.h"

struct xcb_selection_request_event_t;

namespace quillo {

/// Gives out what we have on the clipboard: answers every request of other programs, and refuses every type that is not
/// offered. Large data goes in pieces, each when the other program has taken the one before, so nobody is waited for.
/// What has begun goes on to its end when the contents are replaced meanwhile.
class X11SelectionOwner {
 public:
  using Clock = std::chrono::steady_clock;

  /// A program that takes nothing for so long gets nothing more.
  static constexpr std::chrono::seconds longestStall{10};

  explicit X11SelectionOwner(X11SelectionDisplay& display) : display_(display) {}

  /// From now on these are offered, as of that time of the display's.
  void offer(std::vector<X11SelectionForm> forms, std::uint32_t time);
  void withdraw();

  /// All that is on offer, as a reading of it.
  PasteboardReading reading();
  /// The types on offer; not those that every owner has.
  const std::vector<std::uint32_t>& targets() const { return targets_; }

  void handleRequest(const xcb_selection_request_event_t& request);
  /// The other program has taken a piece.
  void handlePropertyDeleted(std::uint32_t window, std::uint32_t property);
  /// The other program's window is gone.
  void handleWindowGone(std::uint32_t window);

  /// When `dropStalled` is to be called; nothing while no transfer is under way.
  std::optional<Clock::time_point> deadline() const;
  void dropStalled(Clock::time_point now);

 private:
  struct Transfer {
    std::uint32_t window = 0;
    std::uint32_t property = 0;
    std::uint32_t type = 0;
    std::uint8_t format = 8;
    std::shared_ptr<const std::string> data;
    std::size_t position = 0;
    bool isFinished = false;  ///< the empty piece that says so has been given
    Clock::time_point deadline;
  };

  bool convert(std::uint32_t window, std::uint32_t target, std::uint32_t property);
  bool convertSeveral(std::uint32_t window, std::uint32_t property);
  bool give(std::uint32_t window, std::uint32_t property, std::size_t index);
  void stopWatching(std::uint32_t window) const;

  X11SelectionDisplay& display_;
  std::vector<X11SelectionForm> forms_;
  std::vector<std::uint32_t> targets_;        // of the forms
  std::vector<std::uint32_t> propertyTypes_;  // of the forms
  std::uint32_t ownedSince_ = 0;
  std::vector<Transfer> transfers_;
};

}  // namespace quillo
