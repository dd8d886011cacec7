#include "Commands.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"

namespace quillo {

CommandResult runRender(const RenderOptions& options) {
  const auto observation = decodeJson<InterfaceObservation>(readInput(options.input));
  return {InterfaceObservationLLMRenderer::render(observation)};
}

}  // namespace quillo
