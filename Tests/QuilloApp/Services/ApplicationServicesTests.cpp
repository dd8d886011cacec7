#include "QuilloApp/Services/ApplicationServices.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "QuilloApp/Model/CaptureHeadsUpPanel.h"
#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "Tests/Support/FakeAccessibilityInterface.h"
#include "Tests/Support/FakeHotKeyRegistrar.h"
#include "Tests/Support/FakeLoginItem.h"
#include "Tests/Support/FakePasteboard.h"
#include "Tests/Support/FakeRunningApplications.h"
#include "Tests/Support/FakeSoftwareUpdateService.h"
#include "Tests/Support/FixedWallClock.h"
#include "Tests/Support/InMemoryUserDefaults.h"
#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

constexpr ArtifactRect letterFrame{.x = 0, .y = 0, .width = 400, .height = 300};

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

class OneWindowImage final : public WindowImageCapturing {
 public:
  bool isAllowed() override { return allowed; }
  void prepare(std::uint32_t windowID) override { prepared = windowID; }
  std::vector<CapturedWindowMetadata> capturableWindows() override {
    CapturedWindowMetadata letter;
    letter.windowID = 7;
    letter.processIdentifier = FakeAccessibilityInterface::processIdentifier;
    letter.applicationName = "Editor";
    letter.title = "Letter";
    letter.frame = letterFrame;
    return {letter};
  }
  std::optional<BitmapImage> image(std::uint32_t windowID) override {
    if (windowID != prepared) return std::nullopt;
    return BitmapImage{.width = 2, .height = 1, .pixels = {1, 2, 3, 255, 4, 5, 6, 255}};
  }
  bool allowed = true;
  std::uint32_t prepared = 0;
};

class SilentDestination final : public PasteDestination {
 public:
  Task<bool> isPermitted(AccessibilityTrustPrompt /*prompt*/) override { co_return true; }
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override { co_return std::nullopt; }
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t /*processIdentifier*/, AccessibilityTrustPrompt /*prompt*/) override {
    co_return std::unexpected(PasteTargetFreezeError::destinationUnavailable);
  }
  Task<bool> isCurrent(FrozenPasteTarget /*target*/) override { co_return false; }
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget /*target*/) override {
    co_return PasteKeystrokeResult::failed;
  }
};

class NoModifiers final : public PhysicalModifierFlagsProviding {
 public:
  PhysicalModifierFlags physicalModifierFlags() override { return {}; }
};

class NoTrash final : public TrashOperation {
 public:
  std::optional<std::filesystem::path> moveToTrash(const std::filesystem::path& /*path*/) override {
    throw TrashError("there is none");
  }
  void restore(const std::filesystem::path& /*trashed*/, const std::filesystem::path& /*original*/) override {
    throw TrashError("there is none");
  }
};

class SilentPanel final : public CaptureHeadsUpPanel {
 public:
  void showProgress(const CaptureNotice& notice) override { pngOfProgress = *notice.screenshotPNG; }
  void showSuccess(const CaptureNotice& notice) override { detail = notice.detail; }
  void showFailure(const CaptureFailureNotice& notice) override { detail = notice.message; }
  void hide() override {}
  std::string pngOfProgress;
  std::string detail;
};

class NoFileManager final : public ArtifactRevealing {
 public:
  void reveal(const std::filesystem::path& /*bundlePath*/) override {}
};

class ApplicationServicesTest : public testing::Test {
 public:
  ~ApplicationServicesTest() override {
    const auto ending = spawnTask(loop.executor(), [this] { return model.shutDown(); });
    bool hasEnded = false;
    startTask(loop.executor(), [&]() { return note(ending, hasEnded); });
    loop.runUntil([&] { return hasEnded; });
  }

 protected:
  ApplicationServicesTest() {
    accessibility->addWindows("window 'Letter' number=7 frame=0,0,400,300\n  button 'Send' frame=1,1,20,10\n");
    applications.frontmost = RunningApplication{.processIdentifier = FakeAccessibilityInterface::processIdentifier,
                                                .localizedName = "Editor",
                                                .bundleIdentifier = "editor"};
  }

  static Task<> note(SpawnedTask<void> ending, bool& hasEnded) {
    Task<> waiting = ending.value();
    co_await std::move(waiting);
    hasEnded = true;
  }

  void capture() {
    panel.detail.clear();
    model.captureFrontmostWindow();
    EXPECT_TRUE(loop.runUntil([&] { return !panel.detail.empty(); }));
  }

  TemporaryDirectory folder;
  ManualLoop loop;
  SystemMonotonicClock clock;
  PosixFileSystem files;
  NoTrash trash;
  FixedWallClock wallClock;
  RandomUUIDGenerator identifiers;
  InMemoryUserDefaults preferences;
  std::unique_ptr<FakeAccessibilityInterface> accessibility = std::make_unique<FakeAccessibilityInterface>();
  std::shared_ptr<OneWindowImage> images = std::make_shared<OneWindowImage>();
  OneWindowList windowList;
  FakeRunningApplications applications;
  FakeHotKeyRegistrar registrar;
  FakePasteboard pasteboard;
  SilentDestination destination;
  NoModifiers modifiers;
  FakeLoginItem loginItem;
  FakeSoftwareUpdateService softwareUpdates;
  SilentPanel panel;
  NoFileManager fileManager;
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
  capture();
  EXPECT_EQ(panel.detail, "2 elements, complete");
  EXPECT_EQ(panel.pngOfProgress.substr(1, 3), "PNG");
  ASSERT_EQ(model.state().artifacts.size(), 1U);
  EXPECT_EQ(model.state().artifacts[0].manifest.title, "Letter");
  EXPECT_EQ(model.state().artifacts[0].manifest.source.applicationName, "Editor");
  EXPECT_NE(windowList.thread, std::this_thread::get_id());
}

TEST_F(ApplicationServicesTest, aPermissionThatIsMissingStopsTheCapture) {
  images->allowed = false;
  capture();
  EXPECT_EQ(panel.detail, "Quillo needs Screen Recording permission before capturing.");
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
