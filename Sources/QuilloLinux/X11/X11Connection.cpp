#include "QuilloLinux/X11/X11Connection.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <array>
#include <cstring>
#include <mutex>
#include <utility>

#include "QuilloLinux/X11/DisplayHandshake.h"

namespace quillo {
namespace {

// In the order of X11Atom.
constexpr std::array<std::string_view, 17> atomNames = {"_NET_ACTIVE_WINDOW",
                                                        "_NET_CLIENT_LIST_STACKING",
                                                        "_NET_CURRENT_DESKTOP",
                                                        "_NET_FRAME_EXTENTS",
                                                        "_NET_WM_DESKTOP",
                                                        "_NET_WM_NAME",
                                                        "_NET_WM_WINDOW_OPACITY",
                                                        "_NET_WM_PID",
                                                        "_NET_WM_STATE",
                                                        "_NET_WM_STATE_HIDDEN",
                                                        "_NET_WM_STATE_SKIP_TASKBAR",
                                                        "_NET_WM_WINDOW_TYPE",
                                                        "_NET_WM_WINDOW_TYPE_DESKTOP",
                                                        "_NET_WM_WINDOW_TYPE_DOCK",
                                                        "_NET_WM_WINDOW_TYPE_NOTIFICATION",
                                                        "_GTK_FRAME_EXTENTS",
                                                        "UTF8_STRING"};

static_assert(static_cast<std::size_t>(X11Atom::utf8String) + 1 == atomNames.size());

/// No property that we read is longer; a longer one is cut.
constexpr std::uint32_t maximumPropertyWords = 64 * 1024;

/// Asking an extension that is not there would end the connection.
bool asksProcesses(xcb_connection_t* connection) {
  if (!awaitExtension(connection, &xcb_res_id).isPresent) return false;
  constexpr std::uint8_t major = 1;
  constexpr std::uint8_t minor = 2;
  const auto version =
      awaitReply<xcb_res_query_version_reply_t>(connection, xcb_res_query_version(connection, major, minor));
  return version &&
         (version->server_major > major || (version->server_major == major && version->server_minor >= minor));
}

}  // namespace

xcb_connection_t* connectToDisplay(int* screenNumber) {
  static std::mutex authorityFileName;
  const std::scoped_lock lock(authorityFileName);
  return xcb_connect(nullptr, screenNumber);
}

std::vector<std::uint32_t> internAtoms(xcb_connection_t* connection, std::span<const std::string_view> names) {
  std::vector<xcb_intern_atom_cookie_t> cookies;
  cookies.reserve(names.size());
  for (const std::string_view name : names) {
    cookies.push_back(xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()));
  }
  std::vector<std::uint32_t> atoms;
  atoms.reserve(names.size());
  for (const auto cookie : cookies) {
    const auto reply = awaitReply<xcb_intern_atom_reply_t>(connection, cookie);
    atoms.push_back(reply ? reply->atom : XCB_ATOM_NONE);
  }
  return atoms;
}

std::unique_ptr<X11Connection> X11Connection::open() {
  constexpr double patienceSeconds = 2;
  if (!displayAnswers(patienceSeconds)) return nullptr;
  int screenNumber = 0;
  xcb_connection_t* connection = connectToDisplay(&screenNumber);
  if (xcb_connection_has_error(connection) != 0) {
    xcb_disconnect(connection);
    return nullptr;
  }
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (int i = 0; i < screenNumber && screens.rem > 1; ++i) xcb_screen_next(&screens);
  std::unique_ptr<X11Connection> opened(new X11Connection(connection, screens.data->root));
  return opened->isBroken() ? nullptr : std::move(opened);
}

X11Connection::X11Connection(xcb_connection_t* connection, std::uint32_t root)
    : connection_(connection),
      root_(root),
      atoms_(internAtoms(connection, atomNames)),
      knowsProcesses_(asksProcesses(connection)) {}

X11Connection::~X11Connection() {
  xcb_disconnect(connection_);
}

std::uint32_t X11Connection::atom(X11Atom name) const {
  return atoms_[static_cast<std::size_t>(name)];
}

bool X11Connection::isBroken() const {
  return xcb_connection_has_error(connection_) != 0;
}

X11PropertyRequest::X11PropertyRequest(const X11Connection& connection, std::uint32_t window, std::uint32_t property)
    : connection_(connection.get()),
      sequence_(xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maximumPropertyWords)
                    .sequence) {}

X11PropertyRequest::X11PropertyRequest(X11PropertyRequest&& other) noexcept
    : connection_(std::exchange(other.connection_, nullptr)), sequence_(other.sequence_) {}

X11PropertyRequest::~X11PropertyRequest() {
  if (connection_ != nullptr) xcb_discard_reply(connection_, sequence_);
}

std::vector<std::uint8_t> X11PropertyRequest::take(std::uint8_t format) {
  xcb_connection_t* connection = std::exchange(connection_, nullptr);
  if (connection == nullptr) return {};
  const auto reply = awaitReply<xcb_get_property_reply_t>(connection, sequence_);
  if (!reply || reply->format != format) return {};
  const auto* data = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  return {data, data + length};
}

std::vector<std::uint32_t> X11PropertyRequest::words() {
  const std::vector<std::uint8_t> data = take(32);
  std::vector<std::uint32_t> words(data.size() / sizeof(std::uint32_t));
  if (!words.empty()) std::memcpy(words.data(), data.data(), words.size() * sizeof(std::uint32_t));
  return words;
}

std::string X11PropertyRequest::bytes() {
  const std::vector<std::uint8_t> data = take(8);
  return {data.begin(), data.end()};
}

X11ProcessRequest::X11ProcessRequest(const X11Connection& connection, std::uint32_t window)
    : claim_(connection, window, connection.atom(X11Atom::netWMPid)),
      connection_(connection.knowsProcesses() ? connection.get() : nullptr) {
  if (connection_ == nullptr) return;
  const xcb_res_client_id_spec_t question = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  sequence_ = xcb_res_query_client_ids(connection_, 1, &question).sequence;
}

X11ProcessRequest::X11ProcessRequest(X11ProcessRequest&& other) noexcept
    : claim_(std::move(other.claim_)),
      connection_(std::exchange(other.connection_, nullptr)),
      sequence_(other.sequence_) {}

X11ProcessRequest::~X11ProcessRequest() {
  if (connection_ != nullptr) xcb_discard_reply(connection_, sequence_);
}

std::optional<std::int32_t> X11ProcessRequest::processIdentifier() {
  if (xcb_connection_t* connection = std::exchange(connection_, nullptr)) {
    const auto reply = awaitReply<xcb_res_query_client_ids_reply_t>(connection, sequence_);
    if (reply) {
      auto identifiers = xcb_res_query_client_ids_ids_iterator(reply.get());
      for (; identifiers.rem > 0; xcb_res_client_id_value_next(&identifiers)) {
        if (xcb_res_client_id_value_value_length(identifiers.data) < 1) continue;
        const std::uint32_t pid = xcb_res_client_id_value_value(identifiers.data)[0];
        if (pid != 0 && (identifiers.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0) {
          return static_cast<std::int32_t>(pid);
        }
      }
    }
  }
  const std::vector<std::uint32_t> claim = claim_.words();
  return claim.empty() || claim[0] == 0 ? std::nullopt : std::optional(static_cast<std::int32_t>(claim[0]));
}

}  // namespace quillo
