#include "ClipboardPeer.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstring>
#include <functional>
#include <stdexcept>

#include "QuilloLinux/X11/X11Connection.h"

namespace quillo::test {
namespace {

constexpr std::size_t pieceSize = 50'000;

std::string nameOf(xcb_connection_t* connection, std::uint32_t atom) {
  const X11Reply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

using Event = X11Reply<xcb_generic_event_t>;

/// The first event that `isWanted`, of those that come.
Event awaitEvent(xcb_connection_t* connection, const std::function<bool(const xcb_generic_event_t&)>& isWanted) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  xcb_flush(connection);
  while (std::chrono::steady_clock::now() < deadline) {
    if (Event event{xcb_poll_for_event(connection)}) {
      if (isWanted(*event)) return event;
      continue;
    }
    pollfd source{xcb_get_file_descriptor(connection), POLLIN, 0};
    poll(&source, 1, 1000);
  }
  throw std::runtime_error("nothing came from the clipboard's owner");
}

/// Answers the request; `property` says where the answer stands.
void notify(xcb_connection_t* connection, const xcb_selection_request_event_t& request, std::uint32_t property) {
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = property;
  xcb_send_event(connection, 0, request.requestor, 0, reinterpret_cast<const char*>(&notice));
}

std::uint8_t kindOf(const xcb_generic_event_t& event) {
  return event.response_type & 0x7F;
}

}  // namespace

SelectionConnection::SelectionConnection() : connection_(connectToDisplay()) {
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("no display");
  window_ = xcb_generate_id(connection_);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

SelectionConnection::~SelectionConnection() {
  xcb_disconnect(connection_);
}

std::uint32_t SelectionConnection::atom(const std::string& name) const {
  return internAtoms(connection_, std::array{std::string_view(name)}).front();
}

void SelectionConnection::own(const std::string& selection) const {
  xcb_set_selection_owner(connection_, window_, atom(selection), XCB_CURRENT_TIME);
  if (owner(selection) != window_) throw std::runtime_error("somebody else owns " + selection);
}

std::uint32_t SelectionConnection::owner(const std::string& selection) const {
  const X11Reply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, atom(selection)), nullptr));
  return reply->owner;
}

ClipboardPeer::ClipboardPeer(Answers answers)
    : answers_(std::move(answers)),
      connection_(std::make_unique<SelectionConnection>()),
      endEvent_(eventfd(0, EFD_CLOEXEC)) {
  connection_->own();
  thread_ = std::thread([this] { run(); });
}

ClipboardPeer::~ClipboardPeer() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(endEvent_, &one, sizeof(one));
  thread_.join();
  close(endEvent_);
}

void ClipboardPeer::run() {
  std::array<pollfd, 2> sources{{{endEvent_, POLLIN, 0}, {-1, POLLIN, 0}}};
  while (sources[0].revents == 0) {
    // Flushing reads what has come by then, too; so nothing may be left unhandled behind it.
    do {
      if (connection_) xcb_flush(connection_->get());
    } while (handleEvents());
    sources[1].fd = connection_ ? xcb_get_file_descriptor(connection_->get()) : -1;
    poll(sources.data(), sources.size(), -1);
  }
}

bool ClipboardPeer::handleEvents() {
  bool hasHandled = false;
  while (connection_) {
    const Event event(xcb_poll_for_event(connection_->get()));
    if (!event) break;
    hasHandled = true;
    if (kindOf(*event) == XCB_SELECTION_REQUEST) {
      const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
      constexpr std::uint32_t silence = UINT32_MAX;
      const std::uint32_t property = answer(request.requestor, request.target, request.property);
      if (property != silence) notify(connection_->get(), request, property);
    } else if (kindOf(*event) == XCB_PROPERTY_NOTIFY) {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
      if (change.state == XCB_PROPERTY_DELETE) givePiece(change.atom);
    }
  }
  return hasHandled;
}

std::uint32_t ClipboardPeer::answer(std::uint32_t window, std::uint32_t target, std::uint32_t property) {
  using Manner = OwnerAnswer::Manner;
  xcb_connection_t* connection = connection_->get();
  const std::string name = nameOf(connection, target);
  const OwnerAnswer* found = nullptr;
  for (const auto& [type, given] : answers_) {
    if (type == name) found = &given;
  }
  if (found == nullptr && name == "TARGETS") {
    std::vector<std::uint32_t> atoms = {target};
    for (const auto& [type, given] : answers_) atoms.push_back(connection_->atom(type));
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
    return property;
  }
  if (found == nullptr || found->manner == Manner::refusing) return XCB_ATOM_NONE;
  if (found->manner == Manner::never) return UINT32_MAX;
  if (found->manner == Manner::withoutData) return property;
  const std::uint32_t type = connection_->atom(found->type.empty() ? name : found->type);
  if (found->manner == Manner::atOnce) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, found->format,
                        static_cast<std::uint32_t>(found->data.size() / (found->format / 8U)), found->data.data());
    return property;
  }
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(found->manner == Manner::endlessly ? 0 : found->data.size());
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, connection_->atom("INCR"), 32, 1, &size);
  transfers_[property] = {.window = window, .type = type, .answer = found};
  return property;
}

void ClipboardPeer::givePiece(std::uint32_t property) {
  using Manner = OwnerAnswer::Manner;
  const auto found = transfers_.find(property);
  if (found == transfers_.end()) return;
  Transfer& transfer = found->second;
  const Manner manner = transfer.answer->manner;
  const bool isLater = transfer.position > 0;
  if (isLater && manner == Manner::stoppingHalfway) return;
  if (isLater && manner == Manner::leavingHalfway) {
    connection_.reset();
    return;
  }
  if (manner == Manner::endlessly) transfer.position = 0;
  std::string_view piece = std::string_view(transfer.answer->data).substr(transfer.position, pieceSize);
  if (isLater && manner == Manner::tornOff) piece = {};
  xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, transfer.window, property, transfer.type,
                      transfer.answer->format,
                      static_cast<std::uint32_t>(piece.size() / (transfer.answer->format / 8U)), piece.data());
  transfer.position += piece.size();
  if (piece.empty()) transfers_.erase(found);
}

std::optional<ReceivedProperty> ClipboardRequestor::ask(const std::string& target, std::uint32_t time) {
  const std::uint32_t property = connection_.atom("TEST_ARRIVAL");
  xcb_convert_selection(connection_.get(), connection_.window(), connection_.atom("CLIPBOARD"),
                        connection_.atom(target), property, time);
  const Event event = awaitEvent(connection_.get(), [](const auto& e) { return kindOf(e) == XCB_SELECTION_NOTIFY; });
  const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(*event);
  if (notice.property == XCB_ATOM_NONE) return std::nullopt;
  return receive(property);
}

std::vector<std::optional<ReceivedProperty>> ClipboardRequestor::askSeveral(const std::vector<std::string>& targets) {
  const std::uint32_t property = connection_.atom("TEST_PAIRS");
  std::vector<std::uint32_t> pairs;
  for (const std::string& target : targets) {
    pairs.push_back(connection_.atom(target));
    pairs.push_back(connection_.atom("TEST_ARRIVAL_" + target));
  }
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, connection_.window(), property,
                      connection_.atom("ATOM_PAIR"), 32, static_cast<std::uint32_t>(pairs.size()), pairs.data());
  xcb_convert_selection(connection_.get(), connection_.window(), connection_.atom("CLIPBOARD"),
                        connection_.atom("MULTIPLE"), property, XCB_CURRENT_TIME);
  const Event event = awaitEvent(connection_.get(), [](const auto& e) { return kindOf(e) == XCB_SELECTION_NOTIFY; });
  if (reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property == XCB_ATOM_NONE) return {};
  const std::optional<ReceivedProperty> answered = receive(property);
  std::memcpy(pairs.data(), answered->data.data(), answered->data.size());
  std::vector<std::optional<ReceivedProperty>> received;
  for (std::size_t i = 1; i < pairs.size(); i += 2) {
    received.push_back(pairs[i] == XCB_ATOM_NONE ? std::nullopt : receive(pairs[i]));
  }
  return received;
}

std::optional<ReceivedProperty> ClipboardRequestor::receive(std::uint32_t property) {
  xcb_connection_t* connection = connection_.get();
  const auto take = [&] {
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 1, connection_.window(), property, 0, 0, 100'000'000), nullptr));
    return ReceivedProperty{.type = nameOf(connection, reply->type),
                            .format = reply->format,
                            .data = std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                                static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))};
  };
  ReceivedProperty received = take();
  if (received.type != "INCR") return received;
  std::string data;
  for (;;) {
    awaitEvent(connection, [&](const auto& e) {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(e);
      return kindOf(e) == XCB_PROPERTY_NOTIFY && change.atom == property && change.state == XCB_PROPERTY_NEW_VALUE;
    });
    received = take();
    if (received.data.empty() && received.type.empty()) continue;  // the announcement's own event
    if (received.data.empty()) break;
    data += received.data;
  }
  received.data = std::move(data);
  received.isIncremental = true;
  return received;
}

std::vector<std::string> ClipboardRequestor::targets() {
  const std::optional<ReceivedProperty> answer = ask("TARGETS");
  std::vector<std::string> names;
  for (std::size_t i = 0; answer && i + 4 <= answer->data.size(); i += 4) {
    std::uint32_t atom = 0;
    std::memcpy(&atom, answer->data.data() + i, sizeof(atom));
    names.push_back(nameOf(connection_.get(), atom));
  }
  return names;
}

SavingManager::SavingManager() {
  connection_.own("CLIPBOARD_MANAGER");
  thread_ = std::thread([this] { save(); });
}

SavingManager::~SavingManager() {
  thread_.join();
}

void SavingManager::save() {
  const Event event = awaitEvent(connection_.get(), [](const auto& e) { return kindOf(e) == XCB_SELECTION_REQUEST; });
  const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
  if (nameOf(connection_.get(), request.target) != "SAVE_TARGETS") throw std::runtime_error("not asked to save");
  ClipboardRequestor requestor;
  std::vector<std::string> types = requestor.targets();
  types.erase(types.begin(), types.begin() + 3);  // what every owner has
  const auto received = requestor.askSeveral(types);
  ClipboardPeer::Answers answers;
  for (std::size_t i = 0; i < types.size(); ++i) {
    answers.emplace_back(types[i], OwnerAnswer{.data = received[i]->data, .type = received[i]->type});
  }
  saved_ = std::make_unique<ClipboardPeer>(std::move(answers));
  notify(connection_.get(), request, request.property);
  xcb_flush(connection_.get());
}

void ClipboardRequestor::beginAndStall(const std::string& target) {
  xcb_convert_selection(connection_.get(), connection_.window(), connection_.atom("CLIPBOARD"),
                        connection_.atom(target), connection_.atom("TEST_ARRIVAL"), XCB_CURRENT_TIME);
  awaitEvent(connection_.get(), [](const auto& e) { return kindOf(e) == XCB_SELECTION_NOTIFY; });
}

}  // namespace quillo::test
