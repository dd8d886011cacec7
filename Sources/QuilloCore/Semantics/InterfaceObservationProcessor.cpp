#include "QuilloCore/Semantics/InterfaceObservationProcessor.h"

#include <utility>

#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"
#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"

namespace quillo {
namespace {

Task<ProcessedInterfaceObservation> normalizeAndRender(AccessibilitySnapshot snapshot) {
  constexpr InterfaceNormalizationOptions options{.synthesizeApplicationRoot = true, .inferConservativeActions = true};
  ProcessedInterfaceObservation processed;
  processed.observation = AccessibilitySemanticNormalizer::normalize(snapshot, options);
  Task<> check = checkCancellation();
  co_await std::move(check);
  processed.contextText = InterfaceObservationLLMRenderer::render(processed.observation);
  co_return processed;
}

}  // namespace

Task<ProcessedInterfaceObservation> InterfaceObservationProcessor::process(MonotonicClock& clock, TaskExecutor executor,
                                                                           AccessibilitySnapshot snapshot) {
  auto operation = [snapshot = std::move(snapshot)]() mutable { return normalizeAndRender(std::move(snapshot)); };
  return runCancellableAsyncOperation(clock, std::move(executor), timeout, std::move(operation));
}

}  // namespace quillo
