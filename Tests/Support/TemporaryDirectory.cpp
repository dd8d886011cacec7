#include "Tests/Support/TemporaryDirectory.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace quillo::test {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory() {
  // In memory where there is such a place: syncing costs nothing there.
  const fs::path shared = "/dev/shm";
  const bool isUsable = ::access(shared.c_str(), W_OK | X_OK) == 0;
  std::string pattern = ((isUsable ? shared : fs::temp_directory_path()) / "quillo-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make " + pattern);
  path_ = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void writeFile(const fs::path& path, std::string_view bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream stream(path, std::ios::binary);
  stream << bytes;
  if (!stream.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace quillo::test
