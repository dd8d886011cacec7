// Real programs: each one's clipboard comes back type for type and byte for byte, and each one reads ours.

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "ClipboardFixture.h"
#include "PasteRecorder.h"
#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "RunningProgram.h"

namespace quillo::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using Restored = PasteboardConditionalRestoreResult;

const std::string gtkProgram = std::string(QUILLO_TEST_PROGRAMS) + "/clipboard-gtk.py";

std::string noisyPNG(std::uint32_t width, std::uint32_t height) {
  BitmapImage image{.width = width, .height = height, .pixels = {}, .isOpaque = true};
  const std::string bytes = noise(image.bytesPerRow() * height);
  image.pixels.assign(bytes.begin(), bytes.end());
  for (std::size_t i = 3; i < image.pixels.size(); i += 4) image.pixels[i] = 255;
  return PNGImageEncoder::encode(image);
}

class ClipboardToolkit : public Clipboard {
 protected:
  /// Starts a program that takes the clipboard, and waits until it has.
  void startOwner(const Arguments& arguments) {
    const std::uint32_t before = requestor_.connection().owner();
    owner_ = std::make_unique<RunningProgram>(arguments);
    ASSERT_TRUE(eventually([&] {
      const std::uint32_t owner = requestor_.connection().owner();
      return owner != 0 && owner != before;
    }));
  }

  /// A capture is put on the clipboard and the clipboard given back; then everything is as the owner had it.
  void expectTheClipboardBack(const std::string& expectedType) {
    const PasteboardSnapshot snapshot = captureSnapshot();
    ASSERT_TRUE(snapshot.isComplete()) << testing::PrintToString(
        snapshot.items.empty() ? snapshot.unrepresentedTopLevelTypes : snapshot.items[0].uncapturedTypes());
    ASSERT_EQ(snapshot.items.size(), 1);
    EXPECT_THAT(snapshot.items[0].advertisedTypes, Contains(expectedType));

    const ClipboardPayload payload{.captureID = {}, .pngData = noisyPNG(40, 30), .plainText = "capture"};
    const std::uint64_t count = changeCount();
    const auto written = wait([&] { return session_.write(payload, ClipboardComposition::imageOnly, count); });
    ASSERT_EQ(wait([&] { return session_.restore(snapshot, written.changeCount.value()); }), Restored::restored);

    std::vector<std::string> targets = requestor_.targets();
    targets.erase(targets.begin(), targets.begin() + 3);  // what every owner has
    EXPECT_EQ(targets, snapshot.items[0].advertisedTypes);
    for (const PasteboardRepresentation& representation : snapshot.items[0].representations) {
      const auto received = requestor_.ask(representation.type);
      ASSERT_TRUE(received) << representation.type;
      EXPECT_TRUE(received->data == representation.data) << representation.type;
      EXPECT_EQ(std::to_string(received->format) + " " + received->type, representation.packing);
    }
  }

  std::unique_ptr<RunningProgram> owner_;
};

TEST_F(ClipboardToolkit, picturesAndWordsOfEachComeBack) {
  struct Toolkit {
    Arguments program;
    const char* imageSize;
  };
  for (const auto& [program, imageSize] : {Toolkit{{gtkProgram, "3"}, "[300, 200]"},
                                           {{gtkProgram, "4"}, "[300, 200]"},
                                           {{QUILLO_QT_CLIPBOARD_PROGRAM}, "[1500,800]"}}) {
    SCOPED_TRACE(testing::PrintToString(program));
    const auto doing = [&](const char* deed) {
      Arguments arguments = program;
      arguments.emplace_back(deed);
      return arguments;
    };
    startOwner(doing("own-image"));
    expectTheClipboardBack("image/png");
    EXPECT_THAT(runProgram(doing("read")).output, HasSubstr(imageSize));
    startOwner(doing("own-text"));
    ASSERT_TRUE(eventually([&] { return requestor_.ask("UTF8_STRING").has_value(); }));
    expectTheClipboardBack("UTF8_STRING");
  }
}

TEST_F(ClipboardToolkit, chromiumComesBack) {
  const PasteRecorder browser(PasteField::chromiumEditable);
  write({textItem("words to copy")});
  runProgram({"xdotool", "key", "ctrl+v"});
  ASSERT_TRUE(eventually([&] { return browser.recorded().find("words to copy") != std::string::npos; }));
  write({});
  runProgram({"xdotool", "key", "ctrl+a", "ctrl+c"});
  ASSERT_TRUE(eventually([&] { return requestor_.connection().owner() != 0; }));
  expectTheClipboardBack("text/html");
}

TEST_F(ClipboardToolkit, smallProgramsFileComesBack) {
  const std::string png = noisyPNG(1300, 1300);
  ASSERT_GT(png.size(), 5'000'000);
  startOwner({"xclip", "-quiet", "-selection", "clipboard", "-t", "image/png", "-i", writeFile("large.png", png)});
  expectTheClipboardBack("image/png");
  EXPECT_TRUE(runProgram({"xclip", "-selection", "clipboard", "-t", "image/png", "-o"}).output == png);
}

TEST_F(ClipboardToolkit, capturesAreReadByEveryToolkit) {
  const ClipboardPayload payload{
      .captureID = {}, .pngData = noisyPNG(1300, 1000), .plainText = "na\xC3\xAFve \xE4\xB8\x96\xE7\x95\x8C"};
  struct Example {
    ClipboardComposition composition;
    const char* image;
    std::string text;
  };
  const std::string text = "\"" + payload.plainText + "\"";
  const std::vector<Example> examples = {{ClipboardComposition::singleItem, "[1300, 1000]", text},
                                         {ClipboardComposition::imageOnly, "[1300, 1000]", "null"},
                                         {ClipboardComposition::textOnly, "null", text}};
  for (const Example& example : examples) {
    const std::string label(rawValue(example.composition));
    ASSERT_TRUE(wait([&] { return writer_.write(payload, example.composition, pasteboard_); }));
    const std::string expected = std::string("{\"image\": ") + example.image + ", \"text\": " + example.text + ", ";
    EXPECT_THAT(runProgram({gtkProgram, "3", "read"}).output, HasSubstr(expected)) << label;
    EXPECT_THAT(runProgram({gtkProgram, "4", "read"}).output, HasSubstr(expected)) << label;
    std::string compact = expected;
    std::erase(compact, ' ');
    std::string qt = runProgram({QUILLO_QT_CLIPBOARD_PROGRAM, "read"}).output;
    std::erase(qt, ' ');
    EXPECT_THAT(qt, HasSubstr(compact)) << label;
  }
  const FinishedProgram refused = runProgram({"xclip", "-selection", "clipboard", "-t", "image/png", "-o"});
  EXPECT_NE(refused.exitStatus, 0);
  EXPECT_EQ(refused.output, "");
  EXPECT_EQ(runProgram({"xclip", "-selection", "clipboard", "-o"}).output, payload.plainText);
}

}  // namespace
}  // namespace quillo::test
