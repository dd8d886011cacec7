#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "ClipboardFixture.h"
#include "ClipboardPeer.h"
#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "QuilloCore/Clipboard/PasteboardError.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"
#include "RunningProgram.h"
#include "Tests/Support/PasteboardContract.h"

namespace quillo::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using Kind = ClipboardConditionalWriteResult::Kind;
using Manner = OwnerAnswer::Manner;
using Restored = PasteboardConditionalRestoreResult;

TEST_F(Clipboard, keepsTheContract) {
  std::unique_ptr<ClipboardPeer> other;
  expectPasteboardContract({.pasteboard = pasteboard_, .copyElsewhere = [&](const std::string& text) {
                              other = std::make_unique<ClipboardPeer>(
                                  ClipboardPeer::Answers{{"UTF8_STRING", {.data = text}}});
                            }});
}

TEST_F(Clipboard, everyChangeIsCountedOnce) {
  std::uint64_t count = changeCount();
  SelectionConnection other;
  for (int i = 0; i < 50; ++i) {
    other.own();
    ASSERT_EQ(changeCount(), ++count) << i;
    const auto written = write({textItem("ours")});
    ASSERT_EQ(written, (ClipboardConditionalWriteResult{Kind::written, ++count})) << i;
    ASSERT_EQ(changeCount(), count) << i;
  }
  {
    const ClipboardPeer leaving({});
  }
  EXPECT_EQ(changeCount(), count + 2);
}

TEST_F(Clipboard, contentsAreGivenOutUnderTheNamesThatAreAskedFor) {
  const std::string text = "na\xC3\xAFve\n";
  write({{{{.type = "image/png", .data = "\x89PNG"}}}, textItem(text), {{{.type = "image/png", .data = "second"}}}});
  EXPECT_THAT(requestor_.targets(), ElementsAre("TARGETS", "TIMESTAMP", "MULTIPLE", "image/png",
                                                "text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "STRING"));
  EXPECT_EQ(requestor_.ask("image/png")->data, "\x89PNG");
  for (const char* name : {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain"}) {
    const auto received = requestor_.ask(name);
    ASSERT_TRUE(received) << name;
    EXPECT_EQ(received->data, text);
    EXPECT_EQ(received->type, name);
    EXPECT_EQ(received->format, 8);
  }
  EXPECT_EQ(requestor_.ask("STRING")->data, "na\xEFve\n");
  EXPECT_EQ(requestor_.ask("TIMESTAMP")->format, 32);
  for (const char* other : {"image/jpeg", "TEXT", "COMPOUND_TEXT", "DELETE", "SAVE_TARGETS", "MULTIPLE"}) {
    EXPECT_FALSE(requestor_.ask(other)) << other;
  }
  EXPECT_FALSE(requestor_.ask("UTF8_STRING", 1)) << "a request of before we owned the clipboard";

  write({textItem("\xE2\x82\xAC")}, PasteboardUse::borrowed);
  EXPECT_FALSE(requestor_.ask("STRING")) << "no Latin-1";
  EXPECT_EQ(requestor_.ask("x-kde-passwordManagerHint")->data, "secret");
}

TEST_F(Clipboard, severalTypesAreGivenAtOnce) {
  const std::string large = noise(5'000'000);
  write({{{{.type = "image/png", .data = large}, {.type = "empty", .data = ""}}}, textItem("text")});
  const auto received = requestor_.askSeveral({"UTF8_STRING", "image/jpeg", "image/png", "empty"});
  ASSERT_EQ(received.size(), 4);
  EXPECT_EQ(received[0]->data, "text");
  EXPECT_FALSE(received[1]);
  EXPECT_TRUE(received[2]->isIncremental);
  EXPECT_EQ(received[2]->data, large);
  EXPECT_EQ(received[3]->data, "");
}

TEST_F(Clipboard, formsOfferedUnmadeAreMadeWhenAskedFor) {
  constexpr auto tiffFromPNG = PasteboardConversion::tiffFromPNG;
  const std::string png =
      PNGImageEncoder::encode({.width = 2, .height = 1, .pixels = {9, 8, 7, 255, 6, 5, 4, 255}, .isOpaque = true});
  write({{{{.type = "image/tiff", .data = png, .conversion = tiffFromPNG},
           {.type = "damaged", .data = png.substr(0, 40), .conversion = tiffFromPNG}}}});
  const auto received = requestor_.askSeveral({"image/tiff", "damaged"});
  ASSERT_EQ(received.size(), 2);
  EXPECT_THAT(received[0]->data, AllOf(StartsWith("II*"), HasSubstr("\x09\x08\x07\x06\x05\x04")));
  EXPECT_FALSE(received[1]);
  EXPECT_EQ(requestor_.ask("image/tiff")->data, received[0]->data);
  EXPECT_FALSE(requestor_.ask("damaged"));

  const PasteboardSnapshot snapshot = captureSnapshot();
  ASSERT_EQ(snapshot.items.size(), 1);
  EXPECT_TRUE(snapshot.isComplete());
  EXPECT_THAT(snapshot.items[0].representations,
              ElementsAre(testing::Field(&PasteboardRepresentation::data, received[0]->data)));
}

TEST_F(Clipboard, largeContentsGoInPieces) {
  // Around the sizes at which a piece is full.
  constexpr std::size_t piece = 1024UL * 1024;
  for (const std::size_t size : {piece, piece + 1, 2 * piece, 2 * piece + 1}) {
    const std::string data = noise(size);
    write({{{{.type = "image/png", .data = data}}}});
    const auto received = requestor_.ask("image/png");
    ASSERT_TRUE(received);
    EXPECT_EQ(received->isIncremental, size > piece);
    EXPECT_TRUE(received->data == data) << size;
  }
}

TEST_F(Clipboard, somebodyWhoStopsTakingPiecesHoldsUpNobody) {
  write({{{{.type = "image/png", .data = noise(5'000'000)}}}});
  {
    ClipboardRequestor stalling;
    stalling.beginAndStall("image/png");
    EXPECT_EQ(requestor_.ask("image/png")->data.size(), 5'000'000);
  }
  EXPECT_EQ(requestor_.ask("image/png")->data.size(), 5'000'000);
}

TEST_F(Clipboard, clipboardComesBackByteForByte) {
  const std::uint32_t words[] = {1, 2, 0xFFFFFFFF};
  const ClipboardPeer::Answers answers = {
      {"UTF8_STRING", {.data = "text", .manner = Manner::atOnce}},
      {"TEXT", {.data = "text", .manner = Manner::atOnce, .type = "UTF8_STRING"}},
      {"text/plain", {.data = "", .manner = Manner::atOnce}},
      {"image/png", {.data = noise(700'000), .manner = Manner::inPieces}},
      {"image/bmp", {.data = noise(3'000'000, 7), .manner = Manner::atOnce}},
      {"empty", {.data = "", .manner = Manner::inPieces}},
      {"x-special/words",
       {.data = std::string(reinterpret_cast<const char*>(words), sizeof(words)), .type = "INTEGER", .format = 32}},
      {"x-kde-passwordManagerHint", {.data = "secret"}},
  };
  PasteboardSnapshot snapshot;
  {
    const ClipboardPeer peer(answers);
    snapshot = captureSnapshot();
  }
  ASSERT_TRUE(snapshot.isComplete()) << testing::PrintToString(snapshot.items.at(0).uncapturedTypes());
  EXPECT_EQ(wait([&] { return session_.restore(snapshot, changeCount()); }), Restored::restored);

  std::vector<std::string> names = {"TARGETS", "TIMESTAMP", "MULTIPLE"};
  for (const auto& [type, answer] : answers) {
    names.push_back(type);
    const auto received = requestor_.ask(type);
    ASSERT_TRUE(received) << type;
    EXPECT_TRUE(received->data == answer.data) << type;
    EXPECT_EQ(received->type, answer.type.empty() ? type : answer.type);
    EXPECT_EQ(received->format, answer.format) << type;
  }
  EXPECT_EQ(requestor_.targets(), names);
  EXPECT_EQ(captureSnapshot(), snapshot) << "our own clipboard is read like another's";
}

TEST_F(Clipboard, whatOwnersDoIsToldApart) {
  struct Example {
    const char* label;
    ClipboardPeer::Answers answers;
    std::vector<std::string> captured;
    std::vector<std::string> uncaptured;
    double seconds = 1;  ///< at most
  };
  const OwnerAnswer text{.data = "text"};
  const std::string large = noise(200'000);
  const std::vector<Example> examples = {
      {"a refusal", {{"a", text}, {"icon", {.data = "", .manner = Manner::refusing}}, {"b", text}}, {"a", "b"}, {}},
      {"questions and handles",
       {{"TIMESTAMP", text}, {"PIXMAP", text}, {"SAVE_TARGETS", text}, {"a", text}},
       {"a"},
       {}},
      {"a type twice", {{"a", text}, {"a", text}}, {"a"}, {}},
      {"no data", {{"a", text}, {"b", {.data = "", .manner = Manner::withoutData}}, {"c", text}}, {"a"}, {"b", "c"}},
      {"torn off", {{"a", text}, {"b", {.data = large, .manner = Manner::tornOff}}}, {"a"}, {"b"}},
      {"gone halfway", {{"a", text}, {"b", {.data = large, .manner = Manner::leavingHalfway}}}, {"a"}, {"b"}},
      {"stuck halfway", {{"a", text}, {"b", {.data = large, .manner = Manner::stoppingHalfway}}}, {"a"}, {"b"}, 3.8},
  };
  for (const Example& example : examples) {
    const ClipboardPeer peer(example.answers);
    const auto started = std::chrono::steady_clock::now();
    const PasteboardSnapshot snapshot = captureSnapshot();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - started;
    EXPECT_LT(taken.count(), example.seconds) << example.label;
    ASSERT_EQ(snapshot.items.size(), 1) << example.label;
    std::vector<std::string> captured;
    for (const auto& representation : snapshot.items[0].representations) captured.push_back(representation.type);
    EXPECT_EQ(captured, example.captured) << example.label;
    EXPECT_EQ(snapshot.items[0].uncapturedTypes(), example.uncaptured) << example.label;
  }
}

TEST_F(Clipboard, ownerWithoutAnythingReadableMakesTheSnapshotIncomplete) {
  X11Pasteboard impatient(X11SelectionLimits{.type = std::chrono::milliseconds(200)});
  SystemPasteboardSession session(impatient, writer_);
  const OwnerAnswer silent{.data = "", .manner = Manner::never};
  const std::vector<std::pair<const char*, ClipboardPeer::Answers>> examples = {
      {"only handles", {{"PIXMAP", {.data = "1234"}}}},
      {"only refusals", {{"a", {.data = "", .manner = Manner::refusing}}}},
      {"no list", {{"a", {.data = "text"}}, {"TARGETS", {.data = "", .manner = Manner::refusing}}}},
      {"a list of something else", {{"TARGETS", {.data = "abc", .type = "STRING"}}}},
      {"no answer", {{"a", {.data = "text"}}, {"TARGETS", silent}}},
  };
  for (const auto& [label, answers] : examples) {
    const ClipboardPeer peer(answers);
    const std::uint64_t count = wait([&] { return session.changeCount(); });
    const PasteboardSnapshot snapshot = wait([&] { return session.captureSnapshot(); });
    EXPECT_THAT(snapshot.items, IsEmpty()) << label;
    EXPECT_FALSE(snapshot.isComplete()) << label;
    EXPECT_EQ(wait([&] { return session.restore(snapshot, count); }), Restored::failed) << label;
    EXPECT_EQ(wait([&] { return session.changeCount(); }), count) << label;
  }
}

// Its toolkit would end it for writing to a window that is gone.
TEST_F(Clipboard, ownerThatWakesLateLivesOn) {
  const RunningProgram owner(
      {"xclip", "-quiet", "-selection", "clipboard", "-in", writeFile("late.txt", noise(3'000))});
  ASSERT_TRUE(eventually([&] { return captureSnapshot().items.size() == 1; }));
  X11Pasteboard impatient(X11SelectionLimits{.type = std::chrono::milliseconds(100)});
  SystemPasteboardSession session(impatient, writer_);
  owner.signal(SIGSTOP);
  EXPECT_FALSE(wait([&] { return session.captureSnapshot(); }).isComplete());
  owner.signal(SIGCONT);
  // It answers in order: the late answer first.
  const PasteboardSnapshot snapshot = captureSnapshot();
  ASSERT_EQ(snapshot.items.size(), 1U);
  EXPECT_TRUE(snapshot.isComplete());
}

TEST_F(Clipboard, readingIsBoundedInSize) {
  X11Pasteboard small(X11SelectionLimits{.bytes = 1000});
  SystemPasteboardSession session(small, writer_);
  for (const Manner manner : {Manner::atOnce, Manner::inPieces, Manner::endlessly}) {
    const ClipboardPeer peer(
        {{"a", {.data = std::string(600, 'a')}}, {"b", {.data = std::string(401, 'b'), .manner = manner}}});
    const PasteboardSnapshot snapshot = runBlocking([&] { return session.captureSnapshot(); });
    ASSERT_EQ(snapshot.items.size(), 1);
    EXPECT_THAT(snapshot.items[0].uncapturedTypes(), ElementsAre("b"));
  }
  const ClipboardPeer peer({{"a", {.data = std::string(600, 'a')}}, {"b", {.data = std::string(400, 'b')}}});
  EXPECT_TRUE(runBlocking([&] { return session.captureSnapshot(); }).isComplete());
}

TEST_F(Clipboard, readingIsGivenUpWhenItsTaskIsCancelled) {
  const ClipboardPeer peer({{"TARGETS", {.data = "", .manner = Manner::never}}});
  BlockingLoop loop;
  std::thread canceller([&] { loop.cancel(); });
  EXPECT_THROW(loop.run([&] { return pasteboard_.read(); }), OperationCancelled);
  canceller.join();
  const auto started = std::chrono::steady_clock::now();
  changeCount();
  EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(1));
}

TEST_F(Clipboard, waitingEndsWhenSomebodyElseOwnsIt) {
  wait([&] { return pasteboard_.untilReplaced(); });
  write({textItem("ours")});
  std::thread other([] { const ClipboardPeer peer({}); });
  wait([&] { return pasteboard_.untilReplaced(); });
  other.join();
}

TEST_F(Clipboard, missingDisplayIsAnErrorOfItsOwn) {
  const std::string display = std::getenv("DISPLAY");
  ::setenv("DISPLAY", ":4711", 1);
  X11Pasteboard pasteboard;
  SystemPasteboardSession session(pasteboard, writer_);
  try {
    runBlocking([&] { return pasteboard.changeCount(); });
    FAIL();
  } catch (const PasteboardError& error) {
    EXPECT_EQ(error, PasteboardError(PasteboardError::DisplayUnavailable{}));
  }
  EXPECT_FALSE(runBlocking([&] { return session.captureSnapshot(); }).isComplete());
  ::setenv("DISPLAY", display.c_str(), 1);
  EXPECT_NO_THROW(runBlocking([&] { return pasteboard.changeCount(); })) << "a display that comes later is found";
}

TEST_F(Clipboard, displayThatGoesAwayIsAnErrorOfItsOwn) {
  const std::string display = std::getenv("DISPLAY");
  const std::string brief = ":" + std::to_string(5000 + (::getpid() % 1000));
  ::setenv("DISPLAY", brief.c_str(), 1);
  X11Pasteboard pasteboard;
  SystemPasteboardSession session(pasteboard, writer_);
  const auto changeCount = [&] { return runBlocking([&] { return session.changeCount(); }); };
  std::future<PasteboardError> waiting;
  {
    const RunningProgram server({"Xvfb", brief, "-nolisten", "tcp"});
    ASSERT_TRUE(eventually([&] { return changeCount() != SystemPasteboardSession::unreachableChangeCount; }));
    runBlocking([&] { return pasteboard.replaceContents({textItem("ours")}, PasteboardUse::offered, std::nullopt); });
    waiting = std::async(std::launch::async, [&] {
      try {
        runBlocking([&] { return pasteboard.untilReplaced(); });
      } catch (const PasteboardError& error) {
        return error;
      }
      return PasteboardError(PasteboardError::DisplayUnavailable{});
    });
    EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    server.signal(SIGKILL);
    EXPECT_EQ(waiting.get(), PasteboardError(PasteboardError::DisplayLost{}));
  }
  EXPECT_EQ(changeCount(), SystemPasteboardSession::unreachableChangeCount);
  EXPECT_FALSE(runBlocking([&] { return session.captureSnapshot(); }).isComplete());
  EXPECT_EQ(runBlocking([&] { return session.restore({}, 1); }), Restored::failed);
  ::setenv("DISPLAY", display.c_str(), 1);
  EXPECT_GT(changeCount(), 1U) << "a display that comes again is found, and what was there before is not on it";
  EXPECT_EQ(runBlocking([&] { return session.restore({}, 1); }), Restored::skippedBecauseClipboardChanged);
  EXPECT_TRUE(runBlocking([&] { return session.captureSnapshot(); }).isComplete());
}

TEST_F(Clipboard, doctorNamesWhoElseTakesWhatIsThere) {
  EXPECT_THAT(runQuillo({"doctor"}).output,
              AllOf(HasSubstr("ok      Clipboard: answers and tells of changes\n"),
                    HasSubstr("ok      Clipboard manager: none runs"), Not(HasSubstr("Clipboard history"))));
  const SelectionConnection manager;
  manager.own("CLIPBOARD_MANAGER");
  const std::string history = std::string(std::getenv("HOME")) + "/copyq";
  std::filesystem::copy_file("/bin/sleep", history);
  const RunningProgram keeper({history, "60"});
  const std::string owner = "Clipboard manager: DesktopTests (process " + std::to_string(::getpid()) + ") keeps";
  const std::string keeping = "Clipboard history: copyq (process " + std::to_string(keeper.pid()) + ") keeps";
  std::string report;
  EXPECT_TRUE(eventually([&] { return (report = runQuillo({"doctor"}).output).find(keeping) != std::string::npos; }));
  EXPECT_THAT(report, HasSubstr(owner));
}

}  // namespace
}  // namespace quillo::test
