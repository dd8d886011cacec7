// Deliveries into real programs, with the display's clipboard: what arrives, and what is on the clipboard afterwards.

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"
#include "QuilloCore/Paste/PasteMessages.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"
#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"
#include "RealDestination.h"
#include "RunningProgram.h"
#include "TestWindow.h"

namespace quillo::test {
namespace {

const std::string words = "caf\u00E9 \U0001F600 of the capture";

ClipboardPayload makePayload() {
  BitmapImage image;
  image.width = 16;
  image.height = 12;
  image.pixels.assign(std::size_t{16} * 12 * 4, 0x7F);
  return {.captureID = {}, .pngData = PNGImageEncoder::encode(image), .plainText = words};
}

/// Lets something happen just before a step: "write", "restore", "focus?", "paste", counted from 1.
class Interruptions {
 public:
  void before(const std::string& step, std::function<void()> event) { events_[step] = std::move(event); }
  void pass(const std::string& step) {
    const auto event = events_.find(step + std::to_string(++counts_[step]));
    if (event != events_.end()) event->second();
  }

 private:
  std::map<std::string, int> counts_;
  std::map<std::string, std::function<void()>> events_;
};

class InterruptedSession final : public PasteboardSession {
 public:
  InterruptedSession(PasteboardSession& session, Interruptions& interruptions)
      : session_(session), interruptions_(interruptions) {}

  Task<std::uint64_t> changeCount() override { return session_.changeCount(); }
  Task<PasteboardSnapshot> captureSnapshot() override { return session_.captureSnapshot(); }
  Task<ClipboardConditionalWriteResult> write(ClipboardPayload payload, ClipboardComposition composition,
                                              std::uint64_t ifUnchangedSince) override {
    interruptions_.pass("write");
    return session_.write(std::move(payload), composition, ifUnchangedSince);
  }
  Task<PasteboardConditionalRestoreResult> restore(PasteboardSnapshot snapshot,
                                                   std::uint64_t ifUnchangedSince) override {
    interruptions_.pass("restore");
    return session_.restore(std::move(snapshot), ifUnchangedSince);
  }

 private:
  PasteboardSession& session_;
  Interruptions& interruptions_;
};

class InterruptedDestination final : public PasteDestination {
 public:
  InterruptedDestination(PasteDestination& destination, Interruptions& interruptions)
      : destination_(destination), interruptions_(interruptions) {}

  Task<bool> isPermitted(AccessibilityTrustPrompt prompt) override { return destination_.isPermitted(prompt); }
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override {
    return destination_.frontmostProcessIdentifier();
  }
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt prompt) override {
    return destination_.resolveTarget(processIdentifier, prompt);
  }
  Task<bool> isCurrent(FrozenPasteTarget target) override {
    interruptions_.pass("focus?");
    return destination_.isCurrent(std::move(target));
  }
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget target) override {
    interruptions_.pass("paste");
    return destination_.sendPaste(std::move(target));
  }

 private:
  PasteDestination& destination_;
  Interruptions& interruptions_;
};

/// The service as the application puts it together.
struct Delivering : RealDestination {
  explicit Delivering(const PasteDeliveryService::Configuration& configuration = {})
      : service({session, interruptedDestination, modifiers, sleeping, clock}, loop.executor(), configuration) {}

  PasteDeliveryResult deliver(const FrozenPasteTarget& target) {
    return loop.run([&] { return service.deliver(makePayload(), target, AccessibilityTrustPrompt::silent); });
  }

  Interruptions interruptions;
  X11PhysicalModifiers modifiers;
  ClockModifierReleaseSleeping sleeping{clock};
  InterruptedDestination interruptedDestination{destination, interruptions};
  X11Pasteboard pasteboard{
      X11SelectionLimits{.type = std::chrono::milliseconds(500), .all = std::chrono::milliseconds(1000)}};
  ClipboardPayloadWriter writer;
  SystemPasteboardSession plainSession{pasteboard, writer};
  InterruptedSession session{plainSession, interruptions};
  PasteDeliveryService service;
};

constexpr PasteDeliveryService::Configuration quick = {
    .clipboardReadinessDelay = 0, .imageIngestionDelay = 0.1, .finalIngestionDelay = 0.1};

/// The clipboard of another program of the user.
class OtherProgram {
 public:
  void copy(const std::vector<PasteboardRepresentation>& representations) {
    loop_.run([&] {
      return pasteboard_.replaceContents({PasteboardItem{representations}}, PasteboardUse::restored, std::nullopt);
    });
  }
  PasteboardReading paste() {
    return loop_.run([&] { return pasteboard_.read(); });
  }

 private:
  X11Pasteboard pasteboard_;
  BlockingLoop loop_;
};

const std::vector<PasteboardRepresentation> usersContent = {{"text/plain;charset=utf-8", "What the user had copied"},
                                                            {"text/html", "<b>What the user had copied</b>"},
                                                            {"application/x-private", std::string(300'000, '\x01')}};

/// A user who has copied something and pastes a capture into the field.
struct Pasting {
  explicit Pasting(PasteField field, const PasteDeliveryService::Configuration& configuration = quick)
      : recorder(field), before(copied()), delivering(configuration), target(delivering.await(recorder, field)) {}

  PasteDeliveryResult deliver() { return delivering.deliver(target); }
  std::string recorded() const { return recorder.recorded(); }

  PasteRecorder recorder;
  OtherProgram other;
  PasteboardReading before;
  Delivering delivering;
  FrozenPasteTarget target;

 private:
  PasteboardReading copied() {
    other.copy(usersContent);
    return other.paste();
  }
};

class EveryDestination : public testing::TestWithParam<PasteField> {};

TEST_P(EveryDestination, getsTheScreenshotAndThenTheText) {
  const PasteField field = GetParam();
  Pasting pasting(field, {});
  const PasteDeliveryResult result = pasting.deliver();
  EXPECT_EQ(pasteMessage(result), "Screenshot, interface map, and note pasted");
  EXPECT_EQ(result.clipboardRestoration, PasteClipboardRestoration::restored);
  // A terminal has no use for a picture.
  EXPECT_EQ(pasting.recorded(), field == PasteField::terminal ? words : "image 16x12\ntext \"" + words + "\"\n");
  EXPECT_EQ(pasting.other.paste(), pasting.before);
}

INSTANTIATE_TEST_SUITE_P(PasteDelivery, EveryDestination,
                         testing::Values(PasteField::gtk3Editor, PasteField::gtk4Entry, PasteField::qtEditor,
                                         PasteField::chromiumTextarea, PasteField::chromiumEditable,
                                         PasteField::terminal));

TEST(PasteDelivery, aHundredInARowLeaveTheClipboardAsItWas) {
  constexpr int count = 100;
  Pasting pasting(PasteField::qtEditor);
  std::string expected;
  std::string text;
  for (int i = 0; i < count; ++i) {
    const PasteDeliveryResult result = pasting.deliver();
    ASSERT_EQ(pasteMessage(result), "Screenshot, interface map, and note pasted") << i;
    ASSERT_EQ(result.clipboardRestoration, PasteClipboardRestoration::restored) << i;
    text += words;
    expected += "image 16x12\ntext \"" + text + "\"\n";
  }
  EXPECT_EQ(pasting.recorded(), expected);
  EXPECT_EQ(pasting.other.paste(), pasting.before);
}

TEST(PasteDelivery, whateverAnotherProgramCopiesMeanwhileStays) {
  struct Case {
    const char* before;
    const char* message;
    const char* recorded;  // what has been pasted until then
  };
  const std::string all = "image 16x12\ntext \"" + words + "\"\n";
  for (const auto& [step, message, recorded] :
       {Case{"write1", "The clipboard changed before Quillo could finish pasting", ""},
        Case{"focus?3", "The clipboard changed before Quillo could finish pasting", "image 16x12\n"},
        Case{"write2", "The clipboard changed before Quillo could finish pasting", "image 16x12\n"},
        Case{"restore1", "Screenshot, interface map, and note pasted", all.c_str()}}) {
    Pasting pasting(PasteField::qtEditor);
    OtherProgram third;
    pasting.delivering.interruptions.before(step, [&] { third.copy({{"text/plain", "newer"}}); });
    const PasteDeliveryResult result = pasting.deliver();
    EXPECT_EQ(pasteMessage(result), message) << step;
    EXPECT_EQ(result.clipboardRestoration, PasteClipboardRestoration::skippedBecauseClipboardChanged) << step;
    EXPECT_EQ(pasting.recorded(), recorded) << step;
    const PasteboardReading after = pasting.other.paste();
    ASSERT_EQ(after.items.size(), 1U) << step;
    EXPECT_EQ(after.items[0][0].content.data, "newer") << step;
  }
}

TEST(PasteDelivery, whenTheFocusMovesNothingMoreIsPastedAndTheClipboardComesBack) {
  struct Case {
    const char* before;
    const char* recorded;
  };
  for (const auto& [step, recorded] :
       {Case{"focus?1", ""}, Case{"focus?2", ""}, Case{"paste1", ""}, Case{"focus?3", "image 16x12\n"},
        Case{"focus?4", "image 16x12\n"}, Case{"paste2", "image 16x12\n"}}) {
    Pasting pasting(PasteField::qtEditor);
    std::unique_ptr<TestWindow> window;
    pasting.delivering.interruptions.before(step, [&] {
      window = std::make_unique<TestWindow>();
      window->activate();
      // On its way the focus is nowhere.
      EXPECT_TRUE(eventually([&] {
        const auto focus = X11InputFocus().inputFocus();
        return focus && focus->processIdentifier == ::getpid();
      }));
    });
    const PasteDeliveryResult result = pasting.deliver();
    EXPECT_EQ(pasteMessage(result), "The destination changed before Quillo could finish pasting") << step;
    EXPECT_EQ(pasting.recorded(), recorded) << step;
    EXPECT_EQ(pasting.other.paste(), pasting.before) << step;
  }
}

// Whoever dies or hangs between the two stages, and whatever cannot be saved: the user's clipboard is what it was.
TEST(PasteDelivery, aDestinationThatDiesOrHangsCostsNoClipboard) {
  for (const int signal : {SIGKILL, SIGSTOP}) {
    Pasting pasting(PasteField::gtk3Editor);
    pasting.delivering.interruptions.before("focus?3", [&] { pasting.recorder.signal(signal); });
    const PasteDeliveryResult result = pasting.deliver();
    EXPECT_EQ(pasteMessage(result), "The destination changed before Quillo could finish pasting") << signal;
    EXPECT_EQ(result.clipboardRestoration, PasteClipboardRestoration::restored) << signal;
    EXPECT_EQ(pasting.other.paste(), pasting.before) << signal;
  }
}

TEST(PasteDelivery, anEmptyClipboardComesBackEmptyAndOneThatCannotBeSavedIsLeftAlone) {
  const PasteRecorder recorder(PasteField::gtk3Editor);
  Delivering delivering(quick);
  const FrozenPasteTarget target = delivering.await(recorder, PasteField::gtk3Editor);
  EXPECT_EQ(delivering.deliver(target).clipboardRestoration, PasteClipboardRestoration::restored);
  OtherProgram other;
  EXPECT_EQ(other.paste(), PasteboardReading());

  // An owner that lists what it has and then never gives it.
  const RunningProgram hanging({"xclip", "-quiet", "-selection", "clipboard", "-in", writeFile("copied", "words")});
  ASSERT_TRUE(eventually([&] { return !other.paste().items.empty(); }));
  const std::string record = recorder.recorded();
  const auto countChanges = [&] { return delivering.loop.run([&] { return delivering.session.changeCount(); }); };
  const std::uint64_t changes = countChanges();
  hanging.signal(SIGSTOP);
  EXPECT_EQ(pasteMessage(delivering.deliver(target)), "The current clipboard cannot be preserved losslessly");
  EXPECT_EQ(recorder.recorded(), record);
  EXPECT_EQ(countChanges(), changes);
}

TEST(PasteDelivery, aKeyThatStaysDownTouchesNothing) {
  Pasting pasting(PasteField::qtEditor, {});
  const auto countChanges = [&] {
    return pasting.delivering.loop.run([&] { return pasting.delivering.session.changeCount(); });
  };
  const std::uint64_t count = countChanges();
  runProgram({"xdotool", "keydown", "Super_L"});
  EXPECT_EQ(pasteMessage(pasting.deliver()), "Release the shortcut keys, then try pasting again");
  runProgram({"xdotool", "keyup", "Super_L"});
  EXPECT_EQ(pasting.recorded(), "");
  EXPECT_EQ(countChanges(), count);
}

}  // namespace
}  // namespace quillo::test
