#include "QuilloCore/Shortcuts/QuilloHotKey.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuilloCore/Shortcuts/KeyEvent.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyPreferences.h"
#include "Tests/Support/InMemoryUserDefaults.h"

namespace quillo::test {
namespace {

constexpr auto control = QuilloHotKeyModifiers::control;
constexpr auto option = QuilloHotKeyModifiers::option;
constexpr auto shift = QuilloHotKeyModifiers::shift;
constexpr auto command = QuilloHotKeyModifiers::command;

TEST(QuilloHotKey, recordsWhatHasALabelAndEnoughModifiers) {
  struct Case {
    const char* what;
    KeyEvent event;
    const char* display;  ///< empty when it is no shortcut
  };
  const std::vector<Case> cases = {
      {"a letter is called by its key, whatever it types", {0, control | option, "q"}, "⌃⌥A"},
      {"all modifiers, in their order", {40, command | shift | option | control, "k"}, "⌃⌥⇧⌘K"},
      {"Shift beside two others", {40, control | shift | command, "K"}, "⌃⇧⌘K"},
      {"Shift and one other", {40, control | shift, "K"}, ""},
      {"one modifier", {40, control, "k"}, ""},
      {"none", {40, {}, "k"}, ""},
      {"a named key types nothing of use", {49, option | command, " "}, "⌥⌘Space"},
      {"a function key", {111, option | command, ""}, "⌥⌘F12"},
      {"the key that types a letter of its own", {41, control | option, "\u00E9"}, "⌃⌥\u00C9"},
      {"the same, decomposed and amid white space", {41, control | option, "\t e\u0301\n"}, "⌃⌥E\u0301"},
      {"two letters", {41, control | option, "ae"}, ""},
      {"a letter that is two in upper case", {41, control | option, "\u00DF"}, ""},
      {"white space alone", {41, control | option, " \n"}, ""},
      {"nothing typed", {41, control | option, ""}, ""},
      {"bits that stand for no modifier", {8, {.rawValue = 0x10000 | 3}, "c"}, "⌃⌥C"},
  };
  for (const Case& each : cases) {
    const auto recorded = QuilloHotKey::recorded(each.event);
    EXPECT_EQ(recorded ? recorded->displayString() : "", each.display) << each.what;
    if (!recorded) continue;
    EXPECT_EQ(recorded->keyCode, each.event.keyCode) << each.what;
    EXPECT_EQ(recorded->modifiers, each.event.modifiers) << each.what;
  }
}

TEST(QuilloHotKey, pairNeedsTwoDifferentShortcuts) {
  const QuilloHotKeyConfiguration defaults = QuilloHotKeyConfiguration::defaults();
  EXPECT_EQ(defaults.capture, (QuilloHotKey{8, {11}, "C"}));
  EXPECT_EQ(defaults.paste, (QuilloHotKey{9, {11}, "V"}));
  EXPECT_EQ(defaults.capture.displayString() + defaults.paste.displayString(), "⌃⌥⌘C⌃⌥⌘V");
  EXPECT_EQ(defaults.validationMessage(), std::nullopt);

  constexpr auto tooLittle = "Include at least two of Control, Option, and Command with a key.";
  const QuilloHotKey good{8, control | option, "C"};
  struct Case {
    QuilloHotKeyConfiguration pair;
    std::optional<std::string_view> message;
  };
  const std::vector<Case> cases = {
      {{good, {8, control | option, "C"}}, "Capture and paste need different shortcuts."},
      {{good, {8, control | option, "another label"}}, std::nullopt},
      {{good, {8, control | command, "C"}}, std::nullopt},
      {{good, {9, control | option, "C"}}, std::nullopt},
      {{good, {9, control | shift, "V"}}, tooLittle},
      {{{8, command, "C"}, good}, tooLittle},
      {{{8, control | option, ""}, good}, tooLittle},
      {{{8, control, "C"}, {8, control, "C"}}, tooLittle},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(each.pair.validationMessage(), each.message) << encodeJson(each.pair, JsonStyle::compact);
  }
}

TEST(QuilloHotKeyPreferences, keepAPair) {
  InMemoryUserDefaults defaults;
  EXPECT_EQ(QuilloHotKeyPreferences::load(defaults), QuilloHotKeyConfiguration::defaults());
  EXPECT_TRUE(defaults.values.empty());

  const QuilloHotKeyConfiguration pair{{49, control | shift | command, "Space"}, {41, option | command, "É"}};
  QuilloHotKeyPreferences::save(pair, defaults);
  EXPECT_EQ(QuilloHotKeyPreferences::load(defaults), pair);
  EXPECT_EQ(defaults.values["hotKeyConfiguration"],
            R"({"configuration":{"capture":{"keyCode":49,"keyLabel":"Space","modifiers":13},)"
            R"("paste":{"keyCode":41,"keyLabel":"É","modifiers":10}},"version":1})");
}

TEST(QuilloHotKeyPreferences, fallBackToTheDefaults) {
  const std::string good = R"({"configuration":{"capture":{"keyCode":8,"keyLabel":"C","modifiers":11},)"
                           R"("paste":{"keyCode":9,"keyLabel":"C","modifiers":3}},"version":1})";
  const auto loading = [](const std::string& stored) {
    InMemoryUserDefaults defaults;
    defaults.values["hotKeyConfiguration"] = stored;
    return QuilloHotKeyPreferences::load(defaults);
  };
  ASSERT_EQ(loading(good), (QuilloHotKeyConfiguration{{8, {11}, "C"}, {9, {3}, "C"}}));
  // Every place of the text that is changed so that it means something else.
  for (const auto& [part, replacement] : std::vector<std::pair<std::string, std::string>>{
           {"\"version\":1", "\"version\":2"},
           {"\"version\":1", "\"version\":\"1\""},
           {",\"version\":1", ""},
           {"\"keyCode\":8", "\"keyCode\":-8"},
           {"\"keyCode\":8", "\"keyCode\":4294967296"},
           {"\"modifiers\":11", "\"modifiers\":1"},
           {"\"modifiers\":11", "\"modifiers\":[1,2]"},
           {"\"keyLabel\":\"C\"", "\"keyLabel\":\"\""},
           {"\"keyCode\":9,\"keyLabel\":\"C\",\"modifiers\":3", "\"keyCode\":8,\"keyLabel\":\"C\",\"modifiers\":11"},
           {"\"paste\"", "\"Paste\""},
       }) {
    std::string changed = good;
    ASSERT_NE(changed.find(part), std::string::npos) << part;
    changed.replace(changed.find(part), part.size(), replacement);
    EXPECT_EQ(loading(changed), QuilloHotKeyConfiguration::defaults()) << changed;
  }
  for (std::size_t size = 0; size < good.size(); ++size) {
    EXPECT_EQ(loading(good.substr(0, size)), QuilloHotKeyConfiguration::defaults()) << size;
  }
}

}  // namespace
}  // namespace quillo::test
