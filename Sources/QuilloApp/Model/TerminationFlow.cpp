#include "QuilloApp/Model/TerminationFlow.h"

#include <utility>

#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"

namespace quillo {

Task<bool> TerminationFlow::prepareForTermination() {
  context_.isTerminating = true;
  Task<> waiting = waitForFlights();
  co_await std::move(waiting);
  Task<bool> saving = saveDraftsInTime();
  const bool isSaved = co_await std::move(saving);
  if (!isSaved) {
    context_.isTerminating = false;
    context_.activity.showFailure("Quillo could not finish saving edits before quitting. Try again.");
  }
  co_return isSaved;
}

Task<> TerminationFlow::waitForFlights() {
  auto wait = [this] { return context_.flights.whenEmpty(); };
  try {
    Task<> bounded = runCancellableAsyncOperation(context_.services.clock, context_.services.mainExecutor,
                                                  flightDeadline, std::move(wait));
    co_await std::move(bounded);
  } catch (const AsyncOperationDeadlineError&) {
    // Shutting down cancels what is still in flight; a paste then gives the clipboard back.
  }
}

Task<bool> TerminationFlow::saveDraftsInTime() {
  auto save = [this] { return saveDrafts(); };
  try {
    Task<bool> bounded = runCancellableAsyncOperation(context_.services.clock, context_.services.mainExecutor,
                                                      saveDeadline, std::move(save));
    co_return co_await std::move(bounded);
  } catch (const AsyncOperationDeadlineError&) {
    co_return false;
  }
}

Task<bool> TerminationFlow::saveDrafts() {
  // The user may go on typing while the edits are written.
  while (context_.state->hasUnsavedChanges) {
    Task<SaveOutcome> saving = editing_.save(SaveFeedback::silent);
    const SaveOutcome outcome = co_await std::move(saving);
    if (outcome == SaveOutcome::failed) co_return false;
    if (outcome == SaveOutcome::artifactIsGone) co_return true;
  }
  co_return true;
}

}  // namespace quillo
