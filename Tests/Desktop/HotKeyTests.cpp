// Shortcuts as the display's keyboard knows them: pressed by a keyboard of the test's own, reserved by several
// programs.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"
#include "QuilloLinux/Keyboard/X11HotKeys.h"
#include "QuilloLinux/Keyboard/X11KeyCodes.h"
#include "RunningProgram.h"
#include "TestKeyboard.h"
#include "Tests/Support/FakeRunningApplications.h"
#include "Tests/Support/HotKeyRegisteringContract.h"
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

/// Jobs that the test runs itself.
class ManualQueue final : public JobQueue {
 public:
  void post(Job job) override {
    const std::scoped_lock guard(lock_);
    jobs_.push_back(std::move(job));
    hasMore_.notify_one();
  }

  /// Runs the next job; false when none has come in that time.
  bool runOne(std::chrono::milliseconds patience) {
    std::unique_lock guard(lock_);
    if (!hasMore_.wait_for(guard, patience, [&] { return !jobs_.empty(); })) return false;
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    guard.unlock();
    job();
    return true;
  }

 private:
  std::mutex lock_;
  std::condition_variable hasMore_;
  std::deque<Job> jobs_;
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
    while (released.size() < count && queue->runOne(longPatience)) continue;
    while (queue->runOne(shortPatience)) continue;
    return std::exchange(released, {});
  }

  std::shared_ptr<ManualQueue> queue = std::make_shared<ManualQueue>();
  X11HotKeys hotKeys{TaskExecutor(queue)};
  TestKeyboard keyboard;
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
                                         keyboard.type(hotKey);
                                         while (queue->runOne(shortPatience)) continue;
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
  keyboard.pressModifiers(capture.modifiers);
  keyboard.press(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(0), IsEmpty());
  keyboard.release(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
  keyboard.releaseModifiers(capture.modifiers);

  // The modifiers go first.
  keyboard.pressModifiers(capture.modifiers);
  keyboard.press(*x11KeyCode(capture.keyCode));
  keyboard.releaseModifiers(capture.modifiers);
  EXPECT_THAT(awaitReleased(0), IsEmpty());
  keyboard.release(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(), ElementsAre(1));

  // Fewer or more modifiers, and another key, are not it.
  for (const QuilloHotKey& other :
       {QuilloHotKey{8, control | option, ""}, {8, control | option | shift | command, ""}, {8, {}, ""}, paste}) {
    keyboard.type(other);
  }
  EXPECT_THAT(awaitReleased(0), IsEmpty());
}

TEST_F(HotKeys, heldKeyRepeatsAndStillFiresOnce) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  keyboard.setRepeat(20, 5);
  // The keyboard does repeat: another program sees it.
  OtherProgramsHotKey other(paste);
  keyboard.pressModifiers(paste.modifiers);
  keyboard.press(*x11KeyCode(paste.keyCode));
  EXPECT_TRUE(eventually([&] { return other.eventCount() > 20; }));
  keyboard.release(*x11KeyCode(paste.keyCode));

  keyboard.press(*x11KeyCode(capture.keyCode));
  while (queue->runOne(5 * shortPatience)) continue;
  EXPECT_THAT(released, IsEmpty());
  keyboard.release(*x11KeyCode(capture.keyCode));
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
}

TEST_F(HotKeys, workWhicheverLocksAreOn) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(paste, 2), hotKeySucceeded);
  for (const std::vector<std::uint8_t>& locks :
       std::vector<std::vector<std::uint8_t>>{{Keys::capsLock}, {Keys::capsLock, Keys::numLock}, {Keys::numLock}}) {
    for (const std::uint8_t lock : locks) keyboard.tap(lock);
    keyboard.type(paste);
    keyboard.type(capture);
    EXPECT_THAT(awaitReleased(2), ElementsAre(2, 1));
    for (const std::uint8_t lock : locks) keyboard.tap(lock);
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
    for (const QuilloHotKey& hotKey : all) keyboard.type(hotKey);
    EXPECT_THAT(awaitReleased(all.size()), ElementsAre(0, 1, 2, 3, 4)) << layout[0];
  }
  EXPECT_THAT(lost, IsEmpty());
}

TEST_F(HotKeys, followALockThatBecomesAnotherModifier) {
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  ASSERT_TRUE(keyboard.makeNumLock(5));
  while (queue->runOne(shortPatience)) continue;
  keyboard.tap(Keys::numLock);
  keyboard.type(capture);
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
  keyboard.tap(Keys::numLock);
  ASSERT_TRUE(keyboard.makeNumLock(4));
  while (queue->runOne(shortPatience)) continue;

  // Another program has the combination with the modifier that the lock becomes.
  const OtherProgramsHotKey other(capture, 1U << 5U);
  ASSERT_TRUE(other.isGrabbed());
  ASSERT_TRUE(keyboard.makeNumLock(5));
  while (lost.empty() && queue->runOne(longPatience)) continue;
  EXPECT_THAT(lost, ElementsAre(std::pair(1U, hotKeyIsTaken)));
  keyboard.type(capture);
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
  keyboard.type(paste);
  keyboard.type(capture);
  while (calls.size() < 2 && queue->runOne(longPatience)) continue;
  EXPECT_THAT(calls, ElementsAre("paste 42", "capture"));

  // A release that is on its way when they are taken back reaches nobody.
  keyboard.type(capture);
  ::usleep(10'000);
  controller.unregisterAll();
  while (queue->runOne(shortPatience)) continue;
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
    while (lost.empty() && queue->runOne(longPatience)) continue;
  }
  EXPECT_THAT(lost, ElementsAre(std::pair(0U, hotKeyDisplayIsUnavailable)));
  EXPECT_EQ(registerHotKey(paste, 2), hotKeyDisplayIsUnavailable);
  hotKeys.unregisterHotKey(references.at(0));
  hotKeys.removeHandler();

  ::setenv("DISPLAY", display.c_str(), 1);
  ASSERT_EQ(install(), hotKeySucceeded);
  ASSERT_EQ(registerHotKey(capture, 1), hotKeySucceeded);
  keyboard.type(capture);
  EXPECT_THAT(awaitReleased(), ElementsAre(1));
}

}  // namespace
}  // namespace quillo::test
