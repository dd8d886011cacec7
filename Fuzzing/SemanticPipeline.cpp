#include <cstddef>
#include <cstdint>
#include <string>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "QuilloCore/Support/Utf8.h"
#include "Require.h"
#include "Tests/Support/GeneratedInterface.h"
#include "Tests/Support/ObservationText.h"

// The bytes are read as a snapshot whose references form any graph. Whatever it is, normalising it yields an
// observation that keeps its invariants, and rendering that a text, also when the observation has been damaged since.

namespace {

using namespace quillo;
using fuzzing::require;

std::string readText(FuzzedDataProvider& bytes, std::size_t maximumLength) {
  return replacingInvalidUtf8(bytes.ConsumeRandomLengthString(maximumLength));
}

/// Breaks what a file could break: references, ranges, depths and texts.
void damage(InterfaceObservation& observation, FuzzedDataProvider& bytes) {
  auto& elements = observation.elements;
  const auto anyElement = [&]() -> InterfaceElement& {
    return elements[bytes.ConsumeIntegralInRange<std::size_t>(0, elements.size() - 1)];
  };
  for (int i = elements.empty() ? 0 : bytes.ConsumeIntegralInRange<int>(0, 8); i > 0; --i) {
    InterfaceElement& element = anyElement();
    switch (bytes.ConsumeIntegralInRange<int>(0, 8)) {
      case 0: element.childIDs.push_back(anyElement().id); break;
      case 1: element.childIDs.clear(); break;
      case 2: element.parentID = anyElement().id; break;
      case 3: element.id = anyElement().id; break;
      case 4: observation.rootElementID = element.id + (bytes.ConsumeBool() ? "?" : ""); break;
      case 5: element.depth = bytes.ConsumeIntegral<std::int64_t>(); break;
      case 6: element.content = readText(bytes, 40); break;
      case 7: element.state.focused = element.state.selected = true; break;
      default:
        element.properties.edit().selectedTextRange = {bytes.ConsumeIntegral<std::int64_t>(),
                                                       bytes.ConsumeIntegral<std::int64_t>()};
        element.properties.edit().visibleTextRange = {bytes.ConsumeIntegral<std::int8_t>(),
                                                      bytes.ConsumeIntegral<std::int8_t>()};
    }
  }
}

void requireText(const InterfaceObservation& observation) {
  const std::string text = InterfaceObservationLLMRenderer::render(observation);
  require(!findInvalidUtf8(text) && !text.ends_with('\n'), "the text is well-formed, without a final line feed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  FuzzedDataProvider bytes(data, size);
  const InterfaceNormalizationOptions options{.synthesizeApplicationRoot = bytes.ConsumeBool(),
                                              .inferConservativeActions = bytes.ConsumeBool()};
  const AccessibilitySnapshot snapshot = test::generateInterface(bytes);
  InterfaceObservation observation = AccessibilitySemanticNormalizer::normalize(snapshot, options);
  const std::string violation = test::findViolation(observation, snapshot);
  require(violation.empty(), violation.c_str());
  requireText(observation);
  damage(observation, bytes);
  requireText(observation);
  return 0;
}
