// Writes a window's picture into a PNG file: what the program does between two moments of a screenshot tool, process
// start included. Called by run-screenshot.

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "QuilloLinux/Windows/X11WindowImage.h"

namespace quillo {
namespace {

void writePicture(std::string_view windowNumber, const std::string& path) {
  std::uint32_t windowID = 0;
  std::from_chars(windowNumber.data(), windowNumber.data() + windowNumber.size(), windowID);
  X11WindowImage images([](const std::string& /*windowClass*/) { return ApplicationIdentity(); });
  images.prepare(windowID);
  const auto image = images.image(windowID);
  if (!image) throw std::runtime_error("the display gives no picture");
  std::ofstream file(path, std::ios::binary);
  file << PNGImageEncoder::encode(*image);
  if (!file.flush()) throw std::runtime_error("the file could not be written");
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    fmt::print(stderr, "usage: ScreenshotBenchmark WINDOW FILE\n");
    return 2;
  }
  try {
    quillo::writePicture(arguments[1], arguments[2]);
  } catch (const std::exception& error) {
    fmt::print(stderr, "ScreenshotBenchmark: {}\n", error.what());
    return 1;
  }
  return 0;
}
