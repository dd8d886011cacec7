#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "QuilloApp/Model/Activity.h"
#include "QuilloApp/Model/OpenArtifact.h"
#include "QuilloApp/Model/SoftwareUpdateState.h"
#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Artifacts/LibraryListing.h"
#include "QuilloCore/Artifacts/LibraryUsage.h"
#include "QuilloCore/Capture/ContextCapturePermission.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// What is wrong in the library.
struct LibraryCondition {
  std::optional<std::string> listingFailure;  ///< why the library could not be read at all
  std::vector<DamagedBundle> damagedBundles;
  std::map<UUID, ArtifactCondition> artifacts;  ///< those that are not simply complete

  friend bool operator==(const LibraryCondition&, const LibraryCondition&) = default;
};

/// What the search has found in captured texts, beside what the list itself says.
struct CapturedTextSearch {
  std::vector<UUID> matches;  ///< ascending
  bool isRunning = false;     ///< more may follow

  friend bool operator==(const CapturedTextSearch&, const CapturedTextSearch&) = default;
};

/// Everything that the interface observes.
struct QuilloModelState {
  std::vector<StoredArtifact> artifacts;  ///< the library, newest first; without context texts
  std::optional<UUID> selection;
  /// What the drafts belong to. While a selection loads this is still the one before it.
  std::optional<OpenArtifact> selectedArtifact;
  std::string searchQuery;
  std::string draftTitle;
  std::string draftAnnotations;
  Activity activity;
  bool hasUnsavedChanges = false;  ///< the drafts differ from what was last saved
  bool trashIsInProgress = false;
  QuilloHotKeyConfiguration hotKeyConfiguration;
  std::optional<std::string> hotKeyRegistrationError;
  bool isShowingOnboarding = false;
  ContextCapturePermissionState capturePermissionState;  ///< the last that is known
  bool startsAtLogin = false;
  std::optional<LibraryUsage> libraryUsage;  ///< as last counted; absent until then
  SoftwareUpdateState softwareUpdates;
  LibraryCondition libraryCondition;
  std::optional<std::string> selectionFailure;   ///< why the contents of the selection could not be loaded
  std::optional<std::string> applicationFilter;  ///< only captures of the application of this name are shown
  CapturedTextSearch capturedTextSearch;
  std::size_t undoableTrashCount = 0;  ///< how many captures the last move to the Trash could bring back
  bool isSavingEdits = false;
  std::optional<std::string> saveFailure;  ///< why the drafts could not be saved; they stay as they are
};

enum class QuilloModelField : std::uint8_t {
  artifacts,
  selection,
  selectedArtifact,
  searchQuery,
  draftTitle,
  draftAnnotations,
  activity,
  hasUnsavedChanges,
  trashIsInProgress,
  hotKeyConfiguration,
  hotKeyRegistrationError,
  isShowingOnboarding,
  capturePermissionState,
  startsAtLogin,
  libraryUsage,
  softwareUpdates,
  libraryCondition,
  selectionFailure,
  applicationFilter,
  capturedTextSearch,
  undoableTrashCount,
  isSavingEdits,
  saveFailure,
};

/// The fields that have changed since the observer was last called.
class QuilloModelChanges {
 public:
  QuilloModelChanges() = default;
  static QuilloModelChanges everything() { return QuilloModelChanges(~0U); }

  void add(QuilloModelField field) { bits_ |= bit(field); }
  bool contains(QuilloModelField field) const { return (bits_ & bit(field)) != 0; }
  bool isEmpty() const { return bits_ == 0; }

  friend bool operator==(QuilloModelChanges, QuilloModelChanges) = default;

 private:
  explicit QuilloModelChanges(std::uint32_t bits) : bits_(bits) {}
  static constexpr std::uint32_t bit(QuilloModelField field) { return 1U << static_cast<std::uint32_t>(field); }

  std::uint32_t bits_ = 0;
};

}  // namespace quillo
