// Snapshots with the observation that they become, and recorded windows with the text that a model reads of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/ObservationText.h"

namespace quillo::test {
namespace {

using std::filesystem::path;

InterfaceObservation observe(const path& input) {
  return AccessibilitySemanticNormalizer::normalize(decodeJson<AccessibilitySnapshot>(readFile(input)), {});
}

std::string caseName(const testing::TestParamInfo<path>& info) {
  std::string name = info.param.stem().stem().string();
  std::ranges::replace(name, '-', '_');
  return name;
}

class ObservationGolden : public testing::TestWithParam<path> {};

TEST_P(ObservationGolden, normalizesAsExpected) {
  const InterfaceObservation observation = observe(GetParam());
  EXPECT_EQ(findViolation(observation), "");
  expectGolden(GetParam(), ".json", encodeJson(observation, JsonStyle::prettyPrinted) + "\n");
}

INSTANTIATE_TEST_SUITE_P(Rules, ObservationGolden,
                         testing::ValuesIn(goldenInputs(path(QUILLO_GOLDEN_FOLDER) / "Observation")), caseName);

class WindowGolden : public testing::TestWithParam<path> {};

TEST_P(WindowGolden, readsAsExpected) {
  const InterfaceObservation observation = observe(GetParam());
  EXPECT_EQ(findViolation(observation), "");
  expectGolden(GetParam(), ".txt", InterfaceObservationLLMRenderer::render(observation));
}

INSTANTIATE_TEST_SUITE_P(Recorded, WindowGolden,
                         testing::ValuesIn(goldenInputs(path(QUILLO_GOLDEN_FOLDER) / "Windows")), caseName);

}  // namespace
}  // namespace quillo::test
