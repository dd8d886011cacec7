#include "QuilloLinux/Clipboard/X11SelectionReader.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <string>
#include <utility>

#include "QuilloLinux/Clipboard/X11SelectionForms.h"

namespace quillo {
namespace {

/// No owner offers more; one that does is not taken at its word.
constexpr std::size_t mostTargets = 1024;

/// Owners that never answer are few.
constexpr std::size_t mostLeftWindows = 32;

constexpr std::string_view targetsName = "TARGETS";

}  // namespace

void X11SelectionReader::begin(Result result, std::uint32_t time) {
  result_ = std::move(result);
  window_ = display_.makeWindow();
  time_ = time;
  bytesLeft_ = limits_.bytes;
  endDeadline_ = Clock::now() + limits_.all;
  atoms_.clear();
  types_.clear();
  next_ = 0;
  ask(display_.targets());
}

void X11SelectionReader::ask(std::uint32_t target) {
  asked_ = target;
  isOwed_ = true;
  isIncremental_ = false;
  arrived_ = {};
  typeDeadline_ = std::min(endDeadline_, Clock::now() + limits_.type);
  xcb_convert_selection(display_.get(), window_, display_.clipboard(), target, display_.arrival(), time_);
}

void X11SelectionReader::handleAnswer(const xcb_selection_notify_event_t& answer) {
  meetLateOwner(answer.requestor, false);
  if (!isReading() || answer.requestor != window_ || answer.target != asked_ || isIncremental_) return;
  isOwed_ = false;
  if (answer.property == XCB_ATOM_NONE) return settle(Answer::refused);
  X11Property property = display_.property(window_, display_.arrival(), bytesLeft_, X11PropertyReading::remove);
  // The owner says that it has answered, and has not.
  const bool isTooLarge = property.isCut || property.data.size() > bytesLeft_;
  if (property.type == XCB_ATOM_NONE || isTooLarge) return settle(Answer::failed);
  if (property.type != display_.incremental()) return take(std::move(property));

  // Removing the announcement has asked for the first piece.
  isOwed_ = true;
  const std::vector<std::uint32_t> announcement = property.words();
  announcedBytes_ = announcement.empty() ? 0 : announcement.front();
  if (announcedBytes_ > bytesLeft_) return settle(Answer::failed);
  isIncremental_ = true;
}

void X11SelectionReader::handlePropertySet(std::uint32_t window, std::uint32_t property) {
  meetLateOwner(window, true);
  if (!isReading() || !isIncremental_ || window != window_ || property != display_.arrival()) return;
  const std::size_t left = bytesLeft_ - arrived_.data.size();
  X11Property piece = display_.property(window_, property, left, X11PropertyReading::remove);
  if (piece.type == XCB_ATOM_NONE) return;  // a change that an earlier reading has taken along
  if (piece.isCut || piece.data.size() > left) return settle(Answer::failed);
  if (!piece.data.empty()) {
    if (arrived_.data.empty()) arrived_.data.reserve(announcedBytes_);
    arrived_.type = piece.type;
    arrived_.format = piece.format;
    arrived_.data += piece.data;
    return;
  }
  isOwed_ = false;
  if (arrived_.data.size() < announcedBytes_) return settle(Answer::failed);  // torn off
  if (arrived_.type == XCB_ATOM_NONE) arrived_ = std::move(piece);
  take(std::exchange(arrived_, {}));
}

void X11SelectionReader::take(X11Property property) {
  if (isReadingTargets()) return takeTargets(property);
  takeType(std::move(property));
}

void X11SelectionReader::takeTargets(const X11Property& property) {
  const std::vector<std::uint32_t> targets = property.words();
  if ((targets.empty() && !property.data.empty()) || targets.size() > mostTargets) return settle(Answer::failed);
  const std::vector<std::string> names = display_.namesOf(targets);
  std::vector<std::string> handles;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool isKnown = std::ranges::find(atoms_, targets[i]) != atoms_.end();
    if (names[i].empty() || isQuestion(names[i]) || isKnown) continue;
    if (isServerHandle(names[i])) {
      handles.push_back(names[i]);
      continue;
    }
    atoms_.push_back(targets[i]);
    types_.push_back({.content = {.type = names[i], .data = {}}, .answer = Answer::failed});
  }
  if (!types_.empty()) return askNext();
  // What there is goes with its owner.
  result_->resolve(PasteboardReading{.topLevelTypes = std::move(handles), .items = {}});
  close();
}

void X11SelectionReader::takeType(X11Property property) {
  PasteboardReading::Type& type = types_[next_];
  bytesLeft_ -= std::min(bytesLeft_, property.data.size());
  const std::string propertyType = display_.namesOf(std::span(&property.type, 1)).front();
  type.content.packing =
      X11SelectionForm{.target = {}, .propertyType = propertyType, .format = property.format, .data = {}}.packing();
  type.content.data = std::move(property.data);
  settle(Answer::given);
}

void X11SelectionReader::settle(Answer answer) {
  if (isReadingTargets() || answer == Answer::failed) return failTheRest();
  types_[next_].answer = answer;
  ++next_;
  askNext();
}

void X11SelectionReader::askNext() {
  if (next_ == types_.size()) return finish();
  ask(atoms_[next_]);
}

void X11SelectionReader::failTheRest() {
  if (!isReading()) return;
  if (!isReadingTargets()) return finish();  // whatever is not settled counts as failed
  result_->resolve(PasteboardReading{.topLevelTypes = {std::string(targetsName)}, .items = {}});
  close();
}

void X11SelectionReader::finish() {
  PasteboardReading reading;
  for (const PasteboardReading::Type& type : types_) reading.topLevelTypes.push_back(type.content.type);
  reading.items.push_back(std::move(types_));
  result_->resolve(std::move(reading));
  close();
}

void X11SelectionReader::close() {
  leaveWindow();
  result_.reset();
  types_.clear();
  arrived_ = {};
}

void X11SelectionReader::leaveWindow() {
  if (!std::exchange(isOwed_, false)) return display_.destroyWindow(window_);
  leftWindows_.push_back({window_, isIncremental_});
  if (leftWindows_.size() <= mostLeftWindows) return;
  display_.destroyWindow(leftWindows_.front().window);
  leftWindows_.pop_front();
}

/// Once it has told of its answer, or written a piece, it writes nothing more before somebody takes that.
void X11SelectionReader::meetLateOwner(std::uint32_t window, bool isPiece) {
  if (std::erase(leftWindows_, LeftWindow{window, isPiece}) != 0) display_.destroyWindow(window);
}

std::optional<X11SelectionReader::Clock::time_point> X11SelectionReader::deadline() const {
  return isReading() ? std::optional(typeDeadline_) : std::nullopt;
}

void X11SelectionReader::checkTime(Clock::time_point now) {
  if (isReading() && now >= typeDeadline_) failTheRest();
}

void X11SelectionReader::abandonIfUnwanted() {
  if (isReading() && result_->isResolved()) close();
}

void X11SelectionReader::fail(const std::exception_ptr& error) {
  if (!isReading()) return;
  result_->fail(error);
  close();
}

}  // namespace quillo
