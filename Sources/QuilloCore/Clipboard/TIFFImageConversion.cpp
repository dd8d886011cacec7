#include "QuilloCore/Clipboard/TIFFImageConversion.h"

#include <png.h>
#include <tiffio.h>
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace quillo::TIFFImageConversion {
namespace {

/// More than the picture of several of the largest screens needs.
constexpr std::size_t maximumBytes = 512UL * 1024 * 1024;

struct Picture {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint16_t channels = 3;  ///< 4 with alpha that is not premultiplied
  std::vector<std::uint8_t> pixels;

  std::size_t bytesPerRow() const { return std::size_t{width} * channels; }
};

/// A file whose header has been read.
class PNGReading {
 public:
  explicit PNGReading(std::string_view png) {
    image_.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image_, png.data(), png.size()) == 0) return;
    const bool hasAlpha = (image_.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    image_.format = hasAlpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    picture_.width = image_.width;
    picture_.height = image_.height;
    if (hasAlpha) picture_.channels = 4;
    isPossible_ = picture_.bytesPerRow() <= maximumBytes / std::max(1U, picture_.height);
  }
  PNGReading(const PNGReading&) = delete;
  PNGReading& operator=(const PNGReading&) = delete;
  ~PNGReading() { png_image_free(&image_); }

  bool isPossible() const { return isPossible_; }

  std::optional<Picture> decode() && {
    if (!isPossible_) return std::nullopt;
    picture_.pixels.resize(picture_.bytesPerRow() * picture_.height);
    if (png_image_finish_read(&image_, nullptr, picture_.pixels.data(), 0, nullptr) == 0) return std::nullopt;
    return std::move(picture_);
  }

 private:
  png_image image_{};
  Picture picture_;
  bool isPossible_ = false;
};

std::uint32_t bigEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (const char byte : bytes) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}

/// Whether the chunks are whole, to the last one.
bool hasAllChunks(std::string_view png) {
  constexpr std::size_t signature = 8;
  constexpr std::size_t word = 4;
  if (png.size() < signature) return false;
  for (png.remove_prefix(signature); png.size() >= 3 * word;) {
    const std::size_t size = bigEndian(png.substr(0, word));
    if (size > png.size() - 3 * word) return false;
    const std::string_view content = png.substr(word, word + size);  // its type and its data
    const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(content.data()), content.size());
    if (sum != bigEndian(png.substr(2 * word + size, word))) return false;
    if (content.starts_with("IEND")) return true;
    png.remove_prefix(3 * word + size);
  }
  return false;
}

/// A file in memory, as the library wants its files.
struct MemoryFile {
  std::string bytes;
  std::size_t position = 0;

  static MemoryFile& of(thandle_t handle) { return *static_cast<MemoryFile*>(handle); }

  static tmsize_t read(thandle_t handle, void* data, tmsize_t size) {
    MemoryFile& file = of(handle);
    const std::size_t count =
        std::min(static_cast<std::size_t>(size), file.bytes.size() - std::min(file.position, file.bytes.size()));
    std::memcpy(data, file.bytes.data() + file.position, count);
    file.position += count;
    return static_cast<tmsize_t>(count);
  }
  static tmsize_t write(thandle_t handle, void* data, tmsize_t size) {
    MemoryFile& file = of(handle);
    const auto count = static_cast<std::size_t>(size);
    if (file.bytes.size() < file.position + count) file.bytes.resize(file.position + count);
    std::memcpy(file.bytes.data() + file.position, data, count);
    file.position += count;
    return size;
  }
  static toff_t seek(thandle_t handle, toff_t offset, int origin) {
    MemoryFile& file = of(handle);
    if (origin == SEEK_CUR) offset += file.position;
    if (origin == SEEK_END) offset += file.bytes.size();
    return file.position = offset;
  }
  static toff_t size(thandle_t handle) { return of(handle).bytes.size(); }
  static int close(thandle_t /*handle*/) { return 0; }
};

struct OptionsFree {
  void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
struct FileClose {
  void operator()(TIFF* file) const { TIFFClose(file); }
};

int keepSilent(TIFF* /*file*/, void* /*data*/, const char* /*module*/, const char* /*format*/, va_list /*arguments*/) {
  return 1;
}

std::optional<std::string> encode(const Picture& picture) {
  MemoryFile memory;
  memory.bytes.reserve(picture.pixels.size() + 4096);
  const std::unique_ptr<TIFFOpenOptions, OptionsFree> options(TIFFOpenOptionsAlloc());
  if (!options) return std::nullopt;
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepSilent, nullptr);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), keepSilent, nullptr);
  std::unique_ptr<TIFF, FileClose> file(TIFFClientOpenExt("clipboard", "wm", &memory, MemoryFile::read,
                                                          MemoryFile::write, MemoryFile::seek, MemoryFile::close,
                                                          MemoryFile::size, nullptr, nullptr, options.get()));
  if (!file) return std::nullopt;
  TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, picture.width);
  TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, picture.height);
  TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, picture.channels);
  if (picture.channels == 4) {
    const std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
    TIFFSetField(file.get(), TIFFTAG_EXTRASAMPLES, 1, &alpha);
  }
  TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(file.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(file.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(file.get(), TIFFTAG_COMPRESSION, COMPRESSION_NONE);

  constexpr std::size_t bytesPerStrip = 64UL * 1024;
  const auto rowsPerStrip = static_cast<std::uint32_t>(std::max<std::size_t>(1, bytesPerStrip / picture.bytesPerRow()));
  TIFFSetField(file.get(), TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
  std::uint32_t strip = 0;
  for (std::uint32_t row = 0; row < picture.height; row += rowsPerStrip, ++strip) {
    const std::size_t size = picture.bytesPerRow() * std::min(rowsPerStrip, picture.height - row);
    // The library takes what it only reads as writable.
    auto* pixels = const_cast<std::uint8_t*>(picture.pixels.data() + row * picture.bytesPerRow());
    if (TIFFWriteRawStrip(file.get(), strip, pixels, static_cast<tmsize_t>(size)) < 0) return std::nullopt;
  }
  if (TIFFFlush(file.get()) == 0) return std::nullopt;
  file.reset();
  return std::move(memory.bytes);
}

}  // namespace

std::optional<std::string> fromPNG(std::string_view png) {
  const std::optional<Picture> picture = PNGReading(png).decode();
  return picture ? encode(*picture) : std::nullopt;
}

bool isLikely(std::string_view png) {
  return PNGReading(png).isPossible() && hasAllChunks(png);
}

}  // namespace quillo::TIFFImageConversion
