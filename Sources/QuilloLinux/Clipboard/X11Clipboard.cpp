#include "QuilloLinux/Clipboard/X11Clipboard.h"

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "QuilloCore/Clipboard/PasteboardError.h"

namespace quillo {
namespace {

/// While this exists no other program's request is carried out. It is held for two round trips of the display's.
class ServerGrab {
 public:
  explicit ServerGrab(xcb_connection_t* connection) : connection_(connection) { xcb_grab_server(connection_); }
  ServerGrab(const ServerGrab&) = delete;
  ServerGrab& operator=(const ServerGrab&) = delete;
  ~ServerGrab() {
    xcb_ungrab_server(connection_);
    xcb_flush(connection_);
  }

 private:
  xcb_connection_t* connection_;
};

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

}  // namespace

int X11Clipboard::fileDescriptor() const {
  return xcb_get_file_descriptor(display_.get());
}

bool X11Clipboard::handleEvents() {
  bool hasHandled = false;
  while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(display_.get())}) {
    handle(*event);
    hasHandled = true;
  }
  return hasHandled;
}

void X11Clipboard::flush() {
  xcb_flush(display_.get());
}

void X11Clipboard::handle(const xcb_generic_event_t& event) {
  constexpr std::uint8_t sentBySomebody = 0x80;
  const auto kind = static_cast<std::uint8_t>(event.response_type & ~sentBySomebody);
  if (kind == display_.selectionNotify() + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto& change = as<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection == display_.clipboard()) handleOwnerChange(change.owner);
    return;
  }
  switch (kind) {
    case XCB_SELECTION_REQUEST: owner_.handleRequest(as<xcb_selection_request_event_t>(event)); break;
    case XCB_SELECTION_NOTIFY: {
      const auto& answer = as<xcb_selection_notify_event_t>(event);
      if (answer.selection == display_.clipboardManager() && handOver_) {
        std::exchange(handOver_, nullptr)->resolve(answer.property != XCB_ATOM_NONE);
      } else if (answer.selection == display_.clipboard()) {
        reader_.handleAnswer(answer);
      }
      break;
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = as<xcb_property_notify_event_t>(event);
      if (change.state == XCB_PROPERTY_DELETE) {
        owner_.handlePropertyDeleted(change.window, change.atom);
      } else if (change.window == display_.window() && change.atom == display_.clock()) {
        serverTime_ = change.time;
      } else {
        reader_.handlePropertySet(change.window, change.atom);
      }
      break;
    }
    case XCB_DESTROY_NOTIFY: owner_.handleWindowGone(as<xcb_destroy_notify_event_t>(event).window); break;
    case 0:  // An error: most often a window that went before we could answer it.
      owner_.handleWindowGone(as<xcb_generic_error_t>(event).resource_id);
      break;
    default: break;
  }
  beginNextReading();
}

void X11Clipboard::handleOwnerChange(std::uint32_t owner) {
  ++changeCount_;
  reader_.handleOwnerChanged();
  isOurs_ = owner == display_.window();
  if (isOurs_) return;
  owner_.withdraw();
  for (const auto& waiting : std::exchange(waitingForReplacement_, {})) waiting->resolve({});
}

void X11Clipboard::requireDisplay() const {
  if (isLost()) throw PasteboardError(PasteboardError::DisplayLost{});
}

/// Afterwards every event that came of what has happened in the display so far is handled.
void X11Clipboard::synchronize() {
  awaitDisplay(display_.get());
  handleEvents();
  requireDisplay();
}

std::uint32_t X11Clipboard::serverTime() {
  xcb_change_property(display_.get(), XCB_PROP_MODE_APPEND, display_.window(), display_.clock(), XCB_ATOM_INTEGER, 32,
                      0, nullptr);
  synchronize();
  return serverTime_;
}

std::uint64_t X11Clipboard::changeCount() {
  synchronize();
  return changeCount_;
}

ClipboardConditionalWriteResult X11Clipboard::replaceContents(std::vector<PasteboardItem> items, PasteboardUse use,
                                                              std::optional<std::uint64_t> ifUnchangedSince) {
  using Kind = ClipboardConditionalWriteResult::Kind;
  const bool isEmpty = items.empty();
  std::vector<X11SelectionForm> forms = makeSelectionForms(std::move(items), use);
  const ServerGrab grab(display_.get());
  const std::uint32_t time = serverTime();
  if (ifUnchangedSince && changeCount_ != *ifUnchangedSince) return {Kind::changed, changeCount_};

  const std::uint32_t newOwner = isEmpty ? std::uint32_t{XCB_WINDOW_NONE} : display_.window();
  xcb_set_selection_owner(display_.get(), newOwner, display_.clipboard(), time);
  owner_.offer(std::move(forms), time);
  use_ = use;
  const bool isAccepted = display_.ownerOf(display_.clipboard()) == newOwner;
  synchronize();
  if (!isAccepted) owner_.withdraw();
  return {isAccepted ? Kind::written : Kind::rejected, changeCount_};
}

void X11Clipboard::read(X11SelectionReader::Result result) {
  serverTime();
  waitingReaders_.push_back(std::move(result));
  beginNextReading();
}

void X11Clipboard::beginNextReading() {
  while (!reader_.isReading() && !waitingReaders_.empty()) {
    const X11SelectionReader::Result result = std::move(waitingReaders_.front());
    waitingReaders_.erase(waitingReaders_.begin());
    if (result->isResolved()) continue;
    if (isOurs_) {
      result->resolve(owner_.reading());
    } else if (display_.ownerOf(display_.clipboard()) == XCB_WINDOW_NONE) {
      result->resolve(PasteboardReading{});
    } else {
      reader_.begin(result, serverTime_);
    }
  }
}

void X11Clipboard::awaitReplacement(std::shared_ptr<PendingResult<void>> result) {
  synchronize();
  if (isOurs_) {
    waitingForReplacement_.push_back(std::move(result));
  } else {
    result->resolve({});
  }
}

void X11Clipboard::handOver(std::shared_ptr<PendingResult<bool>> result) {
  const std::uint32_t time = serverTime();
  // What is only borrowed is nobody's to keep.
  const bool isPossible = isOurs_ && use_ != PasteboardUse::borrowed && !handOver_ &&
                          display_.ownerOf(display_.clipboardManager()) != XCB_WINDOW_NONE;
  if (!isPossible) {
    result->resolve(false);
    return;
  }
  handOver_ = std::move(result);
  handOverDeadline_ = Clock::now() + longestHandOver;
  display_.setAtoms(display_.window(), display_.arrival(), owner_.targets());
  xcb_convert_selection(display_.get(), display_.window(), display_.clipboardManager(), display_.saveTargets(),
                        display_.arrival(), time);
}

std::optional<X11Clipboard::Clock::time_point> X11Clipboard::deadline() const {
  std::optional<Clock::time_point> earliest = owner_.deadline();
  const auto consider = [&](std::optional<Clock::time_point> other) {
    if (other && (!earliest || *other < *earliest)) earliest = other;
  };
  consider(reader_.deadline());
  if (handOver_) consider(handOverDeadline_);
  return earliest;
}

void X11Clipboard::checkTime(Clock::time_point now) {
  owner_.dropStalled(now);
  reader_.checkTime(now);
  if (handOver_ && now >= handOverDeadline_) std::exchange(handOver_, nullptr)->resolve(false);
  beginNextReading();
}

void X11Clipboard::prune() {
  reader_.abandonIfUnwanted();
  std::erase_if(waitingReaders_, [](const auto& waiting) { return waiting->isResolved(); });
  std::erase_if(waitingForReplacement_, [](const auto& waiting) { return waiting->isResolved(); });
  if (handOver_ && handOver_->isResolved()) handOver_.reset();
  beginNextReading();
}

void X11Clipboard::failAll(const std::exception_ptr& error) {
  reader_.fail(error);
  for (const auto& waiting : std::exchange(waitingReaders_, {})) waiting->fail(error);
  for (const auto& waiting : std::exchange(waitingForReplacement_, {})) waiting->fail(error);
  if (handOver_) std::exchange(handOver_, nullptr)->fail(error);
}

}  // namespace quillo
