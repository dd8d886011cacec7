#include <gmock/gmock.h>
#include <signal.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "ArtifactFixtures.h"
#include "ClipboardPeer.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloLinux/X11/X11Connection.h"
#include "RunningProgram.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// The process behind the window that owns the clipboard.
std::int32_t clipboardProcess() {
  const SelectionConnection connection;
  const auto display = X11Connection::open();
  return X11ProcessRequest(*display, connection.owner()).processIdentifier().value_or(0);
}

bool runs(std::int32_t process) {
  std::string commandLine;
  std::ifstream file("/proc/" + std::to_string(process) + "/cmdline");
  return std::getline(file, commandLine) && !commandLine.empty();  // one that has ended has none
}

class CopyCommand : public testing::Test {
 protected:
  CopyCommand() { store_.create(makeDraft()); }

  /// Begins the command and waits until the artifact is on the clipboard.
  std::future<FinishedProgram> copy(std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), {"copy", firstID, "--library", root_.string()});
    auto running = std::async(std::launch::async, [arguments] { return runQuillo(arguments); });
    EXPECT_TRUE(eventually([&] { return requestor_.connection().owner() != 0; }));
    return running;
  }

  TemporaryDirectory directory_;
  std::filesystem::path root_ = directory_.path() / "Library";
  PosixFileSystem fileSystem_;
  FixedWallClock clock_;
  RandomUUIDGenerator identifiers_;
  FakeTrash trash_;
  ArtifactStore store_{root_, {fileSystem_, trash_, clock_, identifiers_}, ArtifactProjection::standard()};
  ClipboardRequestor requestor_;
};

TEST_F(CopyCommand, holdsTheArtifactUntilAnotherProgramOwnsTheClipboard) {
  auto running = copy();
  EXPECT_THAT(requestor_.targets(),
              ElementsAre("TARGETS", "TIMESTAMP", "MULTIPLE", "image/png", "text/plain;charset=utf-8", "UTF8_STRING",
                          "text/plain", "text/html", "org.quillo.Quillo.context-capture"));
  EXPECT_EQ(requestor_.ask("image/png")->data, makeDraft().screenshotPNG);
  EXPECT_THAT(requestor_.ask("org.quillo.Quillo.context-capture")->data, HasSubstr(firstID));
  const std::string text = runQuillo({"text", firstID, "--library", root_.string()}).output;
  EXPECT_EQ(requestor_.ask("UTF8_STRING")->data + "\n", text);

  const ClipboardPeer other({});
  const FinishedProgram finished = running.get();
  EXPECT_EQ(finished.exitStatus, 0) << finished.error;
  EXPECT_EQ(finished.output + finished.error, "");
}

TEST_F(CopyCommand, compositionsAreFlattened) {
  const std::vector<std::pair<std::string, std::string>> firstTypes = {{"image-then-text", "image/png"},
                                                                       {"text-then-image", "text/plain;charset=utf-8"},
                                                                       {"image-only", "image/png"},
                                                                       {"text-only", "text/plain;charset=utf-8"}};
  for (const auto& [composition, first] : firstTypes) {
    auto running = copy({"--composition", composition});
    const std::vector<std::string> targets = requestor_.targets();
    EXPECT_EQ(targets.at(3), first) << composition;
    const auto has = [&](const char* type) { return std::ranges::find(targets, type) != targets.end(); };
    EXPECT_EQ(has("UTF8_STRING"), composition != "image-only") << composition;
    EXPECT_EQ(has("image/png"), composition != "text-only") << composition;
    {
      const ClipboardPeer other({});
    }
    EXPECT_EQ(running.get().exitStatus, 0) << composition;
  }
}

TEST_F(CopyCommand, interruptedCopyIsLeftToTheManager) {
  for (const bool hasManager : {false, true}) {
    const std::optional<SavingManager> manager =
        hasManager ? std::optional<SavingManager>(std::in_place) : std::nullopt;
    auto running = copy({"--composition", "text-only"});
    ::kill(clipboardProcess(), SIGINT);
    EXPECT_EQ(running.get().exitStatus, 130);
    if (hasManager) {
      EXPECT_EQ(requestor_.ask("UTF8_STRING")->data + "\n",
                runQuillo({"text", firstID, "--library", root_.string()}).output);
    } else {
      EXPECT_EQ(requestor_.connection().owner(), 0);
    }
  }
}

TEST_F(CopyCommand, inTheBackgroundItReturnsAtOnceAndEndsWhenReplaced) {
  EXPECT_EQ(copy({"--background"}).get().exitStatus, 0);
  EXPECT_THAT(requestor_.ask("UTF8_STRING")->data, HasSubstr("# Quillo capture: Inbox"));
  const std::int32_t process = clipboardProcess();
  EXPECT_TRUE(runs(process));
  const ClipboardPeer other({});
  EXPECT_TRUE(eventually([&] { return !runs(process); }));
}

TEST_F(CopyCommand, failuresAreReportedInEitherWay) {
  for (const std::vector<std::string>& way : {std::vector<std::string>{}, {"--background"}}) {
    Arguments unknown = {"copy", secondID, "--library", root_.string()};
    unknown.insert(unknown.end(), way.begin(), way.end());
    const FinishedProgram missing = runQuillo(unknown);
    EXPECT_EQ(missing.exitStatus, 1);
    EXPECT_THAT(missing.error, HasSubstr("quillo: "));
    Arguments known = {"copy", firstID, "--library", root_.string()};
    known.insert(known.end(), way.begin(), way.end());
    const FinishedProgram displayless = runQuillo(known, {}, {"DISPLAY=:4711"});
    EXPECT_EQ(displayless.exitStatus, 1);
    EXPECT_THAT(displayless.error,
                HasSubstr("quillo: Quillo cannot reach the display, so it cannot use the clipboard.\n"));
    EXPECT_EQ(displayless.output, "");
  }
}

}  // namespace
}  // namespace quillo::test
