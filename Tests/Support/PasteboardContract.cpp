#include "Tests/Support/PasteboardContract.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Clipboard/TIFFImageConversion.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"

namespace quillo::test {

void expectPasteboardContract(const PasteboardSetting& setting) {
  using Kind = ClipboardConditionalWriteResult::Kind;
  using Restored = PasteboardConditionalRestoreResult;
  Pasteboard& pasteboard = setting.pasteboard;
  ClipboardPayloadWriter writer;
  SystemPasteboardSession session(pasteboard, writer);
  const auto changeCount = [&] { return runBlocking([&] { return pasteboard.changeCount(); }); };
  const auto snapshot = [&] { return runBlocking([&] { return session.captureSnapshot(); }); };
  const auto write = [&](PasteboardItem item, std::optional<std::uint64_t> ifUnchangedSince) {
    return runBlocking([&] { return pasteboard.replaceContents({item}, PasteboardUse::offered, ifUnchangedSince); });
  };
  const auto restore = [&](const PasteboardSnapshot& saved, std::uint64_t count) {
    return runBlocking([&] { return session.restore(saved, count); });
  };
  const auto dataOf = [&](std::string_view type) -> std::string {
    const PasteboardReading reading = runBlocking([&] { return pasteboard.read(); });
    for (const auto& types : reading.items) {
      for (const PasteboardReading::Type& found : types) {
        if (found.content.type == type && found.answer == PasteboardReading::Answer::given) return found.content.data;
      }
    }
    return "nothing";
  };
  const PasteboardItem ours{{{.type = "text/html", .data = "ours"}}};

  EXPECT_EQ(snapshot(), PasteboardSnapshot{});
  const std::uint64_t first = changeCount();
  const auto written = write(ours, first);
  EXPECT_EQ(written, (ClipboardConditionalWriteResult{Kind::written, changeCount()}));
  EXPECT_GT(changeCount(), first);
  EXPECT_EQ(dataOf("text/html"), "ours");
  EXPECT_EQ(write({{{.type = "text/html", .data = "late"}}}, first).kind, Kind::changed);
  EXPECT_EQ(dataOf("text/html"), "ours");

  // Nothing of another program is overwritten by who has not seen it.
  setting.copyElsewhere("theirs");
  EXPECT_GT(changeCount(), *written.changeCount);
  EXPECT_EQ(write(ours, written.changeCount).kind, Kind::changed);
  EXPECT_EQ(restore({}, *written.changeCount), Restored::skippedBecauseClipboardChanged);
  EXPECT_EQ(dataOf("UTF8_STRING"), "theirs");

  // What was there comes back, and nothing with it.
  const PasteboardSnapshot theirs = snapshot();
  const auto borrowed = write(ours, changeCount());
  ASSERT_EQ(borrowed.kind, Kind::written);
  EXPECT_EQ(dataOf("UTF8_STRING"), "nothing");
  EXPECT_EQ(restore(theirs, *borrowed.changeCount), Restored::restored);
  EXPECT_EQ(snapshot(), theirs);

  // Also when that was nothing.
  EXPECT_EQ(restore({}, changeCount()), Restored::restored);
  EXPECT_EQ(snapshot(), PasteboardSnapshot{});

  const std::string png =
      PNGImageEncoder::encode({.width = 1, .height = 1, .pixels = {9, 8, 7, 255}, .isOpaque = true});
  write({{{.type = "image/tiff", .data = png, .conversion = PasteboardConversion::tiffFromPNG}}}, std::nullopt);
  EXPECT_EQ(dataOf("image/tiff"), TIFFImageConversion::fromPNG(png));
}

}  // namespace quillo::test
