// `quillo paste` as a key binding runs it: what arrives, what it says, and whose clipboard it is afterwards.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "PasteRecorder.h"
#include "RunningProgram.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// An artifact in the library of this desktop, of the window in front.
std::string captureArtifact() {
  FinishedProgram captured;
  EXPECT_TRUE(eventually([&] { return (captured = runQuillo({"capture"})).exitStatus == 0; })) << captured.error;
  return captured.output.substr(0, captured.output.find('\n'));
}

/// A user who has captured the recorder's window and then copied something.
struct Pasting {
  Pasting() {
    runProgram({"xclip", "-selection", "clipboard", "-in"}, "what the user had copied");
    EXPECT_TRUE(eventually([] { return clipboardText() == "what the user had copied"; }));
  }

  /// Pastes, and runs further lines of the shell when the screenshot has arrived; "$0" stands for the command.
  FinishedProgram pasteAnd(const std::string& lines) const {
    return runProgram({"sh", "-c", "\"$0\" paste $1 & until grep -qs image \"$2\"; do sleep 0.02; done; " + lines,
                       QUILLO_PROGRAM, artifact, recorder.path()});
  }

  PasteRecorder recorder{PasteField::qtEditor};
  std::string artifact = captureArtifact();
};

TEST(PasteCommand, pastesAnArtifactAndServesTheClipboardThatItGaveBack) {
  const Pasting pasting;
  const FinishedProgram pasted =
      runQuillo({"paste", pasting.artifact, "--pid", std::to_string(pasting.recorder.pid())});
  EXPECT_EQ(pasted.exitStatus, 0);
  EXPECT_EQ(pasted.output, "Screenshot, interface map, and note pasted\n");
  EXPECT_EQ(pasted.error, "");
  EXPECT_GT(pasted.seconds, 1.8) << "the program has to be given the time to read";
  EXPECT_LT(pasted.seconds, 4);
  EXPECT_THAT(pasting.recorder.recorded(), StartsWith("image "));
  EXPECT_THAT(pasting.recorder.recorded(), HasSubstr("# Quillo capture: Recorder"));
  EXPECT_EQ(clipboardText(), "what the user had copied");
  EXPECT_EQ(clipboardText(), "what the user had copied") << "also the second time";
}

TEST(PasteCommand, saysWhyItDidNotPaste) {
  std::string artifact;
  {
    const PasteRecorder recorder(PasteField::qtEditor);
    artifact = captureArtifact();
  }
  ASSERT_TRUE(eventually([] { return runQuillo({"capture"}).exitStatus != 0; })) << "the window is gone";
  const auto expectFailure = [](const FinishedProgram& pasted, const std::string& message) {
    EXPECT_EQ(pasted.exitStatus, 1);
    EXPECT_EQ(pasted.output, "");
    EXPECT_EQ(pasted.error, "quillo: " + message + "\n");
  };
  const std::string nothingFocused = "Focus an editable destination, then use quillo paste";
  expectFailure(runQuillo({"paste", artifact}), nothingFocused);
  expectFailure(runQuillo({"paste", artifact}, "", {"DISPLAY"}), nothingFocused);
  expectFailure(runQuillo({"paste", "00000000"}), "No artifact has an identifier that begins with 00000000.");

  const PasteRecorder recorder(PasteField::qtEditor);
  expectFailure(runQuillo({"paste", artifact, "--pid", "1"}),
                "The destination changed before Quillo could start pasting");
  runProgram({"xdotool", "keydown", "Super_L"});
  expectFailure(runQuillo({"paste", artifact}), "Release the shortcut keys, then try pasting again");
  runProgram({"xdotool", "keyup", "Super_L"});
  EXPECT_EQ(recorder.recorded(), "");
  EXPECT_EQ(runQuillo({"paste", artifact, "--delay", "-1"}).exitStatus, 2);
}

// A key binding that repeats starts the command again and again.
TEST(PasteCommand, doesNotDisturbAnotherPaste) {
  const Pasting pasting;
  const FinishedProgram first = pasting.pasteAnd("\"$0\" paste $1; echo $?; wait $!");
  EXPECT_EQ(first.output, "1\nScreenshot, interface map, and note pasted\n");
  EXPECT_EQ(first.error, "quillo: Another Quillo paste is still in progress\n");
  EXPECT_EQ(first.exitStatus, 0);
  EXPECT_EQ(clipboardText(), "what the user had copied");
  EXPECT_EQ(runQuillo({"paste", pasting.artifact}).exitStatus, 0) << "the next one is welcome";
}

TEST(PasteCommand, interruptedItGivesTheClipboardBack) {
  const Pasting pasting;
  // Not before the screenshot is there, and with the pause behind it still to come.
  const FinishedProgram interrupted = pasting.pasteAnd("kill -INT $!; wait $!");
  EXPECT_EQ(interrupted.exitStatus, 130) << interrupted.error;
  EXPECT_EQ(clipboardText(), "what the user had copied");
  EXPECT_THAT(pasting.recorder.recorded(), testing::Not(HasSubstr("text")));
}

}  // namespace
}  // namespace quillo::test
