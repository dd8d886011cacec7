#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "Tests/Support/FakeHotKeyRegistrar.h"
#include "Tests/Support/FakeRunningApplications.h"
#include "Tests/Support/HotKeyRegisteringContract.h"

namespace quillo::test {
namespace {

using Error = GlobalHotKeyRegistrationError;
using testing::ElementsAre;
using testing::IsEmpty;

class GlobalHotKeys : public testing::Test {
 protected:
  /// Registers with handlers that note what they are called with, under a name.
  std::optional<Error> registerShortcuts(const QuilloHotKeyConfiguration& wanted, const std::string& name = "") {
    const auto result = controller.registerShortcuts(
        wanted, [this, name] { calls.push_back(name + "capture"); },
        [this, name](std::optional<std::int32_t> process) {
          calls.push_back(name + "paste " + (process ? std::to_string(*process) : "nowhere"));
        });
    return result ? std::nullopt : std::optional(result.error());
  }

  std::vector<std::string> takeLog() { return std::exchange(registrar.log, {}); }
  std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

  QuilloHotKeyConfiguration pair = QuilloHotKeyConfiguration::defaults();
  QuilloHotKeyConfiguration otherPair{{8, {3}, "C"}, pair.paste};
  FakeHotKeyRegistrar registrar;
  FakeRunningApplications applications;
  GlobalHotKeyController controller{registrar, applications};
  std::vector<std::string> calls;
};

TEST_F(GlobalHotKeys, activationsReachTheirHandlers) {
  EXPECT_EQ(registerShortcuts(pair), std::nullopt);
  EXPECT_THAT(takeLog(), ElementsAre("install", "register ⌃⌥⌘C as 1", "register ⌃⌥⌘V as 2"));
  EXPECT_EQ(controller.activeConfiguration(), pair);

  registrar.press(pair.paste);
  applications.frontmost = RunningApplication{42, std::nullopt, std::nullopt};
  registrar.press(pair.paste);
  registrar.press(pair.capture);
  EXPECT_THAT(takeCalls(), ElementsAre("paste nowhere", "paste 42", "capture"));

  registrar.release({.signature = 0x514C4C4F, .id = 1});  // "QLLO"
  EXPECT_THAT(takeCalls(), ElementsAre("capture"));
  registrar.release({.signature = GlobalHotKeyController::signature + 1, .id = 1});
  registrar.release({.signature = GlobalHotKeyController::signature, .id = 3});
  registrar.release({.signature = GlobalHotKeyController::signature, .id = 0});
  EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(GlobalHotKeys, samePairAgainReplacesOnlyTheHandlers) {
  ASSERT_EQ(registerShortcuts(pair, "old "), std::nullopt);
  takeLog();
  EXPECT_EQ(registerShortcuts(pair, "new "), std::nullopt);
  EXPECT_THAT(takeLog(), IsEmpty());
  registrar.press(pair.capture);
  registrar.press(pair.paste);
  EXPECT_THAT(takeCalls(), ElementsAre("new capture", "new paste nowhere"));
}

TEST_F(GlobalHotKeys, invalidPairChangesNothing) {
  ASSERT_EQ(registerShortcuts(pair, "old "), std::nullopt);
  takeLog();
  EXPECT_EQ(registerShortcuts({pair.capture, pair.capture}),
            Error(Error::InvalidConfiguration{"Capture and paste need different shortcuts."}));
  EXPECT_EQ(registerShortcuts({pair.capture, {9, {5}, "V"}}),
            Error(Error::InvalidConfiguration{"Include at least two of Control, Option, and Command with a key."}));
  EXPECT_THAT(takeLog(), IsEmpty());
  EXPECT_EQ(controller.activeConfiguration(), pair);
  registrar.press(pair.capture);
  EXPECT_THAT(takeCalls(), ElementsAre("old capture"));
}

TEST_F(GlobalHotKeys, failureLeavesNothingRegistered) {
  struct Case {
    const char* what;
    std::function<void(FakeHotKeyRegistrar&)> breakIt;
    Error error;
    const char* description;
  };
  const std::vector<Case> cases = {
      {"no handler", [](auto& fake) { fake.handlerStatus = -1; }, Error(Error::EventHandlerInstallationFailed{-1}),
       "Quillo could not install its keyboard handler (OSStatus -1)."},
      {"capture is taken", [&](auto& fake) { fake.takenElsewhere = {otherPair.capture, pair.paste}; },
       Error(Error::HotKeyRegistrationFailed{"capture", hotKeyIsTaken}),
       "Quillo could not reserve the capture shortcut (OSStatus 10)."},
      {"paste is taken", [&](auto& fake) { fake.takenElsewhere = {pair.paste}; },
       Error(Error::HotKeyRegistrationFailed{"paste", hotKeyIsTaken}),
       "Quillo could not reserve the paste shortcut (OSStatus 10)."},
      {"no reference", [](auto& fake) { fake.givesReferences = false; },
       Error(Error::HotKeyRegistrationFailed{"capture", 0}),
       "Quillo could not reserve the capture shortcut (OSStatus 0)."},
  };
  for (const Case& each : cases) {
    controller.unregisterAll();
    ASSERT_EQ(registerShortcuts(pair), std::nullopt);
    each.breakIt(registrar);
    const auto error = registerShortcuts(otherPair);
    EXPECT_EQ(error, each.error) << each.what;
    EXPECT_EQ(error->errorDescription(), each.description) << each.what;
    EXPECT_THAT(registrar.reservedHotKeys(), IsEmpty()) << each.what;
    EXPECT_FALSE(registrar.hasHandler()) << each.what;
    EXPECT_EQ(controller.activeConfiguration(), std::nullopt) << each.what;
    // What is free again later can be registered.
    registrar = FakeHotKeyRegistrar();
    EXPECT_EQ(registerShortcuts(otherPair), std::nullopt) << each.what;
    EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(otherPair.capture, otherPair.paste)) << each.what;
  }
}

TEST_F(GlobalHotKeys, lossOfOneTakesBothBackAndIsReported) {
  std::vector<Error> losses;
  controller.whenLost([&](const Error& error) {
    EXPECT_THAT(registrar.reservedHotKeys(), IsEmpty());
    losses.push_back(error);
  });
  ASSERT_EQ(registerShortcuts(pair), std::nullopt);
  registrar.lose(HotKeyIdentity{GlobalHotKeyController::signature, 2}, hotKeyIsTaken);
  ASSERT_EQ(registerShortcuts(pair), std::nullopt);
  EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(pair.capture, pair.paste));
  registrar.lose(std::nullopt, hotKeyDisplayIsUnavailable);
  EXPECT_EQ(controller.activeConfiguration(), std::nullopt);
  EXPECT_THAT(losses, ElementsAre(Error(Error::HotKeyRegistrationFailed{"paste", hotKeyIsTaken}),
                                  Error(Error::EventHandlerInstallationFailed{hotKeyDisplayIsUnavailable})));
}

TEST_F(GlobalHotKeys, handlerMayRegisterAnotherPair) {
  ASSERT_TRUE(controller.registerShortcuts(
      pair,
      [this, name = std::string("still there")] {
        EXPECT_EQ(registerShortcuts(otherPair), std::nullopt);
        calls.push_back(name);
      },
      nullptr));
  registrar.press(pair.capture);
  registrar.press(otherPair.capture);
  EXPECT_THAT(takeCalls(), ElementsAre("still there", "capture"));
}

TEST_F(GlobalHotKeys, endTakesThemBack) {
  {
    GlobalHotKeyController brief(registrar, applications);
    ASSERT_TRUE(brief.registerShortcuts(pair, [] {}, [](std::optional<std::int32_t>) {}));
    EXPECT_TRUE(registrar.hasHandler());
  }
  EXPECT_FALSE(registrar.hasHandler());
  EXPECT_THAT(registrar.reservedHotKeys(), IsEmpty());
}

TEST(HotKeyRegistering, fakeKeepsTheContract) {
  FakeHotKeyRegistrar registrar;
  expectHotKeyRegisteringContract(
      {.registrar = registrar,
       .press = [&](const QuilloHotKey& hotKey) { registrar.press(hotKey); },
       .reserveElsewhere = [&](const QuilloHotKey& hotKey) { registrar.takenElsewhere.push_back(hotKey); },
       .giveBackElsewhere = [&](const QuilloHotKey&) { registrar.takenElsewhere.clear(); }});
}

}  // namespace
}  // namespace quillo::test
