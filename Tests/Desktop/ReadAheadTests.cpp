// Reading ahead stays cheap: how many calls a node costs, and how many are under way at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

struct CountedReading {
  AccessibilitySnapshot snapshot;
  AtspiStatistics statistics;
  double callsPerNode() const {
    return static_cast<double>(statistics.callCount) / static_cast<double>(snapshot.nodes.size());
  }
};

CountedReading readCounted(const RunningProgram& program) {
  SystemWallClock wallClock;
  const AccessibilityCaptureConfiguration configuration;
  const auto control = std::make_shared<AccessibilityCaptureControl>(configuration.captureTimeout);
  CountedReading reading;
  AtspiAccessibilityInterface interface([&](const AtspiStatistics& counted) { reading.statistics = counted; });
  reading.snapshot = captureAccessibilitySnapshot(interface, wallClock, configuration, awaitWindow(program), control);
  return reading;
}

TEST(ReadAhead, galleryCostsFewCallsANodeAndManyAreUnderWay) {
  for (const char* name : {"gtk3-widget-factory", "gtk4-widget-factory"}) {
    const RunningProgram gallery({name});
    readWindowHolding(gallery, {"radiobutton"});
    const CountedReading reading = readCounted(gallery);
    ASSERT_GT(reading.snapshot.nodes.size(), 100U) << name;
    EXPECT_LT(reading.callsPerNode(), 12) << name;
    EXPECT_GE(reading.statistics.largestInFlight, 64U) << name;
    EXPECT_LE(reading.statistics.largestInFlight, AtspiBus::window) << name;
    RecordProperty(std::string(name) + " calls per node", std::to_string(reading.callsPerNode()));
  }
}

}  // namespace
}  // namespace quillo::test
