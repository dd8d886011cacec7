#include "QuilloLinux/Clipboard/X11SelectionOwner.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace quillo {
namespace {

/// The display's clock goes round every 49 days.
bool isBefore(std::uint32_t time, std::uint32_t other) {
  return static_cast<std::int32_t>(time - other) < 0;
}

/// No program asks for more types in one request.
constexpr std::size_t mostConversionsAtOnce = 4096;

}  // namespace

void X11SelectionOwner::offer(std::vector<X11SelectionForm> forms, std::uint32_t time) {
  forms_ = std::move(forms);
  std::vector<std::string> targetNames;
  std::vector<std::string> typeNames;
  for (const X11SelectionForm& form : forms_) {
    targetNames.push_back(form.target);
    typeNames.push_back(form.propertyType);
  }
  targets_ = display_.atomsOf(targetNames);
  propertyTypes_ = display_.atomsOf(typeNames);
  ownedSince_ = time;
}

void X11SelectionOwner::withdraw() {
  forms_.clear();
  targets_.clear();
  propertyTypes_.clear();
}

PasteboardReading X11SelectionOwner::reading() {
  PasteboardReading reading;
  auto& types = reading.items.emplace_back();
  for (X11SelectionForm& form : forms_) {
    reading.topLevelTypes.push_back(form.target);
    PasteboardReading::Type& type = types.emplace_back();
    type.content = {.type = form.target, .data = {}, .packing = form.packing()};
    if (form.makeReady()) {
      type.content.data = *form.data;
    } else {
      type.answer = PasteboardReading::Answer::refused;
    }
  }
  return reading;
}

void X11SelectionOwner::handleRequest(const xcb_selection_request_event_t& request) {
  xcb_selection_notify_event_t answer{};
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.time = request.time;
  answer.requestor = request.requestor;
  answer.selection = request.selection;
  answer.target = request.target;

  // Old programs name no property.
  const std::uint32_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const bool isOurs = !forms_.empty() && request.selection == display_.clipboard() &&
                      (request.time == XCB_CURRENT_TIME || !isBefore(request.time, ownedSince_));
  const bool isSeveral = request.target == display_.multiple();
  if (isOurs && (isSeveral ? request.property != XCB_ATOM_NONE && convertSeveral(request.requestor, property)
                           : convert(request.requestor, request.target, property))) {
    answer.property = property;
  }
  xcb_send_event(display_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&answer));
}

bool X11SelectionOwner::convert(std::uint32_t window, std::uint32_t target, std::uint32_t property) {
  if (target == display_.targets()) {
    std::vector<std::uint32_t> all = {display_.targets(), display_.timestamp(), display_.multiple()};
    all.insert(all.end(), targets_.begin(), targets_.end());
    display_.setAtoms(window, property, all);
    return true;
  }
  if (target == display_.timestamp()) {
    const std::string_view time(reinterpret_cast<const char*>(&ownedSince_), sizeof(ownedSince_));
    display_.setProperty(window, property, XCB_ATOM_INTEGER, 32, time);
    return true;
  }
  const auto found = std::ranges::find(targets_, target);
  if (found == targets_.end() || target == XCB_ATOM_NONE) return false;
  return give(window, property, static_cast<std::size_t>(found - targets_.begin()));
}

bool X11SelectionOwner::convertSeveral(std::uint32_t window, std::uint32_t property) {
  const X11Property asked =
      display_.property(window, property, mostConversionsAtOnce * 2 * sizeof(std::uint32_t), X11PropertyReading::keep);
  std::vector<std::uint32_t> pairs = asked.words();
  if (asked.isCut || pairs.empty() || pairs.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < pairs.size(); i += 2) {
    const bool isPossible = pairs[i] != display_.multiple() && pairs[i + 1] != XCB_ATOM_NONE;
    if (!isPossible || !convert(window, pairs[i], pairs[i + 1])) pairs[i + 1] = XCB_ATOM_NONE;
  }
  const std::string_view bytes(reinterpret_cast<const char*>(pairs.data()), pairs.size() * sizeof(std::uint32_t));
  display_.setProperty(window, property, display_.atomPair(), 32, bytes);
  return true;
}

bool X11SelectionOwner::give(std::uint32_t window, std::uint32_t property, std::size_t index) {
  X11SelectionForm& form = forms_[index];
  if (!form.makeReady()) return false;
  std::erase_if(transfers_, [&](const Transfer& t) { return t.window == window && t.property == property; });
  if (form.data->size() <= display_.chunkSize()) {
    display_.setProperty(window, property, propertyTypes_[index], form.format, *form.data);
    return true;
  }
  // Watched before the first piece is announced, so that its taking is not missed.
  if (window != display_.window()) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(display_.get(), window, XCB_CW_EVENT_MASK, &events);
  }
  const auto size = static_cast<std::uint32_t>(form.data->size());
  display_.setProperty(window, property, display_.incremental(), 32,
                       std::string_view(reinterpret_cast<const char*>(&size), sizeof(size)));
  transfers_.push_back({.window = window,
                        .property = property,
                        .type = propertyTypes_[index],
                        .format = form.format,
                        .data = form.data,
                        .deadline = Clock::now() + longestStall});
  return true;
}

void X11SelectionOwner::handlePropertyDeleted(std::uint32_t window, std::uint32_t property) {
  const auto transfer =
      std::ranges::find_if(transfers_, [&](const Transfer& t) { return t.window == window && t.property == property; });
  if (transfer == transfers_.end()) return;
  if (transfer->isFinished) {
    transfers_.erase(transfer);
    stopWatching(window);
    return;
  }
  const std::string_view piece = std::string_view(*transfer->data).substr(transfer->position, display_.chunkSize());
  display_.setProperty(window, property, transfer->type, transfer->format, piece);
  transfer->position += piece.size();
  transfer->isFinished = piece.empty();
  transfer->deadline = Clock::now() + longestStall;
}

void X11SelectionOwner::handleWindowGone(std::uint32_t window) {
  std::erase_if(transfers_, [&](const Transfer& transfer) { return transfer.window == window; });
}

void X11SelectionOwner::stopWatching(std::uint32_t window) const {
  if (window == display_.window()) return;
  if (std::ranges::any_of(transfers_, [&](const Transfer& transfer) { return transfer.window == window; })) return;
  const std::uint32_t nothing = 0;
  xcb_change_window_attributes(display_.get(), window, XCB_CW_EVENT_MASK, &nothing);
}

std::optional<X11SelectionOwner::Clock::time_point> X11SelectionOwner::deadline() const {
  if (transfers_.empty()) return std::nullopt;
  return std::ranges::min_element(transfers_, {}, &Transfer::deadline)->deadline;
}

void X11SelectionOwner::dropStalled(Clock::time_point now) {
  const auto stalled = std::ranges::partition(transfers_, [&](const Transfer& t) { return t.deadline > now; });
  std::vector<std::uint32_t> windows;
  for (const Transfer& transfer : stalled) windows.push_back(transfer.window);
  transfers_.erase(stalled.begin(), transfers_.end());
  for (const std::uint32_t window : windows) stopWatching(window);
}

}  // namespace quillo
