#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuilloApp/Model/EditingFlow.h"
#include "QuilloApp/Model/LibrarySearch.h"
#include "QuilloApp/Model/PublishedModelState.h"
#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloApp/Model/QuilloModelState.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"

namespace quillo {

class QuilloUpdateController;

/// The running application: what the interface observes, and everything that the user can do. Main thread only.
///
/// Operations that return nothing begin a flow and come back at once; what comes of it is told through the state, most
/// of all through `activity`. Before the model ends, `shutDown` has to have been awaited.
class QuilloModel {
 public:
  /// The first-run guide that this version shows; kept under "onboardingVersion" when the user has completed it.
  static constexpr std::int64_t currentOnboardingVersion = 1;

  explicit QuilloModel(const QuilloModelServices& services);
  QuilloModel(const QuilloModel&) = delete;
  QuilloModel& operator=(const QuilloModel&) = delete;
  ~QuilloModel();

  const QuilloModelState& state() const;

  /// `observer` is called on the main loop after the state has changed, once for all changes of a turn, and may call
  /// the model. It observes as long as the returned object lives.
  [[nodiscard]] QuilloModelObservation observe(QuilloModelObserver observer);

  /// Once: loads the library, registers the shortcuts, reads the permissions, decides on the first-run guide.
  void startIfNeeded();

  // The library
  void reloadArtifacts();
  /// Somebody else may have changed the library: reads it again, and loses no draft.
  void libraryChanged();
  /// Saves pending edits first; when they cannot be saved the former selection stays.
  void select(std::optional<UUID> id);
  void setSearchQuery(std::string query);
  /// Shows only the captures of the application of that name.
  void setApplicationFilter(std::optional<std::string> application);
  /// The artifacts that match the search and the filter.
  std::vector<StoredArtifact> filteredArtifacts() const;
  /// The same as indices into the library.
  std::vector<std::size_t> shownArtifacts() const;
  /// The applications of the artifacts that match the search, whatever the filter is.
  std::vector<ApplicationCount> applicationCounts() const;
  void revealSelectedArtifact();
  void moveArtifactsToTrash(std::vector<UUID> ids);
  /// Puts back what the last move to the Trash has moved, as far as `undoableTrashCount` says that it can.
  void undoMoveToTrash();

  // Editing the selected artifact
  void setDraftTitle(std::string title);              ///< and marks it as edited
  void setDraftAnnotations(std::string annotations);  ///< and marks them as edited
  /// Saves without feedback 0.65 seconds after the last edit.
  void markEdited();
  /// Whether nothing is left to save.
  Task<bool> saveEdits(SaveFeedback feedback);

  // Capture
  void captureFrontmostWindow();
  /// To be called when the menu opens: what is in front then is what the menu's items act on.
  void prepareCaptureTargetForMenu();
  void captureFrontmostWindowFromMenu();
  bool canCaptureFrontmostWindowFromMenu() const;

  // Paste and copy
  void preparePasteDestinationForMenu();
  void pasteSelectedArtifactFromMenu();
  bool canPasteSelectedArtifact() const;
  /// Pastes into that process, or into the one in front.
  void pasteSelectedArtifact(std::optional<std::int32_t> processIdentifier = {});
  void copySelectedArtifactToClipboard();

  // Shortcuts
  /// Registers, keeps and reports the pair. When it cannot be registered the former pair is put back.
  std::expected<void, GlobalHotKeyRegistrationError> updateHotKeyConfiguration(
      const QuilloHotKeyConfiguration& configuration);
  /// While a shortcut is being recorded neither shortcut does anything.
  void beginHotKeyRecording();
  void endHotKeyRecording();

  // Permissions
  void recheckCapturePermissions();
  /// Returns whether it is granted now.
  Task<bool> requestCapturePermission(ContextCapturePermission permission);

  // Settings
  /// Reads again what the settings show and others may change: permissions, start at login, the library's size.
  void refreshSettings();
  void setStartsAtLogin(bool startsAtLogin);
  void revealLibrary();
  std::filesystem::path libraryPath() const;
  QuilloUpdateController& updates();

  // The first-run guide
  bool isOnboardingCompleted() const;
  void showOnboarding();
  void hideOnboarding();
  void completeOnboarding();

  /// Waits for a capture, paste or move to the Trash in flight, and saves pending edits. Returns whether quitting may
  /// proceed; it may not when edits could not be written.
  Task<bool> prepareForTermination();
  /// The application goes on after all.
  void resumeAfterTermination();

  /// Ends every flow. Not one that the model runs itself may await it.
  Task<> shutDown();

 private:
  struct Flows;
  std::unique_ptr<Flows> flows_;
};

}  // namespace quillo
