#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quillo::test {

/// The bytes of a file. Throws std::runtime_error when it cannot be read.
std::string readFile(const std::filesystem::path& path);

/// Every `<case>.in.json` of a golden folder, in the order of the names.
std::vector<std::filesystem::path> goldenInputs(const std::filesystem::path& folder);

/// Compares `actual` with `<case>.expected<extension>` beside the input, byte for byte; a missing expectation fails.
/// With QUILLO_UPDATE_GOLDEN=1 in the environment the expectation is written instead, and its diff is read like code.
void expectGolden(const std::filesystem::path& input, const std::string& extension, const std::string& actual);

}  // namespace quillo::test
