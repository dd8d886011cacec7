#include "Tests/Support/RenderedSection.h"

namespace quillo::test {

std::string section(std::string_view rendered, std::string_view heading) {
  const std::string line = "\n" + std::string(heading) + "\n";
  const std::size_t found = rendered.find(line);
  if (found == std::string_view::npos) return {};
  rendered.remove_prefix(found + line.size());
  return std::string(rendered.substr(0, rendered.find("\n\n#")));
}

}  // namespace quillo::test
