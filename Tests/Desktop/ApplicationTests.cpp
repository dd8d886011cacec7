// What the user does with the application, from its start to its end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "ApplicationFixture.h"
#include "PasteRecorder.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Application, capturesTheWindowInFrontByShortcutAndKeepsWhatIsWrittenAboutIt) {
  auto application = start();
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); })) << "without a tray the library is its face";
  const RunningProgram editor({"mousepad", writeFile("letter.txt", "Dear reader")});
  readWindowHolding(editor, {"Dear reader"});
  press("ctrl+alt+super+c");
  ASSERT_TRUE(eventually([] { return library().find("Mousepad") != std::string::npos; }));

  // Another start opens the library of the first and ends.
  beginRenaming();
  type("A letter");
  press("Tab");
  type("Answer it");
  ASSERT_TRUE(eventually([] {
    const std::string text = library();
    return text.find("A letter") != std::string::npos && text.find("Answer it") != std::string::npos;
  }));
  application->signal(SIGKILL);
  EXPECT_THAT(runQuillo({"list"}).output, HasSubstr("A letter"));
}

TEST_F(Application, theMenuActsOnTheWindowTheUserCameFromAndHostsMayComeAndGo) {
  auto host = startTrayHost();
  const auto application = start({"--background"});
  const RunningProgram editor({"mousepad", writeFile("note.txt", "Some note")});
  readWindowHolding(editor, {"Some note"});
  ASSERT_TRUE(eventually([] { return menu().find("[-] Ready") != std::string::npos; }));
  EXPECT_FALSE(hasWindow("Quillo"));
  EXPECT_THAT(menu(), StartsWith("[-] Quillo\n----\n[x] Capture Frontmost Window  ⌃⌥⌘C\n"
                                 "[-] Paste Selected Capture  ⌃⌥⌘V\n----\n"));
  ASSERT_TRUE(choose("Capture Frontmost Window"));
  ASSERT_TRUE(eventually([] { return library().find("note.txt") != std::string::npos; }));
  ASSERT_TRUE(eventually([] { return menu().find("[-] Selected: ") != std::string::npos; }));
  EXPECT_THAT(menu(), HasSubstr("[x] Paste Selected Capture"));

  host.reset();
  EXPECT_TRUE(eventually([] { return hasWindow("Quillo"); })) << "no icon is left";
  host = startTrayHost();
  ASSERT_TRUE(eventually([] { return menu().find("Quit Quillo") != std::string::npos; }));
  ASSERT_TRUE(choose("Quit Quillo"));
  EXPECT_TRUE(eventually([] { return !isRunning(); }));
}

TEST_F(Application, pastesWhatItCapturedIntoABrowserByShortcut) {
  const auto host = startTrayHost();
  const auto application = start({"--background"});
  ASSERT_TRUE(eventually([] { return menu().find("[-] Ready") != std::string::npos; }));
  {
    const RunningProgram editor({"mousepad", writeFile("letter.txt", "Dear reader")});
    readWindowHolding(editor, {"Dear reader"});
    press("ctrl+alt+super+c");
    ASSERT_TRUE(eventually([] { return menu().find("[-] Selected: ") != std::string::npos; }));
  }
  runProgram({"xclip", "-selection", "clipboard", "-in", "-loops", "0"}, "what the user had copied");
  const PasteRecorder browser(PasteField::chromiumEditable);
  press("ctrl+alt+super+v");
  EXPECT_TRUE(eventually([] { return menu().find("Screenshot, interface map, and note pasted") != std::string::npos; }))
      << menu();
  EXPECT_THAT(browser.recorded(), HasSubstr("image "));
  EXPECT_THAT(browser.recorded(), HasSubstr("# Quillo capture: "));
  EXPECT_THAT(browser.recorded(), HasSubstr("Dear reader"));
  EXPECT_EQ(runProgram({"xclip", "-selection", "clipboard", "-out"}).output, "what the user had copied");
}

// A start from a text console, or by another user's tool, knows the display but not the bus.
TEST_F(Application, runsOnceAlsoWhereThereIsNoBus) {
  const Environment noBus = {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"};
  auto application = start({}, noBus);
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); }));
  const RunningProgram editor({"mousepad", writeFile("letter.txt", "Dear reader")});
  readWindowHolding(editor, {"Dear reader"});
  ASSERT_TRUE(eventually([] { return activeWindow().find("letter.txt") != std::string::npos; }));
  EXPECT_EQ(0, secondStart({"--background"}, noBus));
  EXPECT_THAT(activeWindow(), HasSubstr("letter.txt"));
  EXPECT_EQ(0, secondStart()) << "one that knows the bus";
  EXPECT_TRUE(eventually([] { return activeWindow() == "Quillo\n"; }));

  application->signal(SIGSTOP);
  EXPECT_EQ(1, secondStart({}, noBus)) << "the first does not answer";
  application->signal(SIGKILL);
  ASSERT_TRUE(eventually([&] { return application->exitStatus().has_value(); }));
  application = start({}, noBus);
  EXPECT_TRUE(eventually([] { return hasWindow("Quillo"); })) << "what the killed one left is no hindrance";
}

}  // namespace
}  // namespace quillo::test
