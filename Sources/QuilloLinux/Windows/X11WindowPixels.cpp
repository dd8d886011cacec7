#include "QuilloLinux/Windows/X11WindowPixels.h"

#include <poll.h>
#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "QuilloLinux/Windows/X11Picture.h"

namespace quillo {
namespace {

/// The longest that a program may take to draw what was covered, or to lay itself out anew.
constexpr std::chrono::milliseconds drawingTime{500};

/// A program that has drawn nothing for so long after it was resized has nothing to draw.
constexpr std::chrono::milliseconds quietTime{100};

constexpr std::uint8_t eventCodeMask = 0x7F;

/// The window's own pixels by a name of ours, which keeps them when the window goes.
class NamedPixmap {
 public:
  NamedPixmap(xcb_connection_t* connection, std::uint32_t window)
      : connection_(connection), pixmap_(xcb_generate_id(connection)) {
    const auto naming = xcb_composite_name_window_pixmap_checked(connection_, window, pixmap_);
    if (awaitCheck(connection_, naming.sequence) != 0)
      throw std::runtime_error("The window is no longer on the screen.");
  }
  NamedPixmap(const NamedPixmap&) = delete;
  NamedPixmap& operator=(const NamedPixmap&) = delete;
  ~NamedPixmap() { xcb_free_pixmap(connection_, pixmap_); }

  std::uint32_t id() const { return pixmap_; }

 private:
  xcb_connection_t* connection_;
  std::uint32_t pixmap_;
};

/// Whether the window draws into pixels of its own already, as every window does under a compositor.
bool hasOwnPixels(xcb_connection_t* connection, std::uint32_t window) {
  const std::uint32_t pixmap = xcb_generate_id(connection);
  const auto naming = xcb_composite_name_window_pixmap_checked(connection, window, pixmap);
  const bool isNamed = awaitCheck(connection, naming.sequence) == 0;
  if (isNamed) xcb_free_pixmap(connection, pixmap);
  return isNamed;
}

}  // namespace

bool X11WindowPixels::isOffered(const X11Connection& connection) {
  if (!awaitExtension(connection.get(), &xcb_composite_id).isPresent ||
      !awaitExtension(connection.get(), &xcb_damage_id).isPresent)
    return false;
  // Names for a window's pixels came with version 0.2.
  const auto version = awaitReply<xcb_composite_query_version_reply_t>(
      connection.get(), xcb_composite_query_version(connection.get(), 0, 4));
  return version && (version->major_version > 0 || version->minor_version >= 2);
}

std::unique_ptr<X11WindowPixels> X11WindowPixels::open(std::uint32_t windowID) {
  auto connection = X11Connection::open();
  if (!connection || !isOffered(*connection)) return nullptr;
  return std::unique_ptr<X11WindowPixels>(new X11WindowPixels(std::move(connection), windowID));
}

X11WindowPixels::X11WindowPixels(std::unique_ptr<X11Connection> connection, std::uint32_t windowID)
    : connection_(std::move(connection)),
      windowID_(windowID),
      damageEvent_(awaitExtension(connection_->get(), &xcb_damage_id).firstEvent + XCB_DAMAGE_NOTIFY) {
  xcb_connection_t* display = connection_->get();
  awaitReply<xcb_damage_query_version_reply_t>(display, xcb_damage_query_version(display, 1, 1));
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(display, windowID_, XCB_CW_EVENT_MASK, &events);
  const auto geometryRequest = xcb_get_geometry(display, windowID_);
  const auto attributesRequest = xcb_get_window_attributes(display, windowID_);
  const bool isRedirected = hasOwnPixels(display, windowID_);
  const auto geometry = awaitReply<xcb_get_geometry_reply_t>(display, geometryRequest);
  const auto attributes = awaitReply<xcb_get_window_attributes_reply_t>(display, attributesRequest);
  if (geometry && attributes) {
    width_ = geometry->width;
    height_ = geometry->height;
    keepsItsCorner_ = attributes->bit_gravity == XCB_GRAVITY_NORTH_WEST;
    isShown_ = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    if (isRedirected) undrawn_.draw({0, 0, width_, height_});
  }
  // A new damage record reports what is visible as drawn; so it is made before the window gets pixels of its own and
  // all of it counts as visible. Errors of both requests mean that the window is gone, which reading finds out.
  const std::uint32_t damage = xcb_generate_id(display);
  xcb_damage_create(display, damage, windowID_, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  xcb_composite_redirect_window(display, windowID_, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
  awaitDisplay(connection_->get());
}

void X11WindowPixels::noteSize(std::int32_t width, std::int32_t height) {
  if (width == width_ && height == height_) return;
  kept_ = keepsItsCorner_ ? PixelRect{0, 0, std::min(width, width_), std::min(height, height_)} : PixelRect{};
  undrawn_.keepOnly(*kept_);
  width_ = width;
  height_ = height;
  isResized_ = true;
}

void X11WindowPixels::noteWhatHappened() {
  xcb_connection_t* display = connection_->get();
  while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(display)}) {
    const std::uint8_t code = event->response_type & eventCodeMask;
    if (code == XCB_CONFIGURE_NOTIFY) {
      const auto* change = reinterpret_cast<const xcb_configure_notify_event_t*>(event.get());
      noteSize(change->width, change->height);
    } else if (code == XCB_UNMAP_NOTIFY || code == XCB_MAP_NOTIFY) {
      isShown_ = code == XCB_MAP_NOTIFY;
    } else if (code == damageEvent_) {
      const xcb_rectangle_t& rectangle = reinterpret_cast<const xcb_damage_notify_event_t*>(event.get())->area;
      const PixelRect area{rectangle.x, rectangle.y, rectangle.width, rectangle.height};
      if (kept_ == area) {
        kept_.reset();
      } else {
        undrawn_.draw(area);
      }
    } else {
      continue;
    }
    lastEvent_ = Clock::now();
  }
}

/// Until the program has drawn what it has to and, after a resize, has nothing more to say.
bool X11WindowPixels::awaitDrawing(Clock::time_point deadline) {
  awaitDisplay(connection_->get());  // so that what it has already sent is here
  for (;;) {
    noteWhatHappened();
    const auto now = Clock::now();
    if (isResized_ && now >= lastEvent_ + quietTime) isResized_ = false;
    const bool isWhole = undrawn_.within(width_, height_).empty();
    if ((isWhole && !isResized_) || !isShown_ || connection_->isBroken()) return true;
    if (now >= deadline) return false;
    const auto end = isResized_ ? std::min(deadline, lastEvent_ + quietTime) : deadline;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
    pollfd readable{.fd = xcb_get_file_descriptor(connection_->get()), .events = POLLIN, .revents = 0};
    ::poll(&readable, 1, static_cast<int>(left.count()));
  }
}

BitmapImage X11WindowPixels::readPixels() {
  xcb_connection_t* display = connection_->get();
  const auto geometryRequest = xcb_get_geometry(display, windowID_);
  const auto attributes =
      awaitReply<xcb_get_window_attributes_reply_t>(display, xcb_get_window_attributes(display, windowID_));
  const auto geometry = awaitReply<xcb_get_geometry_reply_t>(display, geometryRequest);
  if (!attributes || !geometry) throw std::runtime_error("The window is no longer on the screen.");
  const NamedPixmap pixmap(display, windowID_);
  return readPicture(*connection_, pixmap.id(), attributes->visual, geometry->border_width);
}

BitmapImage X11WindowPixels::read() {
  const auto deadline = Clock::now() + drawingTime;
  for (;;) {
    const bool mayBeLate = !awaitDrawing(deadline);
    BitmapImage image = readPixels();
    noteWhatHappened();
    const auto width = static_cast<std::int32_t>(image.width);
    const auto height = static_cast<std::int32_t>(image.height);
    const bool isWhole = undrawn_.within(width, height).empty();
    const bool isCurrent = width == width_ && height == height_ && !isResized_;
    if (isWhole && (isCurrent || mayBeLate)) return image;
    if (mayBeLate) throw std::runtime_error("The application does not draw the part of its window that is covered.");
  }
}

}  // namespace quillo
