#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "Require.h"

/// Runs a fuzz target over the files of a folder and, the small ones, over each of their beginnings.
int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(argv[1])) files.push_back(entry.path());
  if (files.empty()) {
    std::fprintf(stderr, "%s holds no file\n", argv[1]);
    return 1;
  }
  std::ranges::sort(files);
  constexpr std::size_t smallSize = 2048;
  std::size_t runs = 0;
  for (const fs::path& file : files) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(stream), {});
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);  // names the culprit when the target aborts
    for (std::size_t size = bytes.size() <= smallSize ? 0 : bytes.size(); size <= bytes.size(); ++size, ++runs) {
      // A copy of its own, so that a sanitizer sees reading beyond the end.
      const std::vector<unsigned char> input(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
      LLVMFuzzerTestOneInput(input.data(), input.size());
    }
  }
  std::printf("%zu inputs\n", runs);
  return 0;
}
