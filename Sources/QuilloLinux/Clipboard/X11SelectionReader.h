#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloLinux/Clipboard/X11SelectionDisplay.h"

struct xcb_selection_notify_event_t;

namespace quillo {

/// Bounds of one reading.
struct X11SelectionLimits {
  std::chrono::milliseconds type{3000};  ///< for one type
  std::chrono::milliseconds all{5000};
  std::size_t bytes = 256UL * 1024 * 1024;  ///< in all
};

/// Reads all that another program offers on the clipboard, one type after the other. The first type that fails ends the
/// reading, as the clipboard could not be put back anyway: it and all that follow count as failed. A window that the
/// owner may still write to is left to it, because writing to one that is gone ends most programs.
class X11SelectionReader {
 public:
  using Clock = std::chrono::steady_clock;
  using Result = std::shared_ptr<PendingResult<PasteboardReading>>;

  X11SelectionReader(X11SelectionDisplay& display, X11SelectionLimits limits) : display_(display), limits_(limits) {}

  bool isReading() const { return result_ != nullptr; }

  /// Begins a reading as of that time of the display's. `result` is resolved when it is at its end.
  void begin(Result result, std::uint32_t time);

  void handleAnswer(const xcb_selection_notify_event_t& answer);
  void handlePropertySet(std::uint32_t window, std::uint32_t property);
  /// Somebody else owns the clipboard now, or nobody.
  void handleOwnerChanged() { failTheRest(); }

  /// When `checkTime` is to be called; nothing while nothing is read.
  std::optional<Clock::time_point> deadline() const;
  void checkTime(Clock::time_point now);

  /// Ends a reading whose result nobody waits for any more.
  void abandonIfUnwanted();
  void fail(const std::exception_ptr& error);

 private:
  using Answer = PasteboardReading::Answer;

  bool isReadingTargets() const { return types_.empty(); }
  void ask(std::uint32_t target);
  void take(X11Property property);
  void takeTargets(const X11Property& property);
  void takeType(X11Property property);
  void settle(Answer answer);
  void askNext();
  void failTheRest();
  void finish();
  void close();
  void leaveWindow();
  void meetLateOwner(std::uint32_t window, bool isPiece);

  X11SelectionDisplay& display_;
  X11SelectionLimits limits_;
  Result result_;
  std::uint32_t window_ = 0;  ///< of this reading alone, so that late answers of an earlier one go astray
  std::uint32_t time_ = 0;
  std::uint32_t asked_ = 0;
  bool isOwed_ = false;  ///< an answer, or the rest of one: the owner may still write to the window

  struct LeftWindow {
    std::uint32_t window;
    bool awaitsPiece;  ///< rather than an answer
    friend bool operator==(const LeftWindow&, const LeftWindow&) = default;
  };
  std::deque<LeftWindow> leftWindows_;  ///< of earlier readings that are owed one
  Clock::time_point typeDeadline_;
  Clock::time_point endDeadline_;
  std::size_t bytesLeft_ = 0;

  std::vector<std::uint32_t> atoms_;            ///< of the types
  std::vector<PasteboardReading::Type> types_;  ///< those before `next_` are settled
  std::size_t next_ = 0;

  bool isIncremental_ = false;
  std::size_t announcedBytes_ = 0;
  X11Property arrived_;
};

}  // namespace quillo
