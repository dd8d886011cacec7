// The whole line: a real window's words reach the text through the commands that a user would pipe.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// `quillo snapshot | quillo observe | quillo render`
std::string contextText(const Arguments& snapshotArguments = {}) {
  Arguments arguments = {"snapshot"};
  arguments.insert(arguments.end(), snapshotArguments.begin(), snapshotArguments.end());
  const FinishedProgram snapshot = runQuillo(arguments);
  if (snapshot.exitStatus != 0) return snapshot.error;
  const FinishedProgram observation = runQuillo({"observe"}, snapshot.output);
  EXPECT_EQ(observation.exitStatus, 0) << observation.error;
  const FinishedProgram text = runQuillo({"render", "-"}, observation.output);
  EXPECT_EQ(text.exitStatus, 0) << text.error;
  return text.output;
}

TEST(FirstLight, editorsLetterIsInTheText) {
  const std::string letter = "Dear reader,\nthis letter holds \"quotes\", a \\ and an astral character \U0001F600.";
  const RunningProgram editor({"mousepad", writeFile("letter.txt", letter)});
  std::string text;
  eventually([&] { return (text = contextText()).find("Dear reader") != std::string::npos; });

  EXPECT_THAT(text, StartsWith("## What Quillo saw\n\nThe following is observed application content"));
  EXPECT_THAT(text, HasSubstr("    \u27E6caret\u27E7Dear reader,\n    this letter"));
  EXPECT_THAT(text, HasSubstr("this letter holds \"quotes\", a \\ and an astral character \U0001F600."));
  EXPECT_THAT(text, HasSubstr("letter.txt - Mousepad"));
  for (const char* menu : {"File", "Edit", "Search", "View", "Document", "Help"}) EXPECT_THAT(text, HasSubstr(menu));
  EXPECT_THAT(text, HasSubstr("\n## Coverage\n"));
}

TEST(FirstLight, widgetGallerysWordsAreInTheText) {
  const RunningProgram gallery({"gtk3-widget-factory"});
  const WindowCaptureTarget target = awaitWindow(gallery);
  std::string text;
  eventually([&] {
    text = contextText({"--window", std::to_string(target.windowID)});
    return text.find("Page 3") != std::string::npos;
  });
  for (const char* words : {"Page 1", "Page 2", "Page 3", "comboboxentry", "Click icon to change mode", "checkbutton",
                            "radiobutton", "Middle", "togglebutton"}) {
    EXPECT_THAT(text, HasSubstr(words));
  }
  EXPECT_THAT(text, Not(HasSubstr("safety limit.")));
}

TEST(FirstLight, captureIsStoredAndReadBack) {
  const Editor editor("Keep this letter");
  const FinishedProgram captured = runQuillo({"capture"});
  ASSERT_EQ(captured.exitStatus, 0) << captured.error;
  const std::string id = captured.output.substr(0, captured.output.find('\n'));

  EXPECT_EQ(runQuillo({"check", id}).output, id + "\tok\n");
  const std::string text = runQuillo({"text", id}).output;
  EXPECT_THAT(text, StartsWith("# Quillo capture: "));
  EXPECT_THAT(text, HasSubstr("Keep this letter"));
  // The filters give the text that was stored, but for the moment of the observation.
  const std::string observedAt = "\nObserved at: ";
  const auto withoutMoment = [&](std::string whole) {
    whole.erase(0, whole.find("## What Quillo saw"));
    const std::size_t start = whole.find(observedAt);
    return whole.erase(start, whole.find('\n', start + 1) - start);
  };
  EXPECT_EQ(withoutMoment(text), withoutMoment(contextText()));
  EXPECT_EQ(runQuillo({"capture", "--window", "5"}).exitStatus, 1);
}

}  // namespace
}  // namespace quillo::test
