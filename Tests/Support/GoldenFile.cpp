#include "Tests/Support/GoldenFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace quillo::test {

namespace fs = std::filesystem;

constexpr std::string_view inputSuffix = ".in.json";

std::string readFile(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> goldenInputs(const fs::path& folder) {
  std::vector<fs::path> inputs;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().filename().string().ends_with(inputSuffix)) inputs.push_back(entry.path());
  }
  std::ranges::sort(inputs);
  return inputs;
}

void expectGolden(const fs::path& input, const std::string& extension, const std::string& actual) {
  std::string name = input.filename().string();
  name.erase(name.size() - inputSuffix.size());
  const fs::path expectation = input.parent_path() / (name + ".expected" + extension);
  if (const char* update = std::getenv("QUILLO_UPDATE_GOLDEN"); update != nullptr && std::string_view(update) == "1") {
    std::ofstream(expectation, std::ios::binary) << actual;
    return;
  }
  ASSERT_TRUE(fs::exists(expectation)) << "no expectation " << expectation;
  EXPECT_EQ(readFile(expectation), actual) << expectation;
}

}  // namespace quillo::test
