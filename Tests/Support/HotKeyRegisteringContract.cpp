#include "Tests/Support/HotKeyRegisteringContract.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillo::test {

void expectHotKeyRegisteringContract(const HotKeySession& session) {
  constexpr auto modifiers = QuilloHotKeyModifiers::control | QuilloHotKeyModifiers::option;
  const QuilloHotKey keyC{8, modifiers, "C"};
  const QuilloHotKey keyV{9, modifiers, "V"};
  constexpr HotKeyIdentity first{.signature = 7, .id = 1};
  constexpr HotKeyIdentity second{.signature = 7, .id = 2};
  HotKeyRegistering& registrar = session.registrar;

  std::vector<HotKeyIdentity> released;
  const auto install = [&] {
    return registrar.installHandler(
        {.released = [&](HotKeyIdentity identity) { released.push_back(identity); },
         .lost = [](std::optional<HotKeyIdentity>, HotKeyStatus) { ADD_FAILURE() << "nothing was lost"; }});
  };
  const auto takeReleased = [&] { return std::exchange(released, {}); };

  ASSERT_EQ(install(), hotKeySucceeded);
  session.press(keyC);
  EXPECT_TRUE(takeReleased().empty());

  // Each tells which it was.
  const HotKeyRegistration registeredC = registrar.registerHotKey(keyC, first);
  const HotKeyRegistration registeredV = registrar.registerHotKey(keyV, second);
  ASSERT_EQ(registeredC.status, hotKeySucceeded);
  ASSERT_TRUE(registeredC.reference.has_value());
  ASSERT_TRUE(registeredV.reference.has_value());
  EXPECT_NE(registeredC.reference, registeredV.reference);
  // The same keys under another name.
  EXPECT_EQ(registrar.registerHotKey({8, modifiers, "another"}, second),
            (HotKeyRegistration{hotKeyIsTaken, std::nullopt}));
  session.press(keyV);
  session.press(keyC);
  EXPECT_EQ(takeReleased(), (std::vector{second, first}));

  // One is given back, and another program may have it.
  registrar.unregisterHotKey(*registeredC.reference);
  session.press(keyC);
  session.reserveElsewhere(keyC);
  EXPECT_EQ(registrar.registerHotKey(keyC, first), (HotKeyRegistration{hotKeyIsTaken, std::nullopt}));
  session.press(keyC);
  session.press(keyV);
  EXPECT_EQ(takeReleased(), std::vector{second});
  session.giveBackElsewhere(keyC);
  EXPECT_EQ(registrar.registerHotKey(keyC, first).status, hotKeySucceeded);

  // The end takes everything back.
  registrar.removeHandler();
  registrar.removeHandler();
  session.press(keyC);
  EXPECT_TRUE(takeReleased().empty());
  ASSERT_EQ(install(), hotKeySucceeded);
  session.press(keyV);
  EXPECT_TRUE(takeReleased().empty());
  ASSERT_TRUE(registrar.registerHotKey(keyV, first).reference.has_value());
  session.press(keyV);
  EXPECT_EQ(takeReleased(), std::vector{first});
  registrar.removeHandler();
}

}  // namespace quillo::test
