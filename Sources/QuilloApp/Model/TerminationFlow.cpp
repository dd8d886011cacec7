#include "QuilloApp/Model/TerminationFlow.h"

#include <utility>

#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Clipboard/PasteboardError.h"
#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"

namespace quillo {

Task<bool> TerminationFlow::prepareForTermination() {
  context_.isTerminating = true;
  Task<> waiting = waitForFlights();
  co_await std::move(waiting);
  Task<bool> saving = saveDraftsInTime();
  if (!co_await std::move(saving)) {
    context_.isTerminating = false;
    context_.activity.showFailure("Quillo could not finish saving edits before quitting. Try again.");
    co_return false;
  }
  Task<> handingOver = handOverClipboard();
  co_await std::move(handingOver);
  co_return true;
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

Task<> TerminationFlow::handOverClipboard() {
  auto handOver = [this] { return context_.services.pasteboard.handOver(); };
  try {
    Task<bool> bounded = runCancellableAsyncOperation(context_.services.clock, context_.services.mainExecutor,
                                                      handOverDeadline, std::move(handOver));
    co_await std::move(bounded);
  } catch (const AsyncOperationDeadlineError&) {
    // A clipboard manager that does not answer does not keep the application from quitting …
  } catch (const PasteboardError&) {
    // … nor does a display that has gone.
  }
}

}  // namespace quillo
