#pragma once

#include <gtest/gtest.h>

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ArtifactFixtures.h"
#include "FaultyFileSystem.h"
#include "PlatformFakes.h"
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

class FakeLibraryMeasuring final : public LibraryMeasuring {
 public:
  std::filesystem::path libraryPath() const override { return "/library"; }
  Task<LibraryUsage> measure() override { return answer.give(); }

  Answer<LibraryUsage> answer{LibraryUsage{.captureCount = 2, .byteCount = 3000}};
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
  UUID storeOf(const std::string& application, const std::string& title, int minutesAgo);
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
    return loop.run(std::move(task));
  }

  const QuilloModelState& state() { return model->state(); }
  /// "idle", "capturing", …; "success: " or "failure: " and the message.
  std::string activity();
  static std::vector<std::string> titlesOf(const std::vector<StoredArtifact>& artifacts);
  std::vector<std::string> titles() { return titlesOf(state().artifacts); }
  ArtifactManifest storedManifest(const UUID& id) { return outsideStore.load(id).stored.manifest; }

  TemporaryDirectory folder;
  TemporaryDirectory trashFolder;
  FaultyFileSystem files;
  PosixFileSystem outsideFiles;
  FakeTrash trash;
  std::vector<std::string> immovable;  ///< names of bundles that the Trash does not take
  bool trashTellsPlace = true;
  FixedWallClock wallClock;
  CountingUUIDGenerator identifiers;
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
