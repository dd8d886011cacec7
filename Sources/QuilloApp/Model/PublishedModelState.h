#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "QuilloApp/Model/QuilloModelState.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

using QuilloModelObserver = std::function<void(QuilloModelChanges)>;

/// Observes as long as it lives.
class QuilloModelObservation {
 public:
  QuilloModelObservation() = default;
  explicit QuilloModelObservation(std::shared_ptr<QuilloModelObserver> observer) : observer_(std::move(observer)) {}

 private:
  std::shared_ptr<QuilloModelObserver> observer_;
};

/// The state and those who observe it. All changes of one turn of the main loop are told together in a later turn, so
/// that an observer sees a settled state and may call the model. Main thread only.
class PublishedModelState {
 public:
  explicit PublishedModelState(TaskExecutor mainExecutor);

  const QuilloModelState& operator*() const { return state_; }
  const QuilloModelState* operator->() const { return &state_; }

  /// Changes one field, named by its member pointer; a value that is already there is no change.
  template <auto member, class Value>
  void set(Value value) {
    if (state_.*member == value) return;
    state_.*member = std::move(value);
    publish(field<member>());
  }

  /// Changes the title of one artifact of the list, and whatever else its manifest says.
  void replaceListed(const StoredArtifact& artifact);

  /// Counts the changes of the list of artifacts.
  std::uint64_t artifactsRevision() const { return artifactsRevision_; }

  [[nodiscard]] QuilloModelObservation observe(QuilloModelObserver observer);

 private:
  class Observers;

  template <auto member>
  static consteval QuilloModelField field();
  void publish(QuilloModelField field);

  QuilloModelState state_;
  std::uint64_t artifactsRevision_ = 0;
  TaskExecutor mainExecutor_;
  std::shared_ptr<Observers> observers_;
};

template <auto member>
consteval QuilloModelField PublishedModelState::field() {
  using S = QuilloModelState;
  using F = QuilloModelField;
  constexpr auto is = []<class Member>(Member other) {
    if constexpr (std::is_same_v<Member, decltype(member)>) return other == member;
    return false;
  };
  if (is(&S::artifacts)) return F::artifacts;
  if (is(&S::selection)) return F::selection;
  if (is(&S::selectedArtifact)) return F::selectedArtifact;
  if (is(&S::searchQuery)) return F::searchQuery;
  if (is(&S::draftTitle)) return F::draftTitle;
  if (is(&S::draftAnnotations)) return F::draftAnnotations;
  if (is(&S::activity)) return F::activity;
  if (is(&S::hasUnsavedChanges)) return F::hasUnsavedChanges;
  if (is(&S::trashIsInProgress)) return F::trashIsInProgress;
  if (is(&S::hotKeyConfiguration)) return F::hotKeyConfiguration;
  if (is(&S::hotKeyRegistrationError)) return F::hotKeyRegistrationError;
  if (is(&S::isShowingOnboarding)) return F::isShowingOnboarding;
  if (is(&S::startsAtLogin)) return F::startsAtLogin;
  if (is(&S::libraryUsage)) return F::libraryUsage;
  if (is(&S::softwareUpdates)) return F::softwareUpdates;
  if (is(&S::libraryCondition)) return F::libraryCondition;
  if (is(&S::selectionFailure)) return F::selectionFailure;
  if (is(&S::applicationFilter)) return F::applicationFilter;
  if (is(&S::capturedTextSearch)) return F::capturedTextSearch;
  if (is(&S::undoableTrashCount)) return F::undoableTrashCount;
  if (is(&S::isSavingEdits)) return F::isSavingEdits;
  if (is(&S::saveFailure)) return F::saveFailure;
  return F::capturePermissionState;
}

}  // namespace quillo
