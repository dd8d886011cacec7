#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "FaultyFileSystem.h"
#include "QuilloApp/Model/CaptureHeadsUpPanel.h"
#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"
#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"
#include "Tests/Support/FakeHotKeyRegistrar.h"
#include "Tests/Support/FakeLoginItem.h"
#include "Tests/Support/FakePasteboard.h"
#include "Tests/Support/FakeRunningApplications.h"
#include "Tests/Support/FakeSoftwareUpdateService.h"
#include "Tests/Support/FixedWallClock.h"
#include "Tests/Support/InMemoryUserDefaults.h"
#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {

/// Answers at once, or, when a test holds it, when the test lets it go.
template <class T>
class Answer {
 public:
  explicit Answer(Outcome<T> answer) : outcome(std::move(answer)) {}

  /// From now on every question waits for `release`.
  void hold() { held_ = std::make_shared<std::vector<std::shared_ptr<PendingResult<T>>>>(); }
  void release() {
    const auto held = std::exchange(held_, nullptr);
    for (const auto& pending : *held) pending->resolve(outcome);
  }

  Task<T> give() {
    ++count;
    auto pending = std::make_shared<PendingResult<T>>();
    if (held_) {
      held_->push_back(pending);
    } else {
      pending->resolve(outcome);
    }
    return waitFor(std::move(pending));
  }

  Outcome<T> outcome;
  int count = 0;

 private:
  std::shared_ptr<std::vector<std::shared_ptr<PendingResult<T>>>> held_;
};

template <class Error>
std::unexpected<std::exception_ptr> failing(Error error) {
  return std::unexpected(std::make_exception_ptr(std::move(error)));
}

class FakeCaptureTargets final : public CaptureTargetFreezing {
 public:
  FakeCaptureTargets();
  Task<FrozenContextCaptureTarget> freezeCaptureTarget() override { return answer.give(); }

  Answer<FrozenContextCaptureTarget> answer;
};

class FakePermissions final : public CapturePermissions {
 public:
  Task<ContextCapturePermissionState> state() override { co_return granted; }
  Task<bool> request(ContextCapturePermission permission) override;

  bool isRefusing = false;  ///< whatever is asked for
  ContextCapturePermissionState granted{.screenRecordingGranted = true, .accessibilityGranted = true};
};

/// Notes what it shows, as "progress Letter", "success Letter: 1 element, complete", "failure …", "hide".
class FakeHeadsUpPanel final : public CaptureHeadsUpPanel {
 public:
  void showProgress(const CaptureNotice& notice) override { log.push_back("progress " + notice.title); }
  void showSuccess(const CaptureNotice& notice) override {
    log.push_back("success " + notice.title + ": " + notice.detail);
  }
  void showFailure(const CaptureFailureNotice& notice) override {
    log.push_back("failure " + notice.message + (notice.remedy ? " (" + *notice.remedy + ")" : ""));
  }
  void hide() override { log.emplace_back("hide"); }

  std::vector<std::string> log;
};

class FakePasteDestination final : public PasteDestination {
 public:
  Task<bool> isPermitted(AccessibilityTrustPrompt /*prompt*/) override { co_return isAllowed; }
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override { co_return frontmost; }
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt /*prompt*/) override {
    frozen.push_back(processIdentifier);
    co_return resolution;
  }
  Task<bool> isCurrent(FrozenPasteTarget /*target*/) override { co_return hasFocus; }
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget /*target*/) override {
    if (onPaste) onPaste();
    co_return keystroke;
  }

  bool isAllowed = true;
  bool hasFocus = true;
  std::optional<std::int32_t> frontmost = 500;
  std::expected<FrozenPasteTarget, PasteTargetFreezeError> resolution = FrozenPasteTarget{};
  PasteKeystrokeResult keystroke = PasteKeystrokeResult::sent;
  std::function<void()> onPaste;
  std::vector<std::int32_t> frozen;  ///< the processes in which a destination was frozen
};

class FakeModifiers final : public PhysicalModifierFlagsProviding {
 public:
  PhysicalModifierFlags physicalModifierFlags() override { return held; }
  PhysicalModifierFlags held;
};

class FakeFileManager final : public ArtifactRevealing {
 public:
  void reveal(const std::filesystem::path& bundlePath) override { revealed.push_back(bundlePath.filename().string()); }
  std::vector<std::string> revealed;
};

class FakeLibraryMeasuring final : public LibraryMeasuring {
 public:
  std::filesystem::path libraryPath() const override { return "/library"; }
  Task<LibraryUsage> measure() override { return answer.give(); }

  Answer<LibraryUsage> answer{LibraryUsage{.captureCount = 2, .byteCount = 3000}};
};

class FakeTrash final : public TrashOperation {
 public:
  /// Moves the bundle to a directory of its own, unless the test says that it cannot be moved.
  std::optional<std::filesystem::path> moveToTrash(const std::filesystem::path& path) override;
  void restore(const std::filesystem::path& trashed, const std::filesystem::path& original) override;

  std::vector<std::string> immovable;  ///< names of bundles
  bool tellsPlace = true;

 private:
  TemporaryDirectory place_;
};

class CountingUUIDs final : public UUIDGenerating {
 public:
  UUID makeUUID() override;

 private:
  std::uint16_t count_ = 0;
};

/// The model on a loop and a clock that stand still until a test moves them, with a real library in a directory of its
/// own.
class ModelFixture : public testing::Test {
 public:
  ~ModelFixture() override;

 protected:
  ModelFixture();

  /// Stores a capture that is so many minutes old, in the state before the model starts or as another process would.
  UUID store(const std::string& title, int minutesAgo = 1, const std::string& windowTitle = "Window");
  /// What another process would do to the stored title and note.
  void editFromOutside(const UUID& id, const std::string& title, const std::string& annotations);

  void start();
  void select(const UUID& id);
  /// Runs until nothing is left to do but to wait for the time.
  void settle();
  void advance(double seconds);
  bool runUntil(const std::function<bool()>& condition) { return loop.runUntil(condition); }
  template <class T>
  T await(Task<T> task) {
    auto outcome = std::make_shared<PendingResult<T>>();
    detail::startResolving<T>(loop.executor(), outcome,
                              [task = std::make_shared<Task<T>>(std::move(task))] { return std::move(*task); });
    EXPECT_TRUE(loop.runUntil([&] { return outcome->isResolved(); }));
    return outcome->take();
  }

  const QuilloModelState& state() { return model->state(); }
  /// "idle", "capturing", …; "success: " or "failure: " and the message.
  std::string activity();
  std::vector<std::string> titles();
  ArtifactManifest storedManifest(const UUID& id) { return outsideStore.load(id).stored.manifest; }

  TemporaryDirectory folder;
  FaultyFileSystem files;
  PosixFileSystem outsideFiles;
  FakeTrash trash;
  FixedWallClock wallClock;
  CountingUUIDs identifiers;
  ArtifactStore outsideStore{
      folder.path(), {outsideFiles, trash, wallClock, identifiers}, ArtifactProjection::standard()};

  ManualLoop loop;
  ManualLoop stuck;                ///< does nothing until the test's end
  bool nextWorkerIsStuck = false;  ///< whether the next computation goes there
  VirtualMonotonicClock clock;
  ArtifactRepository repository{
      ArtifactStore(folder.path(), {files, trash, wallClock, identifiers}, ArtifactProjection::standard())};
  InMemoryUserDefaults preferences;
  FakeCaptureTargets captureTargets;
  FakePermissions permissions;
  Answer<WindowScreenshotCapture> screenshot;
  Answer<AccessibilitySnapshot> snapshot;
  std::unique_ptr<ContextCaptureService> captureService;
  FakePasteboard pasteboard;
  ClipboardPayloadWriter writer;
  SystemPasteboardSession session{pasteboard, writer};
  FakePasteDestination destination;
  FakeModifiers modifiers;
  ClockModifierReleaseSleeping sleeping{clock};
  std::unique_ptr<PasteDeliveryService> delivery;
  FakeHeadsUpPanel panel;
  FakeHotKeyRegistrar registrar;
  FakeRunningApplications applications;
  GlobalHotKeyController hotKeys{registrar, applications};
  FakeFileManager fileManager;
  FakeLoginItem loginItem;
  FakeLibraryMeasuring libraryMeasuring;
  FakeSoftwareUpdateService softwareUpdates;
  std::unique_ptr<QuilloModel> model;
};

}  // namespace quillo::test
