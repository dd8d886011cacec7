#include <string>

#include "QuilloCore/Semantics/InterfaceObservation.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "QuilloCore/Support/JsonError.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/Utf8.h"
#include "Require.h"

/// Whatever file can be read as an observation, also one that keeps none of its invariants, is rendered.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quillo;
  try {
    const auto observation = decodeJson<InterfaceObservation>(fuzzing::asText(data, size));
    const std::string text = InterfaceObservationLLMRenderer::render(observation);
    fuzzing::require(!findInvalidUtf8(text) && !text.empty(), "the text is well-formed");
  } catch (const JsonError& error) {
    fuzzing::require(!error.errorDescription().empty(), "an error says what is wrong");
  }
  return 0;
}
