#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "QuilloCore/Support/JsonReader.h"
#include "Tests/Support/GoldenFile.h"

namespace quillo::test {
namespace {

class RendererGolden : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(RendererGolden, rendersAsExpected) {
  const auto observation = decodeJson<InterfaceObservation>(readFile(GetParam()));
  expectGolden(GetParam(), ".txt", InterfaceObservationLLMRenderer::render(observation));
}

std::string caseName(const testing::TestParamInfo<std::filesystem::path>& info) {
  std::string name = info.param.stem().stem().string();
  std::ranges::replace(name, '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Rules, RendererGolden,
                         testing::ValuesIn(goldenInputs(std::filesystem::path(QUILLO_GOLDEN_FOLDER) / "Rendering")),
                         caseName);

}  // namespace
}  // namespace quillo::test
