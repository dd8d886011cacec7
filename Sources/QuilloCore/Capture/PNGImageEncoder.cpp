#include "QuilloCore/Capture/PNGImageEncoder.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"

namespace quillo::PNGImageEncoder {
namespace {

// Above this level the size hardly falls and the time doubles.
constexpr int compressionLevel = 3;

std::size_t channelCount(const BitmapImage& image) {
  return image.isOpaque ? 3 : 4;
}

/// One row in the file's channels.
void packRow(const BitmapImage& image, std::uint32_t y, std::vector<std::uint8_t>& row) {
  const std::uint8_t* source = image.pixels.data() + y * image.bytesPerRow();
  if (!image.isOpaque) {
    std::copy_n(source, row.size(), row.begin());
    return;
  }
  for (std::size_t x = 0; x < image.width; ++x) {
    std::copy_n(source + x * BitmapImage::bytesPerPixel, 3, row.begin() + static_cast<std::ptrdiff_t>(3 * x));
  }
}

std::size_t deflatedSize(std::span<const std::uint8_t> bytes) {
  uLongf size = compressBound(bytes.size());
  std::vector<Bytef> out(size);
  return compress2(out.data(), &size, bytes.data(), bytes.size(), 1) == Z_OK ? size : bytes.size();
}

/// Interface pictures are repetitions, which filters destroy; photographs are gradients, which filters straighten. A
/// sample of rows tells which this is.
bool filtersPay(const BitmapImage& image) {
  constexpr std::uint32_t sampledRows = 16;
  const std::size_t channels = channelCount(image);
  const std::size_t rowSize = image.width * channels;
  std::vector<std::uint8_t> row(rowSize);
  std::vector<std::uint8_t> plain;
  std::vector<std::uint8_t> filtered;
  const std::uint32_t step = std::max(1U, image.height / sampledRows);
  for (std::uint32_t y = 0; y < image.height; y += step) {
    packRow(image, y, row);
    plain.insert(plain.end(), row.begin(), row.end());
    for (std::size_t i = 0; i < rowSize; ++i) {
      filtered.push_back(static_cast<std::uint8_t>(row[i] - (i < channels ? 0 : row[i - channels])));
    }
  }
  return deflatedSize(filtered) * 10 < deflatedSize(plain) * 8;
}

/// Owns libpng's two structures, and what a jump out of the library must not leak.
struct PngWriter {
  PngWriter() {
    png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, [](png_structp, png_const_charp) {});
    if (png != nullptr) info = png_create_info_struct(png);
  }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() { png_destroy_write_struct(&png, &info); }

  png_structp png = nullptr;
  png_infop info = nullptr;
  std::string bytes;
  std::vector<std::uint8_t> row;
};

/// libpng reports errors by jumping to the point set here, so nothing with a destructor may be created in this
/// function.
bool writeImage(PngWriter& writer, const BitmapImage& image, bool usesFilters) {
  if (setjmp(png_jmpbuf(writer.png)) != 0) return false;  // NOLINT(cert-err52-cpp): libpng's error protocol
  png_set_write_fn(
      writer.png, &writer.bytes,
      [](png_structp png, png_bytep data, png_size_t size) {
        static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), size);
      },
      nullptr);
  png_set_compression_level(writer.png, compressionLevel);
  png_set_filter(writer.png, PNG_FILTER_TYPE_BASE, usesFilters ? PNG_ALL_FILTERS : PNG_FILTER_NONE);
  png_set_IHDR(writer.png, writer.info, image.width, image.height, 8,
               image.isOpaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(writer.png, writer.info);
  for (std::uint32_t y = 0; y < image.height; ++y) {
    packRow(image, y, writer.row);
    png_write_row(writer.png, writer.row.data());
  }
  png_write_end(writer.png, writer.info);
  return true;
}

}  // namespace

std::string encode(const BitmapImage& image) {
  if (!image.isConsistent()) throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::PngEncodingFailed{});
  PngWriter writer;
  if (writer.png == nullptr || writer.info == nullptr) {
    throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::PngDestinationCreationFailed{});
  }
  writer.row.resize(image.width * channelCount(image));
  if (!writeImage(writer, image, filtersPay(image))) {
    throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::PngEncodingFailed{});
  }
  return std::move(writer.bytes);
}

}  // namespace quillo::PNGImageEncoder
