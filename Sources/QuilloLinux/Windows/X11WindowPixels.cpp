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

using Clock = std::chrono::steady_clock;

/// What a program that answers needs to draw what was covered.
constexpr std::chrono::milliseconds drawingTime{100};

constexpr std::uint8_t eventCodeMask = 0x7F;

bool isPresent(xcb_connection_t* connection, xcb_extension_t* extension) {
  const xcb_query_extension_reply_t* reply = xcb_get_extension_data(connection, extension);
  return reply != nullptr && reply->present != 0;
}

/// The window's own pixels by a name of ours, which keeps them when the window goes.
class NamedPixmap {
 public:
  NamedPixmap(xcb_connection_t* connection, std::uint32_t window)
      : connection_(connection), pixmap_(xcb_generate_id(connection)) {
    const X11Reply<xcb_generic_error_t> error(
        xcb_request_check(connection_, xcb_composite_name_window_pixmap_checked(connection_, window, pixmap_)));
    if (error) throw std::runtime_error("The window is no longer on the screen.");
  }
  NamedPixmap(const NamedPixmap&) = delete;
  NamedPixmap& operator=(const NamedPixmap&) = delete;
  ~NamedPixmap() { xcb_free_pixmap(connection_, pixmap_); }

  std::uint32_t id() const { return pixmap_; }

 private:
  xcb_connection_t* connection_;
  std::uint32_t pixmap_;
};

bool isBlack(const BitmapImage& image, const PixelRect& rect) {
  for (std::int32_t y = rect.y; y < rect.y + rect.height; ++y) {
    const std::uint8_t* pixel = image.pixels.data() + static_cast<std::size_t>(y) * image.bytesPerRow() +
                                static_cast<std::size_t>(rect.x) * BitmapImage::bytesPerPixel;
    for (std::int32_t x = 0; x < rect.width; ++x, pixel += BitmapImage::bytesPerPixel) {
      if (pixel[0] != 0 || pixel[1] != 0 || pixel[2] != 0) return false;
    }
  }
  return true;
}

}  // namespace

bool X11WindowPixels::isOffered(const X11Connection& connection) {
  if (!isPresent(connection.get(), &xcb_composite_id) || !isPresent(connection.get(), &xcb_damage_id)) return false;
  // Names for a window's pixels came with version 0.2.
  const X11Reply<xcb_composite_query_version_reply_t> version(xcb_composite_query_version_reply(
      connection.get(), xcb_composite_query_version(connection.get(), 0, 4), nullptr));
  return version && (version->major_version > 0 || version->minor_version >= 2);
}

std::unique_ptr<X11WindowPixels> X11WindowPixels::open(std::uint32_t windowID) {
  auto connection = X11Connection::open();
  if (!connection || !isOffered(*connection)) return nullptr;
  return std::unique_ptr<X11WindowPixels>(new X11WindowPixels(std::move(connection), windowID));
}

X11WindowPixels::X11WindowPixels(std::unique_ptr<X11Connection> connection, std::uint32_t windowID)
    : connection_(std::move(connection)), windowID_(windowID) {
  xcb_connection_t* display = connection_->get();
  std::free(xcb_damage_query_version_reply(display, xcb_damage_query_version(display, 1, 1), nullptr));
  // A new damage record reports what is visible as drawn; so it is made before the window gets pixels of its own and
  // all of it counts as visible. Errors of both requests mean that the window is gone, which reading finds out.
  const std::uint32_t damage = xcb_generate_id(display);
  xcb_damage_create(display, damage, windowID_, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  xcb_composite_redirect_window(display, windowID_, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
  xcb_flush(display);
}

void X11WindowPixels::noteWhatWasDrawn() {
  xcb_connection_t* display = connection_->get();
  const std::uint8_t damageEvent = xcb_get_extension_data(display, &xcb_damage_id)->first_event + XCB_DAMAGE_NOTIFY;
  while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(display)}) {
    if ((event->response_type & eventCodeMask) != damageEvent) continue;
    const xcb_rectangle_t& area = reinterpret_cast<const xcb_damage_notify_event_t*>(event.get())->area;
    undrawn_.draw({area.x, area.y, area.width, area.height});
  }
}

void X11WindowPixels::awaitDrawing(std::int32_t width, std::int32_t height) {
  const auto deadline = Clock::now() + drawingTime;
  // A round trip, so that what the display has already sent is here.
  std::free(xcb_get_input_focus_reply(connection_->get(), xcb_get_input_focus(connection_->get()), nullptr));
  for (noteWhatWasDrawn(); !undrawn_.within(width, height).empty(); noteWhatWasDrawn()) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0 || connection_->isBroken()) return;
    pollfd readable{.fd = xcb_get_file_descriptor(connection_->get()), .events = POLLIN, .revents = 0};
    ::poll(&readable, 1, static_cast<int>(left.count()));
  }
}

BitmapImage X11WindowPixels::read() {
  xcb_connection_t* display = connection_->get();
  const X11Reply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(display, xcb_get_geometry(display, windowID_), nullptr));
  if (!geometry) throw std::runtime_error("The window is no longer on the screen.");
  awaitDrawing(geometry->width, geometry->height);

  const X11Reply<xcb_get_window_attributes_reply_t> attributes(
      xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, windowID_), nullptr));
  if (!attributes) throw std::runtime_error("The window is no longer on the screen.");
  const NamedPixmap pixmap(display, windowID_);
  BitmapImage image = readPicture(*connection_, pixmap.id(), attributes->visual, geometry->border_width);

  noteWhatWasDrawn();
  const auto holes = undrawn_.within(static_cast<std::int32_t>(image.width), static_cast<std::int32_t>(image.height));
  if (std::ranges::any_of(holes, [&](const PixelRect& hole) { return isBlack(image, hole); })) {
    throw std::runtime_error("The application does not draw the part of its window that is covered.");
  }
  return image;
}

}  // namespace quillo
