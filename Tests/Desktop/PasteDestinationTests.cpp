// The destination on a real desktop: which field has the focus, and the keys that paste into it and nowhere else.

#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include "PasteRecorder.h"
#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"
#include "RealDestination.h"
#include "RunningProgram.h"
#include "TestWindow.h"

namespace quillo::test {
namespace {

void setClipboard(const std::string& text) {
  runProgram({"xclip", "-selection", "clipboard", "-in", "-loops", "0"}, text);
  // It returns before it owns the clipboard.
  EXPECT_TRUE(eventually([&] { return clipboardText() == text; }));
}

class EveryField : public testing::TestWithParam<PasteField> {};

// The letter that pastes is looked for in the layout that is active, and locks are no modifiers.
TEST_P(EveryField, getsItWhateverTheKeyboardsState) {
  const PasteField field = GetParam();
  const PasteRecorder recorder(field);
  RealDestination desktop;
  const FrozenPasteTarget target = desktop.await(recorder, field);
  EXPECT_EQ(target.keystroke, field == PasteField::terminal ? PasteKeystroke::controlShiftV : PasteKeystroke::controlV);
  EXPECT_TRUE(desktop.isCurrent(target));
  struct State {
    std::string name;
    std::string layout;
    std::string lock;
  };
  std::vector<State> states = {{"german;", "de", ""}, {"caps;", "us", "Caps_Lock"}, {"num;", "us", "Num_Lock"}};
  // Its toolkit knows the letters of the layout alone that was active when it started.
  if (field != PasteField::terminal) {
    states.insert(states.end(),
                  {{"dvorak;", "us(dvorak)", ""}, {"russian;", "ru,us", ""}, {"russian alone;", "ru", ""}});
  }
  std::string all;
  for (const State& state : states) {
    ASSERT_EQ(runProgram({"setxkbmap", state.layout}).exitStatus, 0);
    if (!state.lock.empty()) runProgram({"xdotool", "key", state.lock});
    setClipboard(state.name);
    EXPECT_EQ(desktop.sendPaste(target), PasteKeystrokeResult::sent) << state.name;
    all += state.name;
    const bool hasArrived = eventually([&] { return recorder.recorded().find(all) != std::string::npos; }, 5);
    EXPECT_TRUE(hasArrived) << nameOf(field) << ": " << state.name << " " << recorder.recorded();
    if (!state.lock.empty()) runProgram({"xdotool", "key", state.lock});
  }
  EXPECT_EQ(X11PhysicalModifiers().physicalModifierFlags(), PhysicalModifierFlags()) << "no key stays down";
}

// Where no key writes the letter, a terminal has no key that pastes the clipboard and nothing else.
TEST(PasteDestination, aKeyboardWithoutTheLetterPastesNothingIntoATerminal) {
  const PasteRecorder recorder(PasteField::terminal);
  RealDestination desktop;
  const FrozenPasteTarget target = desktop.await(recorder, PasteField::terminal);
  ASSERT_EQ(runProgram({"setxkbmap", "ru"}).exitStatus, 0);
  EXPECT_EQ(desktop.sendPaste(target), PasteKeystrokeResult::failed);
}

TEST(PasteDestination, heldKeysAreSeenAndHoldTheKeystrokeUp) {
  const PasteRecorder recorder(PasteField::gtk3Editor);
  RealDestination desktop;
  const FrozenPasteTarget target = desktop.await(recorder, PasteField::gtk3Editor);
  setClipboard("words");
  X11PhysicalModifiers modifiers;
  const std::vector<std::pair<std::string, PhysicalModifierFlags>> keys = {{"Shift_L", {.shift = true}},
                                                                           {"Control_R", {.control = true}},
                                                                           {"Alt_L", {.option = true}},
                                                                           {"Super_L", {.command = true}},
                                                                           {"Caps_Lock", {}},
                                                                           {"Num_Lock", {}}};
  for (const auto& [key, flags] : keys) {
    runProgram({"xdotool", "keydown", key});
    EXPECT_EQ(modifiers.physicalModifierFlags(), flags) << key;
    runProgram({"xdotool", "keyup", key});
    EXPECT_EQ(modifiers.physicalModifierFlags(), PhysicalModifierFlags()) << key;
  }
  // While the key of a shortcut is down, all keys go to whoever answers the shortcut.
  runProgram({"xdotool", "keydown", "F9"});
  EXPECT_EQ(desktop.sendPaste(target), PasteKeystrokeResult::failed);
  runProgram({"xdotool", "keyup", "F9"});
  runProgram({"xdotool", "keydown", "Alt_L"});
  EXPECT_EQ(desktop.sendPaste(target), PasteKeystrokeResult::failed);
  EXPECT_EQ(modifiers.physicalModifierFlags(), (PhysicalModifierFlags{.option = true}))
      << "the finger's key stays down";
  runProgram({"xdotool", "keyup", "Alt_L"});
  EXPECT_EQ(desktop.sendPaste(target), PasteKeystrokeResult::sent);
  EXPECT_EQ(recorder.awaitLine("text \"words\""), "text \"words\"\n");
}

TEST(PasteDestination, followsTheFocusBetweenFieldsAndWindows) {
  const PasteRecorder recorder(PasteField::gtk4Entry);
  RealDestination desktop;
  const FrozenPasteTarget target = desktop.await(recorder, PasteField::gtk4Entry);
  setClipboard("words");
  recorder.signal(SIGUSR1);  // the other field of the same window
  EXPECT_TRUE(eventually([&] { return !desktop.isCurrent(target); }));
  EXPECT_EQ(desktop.resolve(::getpid()), std::unexpected(PasteTargetFreezeError::destinationChanged));
  const FrozenPasteTarget other = desktop.await(recorder, PasteField::gtk4Entry);
  EXPECT_NE(other, target);

  TestWindow window;  // it takes the focus when it appears
  window.activate();
  EXPECT_TRUE(eventually([&] { return !desktop.isCurrent(other); }));
  EXPECT_EQ(desktop.sendPaste(other), PasteKeystrokeResult::destinationChanged);
  // Until the manager has named the new active window nothing can be said of the focus.
  EXPECT_TRUE(eventually(
      [&] { return desktop.resolve(recorder.pid()) == std::unexpected(PasteTargetFreezeError::destinationChanged); }));
  EXPECT_EQ(recorder.recorded(), "");
}

TEST(PasteDestination, aStoppedProgramHoldsNobodyUp) {
  const PasteRecorder recorder(PasteField::gtk3Editor);
  RealDestination desktop;
  const FrozenPasteTarget target = desktop.await(recorder, PasteField::gtk3Editor);
  recorder.signal(SIGSTOP);
  const auto started = std::chrono::steady_clock::now();
  EXPECT_EQ(desktop.resolve(recorder.pid()), std::unexpected(PasteTargetFreezeError::destinationUnavailable));
  EXPECT_FALSE(desktop.isCurrent(target));
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - started;
  EXPECT_LT(elapsed.count(), 2.2);
  recorder.signal(SIGCONT);
  EXPECT_TRUE(eventually([&] { return desktop.isCurrent(target); }));
}

TEST(PasteDestination, nothingIsFrozenWhereNothingHasTheFocus) {
  RealDestination desktop;
  EXPECT_EQ(desktop.resolve(::getpid()), std::unexpected(PasteTargetFreezeError::destinationUnavailable));
}

INSTANTIATE_TEST_SUITE_P(PasteDestination, EveryField,
                         testing::Values(PasteField::gtk3Editor, PasteField::gtk4Entry, PasteField::qtEditor,
                                         PasteField::chromiumTextarea, PasteField::chromiumEditable,
                                         PasteField::terminal));

}  // namespace
}  // namespace quillo::test
