#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"

#include <gmock/gmock.h>
#include <tiffio.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "QuilloCore/Clipboard/PasteboardTypes.h"
#include "QuilloCore/Clipboard/TIFFImageConversion.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "Tests/Support/FakePasteboard.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;

BitmapImage gradient(std::uint32_t width, std::uint32_t height, bool isOpaque) {
  BitmapImage image{.width = width, .height = height, .pixels = {}, .isOpaque = isOpaque};
  for (std::uint32_t i = 0; i < width * height; ++i) {
    for (const std::uint32_t channel : {i * 7, i * 13 + 1, i * 29 + 2}) {
      image.pixels.push_back(static_cast<std::uint8_t>(channel));
    }
    image.pixels.push_back(isOpaque ? 255 : static_cast<std::uint8_t>(i * 3));
  }
  return image;
}

ClipboardPayload payload(std::string png = PNGImageEncoder::encode(gradient(3, 2, true))) {
  return {.captureID = *UUID::parse("0a1b2c3d-0000-4000-8000-00000000000f"),
          .pngData = std::move(png),
          .plainText = "a < b & c > d\n\"q\" 'r' &amp;"};
}

std::vector<std::vector<std::string>> typesOf(const std::vector<PasteboardItem>& items) {
  std::vector<std::vector<std::string>> types;
  for (const PasteboardItem& item : items) {
    auto& names = types.emplace_back();
    for (const PasteboardRepresentation& representation : item.representations) names.push_back(representation.type);
  }
  return types;
}

std::string dataOf(const std::vector<PasteboardItem>& items, std::string_view type) {
  for (const PasteboardItem& item : items) {
    for (const PasteboardRepresentation& representation : item.representations) {
      if (representation.type == type) return representation.data;
    }
  }
  return "nothing";
}

/// What the library that wrote the file reads from it; the pixels as RGBA from the top.
BitmapImage readTIFF(const std::string& bytes) {
  const TemporaryDirectory directory;
  const std::string path = (directory.path() / "picture.tiff").string();
  writeFile(path, bytes);
  BitmapImage image{.width = 0, .height = 0, .pixels = {}, .isOpaque = true};
  TIFF* file = TIFFOpen(path.c_str(), "r");
  if (file == nullptr) return image;
  std::uint16_t channels = 0;
  TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &image.width);
  TIFFGetField(file, TIFFTAG_IMAGELENGTH, &image.height);
  TIFFGetField(file, TIFFTAG_SAMPLESPERPIXEL, &channels);
  image.isOpaque = channels == 3;
  std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(file)));
  for (std::uint32_t y = 0; y < image.height; ++y) {
    TIFFReadScanline(file, row.data(), y, 0);
    for (std::uint32_t x = 0; x < image.width; ++x) {
      for (std::uint32_t c = 0; c < 4; ++c) image.pixels.push_back(c < channels ? row[x * channels + c] : 255);
    }
  }
  TIFFClose(file);
  return image;
}

TEST(ClipboardPayloadWriter, compositionsLayTheTypesOutInTheirOrder) {
  const std::vector<std::string> image = {"image/png", "image/tiff", "org.quillo.Quillo.context-capture"};
  const std::vector<std::string> text = {"text/plain;charset=utf-8", "text/html"};
  const auto types = [](ClipboardComposition composition) {
    return typesOf(ClipboardPayloadWriter::makeItems(payload(), composition));
  };
  using testing::ElementsAreArray;
  EXPECT_THAT(types(ClipboardComposition::imageThenText), ElementsAre(ElementsAreArray(image), ElementsAreArray(text)));
  EXPECT_THAT(types(ClipboardComposition::textThenImage), ElementsAre(ElementsAreArray(text), ElementsAreArray(image)));
  EXPECT_THAT(types(ClipboardComposition::imageOnly), ElementsAre(ElementsAreArray(image)));
  EXPECT_THAT(types(ClipboardComposition::textOnly), ElementsAre(ElementsAreArray(text)));
  EXPECT_THAT(types(ClipboardComposition::singleItem),
              ElementsAre(ElementsAre("image/png", "text/plain;charset=utf-8", "text/html",
                                      "org.quillo.Quillo.context-capture")));
}

TEST(ClipboardPayloadWriter, everyTypeHoldsItsFormOfTheCapture) {
  const auto items = ClipboardPayloadWriter::makeItems(payload(), ClipboardComposition::singleItem);
  EXPECT_EQ(dataOf(items, PasteboardTypes::png), payload().pngData);
  EXPECT_EQ(dataOf(items, PasteboardTypes::text), payload().plainText);
  EXPECT_EQ(dataOf(items, PasteboardTypes::captureMarker),
            R"({"captureID":"0A1B2C3D-0000-4000-8000-00000000000F","version":"1"})");
  EXPECT_EQ(dataOf(items, PasteboardTypes::html),
            "<!doctype html>\n"
            "<html>\n"
            "  <body>\n"
            "    <pre style=\"white-space: pre-wrap; font-family: -apple-system, sans-serif;\">"
            "a &lt; b &amp; c &gt; d\n\"q\" 'r' &amp;amp;</pre>\n"
            "  </body>\n"
            "</html>");
}

TEST(ClipboardPayloadWriter, tiffHoldsThePixelsOfThePng) {
  for (const bool isOpaque : {true, false}) {
    for (const auto& [width, height] : {std::pair{1U, 1U}, {3U, 2U}, {300U, 251U}}) {
      const BitmapImage image = gradient(width, height, isOpaque);
      const auto tiff = TIFFImageConversion::fromPNG(PNGImageEncoder::encode(image));
      ASSERT_TRUE(tiff) << width;
      EXPECT_EQ(readTIFF(*tiff), image) << width << " by " << height;
    }
  }
}

TEST(ClipboardPayloadWriter, damagedPngLosesOnlyTheTiff) {
  const std::string png = PNGImageEncoder::encode(gradient(30, 20, true));
  // Every file that ends before its picture does. (The last twelve bytes say only that nothing follows.)
  for (std::size_t length = 0; length + 12 < png.size(); length += 3) {
    EXPECT_FALSE(TIFFImageConversion::fromPNG(png.substr(0, length))) << length;
    EXPECT_FALSE(TIFFImageConversion::isLikely(png.substr(0, length))) << length;
  }
  std::string wrongSum = png;
  wrongSum[60] = static_cast<char>(wrongSum[60] ^ 0x10);
  std::string hugePicture = png;  // says that it is 2^30 pixels wide
  hugePicture[16] = 0x40;
  for (const std::string& damaged : {std::string(), wrongSum, hugePicture}) {
    const auto items = ClipboardPayloadWriter::makeItems(payload(damaged), ClipboardComposition::imageOnly);
    EXPECT_THAT(typesOf(items), ElementsAre(ElementsAre("image/png", "org.quillo.Quillo.context-capture")));
    EXPECT_EQ(dataOf(items, PasteboardTypes::png), damaged);
  }
}

TEST(ClipboardPayloadWriter, writingTellsWhetherTheClipboardTookIt) {
  FakePasteboard pasteboard;
  ClipboardPayloadWriter writer;
  const auto write = [&] {
    return runBlocking([&] { return writer.write(payload(), ClipboardComposition::textOnly, pasteboard); });
  };
  EXPECT_TRUE(write());
  EXPECT_EQ(pasteboard.use, PasteboardUse::offered);
  EXPECT_THAT(pasteboard.contents.topLevelTypes, ElementsAre("text/plain;charset=utf-8", "text/html"));
  pasteboard.rejectsWrites = true;
  EXPECT_FALSE(write());
  pasteboard.error = PasteboardError(PasteboardError::DisplayLost{});
  EXPECT_THROW(write(), PasteboardError);
}

}  // namespace
}  // namespace quillo::test
