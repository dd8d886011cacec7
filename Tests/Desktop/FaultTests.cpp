// Applications that lie, hang and die: the capture ends in time and says what it could not have.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

RunningProgram startFaulty(const std::string& mode) {
  return RunningProgram({QUILLO_TEST_PROGRAMS "/faulty-application.py", mode});
}

/// Captures once the application's own tree is on the bus.
AccessibilitySnapshot readFaulty(const RunningProgram& program) {
  return readWindowHolding(program, {"\"Faulty\""});
}

const AccessibilityNode& nodeOf(const AccessibilitySnapshot& snapshot, const std::string& role) {
  static const AccessibilityNode none;
  const AccessibilityNode* node = findNode(snapshot, role);
  EXPECT_NE(node, nullptr) << role;
  return node == nullptr ? none : *node;
}

std::int64_t countOf(const AccessibilitySnapshot& snapshot, const std::string& role) {
  return std::ranges::count(snapshot.nodes, role, &AccessibilityNode::role);
}

TEST(Faults, graphsThatAreNoTreesAreReadOnce) {
  {
    const RunningProgram program = startFaulty("cycle");
    const AccessibilitySnapshot snapshot = readFaulty(program);
    ASSERT_EQ(snapshot.nodes.size(), 3U);
    EXPECT_EQ(snapshot.nodes[1].childIDs, (std::vector<std::int64_t>{0, 1, 2}));
  }
  const RunningProgram program = startFaulty("shared");
  const AccessibilitySnapshot snapshot = readFaulty(program);
  ASSERT_EQ(snapshot.nodes.size(), 5U);
  EXPECT_EQ(snapshot.nodes[2].childIDs, (std::vector<std::int64_t>{3}));
  EXPECT_EQ(snapshot.nodes[3].parentID, 1);
}

TEST(Faults, whatIsBeyondTheLimitsIsCutAndCounted) {
  using enum AccessibilityTruncationReason;
  struct Case {
    const char* mode;
    std::size_t nodeCount;
    AccessibilityTruncation truncation;
  };
  for (const auto& [mode, nodeCount, truncation] : {Case{"deep", 65, {depthLimit, 64, std::nullopt, 1}},
                                                    Case{"wide", 10'000, {nodeLimit, 1, std::nullopt, 40'002}}}) {
    const RunningProgram program = startFaulty(mode);
    const AccessibilitySnapshot snapshot = readFaulty(program);
    EXPECT_EQ(snapshot.nodes.size(), nodeCount);
    EXPECT_EQ(snapshot.truncations, std::vector{truncation});
  }
}

TEST(Faults, aPretendedChildCountIsNoMatter) {
  const RunningProgram program = startFaulty("lying-count");
  EXPECT_EQ(countOf(readFaulty(program), "AXStaticText"), 3);
}

TEST(Faults, textThatComesShortIsNotTakenForTheWhole) {
  const RunningProgram program = startFaulty("lying-length");
  const AccessibilitySnapshot snapshot = readFaulty(program);
  const AccessibilityNode& text = nodeOf(snapshot, "AXTextArea");
  EXPECT_EQ(text.attribute("AXFullText"), nullptr);
  EXPECT_EQ(textAttribute(text, "AXValue"), "Hello world");
  ASSERT_EQ(snapshot.issues.size(), 1U);
  EXPECT_EQ(snapshot.issues[0].code, "AXTextFallbackRetained");
}

TEST(Faults, textThatChangesIsReadAsItWasAtOneMoment) {
  const RunningProgram program = startFaulty("changing");
  const AccessibilitySnapshot snapshot = readFaulty(program);
  const AccessibilityNode& node = nodeOf(snapshot, "AXTextArea");
  const std::string text = textAttribute(node, "AXFullText");
  EXPECT_THAT(text, StartsWith("Hello number x"));
  const AccessibilityAttributeValue* length = node.attribute("AXNumberOfCharacters");
  ASSERT_NE(length, nullptr);
  EXPECT_EQ(*length, AccessibilityAttributeValue(static_cast<std::int64_t>(text.size())));
  EXPECT_TRUE(snapshot.issues.empty());
}

TEST(Faults, longTextIsCutAndTheRestCounted) {
  const RunningProgram program = startFaulty("text");
  const AccessibilitySnapshot snapshot = readFaulty(program);
  constexpr std::int64_t length = 15L * 700'000;
  constexpr std::int64_t kept = 500'000;
  EXPECT_EQ(textAttribute(nodeOf(snapshot, "AXTextArea"), "AXFullText").size(), static_cast<std::size_t>(kept));
  ASSERT_EQ(snapshot.truncations.size(), 1U);
  EXPECT_EQ(snapshot.truncations[0], (AccessibilityTruncation{AccessibilityTruncationReason::attributeValueLimit,
                                                              snapshot.nodes[1].id, "AXFullText", length - kept}));
}

/// The seconds that the capture took to fail with `Error`'s case; negative when it did not fail so.
template <class Case>
double secondsToFail(const WindowCaptureTarget& target, double timeout) {
  const auto started = std::chrono::steady_clock::now();
  try {
    readWindow(target, timeout);
  } catch (const AccessibilityCaptureError& error) {
    EXPECT_TRUE(std::holds_alternative<Case>(error.value())) << error.what();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  }
  ADD_FAILURE() << "the capture succeeded";
  return -1;
}

TEST(Faults, hungApplicationIsGivenUpAtTheDeadline) {
  constexpr double timeout = 1.5;
  for (const char* mode : {"stop-before", "stop-middle"}) {
    const RunningProgram program = startFaulty(mode);
    const WindowCaptureTarget target = awaitWindow(program);
    const double seconds = secondsToFail<AccessibilityCaptureError::CaptureTimedOut>(target, timeout);
    EXPECT_NEAR(seconds, timeout, 0.2) << mode;
  }
}

// Longer than one call may take: what was not answered is asked again.
TEST(Faults, busyApplicationIsWaitedFor) {
  const RunningProgram program = startFaulty("plain");
  readFaulty(program);
  const WindowCaptureTarget target = awaitWindow(program);
  program.signal(SIGSTOP);
  std::thread waker([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(3500));
    program.signal(SIGCONT);
  });
  const AccessibilitySnapshot snapshot = readWindow(target);
  waker.join();
  EXPECT_EQ(snapshot.nodes.size(), 3U);
  EXPECT_EQ(textAttribute(nodeOf(snapshot, "AXStaticText"), "AXValue"), "A label");
  EXPECT_TRUE(snapshot.issues.empty());
}

// What is left of a window that has gone would be a list of empty elements.
TEST(Faults, whatGoesWhileItIsReadIsAnError) {
  using Error = AccessibilityCaptureError;
  for (const char* mode : {"exit-middle", "restart-middle"}) {
    const RunningProgram program = startFaulty(mode);
    const double seconds = secondsToFail<Error::TargetUnavailable>(awaitWindow(program), 15);
    EXPECT_LT(seconds, 3) << mode;
  }
  const RunningProgram program = startFaulty("close-middle");
  EXPECT_LT(secondsToFail<Error::TargetWindowUnavailable>(awaitWindow(program), 15), 3);
}

TEST(Faults, stoppedNeighbourIsNotWaitedFor) {
  const RunningProgram neighbour = startFaulty("plain");
  readFaulty(neighbour);
  const Editor editor("beside a stopped one");
  neighbour.signal(SIGSTOP);
  const auto started = std::chrono::steady_clock::now();
  const AccessibilitySnapshot snapshot = readWindow(awaitWindow(editor.program()));
  EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
  EXPECT_THAT(allTextOf(snapshot), HasSubstr("beside a stopped one"));
}

}  // namespace
}  // namespace quillo::test
