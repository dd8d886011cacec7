// What the user does with the application, from its start to its end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "ApplicationFixture.h"
#include "PasteRecorder.h"
#include "Tests/Support/GoldenFile.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Application, capturesTheWindowInFrontByShortcutAndKeepsWhatIsWrittenAboutIt) {
  auto application = start();
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); })) << "without a tray the library is its face";
  const Editor editor;
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
  const Editor editor("Some note", "note.txt");
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
    const Editor editor;
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
  EXPECT_EQ(clipboardText(), "what the user had copied");
}

// The panel is an alert on the accessibility bus, and nothing to the window manager and the pointer.
TEST_F(Application, thePanelIsAnnouncedAndTakesNeitherFocusNorClicks) {
  const std::string heard = writeFile("heard", "");
  const auto application = start({"--background"});
  ASSERT_TRUE(eventually([] { return isRunning(); }));
  const RunningProgram reader({"sh", "-c", R"(exec "$0" >"$1")", QUILLO_TEST_PROGRAMS "/alert-listener.py", heard});
  const Editor editor;
  ASSERT_TRUE(eventually([&] { return readFile(heard).starts_with("ready\n"); }));
  press("ctrl+alt+super+c");
  ASSERT_TRUE(eventually([&] { return readFile(heard).find(" elements, complete\n") != std::string::npos; }))
      << readFile(heard);
  EXPECT_THAT(readFile(heard),
              testing::MatchesRegex("ready\n(name [^\n]+\n)*shown [^\n]+ - Mousepad\\. Reading window and "
                                    "interface…\n(name [^\n]+\n)*name [^\n]+ elements, complete\n"));
  EXPECT_THAT(activeWindow(), HasSubstr("letter.txt"));

  const std::string click = R"sh(
    panel=$(xdotool search --onlyvisible --name '^Quillo$' | tail -1)
    eval "$(xdotool getwindowgeometry --shell "$panel")"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2))
    eval "$(xdotool getmouselocation --shell)"
    [ "$WIDTH" = 368 ] && [ "$WINDOW" != "$panel" ] && echo through)sh";
  EXPECT_EQ(runProgram({"bash", "-c", click}).output, "through\n");
}

// A start from a text console, or by another user's tool, knows the display but not the bus.
TEST_F(Application, runsOnceAlsoWhereThereIsNoBus) {
  const Environment noBus = {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"};
  auto application = start({}, noBus);
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); }));
  const Editor editor;
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
