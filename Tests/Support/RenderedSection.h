#pragma once

#include <string>
#include <string_view>

namespace quillo::test {

/// The lines of one section of a rendered text, from the line behind its heading to the next heading's empty line.
std::string section(std::string_view rendered, std::string_view heading);

}  // namespace quillo::test
