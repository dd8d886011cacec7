// Shortcuts as the display's keyboard knows them: pressed by a keyboard of the test's own, reserved by several
// programs.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"
#include "QuilloLinux/Keyboard/X11HotKeys.h"
#include "QuilloLinux/Keyboard/X11KeyCodes.h"
#include "QuilloLinux/X11/X11Connection.h"
#include "RunningProgram.h"
#include "Tests/Support/FakeRunningApplications.h"
#include "Tests/Support/HotKeyRegisteringContract.h"
#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr auto control = QuilloHotKeyModifiers::control;
constexpr auto option = QuilloHotKeyModifiers::option;
constexpr auto shift = QuilloHotKeyModifiers::shift;
constexpr auto command = QuilloHotKeyModifiers::command;

/// Keys of the display's keyboard, by the display's codes (X11KeyCodes.h has those of letters).
using Key = std::uint8_t;
constexpr Key capsLock = 66;
constexpr Key numLock = 77;

/// Presses keys as a person would.
class TestKeyboard {
 public:
  static void press(Key key) { act("keydown", {key}); }
  static void release(Key key) { act("keyup", {key}); }
  static void tap(Key key) { act("key", {key}); }
  static void pressModifiers(QuilloHotKeyModifiers modifiers) { act("keydown", keysOf(modifiers)); }
  static void releaseModifiers(QuilloHotKeyModifiers modifiers) { act("keyup", keysOf(modifiers)); }
  static void type(const QuilloHotKey& hotKey) {
    pressModifiers(hotKey.modifiers);
    tap(x11KeyCode(hotKey.keyCode).value());
    releaseModifiers(hotKey.modifiers);
  }

  /// Num Lock then stands for this modifier alone, "mod2" or "mod3".
  static bool makeNumLock(const std::string& modifier) {
    const Arguments arguments = {
        "xmodmap", "-e", "clear mod2", "-e", "clear mod3", "-e", "add " + modifier + " = Num_Lock"};
    return runProgram(arguments).exitStatus == 0;
  }

 private:
  static void act(const char* action, const std::vector<Key>& keys) {
    Arguments arguments = {"xdotool"};
    for (const Key key : keys) arguments.insert(arguments.end(), {action, std::to_string(key)});
    if (!keys.empty()) EXPECT_EQ(runProgram(arguments).exitStatus, 0);
  }
  static std::vector<Key> keysOf(QuilloHotKeyModifiers modifiers) {
    std::vector<Key> keys;
    for (const auto& [modifier, key] :
         {std::pair(control, Key{37}), {option, Key{64}}, {shift, Key{50}}, {command, Key{133}}}) {
      if (modifiers.contains(modifier)) keys.push_back(key);
    }
    return keys;
  }
};

/// Another program, which has grabbed a combination, perhaps with a lock's modifier.
class OtherProgramsHotKey {
 public:
  explicit OtherProgramsHotKey(const QuilloHotKey& hotKey, unsigned lock = 0) : connection_(connectToDisplay()) {
    unsigned mask = lock;
    for (const auto& [modifier, bit] : {std::pair(control, XCB_MOD_MASK_CONTROL),
                                        {option, XCB_MOD_MASK_1},
                                        {shift, XCB_MOD_MASK_SHIFT},
                                        {command, XCB_MOD_MASK_4}}) {
      if (hotKey.modifiers.contains(modifier)) mask |= bit;
    }
    const auto cookie =
        xcb_grab_key_checked(connection_, 0, root(), static_cast<std::uint16_t>(mask),
                             x11KeyCode(hotKey.keyCode).value(), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    isGrabbed_ = !X11Reply<xcb_generic_error_t>(xcb_request_check(connection_, cookie));
  }
  OtherProgramsHotKey(const OtherProgramsHotKey&) = delete;
  OtherProgramsHotKey& operator=(const OtherProgramsHotKey&) = delete;
  ~OtherProgramsHotKey() {
    xcb_request_check(connection_, xcb_ungrab_key_checked(connection_, XCB_GRAB_ANY, root(), XCB_MOD_MASK_ANY));
    xcb_disconnect(connection_);
  }

  bool isGrabbed() const { return isGrabbed_; }
  /// How many presses and releases it has got so far.
  int eventCount() {
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      const unsigned type = event->response_type & 0x7FU;
      if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) ++eventCount_;
    }
    return eventCount_;
  }

 private:
  std::uint32_t root() const { return xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root; }

  xcb_connection_t* connection_;
  bool isGrabbed_ = false;
  int eventCount_ = 0;
};

/// Long enough for the display to answer many times over; the tests wait so long only for what must not come.
constexpr std::chrono::milliseconds shortPatience{60};
constexpr std::chrono::milliseconds longPatience{10'000};

class HotKeys : public testing::Test {
 protected:
  HotKeyStatus install() {
    return hotKeys.installHandler(
        {.released = [this](HotKeyIdentity identity) { released.push_back(identity.id); },
         .lost = [this](std::optional<HotKeyIdentity> identity,
                        HotKeyStatus status) { lost.emplace_back(identity ? identity->id : 0, status); }});
  }

  HotKeyStatus registerHotKey(const QuilloHotKey& hotKey, std::uint32_t id) {
    const HotKeyRegistration made = hotKeys.registerHotKey(hotKey, {.signature = 1, .id = id});
    if (made.reference) references.push_back(*made.reference);
    return made.status;
  }

  /// The ids that have been released, once `count` have come and no further one follows.
  std::vector<std::uint32_t> awaitReleased(std::size_t count = 1) {
    while (released.size() < count && loop.runOne(longPatience)) continue;
    while (loop.runOne(shortPatience)) continue;
    return std::exchange(released, {});
  }

  ManualLoop loop;
  X11HotKeys hotKeys{loop.executor()};
  std::vector<std::uint32_t> released;
  std::vector<std::pair<std::uint32_t, HotKeyStatus>> lost;
  std::vector<HotKeyReference> references;
  const QuilloHotKey capture{8, control | option | command, "C"};
  const QuilloHotKey paste{9, control | option | command, "V"};
};

TEST_F(HotKeys, keepTheContract) {
  std::unique_ptr<OtherProgramsHotKey> other;
  bool isInstalled = false;
  expectHotKeyRegisteringContract({.registrar = hotKeys,
                                   .press =
                                       [&](const QuilloHotKey& hotKey) {
                                         TestKeyboard::type(hotKey);
                                         while (loop.runOne(shortPatience)) continue;
                                       },
                                   .reserveElsewhere =
                                       [&](const QuilloHotKey& hotKey) {
                                         other = std::make_unique<OtherProgramsHotKey>(hotKey);
                                         isInstalled = other->isGrabbed();
                                       },
                                   .giveBackElsewhere = [&](const QuilloHotKey&) { other = nullptr; }});
  EXPECT_TRUE(isInstalled);
}

TEST_F(HotKeys, fireOnceWhenTheKeyIsReleased) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  TestKeyboard::pressModifiers(capture.modifiers);
  TestKeyboard::press(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(0), IsEmpty());
  TestKeyboard::release(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
  TestKeyboard::releaseModifiers(capture.modifiers);

  // The modifiers go first.
  TestKeyboard::pressModifiers(capture.modifiers);
  TestKeyboard::press(*x11KeyCode(capture.keyCode));
  TestKeyboard::releaseModifiers(capture.modifiers);
  EXPECT_THAT(awaitReleased(0), IsEmpty());
  TestKeyboard::release(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(), ElementsAre(1));

  // Fewer or more modifiers, and another key, are not it.
  for (const QuilloHotKey& other :
       {QuilloHotKey{8, control | option, ""}, {8, control | option | shift | command, ""}, {8, {}, ""}, paste}) {
    TestKeyboard::type(other);
  }
  EXPECT_THAT(awaitReleased(0), IsEmpty());
}

TEST_F(HotKeys, heldKeyRepeatsAndStillFiresOnce) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  ASSERT_EQ(runProgram({"xset", "r", "rate", "20", "200"}).exitStatus, 0);
  // The keyboard does repeat: another program sees it.
  OtherProgramsHotKey other(paste);
  TestKeyboard::pressModifiers(paste.modifiers);
  TestKeyboard::press(*x11KeyCode(paste.keyCode));
  EXPECT_TRUE(eventually([&] { return other.eventCount() > 20; }));
  TestKeyboard::release(*x11KeyCode(paste.keyCode));

  TestKeyboard::press(*x11KeyCode(capture.keyCode));
  while (loop.runOne(5 * shortPatience)) continue;
  EXPECT_THAT(released, IsEmpty());
  TestKeyboard::release(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
}

TEST_F(HotKeys, workWhicheverLocksAreOn) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(paste, 2), hotKeySucceeded);
  for (const auto& locks : std::vector<std::vector<Key>>{{capsLock}, {capsLock, numLock}, {numLock}}) {
    for (const Key lock : locks) TestKeyboard::tap(lock);
    TestKeyboard::type(paste);
    TestKeyboard::type(capture);
    EXPECT_THAT(awaitReleased(2), ElementsAre(2, 1));
    for (const Key lock : locks) TestKeyboard::tap(lock);
  }
}

TEST_F(HotKeys, areKeysInTheirPlacesWhateverTheyType) {
  const std::vector<QuilloHotKey> all = {capture,
                                         {49, control | option, "Space"},
                                         {18, control | option, "1"},
                                         {122, option | command, "F1"},
                                         {123, control | command, "←"}};
  ASSERT_EQ(install(), hotKeySucceeded);
  for (std::uint32_t i = 0; i < all.size(); ++i) ASSERT_EQ(registerHotKey(all[i], i), hotKeySucceeded);
  for (const Arguments& layout : std::vector<Arguments>{
           {"us"}, {"ru"}, {"fr"}, {"us,ru", "-option", "grp:alt_shift_toggle"}, {"de", "neo"}, {"us"}}) {
    Arguments change = {"setxkbmap"};
    change.insert(change.end(), layout.begin(), layout.end());
    ASSERT_EQ(runProgram(change).exitStatus, 0) << layout[0];
    for (const QuilloHotKey& hotKey : all) TestKeyboard::type(hotKey);
    EXPECT_THAT(awaitReleased(all.size()), ElementsAre(0, 1, 2, 3, 4)) << layout[0];
  }
  EXPECT_THAT(lost, IsEmpty());
}

TEST_F(HotKeys, followALockThatBecomesAnotherModifier) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  ASSERT_TRUE(TestKeyboard::makeNumLock("mod3"));
  while (loop.runOne(shortPatience)) continue;
  TestKeyboard::tap(numLock);
  TestKeyboard::type(capture);
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
  TestKeyboard::tap(numLock);
  ASSERT_TRUE(TestKeyboard::makeNumLock("mod2"));
  while (loop.runOne(shortPatience)) continue;

  // Another program has the combination with the modifier that the lock becomes.
  const OtherProgramsHotKey other(capture, 1U << 5U);
  ASSERT_TRUE(other.isGrabbed());
  ASSERT_TRUE(TestKeyboard::makeNumLock("mod3"));
  while (lost.empty() && loop.runOne(longPatience)) continue;
  EXPECT_THAT(lost, ElementsAre(std::pair(1U, hotKeyIsTaken)));
  TestKeyboard::type(capture);
  EXPECT_THAT(awaitReleased(0), IsEmpty());
}

TEST_F(HotKeys, onesThatTheKeyboardLacksAreRefused) {
  ASSERT_EQ(install(), hotKeySucceeded);
  EXPECT_EQ(registerHotKey({200, control | option, "?"}, 1), hotKeyIsMissing);
  EXPECT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
}

TEST_F(HotKeys, pairIsReservedWholeOrNotAtAll) {
  FakeRunningApplications applications;
  applications.frontmost = RunningApplication{42, std::nullopt, std::nullopt};
  GlobalHotKeyController controller(hotKeys, applications);
  std::vector<std::string> calls;
  const auto registerPair = [&] {
    return controller.registerShortcuts(
        {capture, paste}, [&] { calls.emplace_back("capture"); },
        [&](std::optional<std::int32_t> process) { calls.push_back("paste " + std::to_string(process.value_or(0))); });
  };
  auto other = std::make_unique<OtherProgramsHotKey>(paste);
  const auto failed = registerPair();
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.error(), GlobalHotKeyRegistrationError(
                                GlobalHotKeyRegistrationError::HotKeyRegistrationFailed{"paste", hotKeyIsTaken}));
  EXPECT_TRUE(OtherProgramsHotKey(capture).isGrabbed());
  other = nullptr;

  ASSERT_TRUE(registerPair());
  EXPECT_FALSE(OtherProgramsHotKey(capture).isGrabbed());
  EXPECT_FALSE(OtherProgramsHotKey(paste).isGrabbed());
  TestKeyboard::type(paste);
  TestKeyboard::type(capture);
  while (calls.size() < 2 && loop.runOne(longPatience)) continue;
  EXPECT_THAT(calls, ElementsAre("paste 42", "capture"));

  // A release that is on its way when they are taken back reaches nobody.
  TestKeyboard::type(capture);
  ::usleep(10'000);
  controller.unregisterAll();
  while (loop.runOne(shortPatience)) continue;
  EXPECT_EQ(calls.size(), 2U);
  EXPECT_TRUE(OtherProgramsHotKey(capture).isGrabbed());
  EXPECT_TRUE(OtherProgramsHotKey(paste).isGrabbed());
}

TEST_F(HotKeys, doctorTellsWhichAreTaken) {
  EXPECT_THAT(
      runQuillo({"doctor"}).output,
      AllOf(HasSubstr("ok      Shortcut to capture: ⌃⌥⌘C (Control+Alt+Super+C) is free"),
            HasSubstr("ok      Shortcut to paste: ⌃⌥⌘V (Control+Alt+Super+V) is free"), Not(HasSubstr("Settings"))));
  const OtherProgramsHotKey other(paste);
  const std::string settings = std::string(std::getenv("XDG_CONFIG_HOME")) + "/Quillo/preferences.json";
  writeFile(std::filesystem::path(settings), R"({"schemaVersion": 1, "values": {
      "hotKeyConfiguration": {"version": 1, "configuration": {
        "capture": {"keyCode": 9, "modifiers": 11, "keyLabel": "V"},
        "paste": {"keyCode": 123, "modifiers": 14, "keyLabel": "←"}}}}})");
  const FinishedProgram doctor = runQuillo({"doctor"});
  EXPECT_EQ(doctor.exitStatus, 1);
  EXPECT_THAT(doctor.output,
              AllOf(HasSubstr("missing Shortcut to capture: ⌃⌥⌘V (Control+Alt+Super+V) is used by another program\n"),
                    HasSubstr("ok      Shortcut to paste: ⌥⇧⌘← (Alt+Shift+Super+Left) is free")));
  ASSERT_EQ(::truncate(settings.c_str(), 30), 0);
  EXPECT_THAT(runQuillo({"doctor"}).output,
              AllOf(HasSubstr("missing Settings: The settings in “" + settings + "” are damaged: "),
                    HasSubstr("ok      Shortcut to capture: ⌃⌥⌘C (Control+Alt+Super+C) is free")));
}

TEST_F(HotKeys, displayThatGoesAwayIsALoss) {
  const std::string display = std::getenv("DISPLAY");
  const std::string brief = ":" + std::to_string(4000 + (::getpid() % 1000));
  ::setenv("DISPLAY", brief.c_str(), 1);
  EXPECT_EQ(install(), hotKeyDisplayIsUnavailable);
  EXPECT_EQ(registerHotKey(capture, 1), hotKeyDisplayIsUnavailable);
  {
    const RunningProgram server({"Xvfb", brief, "-nolisten", "tcp"});
    ASSERT_TRUE(eventually([&] { return install() == hotKeySucceeded; }));
    ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
    server.signal(SIGKILL);
    while (lost.empty() && loop.runOne(longPatience)) continue;
  }
  EXPECT_THAT(lost, ElementsAre(std::pair(0U, hotKeyDisplayIsUnavailable)));
  EXPECT_EQ(registerHotKey(paste, 2), hotKeyDisplayIsUnavailable);
  hotKeys.unregisterHotKey(references.at(0));
  hotKeys.removeHandler();

  ::setenv("DISPLAY", display.c_str(), 1);
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  TestKeyboard::type(capture);
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
}

}  // namespace
}  // namespace quillo::test
