#pragma once

#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// The step from a finished capture to what is stored.
namespace ContextArtifactDraftMaker {

/// Derives the observation and its text on `executor`, which should not be the caller's own thread, and throws as
/// InterfaceObservationProcessor does. The title is the window's, else the application's name.
Task<ContextArtifactDraft> make(MonotonicClock& clock, TaskExecutor executor, ContextCaptureResult capture, UUID id);

}  // namespace ContextArtifactDraftMaker
}  // namespace quillo
