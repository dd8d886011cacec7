#include "QuilloLinux/Windows/X11Picture.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace quillo {
namespace {

constexpr std::size_t maximumPixelCount = std::size_t{128} * 1024 * 1024;
constexpr std::uint32_t allPlanes = 0xFFFFFFFF;

struct PictureArea {
  std::uint32_t pixmap;
  std::int16_t x;
  std::int16_t y;
  std::uint16_t width;
  std::uint16_t height;

  std::size_t byteCount() const { return std::size_t{width} * height * sizeof(std::uint32_t); }
};

/// A piece of memory that the display writes into.
class SharedMemory {
 public:
  SharedMemory(xcb_connection_t* connection, std::size_t size) : connection_(connection) {
    constexpr int ownerOnly = 0600;
    const int identifier = ::shmget(IPC_PRIVATE, size, IPC_CREAT | ownerOnly);
    if (identifier < 0) return;
    void* memory = ::shmat(identifier, nullptr, 0);
    if (std::bit_cast<std::intptr_t>(memory) != -1) {
      memory_ = memory;
      segment_ = xcb_generate_id(connection_);
      const auto attaching = xcb_shm_attach_checked(connection_, segment_, static_cast<std::uint32_t>(identifier), 0);
      isAttached_ = awaitCheck(connection_, attaching.sequence) == 0;
    }
    // It goes with its last user, whatever becomes of us.
    ::shmctl(identifier, IPC_RMID, nullptr);
  }
  SharedMemory(const SharedMemory&) = delete;
  SharedMemory& operator=(const SharedMemory&) = delete;
  ~SharedMemory() {
    if (isAttached_) xcb_shm_detach(connection_, segment_);
    if (memory_ != nullptr) ::shmdt(memory_);
  }

  /// False where the display runs on another machine.
  bool isShared() const { return isAttached_ && xcb_connection_has_error(connection_) == 0; }
  std::uint32_t segment() const { return segment_; }
  const std::byte* bytes() const { return static_cast<const std::byte*>(memory_); }

 private:
  xcb_connection_t* connection_;
  void* memory_ = nullptr;
  std::uint32_t segment_ = 0;
  bool isAttached_ = false;
};

/// The display's pixel: 8 bits of red, green and blue in a 32-bit word, the upper 8 bits alpha or nothing.
struct PixelConversion {
  bool hasAlpha;

  /// What the display shows is multiplied by alpha; a picture file's colours are not.
  static std::uint8_t unmultiplied(std::uint32_t channel, std::uint32_t alpha) {
    return static_cast<std::uint8_t>(std::min((channel * 255 + alpha / 2) / alpha, 255U));
  }

  bool write(std::uint32_t pixel, std::uint8_t* out) const {
    constexpr std::uint32_t opaque = 255;
    const std::uint32_t alpha = hasAlpha ? pixel >> 24 : opaque;
    const std::uint32_t red = pixel >> 16 & 0xFF;
    const std::uint32_t green = pixel >> 8 & 0xFF;
    const std::uint32_t blue = pixel & 0xFF;
    if (alpha == opaque) {
      out[0] = static_cast<std::uint8_t>(red);
      out[1] = static_cast<std::uint8_t>(green);
      out[2] = static_cast<std::uint8_t>(blue);
    } else if (alpha != 0) {
      out[0] = unmultiplied(red, alpha);
      out[1] = unmultiplied(green, alpha);
      out[2] = unmultiplied(blue, alpha);
    }
    out[3] = static_cast<std::uint8_t>(alpha);
    return alpha == opaque;
  }
};

BitmapImage convert(const std::byte* data, const PictureArea& area, PixelConversion conversion) {
  BitmapImage image;
  image.width = area.width;
  image.height = area.height;
  image.pixels.resize(area.byteCount());
  image.isOpaque = true;
  for (std::size_t offset = 0; offset < image.pixels.size(); offset += BitmapImage::bytesPerPixel) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, data + offset, sizeof(pixel));
    if (!conversion.write(pixel, image.pixels.data() + offset)) image.isOpaque = false;
  }
  return image;
}

bool hasUsualColours(xcb_connection_t* connection, std::uint32_t visual) {
  for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0; xcb_screen_next(&screens)) {
    for (auto depths = xcb_screen_allowed_depths_iterator(screens.data); depths.rem > 0; xcb_depth_next(&depths)) {
      for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
        const xcb_visualtype_t& type = *visuals.data;
        if (type.visual_id != visual) continue;
        return type.red_mask == 0xFF0000 && type.green_mask == 0xFF00 && type.blue_mask == 0xFF;
      }
    }
  }
  return false;
}

void checkFormat(xcb_connection_t* connection, std::uint8_t depth, std::uint32_t visual) {
  const xcb_setup_t* setup = xcb_get_setup(connection);
  const bool isOurOrder =
      (setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) == (std::endian::native == std::endian::little);
  bool hasWholeWords = false;
  for (auto formats = xcb_setup_pixmap_formats_iterator(setup); formats.rem > 0; xcb_format_next(&formats)) {
    if (formats.data->depth == depth) hasWholeWords = formats.data->bits_per_pixel == 32;
  }
  if ((depth != 24 && depth != 32) || !isOurOrder || !hasWholeWords || !hasUsualColours(connection, visual)) {
    throw std::runtime_error("The display keeps the window's pixels in a format that is not supported.");
  }
}

}  // namespace

BitmapImage readPicture(const X11Connection& connection, std::uint32_t pixmap, std::uint32_t visual,
                        std::uint32_t border) {
  xcb_connection_t* display = connection.get();
  const auto geometry = awaitReply<xcb_get_geometry_reply_t>(display, xcb_get_geometry(display, pixmap));
  if (!geometry || geometry->width <= 2 * border || geometry->height <= 2 * border) {
    throw std::runtime_error("The window is no longer on the screen.");
  }
  checkFormat(display, geometry->depth, visual);
  const PictureArea area{.pixmap = pixmap,
                         .x = static_cast<std::int16_t>(border),
                         .y = static_cast<std::int16_t>(border),
                         .width = static_cast<std::uint16_t>(geometry->width - 2 * border),
                         .height = static_cast<std::uint16_t>(geometry->height - 2 * border)};
  if (area.byteCount() / sizeof(std::uint32_t) > maximumPixelCount) {
    throw std::runtime_error("The window is too large for a picture.");
  }
  const PixelConversion conversion{.hasAlpha = geometry->depth == 32};

  if (awaitExtension(display, &xcb_shm_id).isPresent) {
    const SharedMemory memory(display, area.byteCount());
    if (memory.isShared()) {
      const auto reply = awaitReply<xcb_shm_get_image_reply_t>(
          display, xcb_shm_get_image(display, area.pixmap, area.x, area.y, area.width, area.height, allPlanes,
                                     XCB_IMAGE_FORMAT_Z_PIXMAP, memory.segment(), 0));
      if (reply && reply->size == area.byteCount()) return convert(memory.bytes(), area, conversion);
    }
  }
  const auto reply =
      awaitReply<xcb_get_image_reply_t>(display, xcb_get_image(display, XCB_IMAGE_FORMAT_Z_PIXMAP, area.pixmap, area.x,
                                                               area.y, area.width, area.height, allPlanes));
  if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != area.byteCount()) {
    throw std::runtime_error("The display does not give the window's pixels.");
  }
  return convert(reinterpret_cast<const std::byte*>(xcb_get_image_data(reply.get())), area, conversion);
}

}  // namespace quillo
