#include "QuilloApp/Services/ApplicationServices.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ArtifactFixtures.h"
#include "PlatformFakes.h"
#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "Tests/Support/CaptureOfLetter.h"
#include "Tests/Support/FakeAccessibilityInterface.h"
#include "Tests/Support/FakeHotKeyRegistrar.h"
#include "Tests/Support/FakeLoginItem.h"
#include "Tests/Support/FakePasteboard.h"
#include "Tests/Support/FakeRunningApplications.h"
#include "Tests/Support/FakeSoftwareUpdateService.h"
#include "Tests/Support/FakeWindowImages.h"
#include "Tests/Support/InMemoryUserDefaults.h"
#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

class OneWindowList final : public WindowListProviding {
 public:
  std::vector<WindowListEntry> onScreenFrontToBack() override {
    thread = std::this_thread::get_id();
    WindowListEntry letter;
    letter.windowID = 7;
    letter.processIdentifier = FakeAccessibilityInterface::processIdentifier;
    letter.bounds = letterFrame;
    letter.isOnScreen = true;
    letter.title = "Letter";
    return {letter};
  }
  std::thread::id thread;  ///< that asked
};

class ApplicationServicesTest : public testing::Test {
 public:
  ~ApplicationServicesTest() override { loop.run(model.shutDown()); }

 protected:
  ApplicationServicesTest() {
    accessibility->addWindows("window 'Letter' number=7 frame=1,2,300,200\n  button 'Send' frame=1,1,20,10\n");
    applications.frontmost = RunningApplication{.processIdentifier = FakeAccessibilityInterface::processIdentifier,
                                                .localizedName = "Editor",
                                                .bundleIdentifier = "editor"};
  }

  /// The panel's last word.
  std::string capture() {
    panel.log.clear();
    model.captureFrontmostWindow();
    const auto hasEnded = [&] { return !panel.log.empty() && !panel.log.back().starts_with("progress"); };
    EXPECT_TRUE(loop.runUntil(hasEnded));
    return panel.log.back();
  }

  TemporaryDirectory folder;
  ManualLoop loop;
  SystemMonotonicClock clock;
  PosixFileSystem files;
  FakeTrash trash;
  FixedWallClock wallClock;
  RandomUUIDGenerator identifiers;
  InMemoryUserDefaults preferences;
  std::unique_ptr<FakeAccessibilityInterface> accessibility = std::make_unique<FakeAccessibilityInterface>();
  std::shared_ptr<FakeWindowImages> images = std::make_shared<FakeWindowImages>(screenshotOfLetter(7).window);
  OneWindowList windowList;
  FakeRunningApplications applications;
  FakeHotKeyRegistrar registrar;
  FakePasteboard pasteboard;
  FakePasteDestination destination;
  FakeModifiers modifiers;
  FakeLoginItem loginItem;
  FakeSoftwareUpdateService softwareUpdates;
  FakeHeadsUpPanel panel;
  FakeFileManager fileManager;
  ApplicationServices services{ApplicationPlatform{.clock = clock,
                                                   .libraryPath = folder.path(),
                                                   .store = {files, trash, wallClock, identifiers},
                                                   .preferences = preferences,
                                                   .accessibility = *accessibility,
                                                   .windowImages = images,
                                                   .windowList = windowList,
                                                   .windowOwners = applications,
                                                   .ownApplication = {.processIdentifier = 1, .bundleIdentifier = {}},
                                                   .frontmostApplications = applications,
                                                   .hotKeyRegistrar = registrar,
                                                   .pasteboard = pasteboard,
                                                   .pasteDestination = destination,
                                                   .modifiers = modifiers,
                                                   .loginItem = loginItem,
                                                   .softwareUpdates = softwareUpdates},
                               loop.executor()};
  QuilloModel model{services.modelServices(panel, fileManager)};
};

TEST_F(ApplicationServicesTest, captureTheWindowInFrontOffTheMainThread) {
  model.startIfNeeded();
  EXPECT_EQ(capture(), "success Letter: 2 elements, complete");
  EXPECT_THAT(images->calls, testing::ContainsRegex("prepare .*list image"));
  ASSERT_EQ(model.state().artifacts.size(), 1U);
  EXPECT_EQ(model.state().artifacts[0].manifest.source.applicationName, "Editor");
  EXPECT_NE(windowList.thread, std::this_thread::get_id());
}

TEST_F(ApplicationServicesTest, aPermissionThatIsMissingStopsTheCapture) {
  images->allowed = false;
  EXPECT_THAT(capture(), testing::StartsWith("failure Quillo needs Screen Recording permission before capturing."));
  EXPECT_FALSE(model.state().capturePermissionState.screenRecordingGranted);
  EXPECT_TRUE(model.state().capturePermissionState.accessibilityGranted);
}

TEST_F(ApplicationServicesTest, theLibraryIsCountedWithDamagedBundlesAndWithoutWhatLinksPointTo) {
  capture();
  const auto settled = [&] { return model.state().libraryUsage.has_value(); };
  model.refreshSettings();
  ASSERT_TRUE(loop.runUntil(settled));
  const LibraryUsage before = *model.state().libraryUsage;
  EXPECT_EQ(before.captureCount, 1);
  EXPECT_GT(before.byteCount, 1000);

  const TemporaryDirectory elsewhere;
  std::filesystem::create_directory(elsewhere.path() / "many");
  writeFile(elsewhere.path() / "many" / "large", std::string(50'000, 'x'));
  std::filesystem::create_directory_symlink(elsewhere.path() / "many", folder.path() / "link.quillo");
  std::filesystem::create_directory(folder.path() / "9D4AA6D1-8C0C-4F0F-9C39-1B0A8E7B2F10.quillo");
  writeFile(folder.path() / "9D4AA6D1-8C0C-4F0F-9C39-1B0A8E7B2F10.quillo" / "manifest.json", "damaged");
  std::filesystem::create_directory(folder.path() / ".staging.quillo");
  model.refreshSettings();
  ASSERT_TRUE(loop.runUntil([&] { return model.state().libraryUsage != before; }));
  EXPECT_EQ(model.state().libraryUsage, (LibraryUsage{.captureCount = 2, .byteCount = before.byteCount + 7}));
}

}  // namespace
}  // namespace quillo::test
