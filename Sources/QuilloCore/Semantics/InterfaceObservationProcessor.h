#pragma once

#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// What an artifact keeps beside its snapshot.
struct ProcessedInterfaceObservation {
  InterfaceObservation observation;
  std::string contextText;  ///< the observation as language models read it

  friend bool operator==(const ProcessedInterfaceObservation&, const ProcessedInterfaceObservation&) = default;
};

/// The step from a fresh snapshot to what is derived from it.
namespace InterfaceObservationProcessor {

inline constexpr double timeout = 10.0;  ///< seconds

/// Normalises and renders on `executor`, which should not be the caller's own thread. Throws
/// AsyncOperationDeadlineError or OperationCancelled; the computation itself does not fail. The clock outlives the
/// computation, which may run on when the caller has gone on without it.
Task<ProcessedInterfaceObservation> process(MonotonicClock& clock, TaskExecutor executor,
                                            AccessibilitySnapshot snapshot);

}  // namespace InterfaceObservationProcessor
}  // namespace quillo
